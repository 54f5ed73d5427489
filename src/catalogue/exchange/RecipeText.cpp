#include "catalogue/exchange/RecipeText.h"

#include "platform/Messages.h"
#include "platform/NumberText.h"
#include "platform/TextFile.h"

using namespace Qt::StringLiterals;

namespace {
/// With a point in every locale, since the file may be read elsewhere.
QString Number(double value, const CPreferences& preferences) {
    return FixedNumber(value, preferences.decimals);
}

QString IngredientLine(const CComposedItem& component, const CPreferences& preferences) {
    if (component.GetServingX() == 1.0) {
        return FormatText("%s %s"_L1, {component.GetServingName(), component.GetName()});
    }
    return FormatText("%s X %s %s"_L1, {Number(component.GetServingX(), preferences),
                                        component.GetServingName(), component.GetName()});
}
}  // namespace

bool SaveRecipeText(const CComposedForm& recipe) {
    const QString path =
        ChooseFileToSave({u"Save recipe as text"_s, u".txt"_s, u"Text file (*.txt)"_s, QString()});
    return !path.isEmpty() && SaveRecipeTextFile(recipe, path);
}

bool SaveRecipeTextFile(const CComposedForm& recipe, const QString& path) {
    CTextFile file;
    if (recipe.Doc().Database().IsVolume(path) ||
        !file.Create(path, CTextFile::EReaders::ByUmask)) {
        ShowMessage(u"Cannot create file."_s);
        return false;
    }
    const CPreferences& preferences = recipe.Doc().Preferences();
    const CComposedFields& fields = recipe.Fields();
    file.WriteLine(u"Velmora recipe\r\n");
    file.WriteLine(FormatText("Category: %s"_L1, {recipe.CategoryText()}));
    file.WriteLine(FormatText("Name: %s"_L1, {fields.name}));
    file.WriteLine(FormatText("Servings: %s"_L1, {fields.servings}));
    file.WriteLine(u"\r\nIngredients:");
    for (const CComposedItem& component : recipe.Components()) {
        file.WriteLine(IngredientLine(component, preferences));
    }
    file.WriteLine(u"\r\nInstructions:");
    file.WriteLine(fields.instructions);
    file.WriteLine(u"\r\nNutrients:");
    for (int row = 0; row < recipe.RowCount(); ++row) {
        const double value = ShownValue(recipe.RowText(row));
        file.WriteLine(FormatText("%s: %s"_L1, {recipe.RowTitle(row), Number(value, preferences)}));
    }
    if (!file.Close()) {
        ShowMessage(u"Cannot create file."_s);
        return false;
    }
    return true;
}
