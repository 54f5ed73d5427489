// What the windows do when the volume is removed, replaced or written over beneath them.
#include "FrameFixture.h"

#include <QSpinBox>

#include "app/FrameCommands.h"
#include "controls/Dialog.h"
#include "controls/ReportList.h"
#include "support/Clicks.h"
#include "support/DataRows.h"
#include "support/Files.h"

class TestVolumeLoss : public CFrameTest {
    Q_OBJECT

  private slots:
    void init() { FillEveryView(); }

    void aDialogKeepsWhatCannotBeStored_data() {
        AddRows<int, QString, QString, QString, QString>({
            {"weight", kSwitchToWeight, u"Add weight..."_s, u"weightMajor"_s, u"81"_s,
             u"Cannot add weight (error# 1006).|Cannot add weight."_s},
            {"weight edited", kSwitchToWeight, u"Edit weight..."_s, u"weightMajor"_s, u"81"_s,
             u"Cannot add weight (error# 1006).|Cannot add weight."_s},
            {"entry", kSwitchToDiet, u"Edit entry..."_s, u""_s, u""_s,
             u"Cannot add to diet (error# 1006).|Cannot add entry."_s},
            {"exercise done", kSwitchToExercises, u"Edit exercise..."_s, u"energy"_s, u"120"_s,
             u"Cannot add exercise (error# 1006)."_s},
            {"food", kSwitchToFoods, u"Edit food..."_s, u"name"_s, u"Pear"_s,
             u"Cannot add food (error# 1006)."_s},
            {"menu", kSwitchToMenus, u"Edit menu..."_s, u"name"_s, u"Brunch"_s,
             u"Cannot add menu (error# 1006).|Cannot update menu."_s},
            {"library", kSwitchToExlib, u"Edit exercise..."_s, u"energy"_s, u"6"_s,
             u"Cannot add exercise (error# 1006)."_s},
            {"preferences", kSwitchToDiet, u"Preferences..."_s, u""_s, u""_s,
             u"Cannot save user profile (error# 1006)."_s},
        });
    }

    void aDialogKeepsWhatCannotBeStored() {
        const auto& [view, command, field, text, said] =
            DataRow<int, QString, QString, QString, QString>();
        CDietFrame frame(*m_doc);
        Show(frame);
        QVERIFY(frame.ShowView(view));
        for (auto* list : frame.ActiveView()->findChildren<CReportList*>()) {
            list->SelectRow(0);
        }
        const QByteArray before = Load(Path(u"v.db"_s));
        bool wasKept = false;
        const auto tryAgain = [&](CDialog& dialog) {
            auto* edit = Find<QLineEdit>(dialog, qPrintable(field));
            wasKept = field.isEmpty() || edit->text() == text;
            QCOMPARE(m_messages->Said(), said);
            QVERIFY(m_messages->details.first().contains(u"was removed or renamed"_s));
            QCOMPARE(m_messages->offered.first(), u"Save a copy..."_s);
            QVERIFY(QFile::rename(Path(u"away.db"_s), Path(u"v.db"_s)));
            QCOMPARE(Load(Path(u"v.db"_s)), before);
            dialog.accept();
        };
        OnNextDialog([&](CDialog& dialog) {
            if (auto* spin = Find<QSpinBox>(dialog, "decimals"); spin != nullptr) {
                spin->setValue(0);
            }
            if (!field.isEmpty()) {
                auto* edit = Find<QLineEdit>(dialog, qPrintable(field));
                edit->setText(text);
                emit edit->textEdited(text);
            }
            QVERIFY(QFile::rename(Path(u"v.db"_s), Path(u"away.db"_s)));
            dialog.accept();
            OnNextDialog(tryAgain);
        });
        Trigger(frame, command);
        QVERIFY(wasKept);
        QCOMPARE(m_messages->Said(), QString());
        QVERIFY(Load(Path(u"v.db"_s)) != before);
    }

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
        QCOMPARE(m_doc->GetActiveProfile(), u"Ann"_s);
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

  private:
    // Unlike OnDialog leaves it open: it may be the same one again, or another in its place.
    static void OnNextDialog(const std::function<void(CDialog&)>& act) {
        QTimer::singleShot(0, [act] {
            auto* dialog = qobject_cast<CDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr) {
                OnNextDialog(act);
            } else {
                act(*dialog);
            }
        });
    }
};

QTEST_MAIN(TestVolumeLoss)
#include "TestVolumeLoss.moc"
