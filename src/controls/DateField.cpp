#include "controls/DateField.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QToolTip>

#include "platform/TypedDate.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int kHintMilliseconds = 6000;

/// Keys that write or move within the text; all others keep their meaning in QDateEdit.
bool IsTextKey(const QKeyEvent& event) {
    switch (event.key()) {
        case Qt::Key_Backspace:
        case Qt::Key_Delete:
            return true;
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_Home:
        case Qt::Key_End:
            return event.modifiers() == Qt::NoModifier || event.modifiers() == Qt::ShiftModifier;
        default:
            return event.matches(QKeySequence::Paste) ||
                   (!event.text().isEmpty() && event.text().front().isPrint() &&
                    (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == 0);
    }
}

}  // namespace

CDateField::CDateField(QDate date, const QString& shownFormat, QWidget* parent)
    : QDateEdit(date, parent) {
    setDisplayFormat(shownFormat);
    setCalendarPopup(true);
    setKeyboardTracking(false);
    setToolTip(u"A date, t for today, +3 or -1 for days from this one, or a weekday"_s);
    lineEdit()->installEventFilter(this);
}

bool CDateField::TakeTyped() {
    if (!IsTyped()) {
        return true;
    }
    const QString typed = lineEdit()->text();
    const bool isUnderstood = Typed(typed).has_value();
    interpretText();
    if (!isUnderstood) {
        lineEdit()->setText(textFromDateTime(dateTime()));
        const QString kept = lineEdit()->text();
        QToolTip::showText(mapToGlobal(rect().bottomLeft()),
                           typed.trimmed().isEmpty()
                               ? u"No date was typed. %1 was kept."_s.arg(kept)
                               : u"\"%1\" is not a date. %2 was kept."_s.arg(typed, kept),
                           this, {}, kHintMilliseconds);
    }
    return isUnderstood;
}

// The base class reads and moves on section by section while one types. Its slots are kept out, and
// the text is read as a whole when it is complete.
void CDateField::keyPressEvent(QKeyEvent* event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && !TakeTyped()) {
        event->accept();
        return;
    }
    const bool isText = IsTextKey(*event);
    if (!isText || (!IsTyped() && event->text().isEmpty())) {
        if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down) {
            TakeTyped();  // a step starts from the date just typed
        }
        QDateEdit::keyPressEvent(event);
        m_replacesAll = true;
        return;
    }
    const QSignalBlocker quiet(lineEdit());
    if (event->key() != Qt::Key_Backspace && event->key() != Qt::Key_Delete) {
        SelectWhatTypingReplaces();
    }
    QAbstractSpinBox::keyPressEvent(event);  // NOLINT(bugprone-parent-virtual-call): see above
}

// What an input method composes is text like any other.
bool CDateField::event(QEvent* event) {
    if (event->type() != QEvent::InputMethod) {
        return QDateEdit::event(event);
    }
    const QSignalBlocker quiet(lineEdit());
    SelectWhatTypingReplaces();
    return QDateEdit::event(event);
}

void CDateField::SelectWhatTypingReplaces() {
    if (m_replacesAll && !IsTyped() && lineEdit()->hasSelectedText()) {
        lineEdit()->selectAll();
    }
}

void CDateField::focusInEvent(QFocusEvent* event) {
    m_replacesAll = event->reason() != Qt::MouseFocusReason;
    QDateEdit::focusInEvent(event);
}

void CDateField::focusOutEvent(QFocusEvent* event) {
    if (event->reason() != Qt::PopupFocusReason) {
        TakeTyped();
    }
    QDateEdit::focusOutEvent(event);
}

// Tab goes through the parts of the date, unless it ends what was typed.
bool CDateField::focusNextPrevChild(bool next) {
    if (!IsTyped()) {
        return QDateEdit::focusNextPrevChild(next);
    }
    // NOLINTNEXTLINE(bugprone-parent-virtual-call): past the parts
    return !TakeTyped() || QWidget::focusNextPrevChild(next);
}

bool CDateField::eventFilter(QObject* watched, QEvent* event) {
    if (watched == lineEdit() && event->type() == QEvent::MouseButtonPress) {
        m_replacesAll = false;
    }
    return QDateEdit::eventFilter(watched, event);
}

QValidator::State CDateField::validate(QString& text, int& /*position*/) const {
    return Typed(text) ? QValidator::Acceptable : QValidator::Intermediate;
}

QDateTime CDateField::dateTimeFromText(const QString& text) const {
    return Typed(text).value_or(date()).startOfDay();
}

std::optional<QDate> CDateField::Typed(const QString& text) const {
    const auto typed = TypedDate(text, date(), QDate::currentDate(), displayFormat());
    return typed && *typed >= minimumDate() && *typed <= maximumDate() ? typed : std::nullopt;
}

bool CDateField::IsTyped() const {
    return lineEdit()->text() != textFromDateTime(dateTime());
}
