#include "cli/CommonArguments.h"

#include "platform/Messages.h"

using namespace Qt::StringLiterals;

bool FindCategoryArgument(CCommandContext& context, ECatalogueKind kind, qint32& categoryId) {
    categoryId = context.doc.Database().CategoryIdOf(kind, context.arguments.Text("--category"));
    if (categoryId < 0) {
        ShowMessage(u"There is no category selected."_s);
        return false;
    }
    return true;
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
