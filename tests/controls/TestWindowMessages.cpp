#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "controls/WindowMessages.h"

using namespace Qt::StringLiterals;

class TestWindowMessages : public QObject {
    Q_OBJECT
  private slots:
    void onlyYesIsYes_data() {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<bool>("answer");
        QTest::newRow("Yes") << Qt::Key_Y << true;
        QTest::newRow("No") << Qt::Key_N << false;
        QTest::newRow("Escape") << Qt::Key_Escape << false;
    }
    void onlyYesIsYes() {
        QFETCH(Qt::Key, key);
        QFETCH(bool, answer);
        CWindowMessages messages;
        QString shown;
        QTimer::singleShot(0, this, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            shown = box->windowTitle() + u'|' + box->text();
            if (key == Qt::Key_Escape) {
                QTest::keyClick(box, key);
            } else {
                box->button(key == Qt::Key_Y ? QMessageBox::Yes : QMessageBox::No)->click();
            }
        });
        QCOMPARE(AskYesNo(u"Delete '<b>'?"_s), answer);
        QCOMPARE(shown, u"Velmora|Delete '<b>'?"_s);
    }

    void boxesCarryTheirIcon_data() {
        QTest::addColumn<EMessageIcon>("icon");
        QTest::addColumn<QMessageBox::Icon>("expected");
        QTest::newRow("plain") << EMessageIcon::Plain << QMessageBox::NoIcon;
        QTest::newRow("stop") << EMessageIcon::Stop << QMessageBox::Critical;
        QTest::newRow("warning") << EMessageIcon::Warning << QMessageBox::Warning;
        QTest::newRow("information") << EMessageIcon::Information << QMessageBox::Information;
    }
    void boxesCarryTheirIcon() {
        QFETCH(EMessageIcon, icon);
        QFETCH(QMessageBox::Icon, expected);
        CWindowMessages messages;
        QMessageBox::Icon shown = QMessageBox::Question;
        QTimer::singleShot(0, this, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            shown = box->icon();
            box->accept();
        });
        ShowMessage(u"Food not found."_s, icon);
        QCOMPARE(shown, expected);
    }

    void savedFilesGetTheDefaultExtension_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("expected");
        QTest::newRow("bare") << "foods"
                              << "foods.csv";
        QTest::newRow("own extension") << "foods.txt"
                                       << "foods.txt";
        QTest::newRow("proposed") << ""
                                  << "Anna050103.csv";
    }
    void savedFilesGetTheDefaultExtension() {
        QFETCH(QString, typed);
        QFETCH(QString, expected);
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        QTemporaryDir folder;
        CWindowMessages messages;
        QTimer::singleShot(0, this, [&] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            dialog->setDirectory(folder.path());
            auto* field = dialog->findChild<QLineEdit*>();
            if (!typed.isEmpty()) {
                field->setText(typed);
            }
            QTest::keyClick(field, Qt::Key_Return);
        });
        const QString path = ChooseFileToSave({.title = u"Export"_s,
                                               .defaultExtension = u".csv"_s,
                                               .filterName = u"CSV file (*.csv)"_s,
                                               .initialName = u"Anna050103.csv"_s});
        QCOMPARE(path, folder.filePath(expected));
    }

    void waitCursorsNest() {
        CWindowMessages messages;
        {
            const CWaitCursor outer;
            { const CWaitCursor inner; }
            QVERIFY(QApplication::overrideCursor() != nullptr);
            QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
        }
        QVERIFY(QApplication::overrideCursor() == nullptr);
    }
};

QTEST_MAIN(TestWindowMessages)
#include "TestWindowMessages.moc"
