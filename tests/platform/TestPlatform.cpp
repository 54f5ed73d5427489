#include <QDir>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include "platform/FileTime.h"
#include "platform/Messages.h"
#include "platform/RegistrySettings.h"
#include "platform/VolumePlace.h"

using namespace Qt::StringLiterals;

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
        QCOMPARE(CRegistrySettings::Read().sizeY, -1);
        CRegistrySettings{10, -20, 240, 320, u"Zoë, 2%"_s}.Write();
        const CRegistrySettings read = CRegistrySettings::Read();
        QCOMPARE((QList<int>{read.positionX, read.positionY, read.sizeX, read.sizeY}),
                 (QList<int>{10, -20, 240, 320}));
        QCOMPARE(read.userProfileName, u"Zoë, 2%"_s);
        QVERIFY(QDir(folder.path()).exists(u"Quillon/Velmora for PPC.conf"_s));
    }

    void theVolumeStandsBesideTheProgramWhereItCan() {
        const QTemporaryDir folder;
        qputenv("XDG_DATA_HOME", folder.path().toUtf8());
        QCOMPARE(VolumePathBeside(u"velmora"_s), u"VelmoraDb.db"_s);
        QCOMPARE(DefaultVolumePath(folder.filePath(u"velmora"_s)),
                 folder.filePath(u"VelmoraDb.db"_s));
        QCOMPARE(DefaultVolumePath(folder.filePath(u"missing/velmora"_s)),
                 folder.filePath(u"velmora/VelmoraDb.db"_s));
    }
};

QTEST_GUILESS_MAIN(TestPlatform)
#include "TestPlatform.moc"
