#include <QComboBox>
#include <QDateEdit>
#include <QHeaderView>
#include <QLabel>

#include "app/Plans.h"
#include "profile/TargetsDialog.h"
#include "profile/UserInformationDialog.h"
#include "support/Clicks.h"
#include "support/RecordingMessages.h"

using namespace Qt::StringLiterals;

/// The dialogs of a profile, by their keys and buttons.
class TestProfileDialogs : public QObject {
    Q_OBJECT

  private:
    const QStringList m_names = QStringList(kNutrientCount, u"a nutrient"_s);
    CRecordingMessages m_messages;

  private slots:
    void init() { m_messages.TakeShown(); }

    void planIsTypedAndRefusedUntilItIsRight() {
        CTargetsDialog dialog(FromEightyTo(74, 0.5), ThirtyYearOldMan(), {}, m_names, nullptr);
        Show(dialog);
        // 2236.548 kcal less 0.5 / 7 x 7777.78 = 555.56 kcal
        QCOMPARE(Find<QLineEdit>(dialog, "energy")->text(), u"1681"_s);
        auto* rate = Find<QLineEdit>(dialog, "rate");
        Replace(rate, u"1"_s);
        QTest::keyClick(rate, Qt::Key_Tab);
        // 6 kg at 1 kg a week
        QCOMPARE(Find<QDateEdit>(dialog, "goalDate")->date(), kStart.addDays(42));
        QCOMPARE(Find<QLabel>(dialog, "weeks")->text(), u"7 wks"_s);
        QCOMPARE(Find<QLineEdit>(dialog, "energy")->text(), u"1125"_s);
        Find<QDateEdit>(dialog, "goalDate")->setDate(kStart.addDays(60));
        QCOMPARE(rate->text(), u"0.7"_s);  // 6 x 7 / 60
        auto* goal = Find<QLineEdit>(dialog, "goalWeightMajor");
        Replace(goal, u"250.1"_s);
        Press(dialog, "ok");
        QVERIFY(dialog.isVisible());
        QCOMPARE(m_messages.Said(), u"Please enter correct goal weight."_s);
        Replace(goal, u"74"_s);
        Press(dialog, "ok");
        QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
        // 2236.548 - 0.1 x 7777.78 = 1458.77, and 55 % of 1459 kcal at 4 kcal a gram
        QCOMPARE(dialog.GetTargets().nutrients[0], 1459.0);
        QVERIFY(qAbs(dialog.GetTargets().nutrients[3] - 200.6125) < 1e-9);
    }

    void theTypesTargetsStandBesideTheTypedOnesUntilRecalc() {
        CTargets targets = FromEightyTo(74, 0.5);
        targets.dietType = kCustomDiet;
        targets.nutrients[9] = 800;
        CTargetsDialog dialog(targets, ThirtyYearOldMan(), {}, m_names, nullptr);
        Show(dialog);
        dialog.resize(240, 320);
        auto* grid = Find<CGrid>(dialog, "nutrients");
        const auto calcium = [grid] {
            QStringList texts;
            for (int column = 1; column < 3; ++column) {
                texts.append(grid->isColumnHidden(column) ? u"-"_s : grid->CellText(9, column));
            }
            return texts.join(u'|');
        };
        auto* dietType = Find<QComboBox>(dialog, "dietType");
        QCOMPARE(calcium(), u"800.00|-"_s);
        grid->setCurrentIndex(grid->model()->index(9, 1));
        QTest::keyClick(grid, Qt::Key_Right);
        QCOMPARE(grid->currentIndex().column(), 1);
        QTest::keyClick(dietType, Qt::Key_Up);
        QCOMPARE(calcium(), u"800.00|1000.00"_s);
        QVERIFY(grid->columnWidth(0) >= 60);
        QVERIFY(grid->header()->length() <= grid->viewport()->width());
        QTest::keyClick(dietType, Qt::Key_Down);
        QCOMPARE(calcium(), u"800.00|-"_s);
        QTest::keyClick(dietType, Qt::Key_Up);
        Press(dialog, "command65049");
        QCOMPARE(calcium(), u"1000.00|1000.00"_s);
        QVERIFY(TypeInto(grid, 9, 1, u"900"_s));
        Press(dialog, "ok");  // the open cell is delivered first
        QCOMPARE(dialog.GetTargets().dietType, kCustomDiet);
        QCOMPARE(dialog.GetTargets().nutrients[9], 900.0);
        QCOMPARE(dialog.GetTargets().nutrients[11], 400.0);
    }

    void aFreeNameAndAHeightAreNeeded() {
        CUserInformation user = ThirtyYearOldMan();
        user.name = u"  "_s;
        user.heightCm = 0;
        CPreferences preferences;
        preferences.heightUnit = EHeightUnit::Feet;
        CUserInformationDialog dialog(
            user, preferences,
            [](const QString& name) {
                return name == u"Bob"_s ? std::optional(u"Bob is there."_s) : std::nullopt;
            },
            nullptr);
        dialog.show();
        auto* name = Find<QLineEdit>(dialog, "name");
        Press(dialog, "ok");
        name->setText(u"Bob"_s);
        Find<QLineEdit>(dialog, "heightMajor")->setText(u"2000000000"_s);
        Press(dialog, "ok");
        Find<QLineEdit>(dialog, "heightMajor")->setText(u"5"_s);
        Find<QLineEdit>(dialog, "heightMinor")->setText(u"11"_s);
        Press(dialog, "ok");
        QCOMPARE(m_messages.Said(),
                 u"Please enter user name.|Please enter correct height.|Bob is there."_s);
        name->setText(u"Eve"_s);
        Press(dialog, "ok");
        QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
        QCOMPARE(dialog.GetUser().name, u"Eve"_s);
        QCOMPARE(dialog.GetUser().heightCm, 180.34);  // 5 x 30.48 + 11 x 2.54
    }
};

QTEST_MAIN(TestProfileDialogs)
#include "TestProfileDialogs.moc"
