#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "app/TargetsDialog.h"
#include "app/UserInformationDialog.h"
#include "controls/Grid.h"
#include "support/RecordingMessages.h"

using namespace Qt::StringLiterals;

namespace {
const QDate kStart(2026, 6, 1);

CUserInformation Man() {
    return {.name = u"Ann"_s, .isMale = true, .birthDate = QDate(1996, 6, 1), .heightCm = 180};
}

CTargets Plan() {
    return {.startDate = kStart,
            .startWeightKg = 80,
            .goalDate = kStart.addDays(84),
            .goalWeightKg = 74,
            .rateKgPerWeek = 0.5,
            .dietType = 3};
}

QStringList Names() {
    QStringList names;
    for (int i = 0; i < kNutrientCount; ++i) {
        names.append(QLatin1StringView(NutrientNamesOf(i).displayName));
    }
    return names;
}

void Type(QWidget& dialog, const QString& field, const QString& text) {
    auto* edit = dialog.findChild<QLineEdit*>(field);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, text);
    QTest::keyClick(edit, Qt::Key_Return);
}

void ClickOk(QWidget& dialog) {
    QTest::mouseClick(dialog.findChild<QPushButton*>(u"ok"_s), Qt::LeftButton);
}
}  // namespace

/// The dialogs of a profile, by their keys and buttons.
class TestProfileDialogs : public QObject {
    Q_OBJECT

  private:
    CRecordingMessages m_messages;

  private slots:
    void init() { m_messages.TakeShown(); }

    void rateAndGoalDateFollowEachOther() {
        CTargetsDialog dialog(Plan(), Man(), {}, Names(), nullptr);
        dialog.show();
        // 2236.548 kcal less 0.5 / 7 x 7777.78 = 555.56 kcal
        QCOMPARE(dialog.findChild<QLineEdit*>(u"energy"_s)->text(), u"1681"_s);
        Type(dialog, u"rate"_s, u"1"_s);
        // 6 kg at 1 kg a week
        QCOMPARE(dialog.findChild<QDateEdit*>(u"goalDate"_s)->date(), kStart.addDays(42));
        QCOMPARE(dialog.findChild<QLabel*>(u"weeks"_s)->text(), u"7 wks"_s);
        QCOMPARE(dialog.findChild<QLineEdit*>(u"energy"_s)->text(), u"1125"_s);
        dialog.findChild<QDateEdit*>(u"goalDate"_s)->setDate(kStart.addDays(60));
        QCOMPARE(dialog.findChild<QLineEdit*>(u"rate"_s)->text(), u"0.7"_s);  // 6 x 7 / 60
        ClickOk(dialog);
        QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
        // 2236.548 - 0.1 x 7777.78 = 1458.77, and 55 % of 1459 kcal at 4 kcal a gram
        QCOMPARE(dialog.GetTargets().nutrients[0], 1459.0);
        QVERIFY(qAbs(dialog.GetTargets().nutrients[3] - 200.6125) < 1e-9);
    }

    void aTypedTargetMakesTheDietCustomAndStays() {
        CTargetsDialog dialog(Plan(), Man(), {}, Names(), nullptr);
        dialog.show();
        auto* grid = dialog.findChild<CGrid*>(u"nutrients"_s);
        QVERIFY(grid->OpenCell(9, 1));
        auto* edit = grid->findChild<QLineEdit*>(u"inPlaceEdit"_s);
        edit->selectAll();
        QTest::keyClicks(edit, u"1200"_s);
        ClickOk(dialog);  // the open cell is delivered first
        QCOMPARE(dialog.GetTargets().dietType, kCustomDiet);
        QCOMPARE(dialog.GetTargets().nutrients[9], 1200.0);
    }

    void wrongTargetsKeepTheDialogOpen_data() {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("message");
        const QString start = u"Please enter correct start weight."_s;
        QTest::newRow("too light") << u"startWeightMajor"_s << u"9.9"_s << start;
        QTest::newRow("no number") << u"startWeightMajor"_s << u"heavy"_s << start;
        QTest::newRow("not finite") << u"startWeightMajor"_s << u"1e999"_s << start;
        QTest::newRow("too heavy")
            << u"goalWeightMajor"_s << u"250.1"_s << u"Please enter correct goal weight."_s;
    }
    void wrongTargetsKeepTheDialogOpen() {
        QFETCH(QString, field);
        QFETCH(QString, text);
        QFETCH(QString, message);
        CTargetsDialog dialog(Plan(), Man(), {}, Names(), nullptr);
        dialog.show();
        auto* edit = dialog.findChild<QLineEdit*>(field);
        edit->setFocus();
        edit->selectAll();
        QTest::keyClicks(edit, text);
        ClickOk(dialog);
        QCOMPARE(m_messages.TakeShown(), QStringList{message});
        QVERIFY(dialog.isVisible());
    }

    void aLimitInPoundsIsStillAccepted() {
        CTargets targets = Plan();
        targets.startWeightKg = 250;
        CPreferences preferences;
        preferences.weightUnit = EWeightUnit::Pounds;
        CTargetsDialog dialog(targets, Man(), preferences, Names(), nullptr);
        dialog.show();
        ClickOk(dialog);
        QCOMPARE(m_messages.TakeShown(), QStringList());
        QCOMPARE(dialog.GetTargets().startWeightKg, 250.0);
    }

    void aNameIsNeededAndMustBeFree() {
        CUserInformation user = Man();
        user.name.clear();
        CPreferences preferences;
        preferences.heightUnit = EHeightUnit::Feet;
        CUserInformationDialog dialog(
            user, preferences,
            [](const QString& name) {
                return name == u"Bob"_s ? std::optional(u"Bob is there."_s) : std::nullopt;
            },
            nullptr);
        dialog.show();
        ClickOk(dialog);
        dialog.findChild<QLineEdit*>(u"name"_s)->setText(u"Bob"_s);
        ClickOk(dialog);
        QCOMPARE(m_messages.TakeShown(),
                 (QStringList{u"Please enter user name."_s, u"Bob is there."_s}));
        dialog.findChild<QLineEdit*>(u"name"_s)->setText(u"Eve"_s);
        dialog.findChild<QLineEdit*>(u"heightMajor"_s)->setText(u"5"_s);
        dialog.findChild<QLineEdit*>(u"heightMinor"_s)->setText(u"11"_s);
        ClickOk(dialog);
        QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
        QCOMPARE(dialog.GetUser().name, u"Eve"_s);
        QCOMPARE(dialog.GetUser().heightCm, 180.34);  // 5 x 30.48 + 11 x 2.54
    }
};

QTEST_MAIN(TestProfileDialogs)
#include "TestProfileDialogs.moc"
