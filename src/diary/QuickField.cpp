#include "diary/QuickField.h"

#include <QHeaderView>
#include <QInputMethodEvent>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QTextCharFormat>
#include <QVBoxLayout>
#include <algorithm>

#include "app/ItemTexts.h"
#include "catalogue/pick/SearchColumns.h"
#include "catalogue/pick/SearchItems.h"
#include "controls/PaintedIcons.h"
#include "controls/RowDelegate.h"
#include "diary/DietRules.h"
#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

namespace {
enum : int { kName, kServing, kEnergy };

constexpr int kMatchRows = 8;
/// The share of the overlay that the items take at most.
constexpr double kItemsShare = 0.4;
}  // namespace

CQuickField::CQuickField(CVelmoraDoc& doc, QWidget* over, QWidget* parent)
    : COverlayField(u"quick"_s, SearchColumns(SearchTitles(doc)), over, parent),
      m_doc(doc),
      m_entry(doc),
      m_items(new CReportList(u"Understood"_s, over)) {
    setAccessibleName(u"Quick entry"_s);
    setPlaceholderText(u"Quick entry: 2 eggs, 150 g lentils"_s);
    setToolTip(u"Quick entry (Ctrl+L)"_s);
    m_items->setObjectName(u"quickItems"_s);
    m_items->setFocusPolicy(Qt::NoFocus);
    m_items->setContextMenuPolicy(Qt::NoContextMenu);
    m_items->setSelectionMode(QAbstractItemView::SingleSelection);
    m_items->setHeaderHidden(true);
    m_items->SetColumns({{.title = u"Name"_s},
                         {.title = u"Serving"_s},
                         {.title = u"Energy"_s, .kind = CReportColumn::EKind::Number, .share = 0}});
    Overlay()->setSpacing(0);
    Overlay()->insertWidget(0, m_items);
    connect(this, &QLineEdit::textChanged, this,
            [this](const QString& line) { m_doc.quickLine = line; });
    connect(m_items, &CReportList::clicked, this, [this](const QModelIndex& index) {
        const CQuickItem& item = m_entry.Items()[static_cast<std::size_t>(index.row())];
        setCursorPosition(static_cast<int>(item.first + item.text.size()));
    });
    connect(this, &QLineEdit::cursorPositionChanged, this, [this] {
        if (IsOpen() && !IsPending() && m_entry.ItemAt(cursorPosition()) != m_current) {
            ShowMatches();
        }
    });
}

void CQuickField::SetOnDemand(bool isOnDemand) {
    m_isOnDemand = isOnDemand;
    ShowOrHide();
}

void CQuickField::ShowOrHide() {
    setVisible(!m_isOnDemand || hasFocus() || !text().isEmpty());
}

void CQuickField::Call() {
    show();
    setFocus(Qt::ShortcutFocusReason);
}

void CQuickField::Forget() {
    if (text() != m_doc.quickLine) {
        setText(m_doc.quickLine);  // in a new view, or with another profile
        Close();
    }
    m_entry.Forget();
    ShowItems();
    List()->SetColumns(SearchColumns(SearchTitles(m_doc)));
    if (IsOpen()) {
        Open();
    }
}

bool CQuickField::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool hasHistory = isUndoAvailable() || isRedoAvailable();
        if (!hasHistory && (key->matches(QKeySequence::Undo) || key->matches(QKeySequence::Redo))) {
            // Then the keys belong to the tab.
            event->ignore();
            return true;
        }
    }
    return COverlayField::event(event);
}

void CQuickField::focusInEvent(QFocusEvent* event) {
    COverlayField::focusInEvent(event);
    PrepareWhileIdle([this] { return m_doc.Database().Search().PrepareSome(); });
}

void CQuickField::focusOutEvent(QFocusEvent* event) {
    COverlayField::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason) {
        ShowOrHide();
    }
}

void CQuickField::inputMethodEvent(QInputMethodEvent* event) {
    m_isComposing = !event->preeditString().isEmpty();
    COverlayField::inputMethodEvent(event);
}

void CQuickField::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (!IsOpen() && !text().trimmed().isEmpty()) {
                Open();
            }
            COverlayField::keyPressEvent(event);
            return;
        case Qt::Key_Escape:
            Escape();
            return;
        default:
            COverlayField::keyPressEvent(event);
    }
}

void CQuickField::Escape() {
    if (IsOpen()) {
        Close();
        return;
    }
    clear();
    emit Left();
}

void CQuickField::Fill() {
    if (m_doc.Database().Search().PrepareSome()) {
        SetRows({.hint = kSearching, .isPending = true});
        return;
    }
    Read();
}

void CQuickField::Read() {
    m_entry.Read(text());
    ShowItems();
    ShowMatches();
}

void CQuickField::ShowItems() {
    const std::vector<CQuickItem>& items = m_entry.Items();
    const auto itemAt = [&items](int row) -> const CQuickItem& {
        return items[static_cast<std::size_t>(row)];
    };
    const QIcon refused = PaintedIcon(EIcon::Refused, palette().color(QPalette::Text));
    m_items->SetRows(
        {.count = static_cast<int>(items.size()),
         .text = [this, itemAt](int row, int column) { return CellText(itemAt(row), column); },
         .icon = [itemAt,
                  refused](int row) { return itemAt(row).refusal.isEmpty() ? QIcon() : refused; }});
    for (int row = 0; row < std::ssize(items); ++row) {
        m_items->setFirstColumnSpanned(row, {}, !itemAt(row).refusal.isEmpty());
    }
    m_items->setVisible(!items.empty());
    UnderlineRefused();
}

QString CQuickField::CellText(const CQuickItem& item, int column) const {
    if (!item.refusal.isEmpty()) {
        return column == kName ? item.text + u": "_s + item.refusal : QString();
    }
    const CPreferences& preferences = m_doc.Preferences();
    const CFoodItem& food = item.food.item;
    switch (column) {
        case kName:
            return FoundName(food.GetName(), food.GetType());
        case kServing:
            return ServingText(preferences.FormatNumber(item.food.amount), food.GetServingName(0));
        case kEnergy:
            return QString::number(
                       WholeEnergy(food.GetNutrientValue(kEnergyIndex), preferences.energyUnit)) +
                   u' ' + UnitName(preferences.energyUnit, EUnitForm::Abbreviated);
        default:
            return {};
    }
}

void CQuickField::ShowMatches() {
    m_current = m_entry.ItemAt(cursorPosition());
    m_matches.clear();
    CSearchRows rows;
    int taken = -1;
    if (m_current < 0) {
        rows.hint = u"Type an amount and a food, then a comma and the next one."_s;
    } else {
        const CQuickItem& item = m_entry.Items()[static_cast<std::size_t>(m_current)];
        for (const CSearchMatch& match : item.matches) {
            m_matches.push_back(ReadFoundItem(m_doc.Database(), match).value_or(CFoundItem()));
        }
        rows.count = static_cast<int>(m_matches.size());
        rows.text = [this](int row, int column) {
            return SearchCell(m_doc, m_matches[static_cast<std::size_t>(row)], column);
        };
        (m_matches.empty() ? rows.hint : rows.note) = item.refusal;
        if (item.refusal.isEmpty() && IsSmall(window()->size())) {
            rows.note = CellText(item, kName);  // the list has no room for it
        }
        taken = item.taken;
    }
    SetRows(rows);
    if (taken < 0) {
        List()->selectionModel()->clear();  // the first Down takes the first match
    } else {
        List()->SelectPlace(taken);
    }
    m_items->SelectPlace(m_current);
    QStringList cells;
    for (const int column : {kName, kServing, kEnergy}) {
        cells.append(m_current < 0
                         ? QString()
                         : CellText(m_entry.Items()[static_cast<std::size_t>(m_current)], column));
    }
    setAccessibleDescription(cells.join(u' ').trimmed());
}

void CQuickField::RowChosen(int row) {
    m_entry.Take(m_current, row);
    ShowItems();
    ShowMatches();
    List()->SelectPlace(row);  // also when it cannot be taken
}

void CQuickField::Pick(int row) {
    if (row >= 0) {
        RowChosen(row);
    }
}

// QLineEdit has no formats of its own; those of an input method are kept until its next event.
void CQuickField::UnderlineRefused() {
    if (m_isComposing) {
        return;
    }
    QTextCharFormat wave;
    wave.setUnderlineStyle(QTextCharFormat::WaveUnderline);
    QList<QInputMethodEvent::Attribute> marks;
    for (const CQuickItem& item : m_entry.Items()) {
        if (!item.refusal.isEmpty()) {
            marks.append({QInputMethodEvent::TextFormat,
                          static_cast<int>(item.first) - cursorPosition(),
                          static_cast<int>(item.text.size()), wave});
        }
    }
    QInputMethodEvent event({}, marks);
    COverlayField::inputMethodEvent(&event);
}

void CQuickField::Add() {
    Read();
    const std::vector<CQuickItem>& items = m_entry.Items();
    if (items.empty() || !MayAddToMeal(m_doc.selectedMeal)) {
        return;
    }
    const QTime now = QTime::currentTime();
    const int added = AddQuickItems(m_doc, m_doc.dayShown, now, m_doc.selectedMeal, items);
    if (added > 0) {  // otherwise the line keeps its undo history
        setText(QuickLineWithout(items, added));
    }
    Open();
    if (text().isEmpty()) {
        Close();
    }
    if (added > 0) {
        emit Added(added, now);
    }
}

int CQuickField::LayOutParts(int room) {
    const int row = std::max(m_items->sizeHintForRow(0), fontMetrics().height());
    const int items = std::min(static_cast<int>(m_entry.Items().size()) * row + 2,
                               static_cast<int>(room * kItemsShare));
    m_items->setFixedHeight(items);
    return IsSmall(window()->size()) ? room : std::min(room, items + (kMatchRows + 1) * row);
}
