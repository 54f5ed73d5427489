// What the windows do when the volume is removed, replaced or written over beneath them.
#include "FrameFixture.h"

#include "controls/Dialog.h"
#include "support/Clicks.h"
#include "support/DataRows.h"
#include "support/Files.h"

class TestVolumeLoss : public CFrameTest {
    Q_OBJECT

  private slots:
    void init() { FillEveryView(); }

    void aCopyIsSavedAndChecked() {
        QVERIFY(QFile::remove(Path(u"v.db"_s)));
        m_messages->chosenAction = u"Save a copy..."_s;
        m_messages->chosenFile = Path(u"v.db"_s);  // back to where it was
        QVERIFY(!Database().Weight().Write(-1, MakeWeight(kDay, QTime(7, 0), 81)));
        QCOMPARE(m_messages->choices.first().initialName, u"v-copy.db"_s);
        QVERIFY(m_messages->shown.contains(
            u"A copy was saved as '%1' and checked."_s.arg(Path(u"v.db"_s))));
        Reopen();
        QVERIFY(m_doc->SetActiveProfile(u"Ann"_s));
        QCOMPARE(Database().Weight().Count(), 1);
        QCOMPARE(Stored(), QStringList{u"Tea 31 08:00 L"_s});
        // To a folder that is not there.
        QVERIFY(QFile::remove(Path(u"v.db"_s)));
        m_messages->TakeShown();
        m_messages->chosenAction = u"Save a copy..."_s;
        m_messages->chosenFile = Path(u"none/v.db"_s);
        QVERIFY(!Database().Weight().Delete(0));
        QCOMPARE(m_messages->Said(),
                 u"Cannot delete record. Error=1006|Cannot save a copy as '%1' (error# 5)."_s.arg(
                     Path(u"none/v.db"_s)));
    }

    void theFileThatIsThereNowIsOpened_data() {
        AddRows<bool>({{"replaced", false}, {"overwritten", true}});
    }

    void theFileThatIsThereNowIsOpened() {
        const auto& [isInPlace] = DataRow<bool>();
        const QByteArray older = Load(Path(u"v.db"_s));
        AddEntry(u"Newer"_s, QTime(9, 0));
        CDietFrame frame(*m_doc);
        Show(frame);
        QVERIFY(frame.ShowView(kSwitchToWeight));
        OnDialog<CDialog>([&](CDialog& dialog) {
            if (!isInPlace) {
                QVERIFY(QFile::remove(Path(u"v.db"_s)));
            }
            Save(Path(u"v.db"_s), older);
            m_messages->chosenAction = u"Open the new file"_s;
            dialog.accept();
            // The frame closes the dialog.
            QTRY_VERIFY(!dialog.isVisible());
        });
        Trigger(frame, u"Add weight..."_s);
        QTRY_COMPARE(Stored(), QStringList{u"Tea 31 08:00 L"_s});
        QCOMPARE(frame.ActiveCommand(), int(kSwitchToWeight));
        QVERIFY(frame.ActiveView() != nullptr);
        QCOMPARE(frame.windowTitle(), u"Velmora:Ann"_s);
        QCOMPARE(Database().Weight().Count(), 1);
        QVERIFY(Database().Weight().Write(-1, MakeWeight(kDay, QTime(7, 0), 81)));
    }

    // Without a write nothing else would say why the lists are empty.
    void anOverwrittenVolumeIsToldAtTheFirstRead() {
        for (int i = 0; i < 100; ++i) {
            AddFood(1, u"Apple"_s, QString::number(i), i, {{u"1 cup"_s, 125}});
        }
        Reopen();  // and forget the pages
        QVERIFY(m_doc->SetActiveProfile(u"Ann"_s));
        CDietFrame frame(*m_doc);
        Show(frame);
        Save(Path(u"v.db"_s), Load(Path(u"v.db"_s)).first(20'000));
        QCOMPARE(m_messages->Said(), QString());
        CFoodItem food;
        QVERIFY(!Database().Foods().Read(99, food));
        QTRY_VERIFY(!m_messages->shown.isEmpty());
        QCOMPARE(m_messages->Said(), u"The data file cannot be read any more."_s);
        QVERIFY(m_messages->details.last().startsWith(u"Another program wrote into the file"_s));
        QCOMPARE(m_messages->offered, QStringList{u"Open the new file"_s});
    }
};

QTEST_MAIN(TestVolumeLoss)
#include "TestVolumeLoss.moc"
