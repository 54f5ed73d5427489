#include <QDir>
#include <QSettings>
#include <QTemporaryDir>

#include "platform/FileTime.h"
#include "platform/Messages.h"
#include "platform/Process.h"
#include "platform/RegistrySettings.h"
#include "platform/ShippedFiles.h"
#include "platform/VolumePlace.h"
#include "support/Files.h"

/// The small pieces of the platform: moments, message texts, settings, the volume's place.
class TestPlatform : public QObject {
    Q_OBJECT

  private slots:
    void momentsCountFromTheYear1601() {
        // Years 1601 to 1999 have 365 days and 96 leap days (1700, 1800 and 1900 have none).
        constexpr qint64 kDaysTo2000 = 399 * 365 + 96;
        const std::tuple<QDate, QTime, qint64> rows[] = {
            {{1601, 1, 1}, {0, 0}, 0},
            {{1601, 1, 1}, {23, 59, 59}, 863'990'000'000},
            {{2000, 2, 29}, {12, 0}, (kDaysTo2000 + 59) * 864'000'000'000 + 432'000'000'000},
            {{2000, 3, 1}, {0, 0}, (kDaysTo2000 + 60) * 864'000'000'000},
        };
        for (const auto& [date, time, moment] : rows) {
            QCOMPARE(ToFileTime(date, time), moment);
            QCOMPARE(ToFileTime(date, time.addMSecs(999)), moment);
            QCOMPARE(DateOf(moment), date);
            QCOMPARE(TimeOf(moment), time);
            QVERIFY(FirstMomentOf(date) <= moment && moment <= LastMomentOf(date));
            QCOMPARE(LastMomentOf(date) + 1, FirstMomentOf(date.addDays(1)));
        }
        QCOMPARE(ToFileTime(QDate(2001, 2, 29), QTime(1, 0)), 0);
        QCOMPARE(ToFileTime(QDate(2001, 2, 28), QTime()), 0);
        QVERIFY(!DateOf(-1).isValid() && !TimeOf(-1).isValid());
    }

    void placeholdersAreFilledInOrder() {
        QCOMPARE(FormatText("Food '%s, %s' in %d of %ld"_L1, {u"Milk"_s, u"%s%d"_s, 7, qint64{-5}}),
                 u"Food 'Milk, %s%d' in 7 of -5"_s);
        QCOMPARE(FormatText("%s [%d%%]"_L1, {u"Import"_s, 100}), u"Import [100%]"_s);
        QCOMPARE(FormatText("%s of %d and %l"_L1, {u"One"_s}), u"One of %d and %l"_s);
        QCOMPARE(FormatText("%%d stays, as does a last %"_L1, {}), u"%d stays, as does a last %"_s);
    }

    void settingsOutliveTheProgram() {
        const QTemporaryDir folder;
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path());
        QVERIFY(CRegistrySettings::Read() == (CRegistrySettings{-1, -1, -1, -1, {}}));
        CRegistrySettings{10, -20, 240, 320, u"Zoë, 2%"_s}.Write();
        const CRegistrySettings read = CRegistrySettings::Read();
        QCOMPARE((QList<int>{read.positionX, read.positionY, read.sizeX, read.sizeY}),
                 (QList<int>{10, -20, 240, 320}));
        QCOMPARE(read.userProfileName, u"Zoë, 2%"_s);
        const QString file = folder.filePath(u"Quillon/Velmora for PPC.conf"_s);
        // What stands there already is not written again; what is no number is as good as absent.
        Save(file, Load(file) + "; a note\n");
        read.Write();
        QVERIFY(Load(file).contains("; a note"));
        Save(file, Load(file).replace("=240", "=wide"));
        QCOMPARE(CRegistrySettings::Read().sizeX, -1);
        QCOMPARE(CRegistrySettings::Read().sizeY, 320);
    }

    void bytesThatAreNoTextAreShownByTheirNumbers() {
        const char* const words[] = {"\xFF", "plain", "z\x1F ~\x7F\x80", "\xFE"};
        QCOMPARE(FirstUndecodableWord(2, words), std::nullopt);
        QCOMPARE(FirstUndecodableWord(4, words), u"z\\x1f ~\\x7f\\x80"_s);
    }

    void theVolumeStandsBesideAPortableProgramOnly() {
        const char* const alone = "bin/VelmoraDb.db";
        const char* const ofTheUser = "home/velmora/VelmoraDb.db";
        // Files and folders under the prefix, and the volume of a program in its folder "bin".
        const std::pair<QStringList, const char*> rows[] = {
            {{}, ofTheUser},  // a folder that cannot be written
            {{u"bin/"_s}, alone},
            {{u"bin/"_s, u"share/velmora/"_s}, alone},  // the user's own data folder
            {{u"bin/"_s, u"share/velmora/starter-foods.csv"_s}, ofTheUser},
            {{u"bin/VelmoraDb.db"_s, u"share/velmora/starter-foods.csv"_s}, alone},
            {{u"bin/"_s, u"share/velmora/Velmora.htm"_s}, ofTheUser},
            {{u"bin/VelmoraDb.db -> gone"_s, u"share/velmora/starter-foods.csv"_s}, alone},
        };
        QCOMPARE(VolumePathBeside(u"velmora"_s), u"VelmoraDb.db"_s);
        for (const auto& [paths, volume] : rows) {
            const QTemporaryDir prefix;
            qputenv("XDG_DATA_HOME", prefix.filePath(u"home"_s).toUtf8());
            for (const QString& path : paths) {
                QVERIFY(QDir().mkpath(QFileInfo(prefix.filePath(path)).path()));
                if (const QStringList link = path.split(u" -> "_s); link.size() == 2) {
                    QVERIFY(QFile::link(link[1], prefix.filePath(link[0])));
                } else if (!path.endsWith(u'/')) {
                    Save(prefix.filePath(path), {});
                }
            }
            QCOMPARE(DefaultVolumePath(prefix.filePath(u"bin/velmora"_s)),
                     prefix.filePath(QLatin1StringView(volume)));
        }
    }

    void shippedFilesAreFoundUnderAnyPrefix() {
        const QTemporaryDir system;
        qputenv("XDG_DATA_DIRS", system.path().toUtf8());
        const QDir program(QCoreApplication::applicationDirPath());
        const QString name = u"shipped %1.txt"_s.arg(QCoreApplication::applicationPid());
        QCOMPARE(ShippedFile(name), QString());
        // The one sought first comes last.
        for (const QString& place :
             {system.filePath(u"velmora/"_s), program.filePath(u"../share/velmora/"_s),
              program.filePath(u"../docs/"_s), program.filePath(u"data/"_s)}) {
            QVERIFY(QDir().mkpath(place));
            Save(place + name, {});
            QCOMPARE(ShippedFile(name), QFileInfo(place + name).canonicalFilePath());
        }
        for (const QString& folder : {u"../share/velmora/"_s, u"../docs/"_s, u"data/"_s}) {
            QVERIFY(QFile::remove(program.filePath(folder + name)));
        }
        (void)program.rmpath(u"../share/velmora"_s);
    }
};

QTEST_GUILESS_MAIN(TestPlatform)
#include "TestPlatform.moc"
