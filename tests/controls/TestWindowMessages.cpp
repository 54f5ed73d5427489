#include <QFileDialog>
#include <QMessageBox>
#include <QTemporaryDir>

#include "controls/WindowMessages.h"
#include "support/Clicks.h"

class TestWindowMessages : public QObject {
    Q_OBJECT
  private slots:
    // Return gives the proposed answer.
    void onlyYesIsYes() {
        CWindowMessages messages;
        const std::tuple<QMessageBox::StandardButton, Qt::Key, EAnswer, bool> rows[] = {
            {QMessageBox::Yes, {}, EAnswer::No, true}, {QMessageBox::No, {}, EAnswer::Yes, false},
            {{}, Qt::Key_Escape, EAnswer::Yes, false}, {{}, Qt::Key_Return, EAnswer::Yes, true},
            {{}, Qt::Key_Return, EAnswer::No, false},
        };
        for (const auto& [button, key, proposed, isYes] : rows) {
            OnDialog<QMessageBox>([button = button, key = key](QMessageBox& box) {
                QCOMPARE(box.windowTitle() + u'|' + box.text(), u"Velmora|Delete '<b>'?"_s);
                if (button == QMessageBox::NoButton) {
                    QTest::keyClick(&box, key);
                } else {
                    box.button(button)->click();
                }
            });
            QCOMPARE(AskYesNo(u"Delete '<b>'?"_s, proposed), isYes);
        }
    }

    // Told apart from the text, neither of them markup; an action that is done closes the box.
    void aMessageMayHaveADetailAndActions() {
        CWindowMessages messages;
        QStringList done;
        const CMessage message{u"Cannot add food."_s,
                               EMessageIcon::Stop,
                               u"The file '<b>' is gone."_s,
                               {{u"Save"_s,
                                 [&done] {
                                     done.append(u"saved"_s);
                                     return false;
                                 }},
                                {u"Open"_s, [&done] {
                                     done.append(u"opened"_s);
                                     return true;
                                 }}}};
        const auto click = [](const QString& text) {
            OnDialog<QMessageBox>([text](QMessageBox& box) {
                QCOMPARE(box.text() + u'|' + box.informativeText(),
                         u"Cannot add food.|The file '<b>' is gone."_s);
                QCOMPARE(box.icon(), QMessageBox::Critical);
                for (QAbstractButton* button : box.buttons()) {
                    if (button->text() == text) {
                        button->click();
                    }
                }
                for (const auto* label : box.findChildren<QLabel*>()) {
                    QCOMPARE(label->textFormat(), Qt::PlainText);
                }
            });
        };
        click(u"Save"_s);
        QTimer::singleShot(100, [&click] { click(u"Open"_s); });
        ShowMessage(message);
        QCOMPARE(done, (QStringList{u"saved"_s, u"opened"_s}));
        OnDialog<QMessageBox>([](QMessageBox& box) {
            QTest::keyClick(&box, Qt::Key_Escape);
            QVERIFY(!box.isVisible());
        });
        ShowMessage(message);
        QCOMPARE(done.size(), 2);
    }

    void savedFilesGetTheDefaultExtension() {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        const QTemporaryDir folder;
        CWindowMessages messages;
        const std::pair<QString, QString> rows[] = {
            {u"foods"_s, u"foods.csv"_s},
            {u"foods.txt"_s, u"foods.txt"_s},
            {u""_s, u"Anna050103.csv"_s},  // the proposed name
        };
        for (const auto& row : rows) {
            OnDialog<QFileDialog>([&](QFileDialog& dialog) {
                dialog.setDirectory(folder.path());
                auto* field = dialog.findChild<QLineEdit*>();
                if (!row.first.isEmpty()) {
                    field->setText(row.first);
                }
                QTest::keyClick(field, Qt::Key_Return);
            });
            const QString path = ChooseFileToSave({.title = u"Export"_s,
                                                   .defaultExtension = u".csv"_s,
                                                   .filterName = u"CSV file (*.csv)"_s,
                                                   .initialName = u"Anna050103.csv"_s});
            QCOMPARE(path, folder.filePath(row.second));
        }
        OnDialog<QFileDialog>([&](QFileDialog& dialog) {
            dialog.setDirectory(folder.path());
            dialog.findChild<QLineEdit*>()->setText(folder.path());
            QTest::keyClick(dialog.findChild<QLineEdit*>(), Qt::Key_Return);
        });
        QCOMPARE(ChooseFolder(u"Import"_s), folder.path());
    }

    void waitCursorsNest() {
        CWindowMessages messages;
        {
            const CWaitCursor outer;
            { const CWaitCursor inner; }
            QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
        }
        QVERIFY(QApplication::overrideCursor() == nullptr);
    }
};

QTEST_MAIN(TestWindowMessages)
#include "TestWindowMessages.moc"
