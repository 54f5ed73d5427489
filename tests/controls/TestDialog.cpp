#include <QFormLayout>
#include <QScreen>
#include <QScrollArea>
#include <QSignalSpy>
#include <QStyle>
#include <QVBoxLayout>

#include "controls/Dialog.h"
#include "controls/PickList.h"
#include "controls/ReportList.h"
#include "support/Clicks.h"

using namespace Qt::StringLiterals;

namespace {

const QStringList kNames = {u"Apple"_s, u"Apricot"_s, u"Banana"_s, u"Beetroot"_s};

/// A field, a pick list below it, a grid, and a field far below.
class CSampleDialog : public CDialog {
  public:
    CSampleDialog() : CDialog(u"Sample"_s, nullptr), m_pickList(OverlayParent()) {
        m_first = new QLineEdit;
        m_last = new QLineEdit;
        m_grid = new CGrid(EGridKind::Values, {u"Name"_s, u"Value"_s}, u"Values"_s);
        AddForm()->addRow(u"First:"_s, m_first);
        m_grid->SetRowCount(20);
        m_grid->setMinimumHeight(400);
        Content()->addWidget(m_grid);
        AddForm()->addRow(u"Last:"_s, m_last);
        connect(m_grid, &CGrid::LabelEditEnded, this,
                [this](int, int, const std::optional<QString>& text) {
                    m_story << u"edit "_s + text.value_or(u"dropped"_s);
                });
        resize(240, 320);
        Show(*this);
        m_first->setFocus();
    }

    QLineEdit* m_first;
    QLineEdit* m_last;
    CGrid* m_grid;
    CPickList m_pickList;
    bool m_agrees = true;
    QStringList m_story;

  protected:
    bool CloseOverlay() override {
        const bool wasOpen = m_pickList.IsOpen();
        m_pickList.Close();
        return wasOpen;
    }
    bool Confirm() override {
        m_story << u"confirm"_s;
        return m_agrees;
    }
};

}  // namespace

class TestDialog : public QObject {
    Q_OBJECT
  private slots:
    void okDeliversAPendingEditBeforeItDecides() {
        const QStringList delivered{u"edit 5"_s, u"confirm"_s};
        const std::tuple<const char*, bool, QStringList, bool> rows[] = {
            {"ok", true, delivered, true},
            {"ok", false, delivered, false},
            {"cancel", true, {u"edit dropped"_s}, true},
        };
        for (const auto& [button, agrees, story, closes] : rows) {
            CSampleDialog dialog;
            dialog.m_agrees = agrees;
            QVERIFY(TypeInto(dialog.m_grid, 0, 1, u"5"_s));
            Press(dialog, button);
            QCOMPARE(dialog.m_story, story);
            QCOMPARE(dialog.isHidden(), closes);
        }
    }

    void anOpenPickListIsAllThatCloses() {
        CSampleDialog dialog;
        QSignalSpy picked(&dialog.m_pickList, &CPickList::Picked);
        const std::function<void()> ways[] = {
            [&] { Press(dialog, "ok"); },
            [&] { Press(dialog, "cancel"); },
            [] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape); },
            [] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab); },
        };
        for (const auto& close : ways) {
            dialog.m_pickList.Open(dialog.m_first, {u"Name"_s, kNames}, u"Banana"_s);
            QVERIFY(dialog.m_first != QApplication::focusWidget());
            close();
            QVERIFY(!dialog.m_pickList.IsOpen());
            QVERIFY(dialog.isVisible());
            QCOMPARE(QApplication::focusWidget(), dialog.m_first);
        }
        QCOMPARE(picked.count(), 0);
        QCOMPARE(dialog.m_story, QStringList());
    }

    void aDoubleClickPicksFromOneListOnly() {
        CSampleDialog dialog;
        QStringList picked;
        connect(&dialog.m_pickList, &CPickList::Picked, &dialog, [&](const QString& row) {
            picked << row;
            dialog.m_pickList.Open(dialog.m_first, {u"Name"_s, kNames}, {});
        });
        dialog.m_pickList.Open(dialog.m_first, {u"Category"_s, {u"Fruit"_s, u"Roots"_s}}, {});
        auto* list = dialog.findChild<CReportList*>();
        const QPoint place = list->visualRect(list->model()->index(1, 0)).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
        QMouseEvent second(QEvent::MouseButtonDblClick, place, list->viewport()->mapToGlobal(place),
                           Qt::LeftButton, Qt::LeftButton, {});
        QApplication::sendEvent(list->viewport(), &second);
        QTest::mouseRelease(list->viewport(), Qt::LeftButton, {}, place);
        QCOMPARE(picked, QStringList{u"Roots"_s});
        QVERIFY(dialog.m_pickList.IsOpen());
        dialog.m_pickList.Close();
        QCOMPARE(QApplication::focusWidget(), dialog.m_first);
    }

    void thePickListCoversTheContentBelowItsField() {
        CSampleDialog dialog;
        dialog.m_pickList.Open(dialog.m_first, {u"Name"_s, kNames}, {});
        const auto bottomOf = [&](QWidget* widget) {
            return widget->mapTo(&dialog, widget->rect().bottomLeft()).y();
        };
        const auto topOf = [&](QWidget* widget) { return widget->mapTo(&dialog, QPoint()).y(); };
        QCOMPARE(topOf(&dialog.m_pickList), bottomOf(dialog.m_first) + 1);
        dialog.resize(400, 500);
        QCoreApplication::processEvents();
        const QWidget* content = dialog.findChild<QScrollArea*>()->viewport();
        QVERIFY(content->width() > 350 && content->width() < 400);  // beside the scroll bar
        QCOMPARE(dialog.m_pickList.width(), content->width());
        QVERIFY(bottomOf(&dialog.m_pickList) < topOf(Find<QPushButton>(dialog, "ok")));
        // A field at the very bottom leaves the list half the content.
        dialog.m_pickList.Open(dialog.m_last, {u"Name"_s, kNames}, {});
        QCOMPARE(dialog.m_pickList.y(), dialog.m_pickList.parentWidget()->height() / 2);
    }

    void aTallDialogLeavesRoomForItsTitle() {
        QWidget window;
        Show(window);
        for (QWidget* parent : {&window, static_cast<QWidget*>(nullptr)}) {
            CDialog dialog(u"Tall"_s, parent);
            auto* content = dialog.findChild<QScrollArea*>()->widget()->layout();
            content->addItem(new QSpacerItem(10, 5000));
            Show(dialog);
            const int title = parent == nullptr
                                  ? dialog.style()->pixelMetric(QStyle::PM_TitleBarHeight)
                                  : window.frameGeometry().height() - window.height();
            QVERIFY(title > 0);
            QCOMPARE(dialog.height(), dialog.screen()->availableGeometry().height() - title);
        }
    }

    void theFocusedFieldIsScrolledIntoSight() {
        CSampleDialog dialog;
        QVERIFY(!dialog.m_last->visibleRegion().contains(dialog.m_last->rect()));
        dialog.m_last->setFocus();
        QCOMPARE(dialog.m_last->visibleRegion(), QRegion(dialog.m_last->rect()));
        QVERIFY(Find<QPushButton>(dialog, "ok")->visibleRegion().boundingRect().height() > 0);
    }
};

QTEST_MAIN(TestDialog)
#include "TestDialog.moc"
