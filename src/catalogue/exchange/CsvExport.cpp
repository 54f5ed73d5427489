// The export run: one file, one kind.
#include "app/LeftOutText.h"
#include "catalogue/exchange/CsvExchange.h"
#include "catalogue/exchange/CsvLayout.h"
#include "catalogue/items/CatalogueKinds.h"
#include "platform/TextFile.h"

using namespace Qt::StringLiterals;

namespace {
class CExportRun {
  public:
    CExportRun(CDatabase& database, ECatalogueKind kind, const CExportRequest& request);
    /// False, after a message, when there is nothing to export.
    [[nodiscard]] bool HasItems() const;
    bool Run(const QString& path);

  private:
    void WriteItems();
    void ReportLosses() const;
    [[nodiscard]] QString LeftOutText() const;
    bool WriteItem(int position, PropertyList& properties);

    CDatabase& m_database;
    const CCatalogueKind& m_kind;
    bool m_all;
    std::vector<int> m_positions;
    int m_count;
    std::unique_ptr<CCsvLayout> m_layout;
    CTextFile m_file;
    CCsvLineWriter m_line{m_file};
    std::unique_ptr<CProgress> m_progress;
    int m_written = 0;
    CLeftOut m_leftOut;
};

CExportRun::CExportRun(CDatabase& database, ECatalogueKind kind, const CExportRequest& request)
    : m_database(database),
      m_kind(KindOf(kind)),
      m_all(request.choice == EExportChoice::All),
      m_positions(request.positions),
      m_layout(MakeCsvLayout(database, kind, QString())) {
    if (request.choice == EExportChoice::CurrentCategory) {
        m_positions.clear();
        const CCategoryList list = database.Catalogue().FillCategoryList(
            kind, request.categoryId,
            m_kind.exchange.exportsListedRows ? kCatalogueListCapacity : kNoCapacity);
        for (const CCategoryListEntry& entry : list.entries) {
            m_positions.push_back(entry.position);
        }
        m_leftOut = list.leftOut;
    }
    m_leftOut.isUnknown = m_leftOut.isUnknown || (m_all && !database.Items(kind).RangeBetween(
                                                               0, CViewSettings::kMarker - 1));
    m_count = m_all ? database.Catalogue().CountItems(kind) : static_cast<int>(m_positions.size());
}

bool CExportRun::HasItems() const {
    if (m_count > 0) {
        return true;
    }
    ShowMessage({FormatText("There are no %s found to export."_L1,
                            {QString::fromLatin1(m_kind.words.many)}),
                 EMessageIcon::Plain, LeftOutText()});
    return false;
}

bool CExportRun::Run(const QString& path) {
    if (m_database.IsVolume(path) || !m_file.Create(path, CTextFile::EReaders::ByUmask)) {
        ShowMessage(u"Cannot create file."_s);
        return false;
    }
    const QString plural = QString::fromLatin1(m_kind.words.many);
    m_progress = CreateProgress(u"Velmora: Export"_s);
    m_progress->SetStatus(FormatText("Exporting %s..."_L1, {plural}));
    m_progress->SetRange(0, m_count, 1);
    m_progress->Show();
    m_file.WriteLine(QString::fromLatin1(m_kind.exchange.marker));
    m_layout->WriteHeader(m_line);
    WriteItems();
    const bool whole = !m_progress->IsCancelled();
    m_file.WriteLine(u"<End>");
    const bool closed = m_file.Close();
    m_progress.reset();
    if (!closed) {
        ShowMessage(u"Cannot create file."_s);
        return false;
    }
    if (whole) {
        m_leftOut.damaged += m_count - m_written;  // the others cannot be read
    }
    if (whole || m_kind.exchange.countsCancelled) {
        ShowMessage({FormatText("Exported %d %s."_L1, {m_written, plural}), EMessageIcon::Result,
                     LeftOutText()});
    }
    ReportLosses();
    return whole && !m_leftOut.IsDamage() && !m_layout->LeftOutParts().IsDamage();
}

QString CExportRun::LeftOutText() const {
    return JoinSentences({::LeftOutText(m_leftOut, m_kind.words, m_written,
                                        "Only %s of %s %s are listed and exported."),
                          DamageText(m_layout->LeftOutParts(), kComponentWords)});
}

/// Warns about texts and lines that an import will not read back unchanged.
void CExportRun::ReportLosses() const {
    if (const CDistinctTexts& texts = m_line.ChangedTexts(); texts.Count() > 0) {
        ShowMessage(
            FormatText("Names that an import will change because of their quotes (%d): %s"_L1,
                       {texts.Count(), texts.First()}),
            EMessageIcon::Warning);
    }
    if (const CDistinctTexts& items = m_line.LongLines(); items.Count() > 0) {
        ShowMessage(FormatText("Items whose lines are too long for an import (%d): %s"_L1,
                               {items.Count(), items.First()}),
                    EMessageIcon::Warning);
    }
}

void CExportRun::WriteItems() {
    CItemDatabaseBase& items = m_database.Items(m_kind.code);
    if (m_all) {
        items.ForEachFrom(0, [this](int position, PropertyList& properties) {
            return position < m_count && WriteItem(position, properties);
        });
        return;
    }
    for (const int position : m_positions) {
        bool goOn = true;
        items.ForEachFrom(position, [&](int found, PropertyList& properties) {
            goOn = found != position || WriteItem(position, properties);
            return false;
        });
        if (!goOn) {
            return;
        }
    }
}

/// False when the user has cancelled.
bool CExportRun::WriteItem(int position, PropertyList& properties) {
    if (IsPastLastItem(properties)) {
        return true;  // a component or settings, not an item
    }
    // When this returns false, `properties` are unchanged.
    if (!m_layout->WriteItem(m_line, properties, m_written)) {
        ReportWrongPropertyCount(position, properties,
                                 m_database.Items(m_kind.code).GetLayout().Count());
        return true;
    }
    ++m_written;
    m_progress->Step();
    m_progress->Pump();
    if (m_progress->IsCancelled()) {
        if (m_kind.exchange.hidesProgress) {
            m_progress->Hide();
        }
        ShowMessage(u"Export cancelled."_s);
        return false;
    }
    return true;
}
}  // namespace

CFileChoice CsvFileChoice(const QString& title) {
    return {title, u".csv"_s, u"CSV file (*.csv)"_s, QString()};
}

bool ExportCatalogue(CDatabase& database, ECatalogueKind kind, const CExportRequest& request) {
    CExportRun run(database, kind, request);
    if (!run.HasItems()) {
        return false;
    }
    const QString path = ChooseFileToSave(
        CsvFileChoice(FormatText("Export %s"_L1, {QString::fromLatin1(KindOf(kind).words.many)})));
    return !path.isEmpty() && run.Run(path);
}

bool ExportCatalogueFile(CDatabase& database, ECatalogueKind kind, const CExportRequest& request,
                         const QString& path) {
    CExportRun run(database, kind, request);
    return run.HasItems() && run.Run(path);
}
