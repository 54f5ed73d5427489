#include "Diaries.h"

#include <QDateEdit>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextBrowser>

#include "Choosing.h"
#include "Hands.h"
#include "controls/ReportList.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int kDaysBetween = 3;
/// In kg, the last one today.
const std::vector<QString> kWeights = {u"72"_s,   u"71.8"_s, u"71.9"_s, u"71.3"_s, u"71.4"_s,
                                       u"70.9"_s, u"70.6"_s, u"70.7"_s, u"70.2"_s, u"69.9"_s};

/// Set directly: typing the parts of a date would only test Qt.
void SetDate(QWidget* dialog, const QString& field, QDate day) {
    Find<QDateEdit>(dialog, field)->setDate(day);
}

std::vector<CTourStep> MonthOfWeights() {
    std::vector<CTourStep> steps = {
        {u"Weights, still empty"_s,
         u"CDietFrame"_s,
         [](QWidget* frame) { Press(frame, Qt::Key_2, Qt::ControlModifier); },
         {}}};
    for (size_t i = 0; i < kWeights.size(); ++i) {
        const auto daysAgo = static_cast<int>(kWeights.size() - 1 - i) * kDaysBetween;
        const bool isLast = i + 1 == kWeights.size();
        Add(steps,
            {{QString(),
              u"CDietFrame"_s,
              {},
              [](QWidget* frame) { ClickMenu(frame, u"Edit"_s, u"Add weight..."_s); }},
             {isLast ? u"A weight with its measurements"_s : QString(), u"CWeightEditDialog"_s,
              [weight = kWeights[i], daysAgo, isLast](QWidget* dialog) {
                  SetDate(dialog, u"date"_s, QDate::currentDate().addDays(-daysAgo));
                  Type(Find(dialog, u"weightMajor"_s), weight);
                  if (isLast) {
                      Type(Find(dialog, u"waistMajor"_s), u"78"_s);
                      Click(Find(dialog, u"calculateBodyFat"_s));
                  }
              },
              [](QWidget* dialog) { Click(Find(dialog, u"ok"_s)); }}});
    }
    Add(steps, {{u"A month of weights"_s,
                 u"CDietFrame"_s,
                 {},
                 [](QWidget* frame) { ClickMenu(frame, u"Tools"_s, u"BMI..."_s); }},
                {u"Body mass index"_s, u"CBmiDialog"_s,
                 [](QWidget* dialog) {
                     // 69.9 kg at 168 cm: 69.9 / 1.68^2 = 24.77
                     Expect(Find<QLabel>(dialog, u"bmi"_s)->text() == u"Your BMI is  24.77"_s,
                            u"a BMI of 24.77"_s);
                 },
                 [](QWidget* dialog) { Click(Find(dialog, u"ok"_s)); }}});
    return steps;
}

std::vector<CTourStep> OwnLibrary() {
    return {
        {u"Exercise library, still empty"_s, u"CDietFrame"_s,
         [](QWidget* frame) { Press(frame, Qt::Key_7, Qt::ControlModifier); },
         [](QWidget* frame) { ClickButton(frame, u"New category"_s); }},
        {QString(),
         u"CDietFrame"_s,
         [](QWidget* frame) {
             auto* label = Find(frame, u"categories"_s)->findChild<QLineEdit*>();
             Expect(label != nullptr, u"the new category's label to be edited"_s);
             Type(label, u"Outdoors"_s);
         },
         {}},
        {QString(), u"CDietFrame"_s,
         [](QWidget* frame) { ClickRow(Find(frame, u"categories"_s), u"Outdoors"_s); },
         [](QWidget* frame) { ClickMenu(frame, u"Edit"_s, u"New exercise..."_s); }},
        {u"New exercise"_s, u"CExlibEditDialog"_s,
         [](QWidget* dialog) {
             Type(Find<QLineEdit>(Find(dialog, u"name"_s), QString()), u"Walking"_s);
             Type(Find<QLineEdit>(Find(dialog, u"type"_s), QString()), u"brisk"_s);
             Click(Find(dialog, u"met"_s));
             Type(Find(dialog, u"energy"_s), u"4.3"_s);
         },
         [](QWidget* dialog) { Click(Find(dialog, u"ok"_s)); }},
        {u"Exercise library"_s,
         u"CDietFrame"_s,
         [](QWidget* frame) {
             Expect(Find<CReportList>(frame, u"items"_s)->RowCount() == 1, u"one exercise"_s);
         },
         {}},
    };
}

std::vector<CTourStep> Workout() {
    return {
        {u"Exercises, still empty"_s, u"CDietFrame"_s,
         [](QWidget* frame) { Press(frame, Qt::Key_3, Qt::ControlModifier); },
         [](QWidget* frame) { ClickMenu(frame, u"Edit"_s, u"Add exercise..."_s); }},
        {QString(), u"CExerciseEditDialog"_s,
         [](QWidget* dialog) { Click(Find(dialog, u"category"_s)); },
         [](QWidget* dialog) { ClickRow(Find(dialog, u"pickListRows"_s), u"Outdoors"_s); }},
        {QString(), u"CExerciseEditDialog"_s,
         [](QWidget* dialog) { Press(Find(dialog, u"name"_s), Qt::Key_Down); },
         [](QWidget* dialog) { ClickRow(Find(dialog, u"pickListRows"_s), u"Walking"_s); }},
        {QString(), u"CExerciseEditDialog"_s,
         [](QWidget* dialog) { Press(Find(dialog, u"type"_s), Qt::Key_Down); },
         [](QWidget* dialog) { ClickRow(Find(dialog, u"pickListRows"_s), u"brisk"_s); }},
        {u"A workout"_s, u"CExerciseEditDialog"_s,
         [](QWidget* dialog) {
             Type(Find(dialog, u"minutes"_s), u"45"_s);
             // 45 min x 69.9 kg x 4.3 MET x 0.0175 + 0.5 = 237.2
             Expect(Find<QLineEdit>(dialog, u"energy"_s)->text() == u"237"_s, u"237 kcal"_s);
         },
         [](QWidget* dialog) { Click(Find(dialog, u"ok"_s)); }},
        {u"The week's exercises"_s,
         u"CDietFrame"_s,
         [](QWidget* frame) {
             Expect(Find<CReportList>(frame, u"exercises"_s)->RowCount() == 1, u"one workout"_s);
             Expect(Find<QLabel>(frame, u"headline"_s)
                        ->text()
                        .startsWith(u"Total energy burned: 237/"_s),
                    u"the headline of 237 kcal"_s);
         },
         {}},
    };
}

std::vector<CTourStep> Report(const QString& reportFile) {
    return {
        {QString(),
         u"CDietFrame"_s,
         {},
         [](QWidget* frame) { ClickMenu(frame, u"File"_s, u"Report..."_s); }},
        {u"Report options"_s, u"CReportOptionsDialog"_s,
         [](QWidget* dialog) {
             SetDate(dialog, u"from"_s, QDate::currentDate().addDays(-kDaysBetween));
         },
         [](QWidget* dialog) { Click(Find(dialog, u"ok"_s)); }},
        AnswerFileDialog(QString(), reportFile),
        {QString(),
         u"CDietFrame"_s,
         {},
         [reportFile](QWidget*) {
             QFile file(reportFile);
             Expect(file.open(QIODevice::ReadOnly), u"the report"_s);
             const QByteArray report = file.readAll();
             Expect(report.startsWith("Velmora report:, Ann\r\n") &&
                        report.contains("Walking brisk,00:45,237\r\n"),
                    u"the workout in the report"_s);
             auto* paper = new QPlainTextEdit(QString::fromLatin1(report));
             paper->setAttribute(Qt::WA_DeleteOnClose);
             paper->setLineWrapMode(QPlainTextEdit::NoWrap);
             paper->setReadOnly(true);
             paper->setWindowModality(Qt::ApplicationModal);
             paper->resize(700, 500);
             paper->show();
             paper->activateWindow();
         }},
        {u"The report opened as text"_s,
         u"QPlainTextEdit"_s,
         {},
         [](QWidget* paper) { paper->close(); }},
    };
}

std::vector<CTourStep> Purge() {
    return {
        {QString(), u"CDietFrame"_s,
         [](QWidget* frame) { Press(frame, Qt::Key_2, Qt::ControlModifier); },
         [](QWidget* frame) { ClickMenu(frame, u"Tools"_s, u"Purge..."_s); }},
        {u"Purge"_s, u"CPurgeDialog"_s,
         [](QWidget* dialog) {
             SetDate(dialog, u"begin"_s, QDate::currentDate().addDays(-31));
             SetDate(dialog, u"end"_s, QDate::currentDate().addDays(-kDaysBetween * 5));
             Press(Find(dialog, u"weights"_s), Qt::Key_Space);
         },
         [](QWidget* dialog) { Click(Find(dialog, u"ok"_s)); }},
        {u"Are you sure"_s, u"QMessageBox"_s, {}, [](QWidget* box) { ClickButton(box, u"Yes"_s); }},
        // Five weights are in the range; every other one stays.
        {u"Total purged"_s, u"QMessageBox"_s,
         [](QWidget* box) {
             Expect(MessageText(box).contains(u"Weight entries: 3\n"_s),
                    u"three of five weights to be purged, not "_s + MessageText(box));
         },
         [](QWidget* box) { ClickButton(box, u"OK"_s); }},
        {u"After the purge"_s,
         u"CDietFrame"_s,
         {},
         [](QWidget* frame) { ClickMenu(frame, u"Tools"_s, u"About Velmora..."_s); }},
        {u"About Velmora"_s, u"CAboutDialog"_s,
         [](QWidget* dialog) {
             Expect(Find<QLabel>(dialog, u"title"_s)->text() == u"Velmora v2.1"_s,
                    u"the version"_s);
         },
         [](QWidget* dialog) { Click(Find(dialog, u"ok"_s)); }},
        {QString(), u"CDietFrame"_s,
         [](QWidget* frame) { Press(frame, Qt::Key_1, Qt::ControlModifier); },
         [](QWidget* frame) { ClickMenu(frame, u"Help"_s, u"Velmora help"_s); }},
        // Offscreen no other program shows the page.
        {u"The help page"_s, u"CHelpWindow"_s,
         [](QWidget* window) {
             Expect(
                 Find<QTextBrowser>(window, u"page"_s)->toPlainText().startsWith(u"Velmora help"_s),
                 u"the help page"_s);
         },
         [](QWidget* window) { Click(Find(window, u"cancel"_s)); }},
    };
}
}  // namespace

std::vector<CTourStep> KeepDiaries(const QString& reportFile) {
    std::vector<CTourStep> steps = MonthOfWeights();
    Add(steps, OwnLibrary());
    Add(steps, Workout());
    Add(steps, Report(reportFile));
    Add(steps, Purge());
    return steps;
}
