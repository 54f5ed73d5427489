// Outlines and signs as they are drawn.
#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QStyleFactory>
#include <QTest>
#include <QToolButton>

#include "controls/ReadableStyle.h"
#include "controls/ReportList.h"
#include "support/Contrasts.h"
#include "support/DataRows.h"

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

    void outlinesAreSeen_data() {
        AddRows<bool, QWidget* (*)()>({
            {"line edit", true, [] { return static_cast<QWidget*>(new QLineEdit); }},
            {"combo box", true, [] { return static_cast<QWidget*>(new QComboBox); }},
            {"spin box", true, [] { return static_cast<QWidget*>(new QSpinBox); }},
            {"text", true, [] { return static_cast<QWidget*>(new QPlainTextEdit); }},
            {"list", true, [] { return static_cast<QWidget*>(new CReportList(u"List"_s)); }},
            {"push button", true, [] { return static_cast<QWidget*>(new QPushButton); }},
            {"tool button", true, [] { return static_cast<QWidget*>(new QToolButton); }},
            {"check box", false, [] { return static_cast<QWidget*>(new QCheckBox); }},
            {"radio button", false, [] { return static_cast<QWidget*>(new QRadioButton); }},
            {"slider", false, [] { return static_cast<QWidget*>(new QSlider(Qt::Horizontal)); }},
        });
    }
    // A line from the window through the middle of the left edge, and where the control fills its
    // place the lines through the other edges.
    void outlinesAreSeen() {
        const auto& [fills, create] = DataRow<bool, QWidget* (*)()>();
        for (const QPalette& palette : {m_light, Dark()}) {
            QApplication::setPalette(palette);
            QWidget host;
            QWidget* control = create();
            control->setParent(&host);
            control->setGeometry(kAround, kAround, 60, fills ? 30 : 20);
            host.resize(60 + 2 * kAround, control->height() + 2 * kAround);
            host.show();
            host.setFocus();
            const QImage image = host.grab().toImage();
            const QColor ground = image.pixelColor(0, 0);
            QCOMPARE(ground, palette.color(QPalette::Window));
            const QPoint middle = image.rect().center();
            const int right = image.width() - 1;
            const int bottom = image.height() - 1;
            std::vector<QRect> lines = {{0, middle.y(), kAround + 4, 1}};
            if (fills) {
                lines.insert(lines.end(),
                             {QRect(right - kAround - 3, middle.y(), kAround + 4, 1),
                              QRect(middle.x(), 0, 1, kAround + 4),
                              QRect(middle.x(), bottom - kAround - 3, 1, kAround + 4)});
            }
            for (const QRect& line : lines) {
                const double seen = Strongest(image, line, ground);
                QVERIFY2(seen >= kVisibleContrast, qPrintable(QString::number(seen)));
            }
        }
    }

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
            }
        }
    }

    void signsAreSeen() {
        for (const QPalette& palette : {m_light, Dark()}) {
            QApplication::setPalette(palette);
            QCheckBox check;
            QRadioButton radio;
            for (QAbstractButton* button :
                 {static_cast<QAbstractButton*>(&check), static_cast<QAbstractButton*>(&radio)}) {
                button->resize(20, 20);
                const QColor ground = button->grab().toImage().pixelColor(8, 10);
                button->setChecked(true);
                const QImage image = button->grab().toImage();
                QVERIFY(Strongest(image, {5, 7, 7, 7}, ground) >= kVisibleContrast);
            }
            QComboBox combo;
            combo.resize(60, 30);
            const QImage image = combo.grab().toImage();
            const QRect arrow(38, 5, 18, 20);
            QVERIFY(Strongest(image, arrow, image.pixelColor(40, 7)) >= kVisibleContrast);
        }
    }

  private:
    QPalette m_light;
};

QTEST_MAIN(TestContrast)
#include "TestContrast.moc"
