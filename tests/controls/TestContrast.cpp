// Outlines and selected rows as they are drawn.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QStyleFactory>
#include <QTabBar>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

#include "controls/ReadableStyle.h"
#include "controls/ReportList.h"
#include "support/Contrasts.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int kAround = 8;

QPalette Dark() {
    QPalette palette(QColor(45, 45, 48));
    palette.setColor(QPalette::Base, QColor(30, 30, 30));
    palette.setColor(QPalette::Highlight, QColor(38, 79, 120));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return ReadablePalette(palette);
}
template <typename Widget>
QWidget* New() {
    return new Widget;
}
}  // namespace

class TestContrast : public QObject {
    Q_OBJECT
  private slots:
    void initTestCase() {
        QApplication::setStyle(QStyleFactory::create(u"fusion"_s));
        const QPalette style = QApplication::palette();
        QVERIFY(ReadablePalette(style) != style);
        CReadableStyle::Use();
        const QStyle* used = QApplication::style();
        CReadableStyle::Use();
        QCOMPARE(QApplication::style(), used);
        // None of its colours is fixed, so a desktop that changes them is followed.
        QCOMPARE(QApplication::palette().resolveMask(), QPalette::ResolveMask(0));
        m_light = QApplication::palette();
        QCOMPARE(ReadablePalette(m_light), m_light);
        QPalette dark = Dark();
        dark.setColor(QPalette::PlaceholderText, QColor(102, 102, 102));
        QApplication::style()->polish(dark);
        QCOMPARE(ReadablePalette(dark), dark);
    }
    void cleanup() { QApplication::setPalette({}); }

    // A line from the window through the middle of the control's left edge.
    void outlinesAreSeen() {
        QWidget* (*const controls[])() = {New<QLineEdit>,
                                          New<QComboBox>,
                                          New<QSpinBox>,
                                          New<QPlainTextEdit>,
                                          New<QPushButton>,
                                          New<QToolButton>,
                                          New<QCheckBox>,
                                          New<QRadioButton>,
                                          []() -> QWidget* { return new QSlider(Qt::Horizontal); }};
        for (const QPalette& palette : {m_light, Dark()}) {
            QApplication::setPalette(palette);
            for (const auto create : controls) {
                QWidget host;
                QWidget* control = create();
                control->setParent(&host);
                control->setGeometry(kAround, kAround, 60, 20);
                host.resize(60 + 2 * kAround, 20 + 2 * kAround);
                host.show();
                host.setFocus();
                const QImage image = host.grab().toImage();
                const QColor ground = image.pixelColor(0, 0);
                QCOMPARE(ground, palette.color(QPalette::Window));
                const QRect edge(0, image.rect().center().y(), kAround + 4, 1);
                QVERIFY2(Strongest(image, edge, ground) >= kVisibleContrast,
                         control->metaObject()->className());
            }
        }
    }

    // What the focus and the choice of a tab change, and the handle of a scroll bar.
    void focusTabsAndHandlesAreSeen() {
        for (const QPalette& palette : {m_light, Dark()}) {
            QApplication::setPalette(palette);
            QWidget host;
            QVBoxLayout rows(&host);
            auto* list = new CReportList(u"List"_s);
            list->SetColumn(u"Name"_s);
            list->SetRows({1, [](int, int) { return QString(); }});
            list->setSelectionMode(QAbstractItemView::NoSelection);
            list->setCurrentIndex(list->model()->index(0, 0));
            auto* tabs = new QTabBar;
            tabs->addTab(u" "_s);
            tabs->addTab(u" "_s);
            auto* handle = new QScrollBar;
            handle->setMinimumHeight(120);
            handle->setPageStep(100);  // its upper half
            QWidget* const controls[] = {list, tabs, new QCheckBox, new QRadioButton,
                                         new QToolButton};
            for (QWidget* control : controls) {
                rows.addWidget(control);
            }
            auto* field = new QLineEdit;
            rows.addWidget(field);
            rows.addWidget(handle, 0, Qt::AlignLeft);
            host.show();
            QVERIFY(QTest::qWaitForWindowActive(&host));
            host.setAttribute(Qt::WA_KeyboardFocusChange);
            for (QWidget* control : controls) {
                host.setFocus();
                const QImage before = control->grab().toImage();
                control->setFocus(Qt::TabFocusReason);
                QVERIFY2(Change(before, control->grab().toImage()) >= kVisibleContrast,
                         control->metaObject()->className());
            }
            field->setFocus(Qt::TabFocusReason);
            QVERIFY(Strongest(field->grab().toImage(), {0, field->height() / 2, 2, 1},
                              palette.color(QPalette::Window)) >= kVisibleContrast);
            host.setFocus();
            const QImage first = tabs->grab(tabs->tabRect(0)).toImage();
            const QRect edge(0, first.height() / 2, 4, 1);
            QVERIFY(Strongest(first, edge, palette.color(QPalette::Window)) >= kVisibleContrast);
            tabs->setCurrentIndex(1);
            QVERIFY(Change(first, tabs->grab(tabs->tabRect(0)).toImage()) >= kVisibleContrast);
            const QImage bar = handle->grab().toImage();
            const QPoint groove(bar.width() / 2, bar.height() * 3 / 4);
            QVERIFY(Strongest(bar, {groove.x(), bar.height() / 4, 1, bar.height() / 2},
                              bar.pixelColor(groove)) >= kVisibleContrast);
        }
    }

    // The strong colour is where the keyboard is.
    void selectedRowsAreSeen() {
        for (const QPalette& palette : {m_light, Dark()}) {
            QApplication::setPalette(palette);
            QWidget host;
            auto* list = new CReportList(u"List"_s, &host);
            auto* other = new QLineEdit(&host);
            list->resize(200, 150);
            list->SetColumn(u"Name"_s);
            list->SetRows({2, [](int, int) { return QString(); }});
            list->SelectRow(1);
            host.show();
            QVERIFY(QTest::qWaitForWindowActive(&host));
            for (QWidget* focused : {static_cast<QWidget*>(list), static_cast<QWidget*>(other)}) {
                focused->setFocus();
                const QImage image = list->viewport()->grab().toImage();
                const QRect row = list->visualRect(list->currentIndex());
                QVERIFY(Strongest(image, row, image.pixelColor(3, 3)) >= kVisibleContrast);
                QVERIFY(Strongest(image, row.translated(0, -row.height()), image.pixelColor(3, 3)) <
                        kVisibleContrast);
                const QColor back = image.pixelColor(row.bottomRight() - QPoint(3, 3));
                // The style shades it a little.
                const double shade = Contrast(back, palette.color(QPalette::Highlight));
                QCOMPARE(shade < 1.1, focused == list);
                QVERIFY(back != palette.color(QPalette::Base));
            }
        }
    }

  private:
    QPalette m_light;
};

QTEST_MAIN(TestContrast)
#include "TestContrast.moc"
