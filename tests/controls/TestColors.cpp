// Contrasts by hand: with the relative luminance L of a colour, white has (1.05) / (L + 0.05) and
// black (L + 0.05) / 0.05.
#include <QGuiApplication>

#include "controls/Colors.h"
#include "support/DataRows.h"

class TestColors : public QObject {
    Q_OBJECT
  private slots:
    void contrastIsThatOfTheGuidelines() {
        const std::tuple<QColor, QColor, double> rows[] = {
            {Qt::black, Qt::white, 21},
            // (0.2126 + 0.05) / 0.05
            {Qt::red, Qt::black, 5.25},
            // 1.05 / (0.7152 * 0.3515 + 0.05): 160 of 255 is 0.3515 of the light
            {{0, 160, 0}, Qt::white, 3.48},
        };
        for (const auto& [a, b, expected] : rows) {
            QVERIFY(std::abs(Contrast(a, b) - expected) < 0.005);
            QCOMPARE(Contrast(b, a), Contrast(a, b));
        }
    }

    void textStaysReadableOnAnyGround() {
        // 4.58 is the contrast of black and of white where both are equal.
        for (int grey = 0; grey < 256; ++grey) {
            const QColor ground(grey, 255 - grey, grey / 2);
            const QColor text = ReadableTextColor(ground);
            QVERIFY(Contrast(text, ground) >= 4.5);
            const QColor faint = FaintTextColor(text, ground);
            QVERIFY(Contrast(faint, ground) >= 4.5);
            QVERIFY(Contrast(faint, ground) <= Contrast(text, ground));
        }
        // Six tenths of black are enough on white, and none less than all of it on this green.
        QCOMPARE(FaintTextColor(Qt::black, Qt::white), QColor(102, 102, 102));
        QCOMPARE(FaintTextColor(Qt::black, QColor(0, 135, 0)), QColor(Qt::black));
    }

    void thePaletteGetsReadable_data() {
        AddRows<QColor, QColor, QColor, QColor, QColor>({
            {"of the style", {48, 140, 198}, Qt::white, Qt::white, Qt::black, Qt::blue},
            {"dark", {38, 79, 120}, Qt::white, {30, 30, 30}, Qt::white, Qt::blue},
            {"black on dark blue", {0, 0, 128}, Qt::black, Qt::white, Qt::black, Qt::yellow},
            {"a pale blue link", {0, 0, 128}, Qt::white, Qt::white, Qt::black, {41, 128, 185}},
        });
    }
    void thePaletteGetsReadable() {
        const auto& [highlight, selected, base, text, link] =
            DataRow<QColor, QColor, QColor, QColor, QColor>();
        QPalette palette;
        palette.setColor(QPalette::Link, link);
        palette.setColor(QPalette::Highlight, highlight);
        palette.setColor(QPalette::HighlightedText, selected);
        palette.setColor(QPalette::Base, base);
        palette.setColor(QPalette::Text, text);
        QColor hint = text;
        hint.setAlpha(128);
        palette.setColor(QPalette::PlaceholderText, hint);
        const QPalette readable = ReadablePalette(palette);
        for (const auto group : {QPalette::Active, QPalette::Inactive}) {
            QCOMPARE(readable.color(group, QPalette::HighlightedText), selected);
            const QColor ground = readable.color(group, QPalette::Highlight);
            QVERIFY(Contrast(selected, ground) >= 4.5);
            QCOMPARE(ground == highlight, Contrast(selected, highlight) >= 4.5);
            const QColor faint = readable.color(group, QPalette::PlaceholderText);
            QVERIFY(Contrast(MixedColor(faint, base, faint.alphaF()), base) >= 4.5);
            const QColor shown = readable.color(group, QPalette::Link);
            QVERIFY(Contrast(shown, base) >= 4.5);
            QCOMPARE(shown == link, Contrast(link, base) >= 4.5);
        }
        QCOMPARE(ReadablePalette(readable), readable);
    }
};

QTEST_MAIN(TestColors)
#include "TestColors.moc"
