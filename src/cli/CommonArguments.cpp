#include "cli/CommonArguments.h"

#include "catalogue/CatalogueKinds.h"
#include "diary/DietRules.h"
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
