// The import run: one file, one kind.
#include "catalogue/exchange/CsvExchange.h"
#include "catalogue/exchange/CsvLayout.h"
#include "catalogue/exchange/ImportGroups.h"
#include "catalogue/items/CatalogueKinds.h"
#include "platform/TextFile.h"
#include "store/Step.h"

#include <QFileInfo>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
constexpr int kMostErrors = 10;
constexpr int kFatalErrors = 65535;

/// Everything up to and including the last separator.
QString FolderOf(const QString& path) {
    return path.first(path.lastIndexOf(u'/') + 1);
}

class CImportRun {
  public:
    CImportRun(CDatabase& database, ECatalogueKind kind, EDuplicatePolicy policy,
               const QString& path)
        : m_database(database),
          m_kind(KindOf(kind)),
          m_policy(policy),
          m_path(path),
          m_layout(MakeCsvLayout(database, kind, FolderOf(path))),
          m_groups(database) {}
    bool Run();

  private:
    bool ReadLine();
    bool ReadToMarker();
    bool ReadItems();
    bool ShowProgress();
    bool StoreItem(ECsvLine line);
    void Report(const CCsvVerdict& verdict);
    void ReportStoreFailure() const;
    [[nodiscard]] int ShownLineNumber() const {
        return m_lineNumber + m_kind.exchange.lineNumberShift;
    }

    CDatabase& m_database;
    const CCatalogueKind& m_kind;
    EDuplicatePolicy m_policy;
    QString m_path;
    std::unique_ptr<CCsvLayout> m_layout;
    CTextFile m_file;
    std::unique_ptr<CProgress> m_progress;
    CImportGroups m_groups;
    QString m_line;
    qint64 m_charactersRead = 0;
    int m_lineNumber = 0;
    int m_errors = 0;
};

bool CImportRun::Run() {
    if (m_database.IsVolume(m_path) || !m_file.OpenForReading(m_path)) {
        ShowMessage(u"Cannot open file."_s);
        return false;
    }
    m_progress = CreateProgress(u"Velmora: Import"_s);
    m_progress->SetStatus(
        FormatText("Importing %s..."_L1, {QString::fromLatin1(m_kind.words.many)}));
    m_progress->SetRange(0, m_file.GetLength(), 1);
    m_progress->Show();
    m_layout->SetProgress(m_progress.get());
    m_file.SetKeepWaiting([this] {
        m_progress->Pump();
        return !m_progress->IsCancelled();
    });
    const bool whole = ReadToMarker() && ReadItems() && !m_progress->IsCancelled();
    const bool readWhole = m_file.Close();
    m_progress.reset();
    if (m_file.IsTooLong()) {
        ShowMessage(u"Cannot open file."_s);
        ShowMessage(
            FormatText("'%s' is not a regular file and holds more than 1 GB."_L1, {m_path}));
    } else if (!readWhole) {
        ShowMessage(u"Cannot read file."_s);
    }
    ShowMessage(ImportSummary(m_kind.code, m_policy, m_groups.Counts()), EMessageIcon::Result);
    return whole && readWhole;
}

bool CImportRun::ReadLine() {
    if (!m_file.ReadLine(m_line)) {
        if (m_progress->IsCancelled()) {
            ShowMessage(u"Import cancelled."_s);  // while waiting for a pipe
        }
        return false;
    }
    ++m_lineNumber;
    m_charactersRead += m_line.size();
    return true;
}

bool CImportRun::ReadToMarker() {
    while (ReadLine()) {
        const std::optional<QStringView> field = CCsvFields(m_line).Next();
        if (field && field->contains(QLatin1StringView(m_kind.exchange.marker))) {
            return true;
        }
        if (ShowProgress()) {
            return false;
        }
    }
    return false;
}

/// Updates the progress window; true after a message when the user has cancelled.
bool CImportRun::ShowProgress() {
    m_progress->SetPosition(m_charactersRead);
    m_progress->Pump();
    if (m_progress->IsCancelled()) {
        ShowMessage(u"Import cancelled."_s);
    }
    return m_progress->IsCancelled();
}

bool CImportRun::ReadItems() {
    m_groups.Begin();
    bool whole = true;
    while (whole && ReadLine()) {
        const CCsvVerdict verdict = m_layout->ReadLine(m_line);
        if (verdict.line == ECsvLine::End) {
            break;
        }
        const bool isRecord = verdict.line == ECsvLine::Item || verdict.line == ECsvLine::Component;
        if (isRecord && !StoreItem(verdict.line)) {
            (void)m_groups.Commit();  // keep what was written before the failure, if possible
            ReportStoreFailure();
            return false;
        }
        if (verdict.line == ECsvLine::Error) {
            Report(verdict);
        }
        if (ShowProgress()) {
            whole = false;
        } else if (verdict.line == ECsvLine::Error && m_errors > kMostErrors) {
            ShowMessage(u"Too many errors. Import stopped."_s);
            whole = false;
        }
    }
    if (!m_groups.Commit()) {
        ReportStoreFailure();
        return false;
    }
    return whole;
}

bool CImportRun::StoreItem(ECsvLine line) {
    return (line != ECsvLine::Item || m_groups.MakeRoom()) &&
           m_groups.Note(m_layout->Store(m_policy));
}

void CImportRun::Report(const CCsvVerdict& verdict) {
    m_errors = verdict.isFatal ? kFatalErrors : m_errors + 1;
    const QLatin1StringView message(verdict.message);
    const bool namesCount = verdict.fieldCount >= 0;
    const bool hides = namesCount || m_kind.exchange.hidesProgress;
    if (hides) {
        m_progress->Hide();
    }
    ShowMessage(namesCount ? FormatText(message, {verdict.fieldCount, ShownLineNumber()})
                           : FormatText(message, {ShownLineNumber()}));
    if (hides) {
        m_progress->Show();
    }
}

void CImportRun::ReportStoreFailure() const {
    m_database.GetStore().ShowFailure(
        FormatText("Cannot add %s from line %d."_L1,
                   {QString::fromLatin1(m_kind.words.one), ShownLineNumber()}));
    ShowMessage(QString::fromLatin1(m_kind.exchange.afterFailure));
}

/// How many items the file may hold, as far as its size tells. A pipe has none; what it brings is
/// judged as the step runs.
qint64 MostItems(ECatalogueKind kind, const QString& path) {
    constexpr qint64 kShortestExercise = 8;
    constexpr qint64 kShortestFood = qint64{2} * kNutrientCount;  // "0," for each nutrient
    return QFileInfo(path).size() /
           (kind == ECatalogueKind::Exercises ? kShortestExercise : kShortestFood);
}
}  // namespace

QString ImportSummary(ECatalogueKind kind, EDuplicatePolicy policy, const CImportCounts& counts) {
    const QString plural = QString::fromLatin1(KindOf(kind).words.many);
    QString summary = FormatText("Imported %d %s."_L1, {counts.imported, plural});
    if (policy == EDuplicatePolicy::Overwrite && counts.replaced > 0) {
        summary += FormatText(" Replaced %d existing %s."_L1, {counts.replaced, plural});
    } else if (policy == EDuplicatePolicy::Skip && counts.skipped > 0) {
        summary += FormatText(" Skipped %d existing %s."_L1, {counts.skipped, plural});
    }
    return summary;
}

qint64 RoomForReplaced(CDatabase& database, ECatalogueKind kind, EDuplicatePolicy policy,
                       qint64 most) {
    const qint64 count = database.Catalogue().CountItems(kind);
    const qint64 replaced = std::min(count, most);
    if (policy != EDuplicatePolicy::Overwrite || replaced == 0) {
        return 0;
    }
    CItemDatabaseBase& items = database.Items(kind);
    return items.EstimateRoom({0, items.Count()}) * replaced / count;
}

bool ImportCatalogue(CDatabase& database, ECatalogueKind kind, EDuplicatePolicy policy) {
    const QString path = ChooseFileToOpen(
        CsvFileChoice(FormatText("Import %s"_L1, {QString::fromLatin1(KindOf(kind).words.many)})));
    return !path.isEmpty() && ImportCatalogueFile(database, kind, policy, path);
}

bool ImportCatalogueFile(CDatabase& database, ECatalogueKind kind, EDuplicatePolicy policy,
                         const QString& path) {
    CStep step(database.GetStore(),
               StepName("import"_L1, QString::fromLatin1(KindOf(kind).words.many)));
    return database.MayChangeMuch(step,
                                  RoomForReplaced(database, kind, policy, MostItems(kind, path))) &&
           CImportRun(database, kind, policy, path).Run();
}
