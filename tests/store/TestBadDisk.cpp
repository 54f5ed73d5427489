// Power lost after every file system call of real commands: what was confirmed is there, what was
// not is whole or absent.
#include <QDir>
#include <set>

#include "catalogue/exchange/CsvExchange.h"
#include "catalogue/items/CatalogueRules.h"
#include "store/RecordedDisk.h"
#include "support/CatalogueTest.h"
#include "support/Files.h"

using namespace Qt::StringLiterals;

namespace {
/// All records of all databases by name.
using CContents = std::map<QString, std::vector<PropertyList>>;

CContents ContentsOf(CRecordStore& store) {
    CContents contents;
    std::vector<CDatabaseInfo> databases;
    (void)store.EnumerateDatabases(0, databases);
    for (const CDatabaseInfo& info : databases) {
        CDatabaseHandle handle =
            store.OpenDatabase(info.name, info.sortPropertyId, info.type, true);
        std::vector<PropertyList>& records = contents[info.name];
        store.SeekToPosition(handle, 0);
        PropertyList properties;
        while (static_cast<int>(records.size()) < store.CountRecords(handle) &&
               store.ReadCurrent(handle, properties)) {
            records.push_back(properties);
        }
    }
    return contents;
}
}  // namespace

class TestPowerLoss : public CCatalogueTest {
    Q_OBJECT

  private slots:
    void initTestCase() { MakeVolume(); }

    void confirmedCommandsAreWholeAndOthersAreNot() {
        RecordCommands();
        CDisk disk;
        std::size_t confirmed = 0;
        std::set<CFolder> seen;  // since the last confirmed command
        int states = 0;
        for (std::size_t played = 0; played <= m_calls.size(); ++played) {
            for (; confirmed < m_ends.size() && m_ends[confirmed] <= played; ++confirmed) {
                seen.clear();
            }
            for (int draw = 0; draw < 8; ++draw) {
                const auto left = draw < 2 ? ELeft(draw) : ELeft(2 + draw % 2);
                const CFolder folder = disk.Left(left);
                if (!seen.insert(folder).second) {
                    continue;
                }
                ++states;
                const CContents found = Reopened(folder);
                const bool isBefore = found == m_contents[confirmed == 0 ? 0 : confirmed - 1];
                const bool isAfter = confirmed < m_ends.size() && found == m_contents[confirmed];
                const QString place =
                    u"after %1 calls and %2 commands, kind %3: "_s.arg(played).arg(confirmed).arg(
                        static_cast<int>(left));
                QVERIFY2(isBefore || isAfter, qPrintable(place + m_messages->Said()));
            }
            if (played < m_calls.size()) {
                disk.Play(m_calls[played]);
            }
        }
        QVERIFY(states > 500);
    }

  private:
    void RecordCommands() {
        QVERIFY(QDir().mkpath(Path(u"recorded"_s)));
        const QByteArray folder = QFile::encodeName(Path(u"recorded"_s));
        m_doc = std::make_unique<CVelmoraDoc>(Path(u"recorded/v.db"_s));
        CProfileSettings profile = CProfileSettings::ForNewProfile(QDate(2024, 1, 1));
        profile.user.name = u"Ann"_s;
        CDietEntry eaten;
        eaten.SetMoment(FirstMomentOf(QDate(2024, 1, 2)));
        eaten.SetName(u"Soup"_s);
        const std::function<bool()> commands[] = {
            [&] { return m_doc->OpenCatalogue(); },
            [&] { return AddCategory(Database(), u"Soups"_s) == 1; },
            [&] { return Database().Foods().Write(-1, MakeFood(1, u"Soup"_s, u"thin"_s)); },
            [&] { return Database().Foods().Write(-1, MakeFood(1, u"Soup"_s, u"thick"_s)); },
            [&] {
                return ImportCatalogueFile(Database(), kFoods, EDuplicatePolicy::Overwrite,
                                           QStringLiteral(VELMORA_STARTER_FOODS));
            },
            [&] { return m_doc->CreateProfile(profile); },
            [&] {
                return Database().Profiles().Open(u"Ann"_s, false) &&
                       Database().Diet().Write(-1, eaten);
            },
            [&] { return CCatalogueRules(Database(), kFoods).DeleteCategory(2); },
            [&] { return Database().DeleteItem(kFoods, 0); },
            [&] { return Database().Profiles().Delete(u"Ann"_s); },
        };
        recordedCalls = &m_calls;
        recordedFolder = folder.constData();
        for (const auto& command : commands) {
            QVERIFY2(command(), qPrintable(m_messages->Said()));
            m_ends.push_back(m_calls.size());
            const CContents contents = ContentsOf(Database().GetStore());
            QVERIFY(m_contents.empty() || contents != m_contents.back());
            m_contents.push_back(contents);
        }
        m_doc.reset();
        recordedFolder = nullptr;
        m_messages->TakeShown();
    }

    CContents Reopened(const CFolder& folder) {
        QDir place(Path(u"left"_s));
        place.removeRecursively();
        place.mkpath(u"."_s);
        for (const auto& [name, bytes] : folder) {
            Save(place.filePath(QFile::decodeName(name)), bytes);
        }
        CDatabase database(place.filePath(u"v.db"_s));
        return database.OpenCatalogue() ? ContentsOf(database.GetStore()) : CContents();
    }

    std::vector<CCall> m_calls;
    std::vector<std::size_t> m_ends;    ///< of each command: how many calls had been made
    std::vector<CContents> m_contents;  ///< after each command
};

QTEST_GUILESS_MAIN(TestPowerLoss)
#include "TestPowerLoss.moc"
