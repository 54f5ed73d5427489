#include <QPainter>
#include <QTest>

#include "controls/PaintedIcons.h"
#include "support/Portrait.h"

class TestPaintedIcons : public QObject {
    Q_OBJECT

  private slots:
    void colourAndModeAreTheCallers() {
        QCOMPARE(CPortrait::InkOf(ProgramIcon()), u" icon a5b7"_s);
        const QIcon icon = PaintedIcon(EIcon::Add, Qt::red);
        QCOMPARE(icon.pixmap(64, 64).toImage().pixelColor(32, 32), QColor(Qt::red));
        const QImage off = icon.pixmap(64, 64, QIcon::Disabled).toImage();
        QCOMPARE(off.pixelColor(32, 16).alpha(), 89);  // 0.35 x 255
        QCOMPARE(PaintedIcon(EIcon::Add).pixmap(64, 64).toImage().pixelColor(32, 32),
                 QGuiApplication::palette().color(QPalette::ButtonText));
        // In the middle of a wide place and of a tall one, from its corner on.
        for (const QRect place : {QRect(3, 5, 64, 32), QRect(3, 5, 32, 64)}) {
            QImage image(80, 80, QImage::Format_ARGB32);
            image.fill(Qt::white);
            QPainter painter(&image);
            icon.paint(&painter, place);
            painter.setPen(Qt::blue);
            painter.drawPoint(0, 0);  // the painter is as it was
            painter.end();
            QCOMPARE(image.pixelColor(place.center() + QPoint(1, 1)), QColor(Qt::red));
            QCOMPARE(image.pixelColor(0, 0), QColor(Qt::blue));
        }
    }
};

QTEST_MAIN(TestPaintedIcons)
#include "TestPaintedIcons.moc"
