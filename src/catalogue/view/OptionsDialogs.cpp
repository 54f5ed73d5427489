#include "catalogue/view/OptionsDialogs.h"

#include <QButtonGroup>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

#include "catalogue/items/CatalogueKinds.h"

using namespace Qt::StringLiterals;

namespace {
/// The choice made; nothing when the dialog is cancelled.
template <typename Choice>
std::optional<Choice> Ask(const QString& title, const QStringList& choices, Choice preselected,
                          QWidget* parent) {
    COptionsDialog dialog(title, title + u':', choices, static_cast<int>(preselected), parent);
    return dialog.exec() == QDialog::Accepted
               ? std::optional(static_cast<Choice>(dialog.GetChoice()))
               : std::nullopt;
}
}  // namespace

COptionsDialog::COptionsDialog(const QString& title, const QString& label,
                               const QStringList& choices, int selected, QWidget* parent)
    : CDialog(title, parent), m_choices(new QButtonGroup(this)) {
    Content()->addWidget(new QLabel(label));
    for (int i = 0; i < choices.size(); ++i) {
        auto* button = new QRadioButton(choices[i]);
        button->setObjectName(u"option%1"_s.arg(i));
        button->setChecked(i == selected);
        m_choices->addButton(button, i);
        Content()->addWidget(button);
    }
    Content()->addStretch();
    m_choices->button(selected)->setFocus();
    SetPreferredSize(260, 180);
}

int COptionsDialog::GetChoice() const {
    return m_choices->checkedId();
}

std::optional<EExportChoice> AskExportOptions(ECatalogueKind kind, EExportChoice preselected,
                                              QWidget* parent) {
    const QString plural = QString::fromLatin1(KindOf(kind).words.many);
    return Ask(u"Export options"_s,
               {FormatText("Export all %s"_L1, {plural}), u"Export current category"_s,
                FormatText("Export selected %s"_L1, {plural})},
               preselected, parent);
}

std::optional<EDuplicatePolicy> AskImportOptions(ECatalogueKind kind, EDuplicatePolicy preselected,
                                                 QWidget* parent) {
    const QString plural = QString::fromLatin1(KindOf(kind).words.many);
    return Ask(u"Import options"_s,
               {FormatText("Overwrite existing %s"_L1, {plural}),
                FormatText("Skip existing %s"_L1, {plural}),
                QString::fromLatin1(KindOf(kind).exchange.doNotCheck)},
               preselected, parent);
}

std::optional<EDuplicatePolicy> AskTakeInOptions(QWidget* parent) {
    return Ask(u"Take in options"_s,
               {u"Overwrite existing items"_s, u"Skip existing items"_s, u"Do not check"_s},
               EDuplicatePolicy::Skip, parent);
}
