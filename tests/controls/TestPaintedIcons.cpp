#include <QPainter>
#include <QTest>

#include "controls/PaintedIcons.h"
#include "support/DataRows.h"

using namespace Qt::StringLiterals;

class TestPaintedIcons : public QObject {
    Q_OBJECT

  private:
    /// How much of each of the 16 rows and columns is covered, in percent of a unit; white counts
    /// twice.
    static QString InkOf(const QIcon& icon) {
        constexpr int kScale = 8;
        const QImage image = icon.pixmap(16 * kScale, 16 * kScale).toImage();
        std::array<double, 32> ink{};
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor color = image.pixelColor(x, y);
                const double covered = color.alphaF() * (1 + color.redF());
                ink[y / kScale] += covered;
                ink[16 + x / kScale] += covered;
            }
        }
        QStringList texts;
        for (const double covered : ink) {
            texts.append(QString::number(std::lround(covered * 100 / (kScale * kScale))));
        }
        return texts.join(u' ');
    }

  private slots:
    void eachIconHasItsShape_data() {
        AddRows<int, QString>({
            {"apple", int(EIcon::Apple),
             u"0 107 151 151 660 822 328 279 271 275 291 311 334 640 543 0 0 12 507 573 366 293 "
             "283 322 514 526 307 366 573 507 12 0"_s},
            {"card", int(EIcon::Card),
             u"213 1135 452 280 707 707 280 707 707 280 707 707 280 452 1134 213 0 0 986 1092 "
             "321 680 700 700 700 700 680 321 1092 988 0 0"_s},
            {"pot", int(EIcon::Pot),
             u"27 267 280 280 154 276 1427 497 280 280 280 280 281 758 538 0 14 134 251 807 403 "
             "532 532 280 280 532 532 403 807 251 134 14"_s},
            {"add", int(EIcon::Add),
             u"0 14 134 140 140 140 140 889 889 140 140 140 140 134 14 0 0 14 134 140 140 140 "
             "140 889 889 140 140 140 140 134 14 0"_s},
            {"delete", int(EIcon::Delete),
             u"0 375 199 919 1001 282 436 562 562 562 562 549 309 396 836 153 0 77 150 796 907 "
             "303 923 695 695 923 303 908 795 150 77 0"_s},
            {"new folder", int(EIcon::NewFolder),
             u"0 0 395 539 801 763 280 280 231 273 280 609 1053 672 134 14 213 1134 452 280 280 "
             "288 364 325 231 273 280 609 609 333 564 88"_s},
            {"find", int(EIcon::Find),
             u"0 239 580 364 300 283 280 283 300 377 739 437 198 193 82 0 0 239 580 364 300 283 "
             "280 283 300 377 739 437 198 193 82 0"_s},
            {"find next", int(EIcon::FindNext),
             u"35 542 599 450 424 583 760 626 638 656 228 82 0 777 777 0 35 465 537 450 424 420 "
             "424 450 651 796 451 424 714 651 202 84"_s},
            {"program", -1,
             u"617 1518 1797 1885 1937 2464 2597 2646 2655 2636 2589 2519 2414 2205 1570 617 "
             "617 1514 1781 2242 2439 2523 2530 2529 2693 2682 2523 2439 2242 1781 1514 617"_s},
        });
    }
    void eachIconHasItsShape() {
        const auto& [icon, ink] = DataRow<int, QString>();
        QCOMPARE(InkOf(icon < 0 ? ProgramIcon() : PaintedIcon(EIcon(icon), Qt::black)), ink);
    }

    void colourAndModeAreTheCallers() {
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
