#include "Choosing.h"

#include <QAbstractItemView>
#include <QLineEdit>

#include "Hands.h"
#include "controls/Grid.h"

using namespace Qt::StringLiterals;

void Add(std::vector<CTourStep>& steps, std::vector<CTourStep> more) {
    steps.insert(steps.end(), more.begin(), more.end());
}

std::vector<CTourStep> ChooseFood(const CChoice& choice, bool withPictures) {
    const auto name = [withPictures](const QString& text) {
        return withPictures ? text : QString();
    };
    const auto pick = [](const QString& row) {
        return [row](QWidget* window) { ClickRow(Find(window, u"pickListRows"_s), row); };
    };
    std::vector<CTourStep> steps = {
        {name(u"Pick a category"_s), u"CAddFoodDialog"_s,
         [](QWidget* window) { Click(Find(window, u"category"_s)); }, pick(choice.category)},
        {name(u"Pick a name"_s), u"CAddFoodDialog"_s, {}, pick(choice.name)},
    };
    if (!choice.type.isEmpty()) {
        steps.push_back({name(u"Pick a type"_s), u"CAddFoodDialog"_s, {}, pick(choice.type)});
    }
    steps.push_back({name(u"Serving and amount"_s), u"CAddFoodDialog"_s,
                     [choice](QWidget* window) {
                         if (!choice.serving.isEmpty()) {
                             ::Choose(Find(window, u"serving"_s), choice.serving);
                         }
                         Type(Find(window, u"amount"_s), choice.amount);
                         Expect(!Find<CGrid>(window, u"values"_s)->CellText(0, 1).isEmpty(),
                                u"values for the serving"_s);
                     },
                     [](QWidget* window) { Click(Find(window, u"ok"_s)); }});
    return steps;
}

CTourStep AnswerFileDialog(const QString& name, const QString& path) {
    const auto enter = [path](QWidget* window) {
        // The dialog prefers a file that is selected, because it was proposed, to the field.
        Find<QAbstractItemView>(window, u"listView"_s)->clearSelection();
        auto* field = Find<QLineEdit>(window, u"fileNameEdit"_s);
        field->setFocus();
        field->selectAll();
        field->insert(path);
    };
    // The dialog may have found the proposed file in the meantime.
    return {name, u"QFileDialog"_s, enter, [enter](QWidget* window) {
                enter(window);
                Press(Find(window, u"fileNameEdit"_s), Qt::Key_Return);
            }};
}

CTourStep AnswerMessage(const QString& name, const QString& text, const QString& button) {
    return {name, u"QMessageBox"_s,
            [text](QWidget* box) {
                Expect(MessageText(box).contains(text), text + u" in "_s + MessageText(box));
            },
            [button](QWidget* box) { ClickButton(box, button); }};
}
