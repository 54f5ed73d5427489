#include "Typing.h"

#include <QLabel>
#include <QLineEdit>

#include "Hands.h"
#include "controls/ReportList.h"

using namespace Qt::StringLiterals;

namespace {
void ExpectEntries(QWidget* frame, int count) {
    Expect(Find<CReportList>(frame, u"entries"_s)->RowCount() == count, u"%1 entries"_s.arg(count));
}

void ExpectStatus(QWidget* frame, const QString& text) {
    const auto* status = Find<QLabel>(frame, u"status"_s);
    Expect(status->isVisible() && status->text() == text,
           u"the status line to say '%1', not '%2'"_s.arg(text, status->text()));
}
}  // namespace

std::vector<CTourStep> TypeAMeal() {
    return {
        {QString(), u"CDietFrame"_s,
         [](QWidget* frame) { ClickTab(Find(frame, u"meals"_s), u"M"_s); },
         [](QWidget* frame) { Press(Find(frame, u"entries"_s), Qt::Key_Insert); }},
        {u"Food found by typing"_s,
         u"CAddFoodDialog"_s,
         [](QWidget* dialog) {
             TypeOn(Find(dialog, u"search"_s), u"salm"_s);
             Expect(Find<CReportList>(dialog, u"searchRows"_s)->RowCount() > 0, u"a salmon"_s);
         },
         {}},
        {u"The found food, with its amount to type"_s, u"CAddFoodDialog"_s,
         [](QWidget* dialog) {
             Press(Find(dialog, u"search"_s), Qt::Key_Return);
             Expect(Find(dialog, u"amount"_s)->hasFocus(), u"the focus in the amount"_s);
         },
         [](QWidget* dialog) { Press(Find(dialog, u"amount"_s), Qt::Key_Return); }},
        {u"What was added is told"_s,
         u"CDietFrame"_s,
         [](QWidget* frame) {
             ExpectStatus(frame, u"Added Salmon to Morning. Ctrl+Z takes it back."_s);
         },
         {}},
        {u"Quick line"_s,
         u"CDietFrame"_s,
         [](QWidget* frame) {
             Press(Find(frame, u"entries"_s), Qt::Key_L, Qt::ControlModifier);
             TypeOn(Find(frame, u"quick"_s), u"3 spoons nectar, 2 apples, 100 g oatmeal"_s);
             Expect(Find<CReportList>(frame, u"quickItems"_s)->RowCount() == 3, u"three items"_s);
         },
         {}},
        {u"Another match chosen"_s,
         u"CDietFrame"_s,
         [](QWidget* frame) { Press(Find(frame, u"quick"_s), Qt::Key_Down); },
         {}},
        {u"What was not understood stays"_s,
         u"CDietFrame"_s,
         [](QWidget* frame) {
             Press(Find(frame, u"quick"_s), Qt::Key_Return);
             Expect(Find<QLineEdit>(frame, u"quick"_s)->text() == u"3 spoons nectar"_s,
                    u"the nectar in the line"_s);
             ExpectEntries(frame, 3);
         },
         {}},
        {u"A meal typed"_s,
         u"CDietFrame"_s,
         [](QWidget* frame) {
             Press(Find(frame, u"quick"_s), Qt::Key_Escape);
             Press(Find(frame, u"quick"_s), Qt::Key_Escape);
             Expect(Find(frame, u"entries"_s)->hasFocus(), u"the focus in the list"_s);
         },
         {}},
        {u"The typed meal undone"_s,
         u"CDietFrame"_s,
         [](QWidget* frame) {
             Press(Find(frame, u"entries"_s), Qt::Key_Z, Qt::ControlModifier);
             ExpectStatus(frame, u"Undone: addition of 2 entries."_s);
             ExpectEntries(frame, 1);
         },
         {}},
        {u"The typed meal redone"_s,
         u"CDietFrame"_s,
         [](QWidget* frame) {
             Press(Find(frame, u"entries"_s), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
             ExpectStatus(frame, u"Redone: addition of 2 entries."_s);
             ExpectEntries(frame, 3);
         },
         {}},
        {u"A meal copied to the next day"_s,
         u"CDietFrame"_s,
         [](QWidget* frame) {
             Press(Find(frame, u"entries"_s), Qt::Key_A, Qt::ControlModifier);
             Press(Find(frame, u"entries"_s), Qt::Key_C, Qt::ControlModifier);
             Press(Find(frame, u"entries"_s), Qt::Key_PageDown, Qt::ControlModifier);
             ExpectEntries(frame, 0);
             Press(Find(frame, u"entries"_s), Qt::Key_V, Qt::ControlModifier);
             ExpectEntries(frame, 3);
         },
         {}},
        {u"Today, typed"_s, u"CDietFrame"_s,
         [](QWidget* frame) {
             Press(Find(frame, u"entries"_s), Qt::Key_Z, Qt::ControlModifier);
             ExpectEntries(frame, 0);
             TypeOn(Find(frame, u"day"_s), u"t"_s);
             Press(Find(frame, u"day"_s), Qt::Key_Return);
             ExpectEntries(frame, 3);
         },
         [](QWidget* frame) {
             Press(Find(frame, u"entries"_s), Qt::Key_Z, Qt::ControlModifier);
             Press(Find(frame, u"entries"_s), Qt::Key_Z, Qt::ControlModifier);
             Press(Find(frame, u"entries"_s), Qt::Key_Z, Qt::ControlModifier);
             ExpectEntries(frame, 0);
         }},
    };
}
