// What a start does to files that it cannot use, and what it says about them.

#include <sys/mount.h>

#include "store/Database.h"
#include "store/engine/SqliteFile.h"
#include "support/DataRows.h"
#include "support/Files.h"
#include "support/RecordingMessages.h"

#include <QDir>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

class TestVolumeStart : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(u"volume.db"_s);
    }

    void aRefusalNamesTheFileAndTheReason_data() {
        const QByteArray volume = NewVolume();
        const auto with = [&volume](int place, char byte) {
            QByteArray changed = volume;
            changed[place] = byte;
            return changed;
        };
        const QString foreign = u"is not a data file of Velmora"_s;
        const QString damaged = u"is damaged"_s;
        AddRows<QByteArray, QString>({
            {"not ours", "Apple,raw\r\n", foreign},
            {"one byte", "x", foreign},
            {"one zero", QByteArray(1, '\0'), foreign},
            {"zeros", QByteArray(8192, '\0'), foreign},
            {"another program's", with(71, 'X'), foreign},
            {"newer", with(63, 2), u"was written by a newer version of Velmora"_s},
            {"older than the first", with(63, 0), foreign},
            {"another format to write", with(18, 2), damaged},
            {"another format to read", with(19, 2), damaged},
            {"cut after what names it", volume.first(72), damaged},
            {"cut inside its header", volume.first(95), damaged},
            {"cut", volume.first(30'000), damaged},
        });
    }

    void aRefusalNamesTheFileAndTheReason() {
        const auto& [contents, reason] = DataRow<QByteArray, QString>();
        Save(m_path, contents);
        QCOMPARE(Refusal(), u"The file '"_s + m_path + u"' "_s + reason + u'.');
        QCOMPARE(Load(m_path), contents);
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{u"volume.db"_s});
    }

    void whatIsInUseOrNoFileIsRefusedWithItsReason() {
        CDatabase first(m_path);
        QVERIFY(first.OpenCatalogue());
        QVERIFY(Refusal().endsWith(u"' is in use by another program."_s));
        m_path = m_folder->path();
        QVERIFY(Refusal().endsWith(u"' cannot be read and written."_s));
    }

    // The first disk has no room for an empty volume, the second none for its catalogue.
    void aStartWithoutRoomLeavesNothingBehind() {
        const QByteArray disk = m_folder->path().toLocal8Bit();
        for (const char* size : {"size=20k", "size=60k"}) {
            if (::mount("tmpfs", disk.constData(), "tmpfs", 0, size) != 0) {
                QSKIP("a file system of one's own can only be mounted by root");
            }
            const auto unmount = qScopeGuard([&] { ::umount2(disk.constData(), MNT_DETACH); });
            m_path = m_folder->filePath(u"new/folder/volume.db"_s);
            QVERIFY(Refusal().startsWith(u"There is no room on the disk"_s));
            QVERIFY(QDir(m_folder->path()).isEmpty());
        }
    }

    void whatWasThereBeforeAFailedStartStays() {
        QVERIFY(QDir(m_folder->path()).mkdir(u"new"_s));
        Save(m_folder->filePath(u"new/volume.db"_s), {});
        m_path = m_folder->filePath(u"new/volume.db"_s);
        const CFileSizeLimit limit(20'000);
        QVERIFY(Refusal().startsWith(u"There is no room on the disk"_s));
        QVERIFY(QFile::exists(m_path));
    }

  private:
    /// Empty when the catalogue opened.
    QString Refusal() {
        CDatabase database(m_path);
        return database.OpenCatalogue() ? QString() : database.GetRefusal();
    }

    QByteArray NewVolume() {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"volume.db"_s);
        CDatabase(path).OpenCatalogue();
        return Load(path);
    }

    CRecordingMessages m_messages;
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

QTEST_GUILESS_MAIN(TestVolumeStart)
#include "TestVolumeStart.moc"
