#include "Itinerary.h"

#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QLabel>
#include <QMessageBox>

#include "Choosing.h"
#include "Cooking.h"
#include "Diaries.h"
#include "Hands.h"
#include "Safety.h"
#include "Typing.h"
#include "controls/ReportList.h"

using namespace Qt::StringLiterals;

namespace {
struct CEaten {
    QString meal;  ///< text of the meal's tab
    CChoice food;
};

const std::vector<CEaten> kDay = {
    {u"B"_s, {u"Bread and cereals"_s, u"Oatmeal"_s, u"boiled in water"_s, u""_s, u"1"_s}},
    {u"B"_s, {u"Drinks"_s, u"Coffee"_s, u"black"_s, u""_s, u"2"_s}},
    {u"L"_s, {u"Fats and sauces"_s, u"Tomato sauce"_s, u"for pasta"_s, u""_s, u"1"_s}},
    {u"L"_s, {u"Fruit"_s, u"Apple"_s, u"raw"_s, u"1 small"_s, u"2"_s}},
    {u"D"_s, {u"Meat and fish"_s, u"Salmon"_s, u"farmed"_s, u""_s, u"1.5"_s}},
};

QString CellText(QWidget* frame, const QString& list, int row, int column) {
    const QAbstractItemModel* model = Find<QAbstractItemView>(frame, list)->model();
    return model->index(row, column).data().toString();
}

int EntryCount(QWidget* frame) {
    return Find<CReportList>(frame, u"entries"_s)->RowCount();
}

std::vector<CTourStep> FirstRun() {
    return {
        {u"User preferences"_s, u"CPreferencesDialog"_s,
         [](QWidget* window) { Choose(Find(window, u"energyUnit"_s), u"kcal"_s); },
         [](QWidget* window) { Click(Find(window, u"ok"_s)); }},
        // A name is needed before anything else.
        {u"User information without a name"_s,
         u"CUserInformationDialog"_s,
         {},
         [](QWidget* window) { Click(Find(window, u"ok"_s)); }},
        {u"Please enter user name"_s, u"QMessageBox"_s,
         [](QWidget* window) {
             Expect(MessageText(window) == u"Please enter user name."_s, u"the name's message"_s);
         },
         [](QWidget* window) { ClickButton(window, u"OK"_s); }},
        {u"User information"_s, u"CUserInformationDialog"_s,
         [](QWidget* window) {
             Type(Find(window, u"name"_s), u"Ann"_s);
             Click(Find(window, u"female"_s));
             Type(Find(window, u"heightMajor"_s), u"168"_s);
             Choose(Find(window, u"activityLevel"_s), u"Light active"_s);
         },
         [](QWidget* window) { Click(Find(window, u"ok"_s)); }},
        {u"Targets"_s, u"CTargetsDialog"_s,
         [](QWidget* window) {
             Type(Find(window, u"startWeightMajor"_s), u"72"_s);
             Type(Find(window, u"goalWeightMajor"_s), u"66"_s);
             Type(Find(window, u"rate"_s), u"0.5"_s);
             // 6 kg at half a kilogram per week take 84 days: 12 whole weeks, shown as 13.
             Expect(Find<QLabel>(window, u"weeks"_s)->text() == u"13 wks"_s, u"13 wks"_s);
         },
         [](QWidget* window) { Click(Find(window, u"ok"_s)); }},
        {u"Offer of starter foods"_s,
         u"QMessageBox"_s,
         {},
         [](QWidget* window) { ClickButton(window, u"No"_s); }},
        {u"Diet diary, still empty"_s, u"CDietFrame"_s,
         [](QWidget* window) {
             Expect(window->windowTitle() == u"Velmora:Ann"_s, u"the title Velmora:Ann"_s);
             Expect(EntryCount(window) == 0, u"no entries"_s);
         },
         [](QWidget* window) { ClickMenu(window, u"Tools"_s, u"Foods..."_s); }},
    };
}

std::vector<CTourStep> Catalogue(const QString& foodFile) {
    return {
        {u"Foods, still empty"_s,
         u"CDietFrame"_s,
         {},
         [](QWidget* window) { ClickMenu(window, u"File"_s, u"Import foods..."_s); }},
        {u"Import options"_s,
         u"COptionsDialog"_s,
         {},
         [](QWidget* window) { Click(Find(window, u"ok"_s)); }},
        AnswerFileDialog(u"File to import"_s, foodFile),
        {u"Imported"_s, u"QMessageBox"_s,
         [](QWidget* window) {
             Expect(MessageText(window).startsWith(u"Imported "_s) &&
                        !MessageText(window).startsWith(u"Imported 0 "_s),
                    u"a summary of the import, not "_s + MessageText(window));
         },
         [](QWidget* window) { ClickButton(window, u"OK"_s); }},
        {u"Foods of a category"_s, u"CDietFrame"_s,
         [](QWidget* window) {
             ClickRow(Find(window, u"categories"_s), u"Fruit"_s);
             Expect(Find<CReportList>(window, u"items"_s)->RowCount() > 3, u"several fruits"_s);
             ClickRow(Find(window, u"items"_s), u"Apple"_s);
         },
         [](QWidget* window) { Press(Find(window, u"items"_s), Qt::Key_Return); }},
        {u"Edit food"_s,
         u"CFoodEditDialog"_s,
         {},
         [](QWidget* window) { Click(Find(window, u"cancel"_s)); }},
        {u"A narrowed list"_s,
         u"CDietFrame"_s,
         [](QWidget* window) {
             TypeOn(Find(window, u"filter"_s), u"appl"_s);
             Expect(CellText(window, u"items"_s, 0, 0) == u"Apple"_s, u"an apple"_s);
         },
         {}},
        {QString(), u"CDietFrame"_s,
         [](QWidget* window) { Press(Find(window, u"filter"_s), Qt::Key_Escape); },
         [](QWidget* window) { ClickMenu(window, u"Edit"_s, u"Find food..."_s); }},
        {u"Find food"_s, u"CFindDialog"_s,
         [](QWidget* window) { Type(Find(window, u"name"_s), u"salm"_s); },
         [](QWidget* window) { Click(Find(window, u"ok"_s)); }},
        {u"Found food"_s, u"CDietFrame"_s,
         [](QWidget* window) {
             Expect(Find<CReportList>(window, u"items"_s)->SelectedRows().size() == 1,
                    u"the salmon to be selected"_s);
         },
         [](QWidget* window) { ClickMenu(window, u"File"_s, u"Close foods"_s); }},
    };
}

std::vector<CTourStep> Eat(const CEaten& eaten, bool withPictures) {
    std::vector<CTourStep> steps = {
        {QString(), u"CDietFrame"_s,
         [eaten](QWidget* window) { ClickTab(Find(window, u"meals"_s), eaten.meal); },
         [](QWidget* window) { ClickMenu(window, u"Edit"_s, u"Add entry..."_s); }}};
    Add(steps, ChooseFood(eaten.food, withPictures));
    return steps;
}

std::vector<CTourStep> ThreeMeals() {
    std::vector<CTourStep> steps = {
        {QString(), u"CDietFrame"_s,
         [](QWidget* window) { ClickTab(Find(window, u"meals"_s), u"All"_s); },
         [](QWidget* window) { ClickMenu(window, u"Edit"_s, u"Add entry..."_s); }},
        {u"Please select a meal"_s, u"QMessageBox"_s,
         [](QWidget* window) {
             Expect(MessageText(window) ==
                        u"Please select a meal. It is not possible to add a food to all meals."_s,
                    u"the meal's message"_s);
         },
         [](QWidget* window) { ClickButton(window, u"OK"_s); }},
    };
    bool isFirst = true;
    for (const CEaten& eaten : kDay) {
        Add(steps, Eat(eaten, isFirst));
        isFirst = false;
    }
    return steps;
}

std::vector<CTourStep> LookAtTheDay() {
    return {
        {u"Lunch"_s,
         u"CDietFrame"_s,
         [](QWidget* window) {
             ClickTab(Find(window, u"meals"_s), u"L"_s);
             Expect(EntryCount(window) == 2, u"two entries at lunch"_s);
         },
         {}},
        {u"The day against the targets"_s, u"CDietFrame"_s,
         [](QWidget* window) {
             ClickTab(Find(window, u"meals"_s), u"All"_s);
             Expect(EntryCount(window) == static_cast<int>(kDay.size()), u"the whole day"_s);
             const QString energy = CellText(window, u"totals"_s, 0, 2);
             const QString percent = CellText(window, u"totals"_s, 0, 4);
             Expect(energy != u"0/"_s && percent.endsWith(u'%') && percent != u"0%"_s,
                    u"energy against its target, not %1 and %2"_s.arg(energy, percent));
             ClickRow(Find(window, u"entries"_s), u"Apple"_s);
         },
         [](QWidget* window) { ClickMenu(window, u"Edit"_s, u"Edit entry..."_s); }},
        {u"Edit entry"_s, u"CAddFoodDialog"_s,
         [](QWidget* window) { Type(Find(window, u"amount"_s), u"3"_s); },
         [](QWidget* window) { Click(Find(window, u"ok"_s)); }},
        {QString(), u"CDietFrame"_s,
         [](QWidget* window) { ClickRow(Find(window, u"entries"_s), u"Coffee"_s); },
         [](QWidget* window) { Press(Find(window, u"entries"_s), Qt::Key_Delete); }},
        {u"Delete entry"_s, u"QMessageBox"_s,
         [](QWidget* window) {
             Expect(MessageText(window) == u"Are you sure you want to delete entry 'Coffee'?"_s,
                    u"the question about the coffee, not "_s + MessageText(window));
         },
         [](QWidget* window) { ClickButton(window, u"Yes"_s); }},
        {u"After the changes"_s,
         u"CDietFrame"_s,
         [](QWidget* window) {
             Expect(EntryCount(window) == static_cast<int>(kDay.size()) - 1, u"one entry less"_s);
             QStringList servings;
             for (int row = 0; row < EntryCount(window); ++row) {
                 servings.append(CellText(window, u"entries"_s, row, 1));
             }
             Expect(servings.contains(u"3.00x1 small"_s),
                    u"three small apples among "_s + servings.join(u", "_s));
         },
         {}},
    };
}

/// The next day begins like this one.
std::vector<CTourStep> EatAgain() {
    return {
        {u"An empty meal offers what was eaten before"_s,
         u"CDietFrame"_s,
         [](QWidget* window) {
             Click(Find(window, u"Next day"_s));
             ClickTab(Find(window, u"meals"_s), u"L"_s);
         },
         {}},
        {u"A meal eaten again"_s, u"CDietFrame"_s,
         [](QWidget* window) {
             Press(Find(window, u"entries"_s), Qt::Key_1);
             Expect(EntryCount(window) == 2, u"the sauce and the apples"_s);
             Press(Find(window, u"entries"_s), Qt::Key_A, Qt::ControlModifier);
         },
         [](QWidget* window) { ClickMenu(window, u"Edit"_s, u"Repeat..."_s); }},
        {u"Repeat entries"_s, u"CRepeatDialog"_s,
         [](QWidget* window) { Click(Find(window, u"weekday3"_s)); },
         [](QWidget* window) { ClickButton(window, u"Cancel"_s); }},
        {QString(), u"CDietFrame"_s, [](QWidget*) {},
         [](QWidget* window) { ClickMenu(window, u"Edit"_s, u"Custom entry..."_s); }},
        {u"Custom entry"_s, u"CCustomEntryDialog"_s,
         [](QWidget* window) { Type(Find(window, u"name"_s), u"Restaurant"_s); },
         [](QWidget* window) { ClickButton(window, u"Cancel"_s); }},
        {QString(),
         u"CDietFrame"_s,
         [](QWidget* window) { Click(Find(window, u"Previous day"_s)); },
         {}},
    };
}
}  // namespace

std::vector<CTourStep> FirstTenMinutes(const QString& foodFile, const QString& folder) {
    std::vector<CTourStep> steps = FirstRun();
    Add(steps, Catalogue(foodFile));
    Add(steps, ThreeMeals());
    Add(steps, LookAtTheDay());
    Add(steps, TypeAMeal());
    Add(steps, EatAgain());
    Add(steps, CookAndEat(folder));
    Add(steps, KeepDiaries(folder + u"/report.csv"_s));
    Add(steps, KeepSafe(folder + u"/backup.db"_s));
    return steps;
}
