#include "controls/InPlaceControl.h"

#include <QAbstractItemView>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QTreeView>
#include <utility>

#include "controls/InputPanel.h"
#include "controls/NumberField.h"

namespace {

/// The edit box leaves this much of its cell free at the right.
constexpr int kEditRightGap = 4;
/// The list leaves the beginning of the row visible.
constexpr int kListLeftGap = 19;
constexpr int kMinimumListWidth = 10;
constexpr int kDroppedRows = 8;
/// The drop-down list is as wide as the column this far to the left, or as the box if there is
/// none.
constexpr int kDroppedWidthColumnOffset = 16;
/// Frame, margins and cursor of an edit box, both sides.
constexpr int kEditPadding = 12;

}  // namespace

CInPlaceControl::CInPlaceControl(QWidget* self, CInPlaceCell cell)
    : m_cell(std::move(cell)), m_self(self) {}

void CInPlaceControl::Start(const QRect& cell) {
    m_self->setFont(m_cell.list->font());
    Place(cell);
    m_self->show();
    m_self->setFocus();
}

bool CInPlaceControl::HandleKey(const QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Commit();
            return true;
        case Qt::Key_Escape:
            Cancel();
            return true;
        default:
            return false;
    }
}

void CInPlaceControl::HandleFocusOut(const QFocusEvent* event) {
    // The context menu and the drop-down list belong to the editor.
    if (event->reason() != Qt::PopupFocusReason) {
        End();
    }
}

void CInPlaceControl::HandleTab(bool forward) {
    Commit();
    m_cell.tabbed(m_cell.row, m_cell.column, forward);
}

void CInPlaceControl::Widen(int neededWidth) {
    const int room = m_cell.list->viewport()->width() - m_self->x();
    const int width = std::min(neededWidth, room);
    if (width > m_self->width()) {
        m_self->resize(width, m_self->height());
    }
}

void CInPlaceControl::Finish(bool cancelled) {
    m_cancelled = m_cancelled || cancelled;
    m_cell.list->setFocus();
    // In an inactive window moving the focus sends no event.
    End();
}

void CInPlaceControl::End() {
    if (m_ended) {
        return;
    }
    m_ended = true;
    const std::optional<QString> text = m_cancelled ? std::nullopt : std::optional(Text());
    m_self->hide();
    m_self->deleteLater();
    m_cell.ended(m_cell.row, m_cell.column, text);
    LowerInputPanel();
}

CInPlaceCellEdit::CInPlaceCellEdit(const CInPlaceCell& cell, const QString& text, ETyped typed)
    : QLineEdit(text, cell.list->viewport()), CInPlaceControl(this, cell), m_typed(typed) {
    setObjectName(u"inPlaceEdit");
    if (typed == ETyped::Number) {
        setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    }
    setAlignment(cell.alignment | Qt::AlignVCenter);
    connect(this, &QLineEdit::textEdited, this, [this](const QString& edited) {
        Widen(m_cell.list->fontMetrics().horizontalAdvance(edited) + kEditPadding);
    });
    selectAll();
    Start(cell.rect);
}

void CInPlaceCellEdit::Place(const QRect& cell) {
    const QRect client = m_cell.list->viewport()->rect();
    setGeometry(cell.adjusted(0, 0, -kEditRightGap, 0).intersected(client).translated(-1, -1));
}

void CInPlaceCellEdit::keyPressEvent(QKeyEvent* event) {
    const bool isCommand = event->modifiers().testFlag(Qt::ControlModifier);
    if (!HandleKey(event) && (isCommand || !IsRefused(event->text()))) {
        QLineEdit::keyPressEvent(event);
    }
}

void CInPlaceCellEdit::inputMethodEvent(QInputMethodEvent* event) {
    if (IsRefused(event->commitString()) || IsRefused(event->preeditString())) {
        QInputMethodEvent nothing;  // takes back what was being composed
        QLineEdit::inputMethodEvent(&nothing);
        return;
    }
    QLineEdit::inputMethodEvent(event);
}

bool CInPlaceCellEdit::IsRefused(const QString& typed) const {
    return m_typed == ETyped::Number && HasLetter(typed);
}

void CInPlaceCellEdit::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    HandleFocusOut(event);
}

bool CInPlaceCellEdit::focusNextPrevChild(bool next) {
    HandleTab(next);
    return true;
}

CInPlaceList::CInPlaceList(const CInPlaceCell& cell, const QStringList& choices, int selected,
                           const QString& text)
    : QComboBox(cell.list->viewport()), CInPlaceControl(this, cell) {
    setObjectName(u"inPlaceList");
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    // A completer would turn a typed "p" into "pt".
    setCompleter(nullptr);
    setMaxVisibleItems(kDroppedRows);
    for (const QString& choice : choices) {
        addItem(choice);
        setItemData(count() - 1, QSize(1, cell.rect.height()), Qt::SizeHintRole);
    }
    setCurrentIndex(selected);
    setEditText(text);
    view()->setMinimumWidth(cell.list->columnWidth(cell.column - kDroppedWidthColumnOffset));
    connect(lineEdit(), &QLineEdit::textEdited, this, [this](const QString& edited) {
        const int aroundText = width() - lineEdit()->width() + kEditPadding;
        Widen(m_cell.list->fontMetrics().horizontalAdvance(edited) + aroundText);
    });
    lineEdit()->selectAll();
    Start(cell.rect);
}

void CInPlaceList::Place(const QRect& cell) {
    const QRect client = m_cell.list->viewport()->rect();
    QRect box = cell.adjusted(kListLeftGap, 0, 0, 0).intersected(client);
    box.setWidth(std::max(box.width(), kMinimumListWidth));
    setGeometry(box.translated(0, -1));
}

void CInPlaceList::keyPressEvent(QKeyEvent* event) {
    if (!HandleKey(event)) {
        QComboBox::keyPressEvent(event);
    }
}

void CInPlaceList::focusOutEvent(QFocusEvent* event) {
    QComboBox::focusOutEvent(event);
    if (!view()->isVisible()) {
        HandleFocusOut(event);
    }
}

bool CInPlaceList::focusNextPrevChild(bool next) {
    HandleTab(next);
    return true;
}

bool EndInPlaceControls(QWidget* window, EInPlaceEnd how) {
    bool ended = false;
    for (QWidget* child : window->findChildren<QWidget*>()) {
        auto* control = dynamic_cast<CInPlaceControl*>(child);
        if (control == nullptr || child->isHidden()) {
            continue;
        }
        ended = true;
        if (how == EInPlaceEnd::Commit) {
            control->Commit();
        } else {
            control->Cancel();
        }
    }
    return ended;
}
