// The windows of the report and of the purge.
#include "diary/DiaryFixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>

#include "diary/PurgeDialog.h"
#include "report/ReportCommand.h"
#include "report/ReportOptionsDialog.h"
#include "support/Clicks.h"
#include "support/Files.h"

class TestReportDialogs : public CDiaryTest {
    Q_OBJECT

  private slots:
    void init() { MakeDiary(); }
    void cleanup() { DropVolume(); }

    void aReportStaysOpenUntilItCanBeWritten() {
        AddEntry(u"Tea"_s, QTime(8, 0));
        m_messages->chosenFile = Path(u"report.csv"_s);
        OnDialog<CReportOptionsDialog>([this](CReportOptionsDialog& dialog) {
            QCOMPARE(dialog.GetRequest().from, QDate::currentDate());
            QCOMPARE(dialog.GetRequest().types, kReportAll);
            for (const char* box : {"diet", "weight", "exercises"}) {
                QTest::keyClick(Find<QCheckBox>(dialog, box), Qt::Key_Space);
            }
            Press(dialog, "ok");
            QCOMPARE(m_messages->Said(), u"Please select data type to export."_s);
            QTest::keyClick(Find<QCheckBox>(dialog, "diet"), Qt::Key_Space);
            Find<QDateEdit>(dialog, "to")->setDate(kDay);
            Find<QDateEdit>(dialog, "from")->setDate(kDay.addDays(1));
            Press(dialog, "ok");
            QCOMPARE(m_messages->Said(), u"Please select correct From date and To date."_s);
            Find<QDateEdit>(dialog, "from")->setDate(kDay);
            QTest::keyClick(Find<QComboBox>(dialog, "grouping"), Qt::Key_Down);
            Press(dialog, "ok");
        });
        RunReport(*m_doc, nullptr);
        QCOMPARE(m_messages->choices.value(0).initialName, u"Ann260531.csv"_s);
        QVERIFY(Load(m_messages->chosenFile)
                    .contains("Diet\r\nDate,Meal,Name,Serving,Energy (kcal),Protein (g)\r\n"
                              "31 May 2026,Lunch,Tea,1.00x1 serving,100.00,0.00\r\n"));
    }

    void aCancelledReportWritesNothing() {
        OnDialog<CReportOptionsDialog>([](CReportOptionsDialog& dialog) { dialog.reject(); });
        RunReport(*m_doc, nullptr);
        QVERIFY(m_messages->choices.isEmpty());
        OnDialog<CReportOptionsDialog>([](CReportOptionsDialog& dialog) { Press(dialog, "ok"); });
        RunReport(*m_doc, nullptr);  // and the file dialog is cancelled
        QVERIFY(m_messages->progress.captions.isEmpty());
    }

    void aPurgeReloadsBeforeItTellsTheTotals() {
        AddEntry(u"Tea"_s, QTime(8, 0));
        int reloads = 0;
        const auto reload = [&] {
            ++reloads;
            QVERIFY(m_messages->shown.isEmpty() && Stored().isEmpty());
        };
        OnDialog<CPurgeDialog>([](CPurgeDialog& dialog) { dialog.reject(); });
        RunPurge(*m_doc, nullptr, reload);
        QVERIFY(reloads == 0 && m_messages->asked.isEmpty());
        OnDialog<CPurgeDialog>([](CPurgeDialog& dialog) {
            const CPurgeRequest request = dialog.GetRequest();
            QVERIFY(!request.diet && !request.weights && !request.exercises);
            QCOMPARE(request.end, QDate::currentDate());
            Find<QDateEdit>(dialog, "begin")->setDate(kDay);
            Find<QDateEdit>(dialog, "end")->setDate(kDay);
            QTest::keyClick(Find<QCheckBox>(dialog, "diet"), Qt::Key_Space);
            Press(dialog, "ok");
        });
        RunPurge(*m_doc, nullptr, reload);
        QCOMPARE(reloads, 1);
        QCOMPARE(m_messages->Said(),
                 u"Total purged:\n\nDiet entries: 1\nWeight entries: 0\nExersises: 0\n\n"_s);
        QCOMPARE(m_messages->waits, 0);
    }
};

QTEST_MAIN(TestReportDialogs)
#include "TestReportDialogs.moc"
