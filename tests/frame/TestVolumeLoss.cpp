// What the windows do when the volume is removed, replaced or written over beneath them.
#include "FrameFixture.h"

#include <QPlainTextEdit>

#include "controls/Dialog.h"
#include "controls/ProgressWindow.h"
#include "platform/LateProgress.h"
#include "support/DataRows.h"

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
        CShownFrame frame(*m_doc, kSwitchToWeight);
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

    void theFolderOfTheBackupsIsChosen() {
        CShownFrame frame(*m_doc);
        const CVolumeBackups& backups = Database().Backups();
        for (const auto& [chosen, used] :
             {std::pair(u"other"_s, u"other"_s), {u"."_s, u"v.db-backups"_s}}) {
            m_messages->chosenFile = QDir::cleanPath(Path(chosen));
            frame.RunCommand(kCommandBackupFolder);
            QCOMPARE(backups.GetFolder(), Path(used));
            QVERIFY(m_messages->Said().contains(Path(used)));
        }
    }

    // Nothing of what was open is written into the restored volume.
    void aBackupIsRestored() {
        m_messages->chosenFile = Path(u"b.db"_s);
        {
            CShownFrame frame(*m_doc);
            frame.RunCommand(kCommandBackUp);
            QVERIFY(m_messages->Said().startsWith(u"A backup was saved"_s));
            AddEntry(u"Newer"_s, QTime(9, 0));
            QVERIFY(frame.ShowView(kSwitchToWeight));
            m_messages->answer = false;
            frame.RunCommand(kCommandRestore);
            QTRY_COMPARE(m_messages->asked.size(), 1);
            QTRY_COMPARE(frame.ActiveCommand(), int(kSwitchToWeight));
            QCOMPARE(Stored().size(), 2);
            m_messages->answer = true;
            frame.RunCommand(kCommandRestore);
            QTRY_COMPARE(Stored(), QStringList{u"Tea 31 08:00 L"_s});
            QCOMPARE(Load(Path(u"v.db"_s)), Load(Path(u"b.db"_s)));
            QCOMPARE(frame.ActiveCommand(), int(kSwitchToWeight));
            QVERIFY(frame.ActiveView() != nullptr);
            QVERIFY(m_messages->Said().startsWith(u"The data of"_s));
            QVERIFY(Database().Backups().IsStarted());
        }
        QVERIFY(!Database().Backups().IsStarted());
    }

    // What is under way, such as a restore, needs the frame and its view.
    void theFrameClosesOnceTheProgressWindowIsGone() {
        CShownFrame frame(*m_doc);
        {
            CProgressWindow progress(u"Velmora: Restore"_s, &frame);
            frame.close();
            progress.Pump();
            QVERIFY(frame.isVisible());
        }
        QTRY_VERIFY(!frame.isVisible());
    }

    void damagedDataIsRepaired_data() { AddRows<bool>({{"record", false}, {"file", true}}); }
    void damagedDataIsRepaired() {
        const auto& [isOfFile] = DataRow<bool>();
        DamageEntry(Database().Weight(), 0);
        if (isOfFile) {
            m_doc.reset();
            QByteArray bytes = Load(Path(u"v.db"_s));
            bytes[39] = 9;  // the number of unused pages
            Save(Path(u"v.db"_s), bytes);
            Reopen();
        }
        QVERIFY(m_doc->SetActiveProfile(u"Ann"_s));
        CShownFrame frame(*m_doc, kSwitchToWeight);  // which is yet to be stored
        const QByteArray before = Load(Path(u"v.db"_s));
        QStringList seen;
        QTimer poll;
        connect(&poll, &QTimer::timeout, this, [&] {
            auto* dialog = qobject_cast<CDialog*>(QApplication::activeModalWidget());
            if (dialog != nullptr) {
                seen.append(Find<QPlainTextEdit>(*dialog, "findings")->toPlainText());
                seen.append(Find<QPushButton>(*dialog, "ok")->text());
                dialog->accept();
            }
        });
        poll.start(10);
        frame.RunCommand(kCommandCheckData);
        QTRY_VERIFY(!m_messages->shown.isEmpty());
        QVERIFY(m_messages->Said().contains(u"Ann_Weight: 0 kept, 1 lost.\n"_s));
        QVERIFY2(seen.value(0).contains(u"Ann_Weight: record "_s), qPrintable(seen.value(0)));
        QCOMPARE(seen.value(0).startsWith(u"The file is damaged"_s), isOfFile);
        QCOMPARE(seen.mid(1), QStringList{u"Repair"_s});
        const QStringList kept = QDir(m_folder->path()).entryList({u"v-kept-*"_s});
        QCOMPARE(Load(Path(kept.value(0))) == before, isOfFile);
        bool isViewOpen = false;
        m_messages->progress.onPump = [&] { isViewOpen |= frame.ActiveView() != nullptr; };
        const auto delay = std::exchange(CLateProgress::delayMs, -1);
        frame.RunCommand(kCommandCheckData);
        QTRY_COMPARE(m_messages->shown, QStringList{u"The data is sound."_s});
        CLateProgress::delayMs = delay;
        QVERIFY(m_messages->progress.pumps > 0 && !isViewOpen && frame.ActiveView() != nullptr);
        QCOMPARE(Stored(), QStringList{u"Tea 31 08:00 L"_s});
    }

    // Without a write nothing else would say why the lists are empty.
    void anOverwrittenVolumeIsToldAtTheFirstRead() {
        for (int i = 0; i < 100; ++i) {
            AddFood(1, u"Apple"_s, QString::number(i), i, {{u"1 cup"_s, 125}});
        }
        Reopen();  // and forget the pages
        QVERIFY(m_doc->SetActiveProfile(u"Ann"_s));
        CShownFrame frame(*m_doc);
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
