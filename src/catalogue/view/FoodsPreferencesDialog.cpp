#include "catalogue/view/FoodsPreferencesDialog.h"

#include <QCheckBox>
#include <QLabel>
#include <QTabWidget>
#include <QVBoxLayout>

#include "controls/Grid.h"

using namespace Qt::StringLiterals;

namespace {
constexpr auto kFoods = ECatalogueKind::Foods;
constexpr int kMargin = 6;
}  // namespace

struct CFoodsPreferencesDialog::CFields {
    CGrid* nutrients = nullptr;
    QCheckBox* confirmServingChange = nullptr;
    QCheckBox* namesInTree = nullptr;
};

CFoodsPreferencesDialog::CFoodsPreferencesDialog(CVelmoraDoc& doc, QWidget* parent)
    : CDialog(u"Foods preferences"_s, parent), m_doc(doc), m_fields(std::make_unique<CFields>()) {
    auto* tabs = new QTabWidget;
    tabs->setObjectName(u"tabs"_s);
    tabs->setDocumentMode(true);
    tabs->setAccessibleName(u"Foods preferences"_s);
    tabs->addTab(MakeNutrientsTab(), u"Nutrients"_s);
    tabs->addTab(MakeDisplayTab(CCatalogueViewSettings::Load(doc.Database(), kFoods)),
                 u"Display"_s);
    // No side margins: the options are as wide as the smallest screen.
    Content()->setContentsMargins(0, kMargin, 0, 0);
    Content()->addWidget(tabs);
    SetPreferredSize(360, 460);
}

CFoodsPreferencesDialog::~CFoodsPreferencesDialog() = default;

QWidget* CFoodsPreferencesDialog::MakeNutrientsTab() {
    auto* grid = new CGrid(EGridKind::Checks, {u"Nutrient (unit)"_s},
                           u"Select nutrients to use and edit names:"_s);
    grid->setObjectName(u"nutrients"_s);
    grid->setMinimumWidth(1);  // it scrolls when the column does not fit
    const QStringList& names = m_doc.NutrientNames();
    grid->SetRowCount(kNutrientCount);
    for (int index = 0; index < kNutrientCount; ++index) {
        grid->SetCellText(index, 0, names[index]);
        grid->SetChecked(index, m_doc.Preferences().displayed.test(static_cast<size_t>(index)));
    }
    connect(grid, &CGrid::LabelEditEnded, this,
            [grid](int row, int column, const std::optional<QString>& text) {
                // A nutrient must keep a name.
                if (row >= kFirstUserNutrient && text && !text->trimmed().isEmpty()) {
                    grid->SetCellText(row, column, text->trimmed());
                }
            });
    m_fields->nutrients = grid;

    auto* tab = new QWidget;
    auto* layout = new QVBoxLayout(tab);
    layout->setContentsMargins(kMargin / 2, kMargin, 0, 0);
    auto* label = new QLabel(grid->accessibleName());
    label->setWordWrap(true);
    label->setBuddy(grid);
    layout->addWidget(label);
    layout->addWidget(grid);
    return tab;
}

QWidget* CFoodsPreferencesDialog::MakeDisplayTab(const CCatalogueViewSettings& settings) {
    auto* tab = new QWidget;
    auto* layout = new QVBoxLayout(tab);
    layout->setContentsMargins(kMargin / 2, kMargin, 0, 0);
    const auto addOption = [&](const QString& heading, const QString& text, const QString& name,
                               bool checked) {
        auto* box = new QCheckBox(text);
        box->setObjectName(name);
        box->setChecked(checked);
        box->setMinimumWidth(1);
        layout->addWidget(new QLabel(heading));
        layout->addWidget(box);
        return box;
    };
    m_fields->confirmServingChange =
        addOption(u"Confirmations:"_s, u"Show when change serving method"_s,
                  u"confirmServingChange"_s, settings.confirmServingChange);
    layout->addSpacing(12);
    m_fields->namesInTree = addOption(u"Display:"_s, u"Show food names in category tree"_s,
                                      u"namesInTree"_s, settings.namesInTree);
    layout->addStretch();
    return tab;
}

bool CFoodsPreferencesDialog::Confirm() {
    CPreferences& preferences = m_doc.Settings().preferences;
    const CPreferences before = preferences;
    for (int index = 0; index < kNutrientCount; ++index) {
        preferences.displayed.set(static_cast<size_t>(index),
                                  m_fields->nutrients->IsChecked(index));
    }
    const bool isStored = m_doc.MayClose(SaveNames() && SaveSettings());
    if (!isStored) {
        preferences = before;
    }
    return isStored;
}

// A failure has shown its message.
bool CFoodsPreferencesDialog::SaveSettings() {
    CCatalogueViewSettings settings = CCatalogueViewSettings::Load(m_doc.Database(), kFoods);
    settings.confirmServingChange = m_fields->confirmServingChange->isChecked();
    settings.namesInTree = m_fields->namesInTree->isChecked();
    const bool isSaved = settings.Save(m_doc.Database(), kFoods);
    return m_doc.MayClose(isSaved) && (!m_doc.IsProfileActive() || m_doc.SaveSettings());
}

bool CFoodsPreferencesDialog::SaveNames() {
    const QStringList stored = m_doc.NutrientNames();
    bool isChanged = false;
    for (int index = kFirstUserNutrient; index < kNutrientCount; ++index) {
        const QString name = m_fields->nutrients->CellText(index, 0);
        if (name != stored[index]) {
            // SaveName does not report a failed write; the other names are still worth keeping.
            (void)m_doc.Database().NutrientNames().SaveName(index, index, name);
            isChanged = true;
        }
    }
    m_doc.ForgetNutrientNames();
    CRecordStore& store = m_doc.Database().GetStore();
    if (!isChanged || !store.IsVolumeLost()) {
        return true;
    }
    store.ShowRefusedWrite();
    return false;
}
