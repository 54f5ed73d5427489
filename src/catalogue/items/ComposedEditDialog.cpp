#include "catalogue/items/ComposedEditDialog.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QResizeEvent>
#include <QShortcut>
#include <QTabWidget>
#include <algorithm>

#include "catalogue/items/CatalogueKinds.h"
#include "catalogue/items/TextLimits.h"
#include "controls/Grid.h"
#include "controls/ReportList.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int kPageMargin = 4;
constexpr int kLeastRows = 4;
/// Narrower dialogs show a short text on the long button.
constexpr int kNarrowWidth = 320;

/// A page of the tabs: a heading, which is the buddy of `content`, above `content`.
QVBoxLayout* HeadedPage(QWidget* page, const QString& heading, QWidget* content) {
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(kPageMargin, kPageMargin, kPageMargin, kPageMargin);
    auto* label = new QLabel(heading);
    label->setBuddy(content);
    layout->addWidget(label);
    layout->addWidget(content, 1);
    content->setMinimumHeight(content->fontMetrics().height() * 2 * kLeastRows);
    return layout;
}
}  // namespace

CComposedEditDialog::CComposedEditDialog(CComposedForm& form, CComposedEditServices services,
                                         QWidget* parent)
    : CDialog(QString::fromLatin1(KindOf(form.GetKind()).capitalized), parent),
      m_form(form),
      m_services(std::move(services)) {
    AddFields();
    m_pages = new QTabWidget;
    m_pages->setObjectName(u"pages"_s);
    m_pages->setAccessibleName(u"Pages"_s);
    m_pages->addTab(MakeNutrientsPage(), u"Nutrients"_s);
    m_pages->addTab(MakeFoodsPage(), u"Foods"_s);
    if (m_form.GetKind() == ECatalogueKind::Recipes) {
        m_pages->addTab(MakeInstructionsPage(), u"Instructions"_s);
    }
    Content()->addWidget(m_pages, 1);
    AddRecalculate();
    ShowNutrients();
    ShowComponents(-1);
    m_name->setFocus();
    SetPreferredSize(480, 600);
}

CComposedEditDialog::~CComposedEditDialog() = default;

void CComposedEditDialog::AddFields() {
    QFormLayout* form = AddForm();
    const CComposedFields& fields = m_form.Fields();
    m_name = new QLineEdit(fields.name);
    m_name->setObjectName(u"name"_s);
    m_name->setMaxLength(kShortText);
    m_name->setCursorPosition(0);
    form->addRow(u"&Name:"_s, m_name);

    m_category = new QComboBox;
    m_category->setObjectName(u"category"_s);
    m_category->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    for (const CCategoryEntry& entry :
         m_form.Doc().Database().Categories().List(m_form.GetKind())) {
        m_category->addItem(entry.name, entry.id);
    }
    m_category->setCurrentIndex(m_category->findData(fields.categoryId));
    form->addRow(u"&Category:"_s, m_category);

    if (m_form.GetKind() == ECatalogueKind::Recipes) {
        m_servings = new QLineEdit(fields.servings);
        m_servings->setObjectName(u"servings"_s);
        m_servings->setMaxLength(
            std::max<int>(kLongestServingName, static_cast<int>(fields.servings.size())));
        m_servings->setCursorPosition(0);
        form->addRow(u"&Servings:"_s, m_servings);
    }
}

QWidget* CComposedEditDialog::MakeNutrientsPage() {
    m_nutrients = new CGrid(EGridKind::Values, {u"Nutrient (unit)"_s, u"Value"_s}, u"Nutrients"_s);
    m_nutrients->setObjectName(u"nutrients"_s);
    m_nutrients->setColumnWidth(1,
                                m_nutrients->fontMetrics().horizontalAdvance(u"000000.000000"_s));
    m_nutrients->SetRowCount(m_form.RowCount());
    connect(m_nutrients, &CGrid::LabelEditEnded, this,
            [this](int row, int column, const std::optional<QString>& text) {
                if (text) {
                    m_form.SetRowText(row, *text);
                }
                m_nutrients->SetCellText(row, column, m_form.RowText(row));
                m_lacksValues->setVisible(m_form.LacksValues());
            });
    auto* page = new QWidget;
    HeadedPage(page, u"Nutrients per serving:"_s, m_nutrients);
    return page;
}

QWidget* CComposedEditDialog::MakeFoodsPage() {
    m_components = new CReportList(u"Foods"_s);
    m_components->setObjectName(u"components"_s);
    const int servingWidth = m_components->fontMetrics().horizontalAdvance(u"00.00xtablespoon"_s);
    m_components->SetColumns(
        {{.title = u"Name"_s}, {.title = u"Serving"_s, .least = servingWidth, .share = 0}});
    connect(m_components, &QAbstractItemView::activated, this, &CComposedEditDialog::EditComponent);
    auto* page = new QWidget;
    QVBoxLayout* layout = HeadedPage(page, u"Foods:"_s, m_components);
    auto* row = new QHBoxLayout;
    const auto addButton = [&](const QString& text, const QString& name,
                               const QKeySequence& shortcut, void (CComposedEditDialog::*run)()) {
        auto* button = new QPushButton(text);
        button->setObjectName(name);
        button->setAutoDefault(false);
        const QSize size = button->fontMetrics().size(Qt::TextShowMnemonic, text);
        button->setMinimumWidth(size.width() + 2 * kPageMargin);
        button->setToolTip(shortcut.toString(QKeySequence::NativeText));
        connect(button, &QPushButton::clicked, this, run);
        auto* key = new QShortcut(shortcut, m_components);
        key->setContext(Qt::WidgetShortcut);
        connect(key, &QShortcut::activated, this, run);
        row->addWidget(button);
    };
    addButton(u"&Add..."_s, u"addFood"_s, Qt::Key_Insert, &CComposedEditDialog::AddComponent);
    addButton(u"&Edit..."_s, u"editFood"_s, Qt::Key_F2, &CComposedEditDialog::EditComponent);
    addButton(u"&Delete..."_s, u"deleteFood"_s, QKeySequence::Delete,
              &CComposedEditDialog::DeleteComponents);
    row->addStretch();
    layout->addLayout(row);
    return page;
}

QWidget* CComposedEditDialog::MakeInstructionsPage() {
    m_instructions = new QPlainTextEdit(m_form.Fields().instructions);
    m_instructions->setObjectName(u"instructions"_s);
    m_instructions->setTabChangesFocus(true);
    auto* page = new QWidget;
    QVBoxLayout* layout = HeadedPage(page, u"Instructions:"_s, m_instructions);
    auto* save = new QPushButton(u"Save recipe as &text..."_s);
    save->setObjectName(u"saveAsText"_s);
    save->setAutoDefault(false);
    connect(save, &QPushButton::clicked, this, &CComposedEditDialog::SaveAsText);
    layout->addWidget(save, 0, Qt::AlignLeft);
    return page;
}

void CComposedEditDialog::AddRecalculate() {
    m_recalculate = new QPushButton;
    m_recalculate->setObjectName(u"recalculate"_s);
    m_recalculate->setAutoDefault(false);
    const QString text = QString::fromLatin1(KindOf(m_form.GetKind()).component.recalculate);
    m_recalculate->setAccessibleName(text);
    m_recalculate->setToolTip(text);
    connect(m_recalculate, &QPushButton::clicked, this, &CComposedEditDialog::Recalculate);
    m_lacksValues =
        new QLabel(u"The values are still 0. The button below takes those of the foods."_s);
    m_lacksValues->setObjectName(u"lacksValues"_s);
    m_lacksValues->setWordWrap(true);
    Content()->addWidget(m_lacksValues);
    Content()->addWidget(m_recalculate);
}

void CComposedEditDialog::resizeEvent(QResizeEvent* event) {
    CDialog::resizeEvent(event);
    m_recalculate->setText(event->size().width() < kNarrowWidth ? u"&Recalculate"_s
                                                                : u'&' + m_recalculate->toolTip());
}

void CComposedEditDialog::ReadFields() {
    CComposedFields& fields = m_form.Fields();
    const QVariant category = m_category->currentData();
    fields.categoryId = category.isValid() ? category.toInt() : -1;
    fields.name = m_name->text();
    if (m_servings != nullptr) {
        fields.servings = m_servings->text();
    }
    // An unchanged text keeps its own line ends.
    if (m_instructions != nullptr && m_instructions->document()->isModified()) {
        fields.instructions = m_instructions->toPlainText().replace(u"\n"_s, u"\r\n"_s);
    }
}

void CComposedEditDialog::ShowNutrients() {
    for (int row = 0; row < m_form.RowCount(); ++row) {
        m_nutrients->SetCellText(row, 0, m_form.RowTitle(row));
        m_nutrients->SetCellText(row, 1, m_form.RowText(row));
    }
    m_lacksValues->setVisible(m_form.LacksValues());
}

void CComposedEditDialog::ShowComponents(int row) {
    m_components->SetRows(
        {static_cast<int>(m_form.Components().size()), [this](int component, int column) {
             return column == 0 ? m_form.Components()[static_cast<size_t>(component)].GetName()
                                : m_form.ServingText(component);
         }});
    if (row >= 0) {
        m_components->SelectPlace(row);
    }
    m_lacksValues->setVisible(m_form.LacksValues());
}

void CComposedEditDialog::AddComponent() {
    const auto take = [this](const CChosenFood& food) {
        return m_form.Doc().MayClose(m_form.AddComponent(food));
    };
    if (m_services.chooseFood(this, nullptr, take)) {
        ShowComponents(static_cast<int>(m_form.Components().size()) - 1);
        m_components->setFocus();
    }
}

void CComposedEditDialog::EditComponent() {
    const std::vector<int> rows = m_components->SelectedRows();
    if (!CComposedForm::MayEditComponent(static_cast<int>(rows.size()))) {
        return;
    }
    const int row = rows.front();
    const auto take = [this, row](const CChosenFood& food) {
        return m_form.Doc().MayClose(m_form.ReplaceComponent(row, food));
    };
    const CComposedItem component = m_form.Components()[static_cast<size_t>(row)];
    if (m_services.chooseFood(this, &component, take)) {
        ShowComponents(row);
    }
}

void CComposedEditDialog::DeleteComponents() {
    const std::vector<int> rows = m_components->SelectedRows();
    (void)m_form.DeleteComponents(rows);  // a failure has shown its message
    ShowComponents(rows.empty() ? -1 : rows.front());
}

void CComposedEditDialog::Recalculate() {
    m_nutrients->EndEditing();
    m_form.Recalculate();
    ShowNutrients();
    m_pages->setCurrentIndex(0);
}

void CComposedEditDialog::SaveAsText() {
    if (m_nutrients->EndEditing()) {
        return;
    }
    ReadFields();
    m_services.saveAsText(m_form);
}

bool CComposedEditDialog::CloseOverlay() {
    return m_nutrients->EndEditing();
}

bool CComposedEditDialog::Confirm() {
    ReadFields();
    return m_form.Confirm();
}
