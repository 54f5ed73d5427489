#include "cli/CommonArguments.h"

#include "catalogue/CatalogueKinds.h"
#include "catalogue/CatalogueTexts.h"
#include "catalogue/ChosenFood.h"
#include "platform/Messages.h"

using namespace Qt::StringLiterals;

std::optional<CCategoryEntry> FindCategoryNamed(CCommandContext& context, const QString& name) {
    for (const CCategoryEntry& category : context.doc.Database().ListCategories(context.kind)) {
        if (category.name == name) {
            return category;
        }
    }
    ShowMessage(u"There is no category selected."_s);
    return std::nullopt;
}

QString KindName(EItemKind kind) {
    return QString::fromLatin1(KindOf(CatalogueOf(kind)).singular);
}

bool CheckProfileExists(CVelmoraDoc& doc, const QString& name) {
    if (doc.Database().FillProfileNames().contains(name)) {
        return true;
    }
    ShowMessage(FormatText("There is no user profile '%s'."_L1, {name}));
    return false;
}

bool LoadProfileNamed(CVelmoraDoc& doc, const QString& name) {
    if (!CheckProfileExists(doc, name)) {
        return false;
    }
    if (!doc.LoadProfile(name)) {
        ShowMessage(FormatText("Cannot open user profile '%s'."_L1, {name}));
        return false;
    }
    return true;
}

bool LoadProfileArgument(CCommandContext& context) {
    return context.arguments.GetError().isEmpty() &&
           LoadProfileNamed(context.doc, context.arguments.Text("--profile"));
}

bool CheckOffered(const QStringList& choices, const QString& row, EPicker picker,
                  ECatalogueKind kind) {
    if (choices.contains(row)) {
        return true;
    }
    if (!choices.isEmpty()) {
        ShowMessage(picker == EPicker::Category
                        ? u"There is no category selected."_s
                        : QString::fromLatin1(CatalogueTextsOf(kind).notFound));
    }
    return false;
}
