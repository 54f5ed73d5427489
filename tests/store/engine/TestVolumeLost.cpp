// A volume that somebody else removes, replaces or writes over while it is open.

#include <fcntl.h>
#include <sys/stat.h>

#include "store/engine/EngineFixture.h"
#include "store/engine/NamedValues.h"
#include "support/DataRows.h"

#include <QDir>
#include <array>
#include <cstdio>

using namespace Qt::StringLiterals;

class TestVolumeLost : public CEngineTest {
    Q_OBJECT

  private slots:
    void init() {
        MakeVolume();
        QVERIFY(Added(*m_engine, m_database, Numbered(0)) != 0);
        m_older = Load(m_path);
        QVERIFY(AddMany(*m_engine, m_database, 1, 1, kCount - 1));
    }

    void cleanup() { m_engine.reset(); }

    void nothingIsWrittenToALostVolume_data() {
        AddRows<EFate, EVolumeState>({
            {"removed", EFate::Removed, EVolumeState::Removed},
            {"replaced", EFate::Replaced, EVolumeState::Replaced},
            {"folder gone", EFate::FolderGone, EVolumeState::Removed},
            {"overwritten", EFate::Overwritten, EVolumeState::Overwritten},
            {"one byte changed", EFate::Patched, EVolumeState::Overwritten},
            {"overwritten, its time put back", EFate::OverwrittenUnseen, EVolumeState::Overwritten},
        });
    }

    void nothingIsWrittenToALostVolume() {
        const auto& [fate, state] = DataRow<EFate, EVolumeState>();
        Suffer(fate);
        const QByteArray put = Load(m_path);
        ObjectId record = 0;
        QCOMPARE(m_engine->AddRecord(m_database, Numbered(kCount), record), int(kErrorFileInvalid));
        QCOMPARE(m_engine->GetVolumeState(), state);
        QCOMPARE(m_engine->BeginGroup(), kOk);
        QCOMPARE(m_engine->AddRecord(m_database, Numbered(kCount), record), int(kErrorFileInvalid));
        QCOMPARE(m_engine->EndGroup(), int(kErrorFileInvalid));

        const QString copy = m_folder->filePath(u"copy.db"_s);
        if (fate == EFate::FolderGone) {
            QVERIFY(QDir(m_folder->path()).mkpath(u"."_s));
        }
        const bool isWhole = state != EVolumeState::Overwritten;
        CDatabaseInfo info;
        QCOMPARE(m_engine->FindDatabase(u"Numbers"_s, info),
                 isWhole ? kOk : int(kErrorFileInvalid));
        QCOMPARE(CountOf(*m_engine, m_database), isWhole ? kCount : -1);
        QCOMPARE(m_engine->SaveCopy(copy), isWhole ? kOk : int(kErrorFileInvalid));
        if (isWhole) {
            VerifyNumbers(*m_engine, m_database);
            CStorageEngine copied;
            QCOMPARE(copied.Mount(copy), kOk);
            VerifyNumbers(copied, m_database);
        } else {
            QCOMPARE(m_engine->ReadRecord(1, m_read), int(kErrorFileInvalid));
            QVERIFY(!QFile::exists(copy));
        }
        QCOMPARE(m_engine->Unmount(), kOk);
        QCOMPARE(Load(m_path), put);
    }

    // Pages that are not in memory any more are read from a file that is not ours.
    void whatWasOverwrittenIsNotRead() {
        (void)m_engine->Unmount();
        QCOMPARE(m_engine->Mount(m_path), kOk);
        QCOMPARE(CountOf(*m_engine, m_database), int(kCount));
        Suffer(EFate::Overwritten);
        QCOMPARE(m_engine->ReadRecord(kCount / 2, m_read), int(kErrorFileInvalid));
    }

    // What was in memory may be older than what was put back.
    void anOverwrittenVolumePutBackIsStillLost() {
        const QByteArray whole = Load(m_path);
        Suffer(EFate::OverwrittenUnseen);
        ObjectId record = 0;
        QCOMPARE(m_engine->AddRecord(m_database, Numbered(kCount), record), int(kErrorFileInvalid));
        OverwriteUnseen(whole);
        QCOMPARE(m_engine->AddRecord(m_database, Numbered(kCount), record), int(kErrorFileInvalid));
        CNamedValues values(m_engine->State());
        QCOMPARE(values.Write(0, u"name"_s, u"value"_s), int(kErrorFileInvalid));
        QCOMPARE(m_engine->Unmount(), kOk);
        QVERIFY(Load(m_path) == whole);
    }

    // The unit has reached the old file, but nobody is told that it is kept.
    void aUnitUnderWayIsGivenUp() {
        for (const auto& [fate, isUndone] : {std::pair{EFate::Replaced, false},
                                             {EFate::Overwritten, false},
                                             {EFate::Overwritten, true}}) {
            init();
            AddMuch();
            Suffer(fate);
            const QByteArray put = Load(m_path);
            QCOMPARE(isUndone ? m_engine->UndoGroup() : kErrorSuccess, kOk);
            QCOMPARE(m_engine->EndGroup(),
                     int(isUndone ? kErrorOperationAborted : kErrorFileInvalid));
            QCOMPARE(CountOf(*m_engine, m_database), fate == EFate::Replaced ? kCount : -1);
            (void)m_engine->Unmount();
            QCOMPARE(Load(m_path), put);
            QCOMPARE(m_engine->Mount(m_path), kOk);
            QCOMPARE(CountOf(*m_engine, m_database), 1);
        }
    }

    // Part of it is in the file by then.
    void aLargeUnitIsTakenBack() {
        const auto size = QFileInfo(m_path).size();
        AddMuch();
        QVERIFY(QFileInfo(m_path).size() > size && m_engine->UndoGroup() == kOk);
        QCOMPARE(m_engine->EndGroup(), int(kErrorOperationAborted));
        QCOMPARE(QFileInfo(m_path).size(), size);
        QVERIFY(Added(*m_engine, m_database, Numbered(kCount)) != 0);
    }

    void aCopyThatCannotBeMadeLeavesNothing() {
        const QString folder = m_folder->filePath(u"folder"_s);
        QVERIFY(QDir().mkdir(folder));
        QCOMPARE(m_engine->SaveCopy(folder), int(kErrorAccessDenied));
        QVERIFY(m_engine->SaveCopy(m_folder->filePath(u"none/copy.db"_s)) != kOk);
        const QString copy = m_folder->filePath(u"copy.db"_s);
        for (const char* left : {".part", ".part-1"}) {
            Save(copy + QLatin1StringView(left), left);  // by a program that was killed
        }
        {
            const CFileSizeLimit full(50'000);
            QCOMPARE(m_engine->SaveCopy(copy), int(kErrorDiskFull));
        }
        QCOMPARE(m_engine->BeginGroup(), kOk);
        QVERIFY(Added(*m_engine, m_database, Numbered(kCount)) != 0);
        QCOMPARE(m_engine->SaveCopy(copy), int(kErrorInvalidParameter));
        QCOMPARE(m_engine->EndGroup(), kOk);
        QCOMPARE(QDir(m_folder->path()).entryList({u"copy.db*"_s, u"*.part*"_s}),
                 (QStringList{u"copy.db.part"_s, u"copy.db.part-1"_s}));
        QCOMPARE(m_engine->SaveCopy(copy), kOk);
        QCOMPARE(Load(copy + u".part"_s) + Load(copy + u".part-1"_s), ".part.part-1");
    }

    void aCopyOfDamageIsMadeAndSaysSo() {
        (void)m_engine->Unmount();
        WriteInPlace(10 * 8192 + 4096, QByteArray(4096, '\0'));  // half a page of records
        QCOMPARE(m_engine->Mount(m_path), kOk);
        const QString copy = m_folder->filePath(u"copy.db"_s);
        QCOMPARE(m_engine->SaveCopy(copy), int(kErrorCorrupt));
        QCOMPARE(Load(copy).size(), Load(m_path).size());
    }

    void aVolumePutBackGoesOn() {
        QVERIFY(QFile::rename(m_path, m_path + u".away"_s));
        QVERIFY(Added(*m_engine, m_database, Numbered(kCount)) == 0);
        QVERIFY(QFile::rename(m_path + u".away"_s, m_path));
        QVERIFY(Added(*m_engine, m_database, Numbered(kCount)) != 0);
    }

    void anotherProgramsJournalIsLeftAlone() {
        Suffer(EFate::Replaced);
        CStorageEngine other;
        QCOMPARE(other.Mount(m_path), kOk);
        QCOMPARE(other.BeginGroup(), kOk);
        QVERIFY(Added(other, m_database, Numbered(1)) != 0);
        QCOMPARE(m_engine->Unmount(), kOk);
        QVERIFY(QFile::exists(m_path + u"-journal"_s));
        QCOMPARE(other.EndGroup(), kOk);
    }

  private:
    enum class EFate { Removed, Replaced, FolderGone, Overwritten, Patched, OverwrittenUnseen };
    static constexpr int kCount = 2000;

    void Suffer(EFate fate) {
        switch (fate) {
            case EFate::Removed:
                QVERIFY(QFile::remove(m_path));
                break;
            case EFate::Replaced:
                Save(m_path + u".new"_s, m_older);
                QCOMPARE(std::rename(qPrintable(m_path + u".new"_s), qPrintable(m_path)), 0);
                break;
            case EFate::FolderGone:
                QVERIFY(QDir(m_folder->path()).removeRecursively());
                break;
            case EFate::Overwritten:
                // Larger than it becomes, so that taking a unit back would cut it.
                Save(m_path, m_older + QByteArray(2000 * 8192, '\0'));
                break;
            case EFate::Patched:
                WriteInPlace(30'000, "x");
                break;
            case EFate::OverwrittenUnseen:
                // The identity is on the last page of the first ones.
                OverwriteUnseen(m_older);
        }
    }

    /// In an open group: more than the cache holds.
    void AddMuch() {
        QCOMPARE(m_engine->BeginGroup(), kOk);
        for (int i = 0; i < 1200; ++i) {
            Added(*m_engine, m_database, {qint32{i}, QByteArray(8000, 'n')});
        }
    }

    /// Puts the time back.
    void OverwriteUnseen(const QByteArray& bytes) {
        struct stat before {};
        QCOMPARE(::stat(qPrintable(m_path), &before), 0);
        WriteInPlace(0, bytes);
        const std::array<timespec, 2> times = {before.st_atim, before.st_mtim};
        QCOMPARE(::utimensat(AT_FDCWD, qPrintable(m_path), times.data(), 0), 0);
    }

    void WriteInPlace(qint64 offset, const QByteArray& bytes) {
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(offset));
        QCOMPARE(file.write(bytes), bytes.size());
    }

    void VerifyNumbers(CStorageEngine& engine, ObjectId database) {
        QCOMPARE(CountOf(engine, database), int(kCount));
        for (int position = 0; position < kCount; ++position) {
            ObjectId record = 0;
            QCOMPARE(engine.SeekToPosition(database, position, record), kOk);
            QCOMPARE(engine.ReadRecord(record, m_read), kOk);
            QVERIFY(m_read == Numbered(position));
        }
    }

    QByteArray m_older;
    PropertyList m_read;
};

QTEST_GUILESS_MAIN(TestVolumeLost)
#include "TestVolumeLost.moc"
