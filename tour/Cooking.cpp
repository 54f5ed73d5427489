#include "Cooking.h"

#include <QFile>
#include <QLineEdit>
#include <QTabWidget>

#include "Choosing.h"
#include "Hands.h"
#include "controls/Grid.h"
#include "controls/ReportList.h"

using namespace Qt::StringLiterals;

namespace {
const std::vector<CChoice> kIngredients = {
    {u"Bread and cereals"_s, u"Oatmeal"_s, u"boiled in water"_s, u""_s, u"2"_s},
    {u"Dairy and eggs"_s, u"Milk"_s, u"whole"_s, u""_s, u"1"_s},
    {u"Fruit"_s, u"Apple"_s, u"raw"_s, u"1 small"_s, u"1"_s},
    {u"Fruit"_s, u"Raisins"_s, u"dried, seedless"_s, u""_s, u"0.5"_s},
    {u"Sweets and snacks"_s, u"Honey"_s, u"pure"_s, u""_s, u"1.5"_s},
};

QString Energy(QWidget* dialog) {
    return Find<CGrid>(dialog, u"nutrients"_s)->CellText(0, 1);
}

void ShowPage(QWidget* dialog, const QString& page) {
    ClickTab(Find<QTabWidget>(dialog, u"pages"_s)->findChild<QWidget*>(u"qt_tabwidget_tabbar"_s),
             page);
}

/// Opens another, empty window of the catalogue and creates a category there.
std::vector<CTourStep> OpenWithCategory(const QString& window, const QString& category) {
    return {
        {QString(),
         u"CDietFrame"_s,
         {},
         [window](QWidget* frame) { ClickMenu(frame, u"Tools"_s, window + u"..."_s); }},
        {window + u", still empty"_s,
         u"CDietFrame"_s,
         {},
         [](QWidget* frame) { ClickButton(frame, u"New category"_s); }},
        {QString(),
         u"CDietFrame"_s,
         [category](QWidget* frame) {
             auto* label = Find(frame, u"categories"_s)->findChild<QLineEdit*>();
             Expect(label != nullptr, u"the new category's label to be edited"_s);
             Type(label, category);
         },
         {}},
    };
}

std::vector<CTourStep> AddComponents(const std::vector<CChoice>& choices, const QString& kind) {
    std::vector<CTourStep> steps;
    for (const CChoice& choice : choices) {
        steps.push_back({QString(), u"CComposedEditDialog"_s,
                         [](QWidget* dialog) { ShowPage(dialog, u"Foods"_s); },
                         [](QWidget* dialog) { Click(Find(dialog, u"addFood"_s)); }});
        steps.push_back({QString(),
                         u"CAddFoodDialog"_s,
                         [kind](QWidget* dialog) { ClickTab(Find(dialog, u"kinds"_s), kind); },
                         {}});
        Add(steps, ChooseFood(choice, false));
    }
    return steps;
}

std::vector<CTourStep> CookRecipe(const QString& textFile) {
    std::vector<CTourStep> steps = OpenWithCategory(u"Recipes"_s, u"Breakfasts"_s);
    Add(steps, {{QString(), u"CDietFrame"_s,
                 [](QWidget* frame) { ClickRow(Find(frame, u"categories"_s), u"Breakfasts"_s); },
                 [](QWidget* frame) { ClickMenu(frame, u"Edit"_s, u"New recipe..."_s); }},
                {QString(),
                 u"CComposedEditDialog"_s,
                 [](QWidget* dialog) {
                     Type(Find(dialog, u"name"_s), u"Apple porridge"_s);
                     Type(Find(dialog, u"servings"_s), u"2 bowls"_s);
                 },
                 {}}});
    Add(steps, AddComponents(kIngredients, u"Food"_s));
    Add(steps, {{u"Ingredients of a recipe"_s,
                 u"CComposedEditDialog"_s,
                 [](QWidget* dialog) {
                     Expect(Find<CReportList>(dialog, u"components"_s)->RowCount() == 5,
                            u"five ingredients"_s);
                     Expect(Energy(dialog) == u"0.00"_s, u"no energy before Recalculate"_s);
                 },
                 {}},
                {u"Nutrients worked out"_s,
                 u"CComposedEditDialog"_s,
                 [](QWidget* dialog) {
                     Click(Find(dialog, u"recalculate"_s));
                     Expect(Energy(dialog) != u"0.00"_s, u"the energy of the foods"_s);
                 },
                 {}},
                {u"Instructions"_s, u"CComposedEditDialog"_s,
                 [](QWidget* dialog) {
                     ShowPage(dialog, u"Instructions"_s);
                     QWidget* field = Find(dialog, u"instructions"_s);
                     Type(field, u"Boil the oatmeal in the milk. Serve with apple and honey."_s);
                 },
                 [](QWidget* dialog) { Click(Find(dialog, u"saveAsText"_s)); }},
                AnswerFileDialog(u"Recipe as text"_s, textFile),
                {QString(), u"CComposedEditDialog"_s,
                 [textFile](QWidget*) {
                     QFile file(textFile);
                     Expect(file.open(QIODevice::ReadOnly), u"the recipe's text"_s);
                     Expect(
                         file.readAll().startsWith("Velmora recipe\r\n\r\nCategory: Breakfasts\r\n"
                                                   "Name: Apple porridge\r\nServings: 2 bowls\r\n"),
                         u"the recipe in its text"_s);
                 },
                 [](QWidget* dialog) { Click(Find(dialog, u"ok"_s)); }},
                {u"Recipes"_s,
                 u"CDietFrame"_s,
                 [](QWidget* frame) { ClickRow(Find(frame, u"items"_s), u"Apple porridge"_s); },
                 {}}});
    return steps;
}

/// Shares the recipe that is selected, deletes it, and takes it in again.
std::vector<CTourStep> ShareRecipe(const QString& shareFile) {
    return {
        {QString(),
         u"CDietFrame"_s,
         {},
         [](QWidget* frame) { ClickMenu(frame, u"File"_s, u"Share..."_s); }},
        AnswerFileDialog(u"Share recipes"_s, shareFile),
        AnswerMessage(u"Shared"_s, u"Shared 5 foods and 1 recipe."_s, u"OK"_s),
        {QString(),
         u"CDietFrame"_s,
         {},
         [](QWidget* frame) { Press(Find(frame, u"items"_s), Qt::Key_Delete); }},
        AnswerMessage(QString(), u"Apple porridge"_s, u"Yes"_s),
        {QString(),
         u"CDietFrame"_s,
         {},
         [](QWidget* frame) { ClickMenu(frame, u"File"_s, u"Take in..."_s); }},
        {u"Take in options"_s,
         u"COptionsDialog"_s,
         {},
         [](QWidget* dialog) { Click(Find(dialog, u"ok"_s)); }},
        AnswerFileDialog(u"File to take in"_s, shareFile),
        AnswerMessage(u"Taken in"_s, u"Took in 1 recipe. Skipped 5 foods that existed already."_s,
                      u"OK"_s),
        {u"The recipe again"_s,
         u"CDietFrame"_s,
         [](QWidget* frame) { ClickRow(Find(frame, u"items"_s), u"Apple porridge"_s); },
         {}},
    };
}

std::vector<CTourStep> MakeMenu() {
    std::vector<CTourStep> steps = OpenWithCategory(u"Menus"_s, u"Every day"_s);
    Add(steps, {{QString(), u"CDietFrame"_s,
                 [](QWidget* frame) { ClickRow(Find(frame, u"categories"_s), u"Every day"_s); },
                 [](QWidget* frame) { ClickMenu(frame, u"Edit"_s, u"New menu..."_s); }},
                {QString(),
                 u"CComposedEditDialog"_s,
                 [](QWidget* dialog) { Type(Find(dialog, u"name"_s), u"Slow morning"_s); },
                 {}}});
    Add(steps, AddComponents({{u"Breakfasts"_s, u"Apple porridge"_s, u""_s, u""_s, u"0.5"_s}},
                             u"Recipe"_s));
    Add(steps, AddComponents({{u"Drinks"_s, u"Coffee"_s, u"black"_s, u""_s, u"1"_s}}, u"Food"_s));
    Add(steps, {{u"A menu of a recipe and a food"_s, u"CComposedEditDialog"_s,
                 [](QWidget* dialog) {
                     Click(Find(dialog, u"recalculate"_s));
                     ShowPage(dialog, u"Foods"_s);
                     Expect(Find<CReportList>(dialog, u"components"_s)->RowCount() == 2,
                            u"a recipe and a food"_s);
                 },
                 [](QWidget* dialog) { Click(Find(dialog, u"ok"_s)); }},
                {u"Menus"_s, u"CDietFrame"_s, {}, [](QWidget* frame) {
                     ClickMenu(frame, u"File"_s, u"Close menus"_s);
                 }}});
    return steps;
}

std::vector<CTourStep> EatMenu() {
    std::vector<CTourStep> steps = {
        {QString(), u"CDietFrame"_s,
         [](QWidget* frame) { ClickTab(Find(frame, u"meals"_s), u"M"_s); },
         [](QWidget* frame) { ClickMenu(frame, u"Edit"_s, u"Add entry..."_s); }},
        {QString(),
         u"CAddFoodDialog"_s,
         [](QWidget* dialog) { ClickTab(Find(dialog, u"kinds"_s), u"Menu"_s); },
         {}}};
    Add(steps, ChooseFood({u"Every day"_s, u"Slow morning"_s, u""_s, u""_s, u"1"_s}, false));
    Add(steps, {{u"The menu eaten"_s,
                 u"CDietFrame"_s,
                 [](QWidget* frame) {
                     Expect(Find<CReportList>(frame, u"entries"_s)->RowCount() == 1,
                            u"the menu among the morning's entries"_s);
                     ClickRow(Find(frame, u"entries"_s), u"Slow morning"_s);
                 },
                 {}}});
    return steps;
}
}  // namespace

std::vector<CTourStep> CookAndEat(const QString& folder) {
    std::vector<CTourStep> steps = {{QString(), u"CDietFrame"_s, {}, [](QWidget* frame) {
                                         ClickMenu(frame, u"Tools"_s, u"Foods..."_s);
                                     }}};
    Add(steps, CookRecipe(folder + u"/recipe.txt"_s));
    Add(steps, ShareRecipe(folder + u"/porridge.velmora"_s));
    Add(steps, MakeMenu());
    Add(steps, EatMenu());
    return steps;
}
