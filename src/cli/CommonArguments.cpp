#include "cli/CommonArguments.h"

#include "catalogue/items/CatalogueKinds.h"
#include "catalogue/items/ChosenFood.h"
#include "cli/TableOutput.h"
#include "platform/Messages.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

/// False after a message when `row` is not among the `choices` of a form. If there are no choices,
/// the form has already shown the message.
bool CheckOffered(const QStringList& choices, const QString& row, EPicker picker,
                  ECatalogueKind kind) {
    if (choices.contains(row)) {
        return true;
    }
    if (!choices.isEmpty()) {
        ShowMessage(picker == EPicker::Category ? kNoCategorySelected
                                                : QLatin1StringView(KindOf(kind).item.notFound));
    }
    return false;
}

}  // namespace

std::optional<CCategoryEntry> FindCategoryNamed(CCommandContext& context, const QString& name) {
    for (const CCategoryEntry& category : context.doc.Database().Categories().List(context.kind)) {
        if (category.name == name) {
            return category;
        }
    }
    ShowMessage(kNoCategorySelected);
    return std::nullopt;
}

bool ReportDamage(const CLeftOut& leftOut, const CListWords& words) {
    if (!leftOut.IsDamage()) {
        return true;
    }
    (void)FinishOutput();  // output comes before messages; the end of the program checks the result
    ShowMessage(DamageText(leftOut, words));
    return false;
}

QString KindName(EItemKind kind) {
    return QString::fromLatin1(KindOf(CatalogueOf(kind)).words.one);
}

bool CheckHasData(const QString& volumePath) {
    if (QFileInfo(volumePath).size() == 0) {
        ShowMessage(FormatText("There is no data in '%s'."_L1, {volumePath}));
        return false;
    }
    return true;
}

bool CheckProfileExists(CVelmoraDoc& doc, const QString& name) {
    if (doc.Database().Profiles().ReadNames().contains(name)) {
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
    return LoadProfileNamed(context.doc, context.arguments.Text("--profile"));
}

bool PickItem(CPickForm& form, const CArguments& arguments, ECatalogueKind kind) {
    for (const auto& [picker, option] : {std::pair(EPicker::Category, "--category"),
                                         {EPicker::Name, "--name"},
                                         {EPicker::Type, "--type"}}) {
        const QString row = arguments.Text(option);
        if (picker == EPicker::Type && !CatalogueLayoutOf(kind).namesType) {
            break;
        }
        if (!CheckOffered(form.Choices(picker, kNoCapacity).rows, row, picker, kind)) {
            return false;
        }
        form.Pick(picker, row);
    }
    return true;
}
