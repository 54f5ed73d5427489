#include "controls/Dialog.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QShowEvent>
#include <QStyle>
#include <QVBoxLayout>
#include <QWindow>

#include "controls/DateField.h"
#include "controls/InPlaceControl.h"
#include "controls/ModalLoop.h"
#include "controls/Silence.h"

namespace {

constexpr int kMargin = 6;
/// Dialogs fill screens narrower than this, in logical pixels.
constexpr int kSmallScreenWidth = 400;

/// Lets three buttons fit side by side on the narrowest screen, and keeps the focus where it is on
/// a click, so that an open editor is ended by accept or reject.
void MakeCompact(QPushButton* button) {
    const QSize text = button->fontMetrics().size(Qt::TextShowMnemonic, button->text());
    button->setMinimumWidth(text.width() + 4 * kMargin);
    button->setFocusPolicy(Qt::TabFocus);
}

}  // namespace

CDialog::CDialog(const QString& title, QWidget* parent)
    : QDialog(parent),
      m_scroll(new QScrollArea(this)),
      m_buttonRow(new QHBoxLayout),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this)) {
    setWindowTitle(title);

    auto* page = new QWidget(m_scroll);
    m_content = new QVBoxLayout(page);
    m_content->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    m_scroll->setObjectName(u"content");
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    m_scroll->setWidgetResizable(true);
    m_scroll->setWidget(page);

    QPushButton* ok = m_buttons->button(QDialogButtonBox::Ok);
    QPushButton* cancel = m_buttons->button(QDialogButtonBox::Cancel);
    ok->setObjectName(u"ok");
    cancel->setObjectName(u"cancel");
    MakeCompact(ok);
    MakeCompact(cancel);
    ok->setDefault(true);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &CDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &CDialog::reject);

    m_buttonRow->setContentsMargins(kMargin, 0, kMargin, kMargin);
    m_buttonRow->addStretch();
    m_buttonRow->addWidget(m_buttons);

    auto* frame = new QVBoxLayout(this);
    frame->setContentsMargins(0, 0, 0, 0);
    frame->addWidget(m_scroll, 1);
    frame->addLayout(m_buttonRow);

    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget*, QWidget* now) { ShowFocusWidget(now); });
}

CDialog::~CDialog() {
    disconnect(qApp, nullptr, this, nullptr);
    SilenceChildren(this);
}

void CDialog::accept() {
    if (CloseOverlay()) {
        return;
    }
    EndInPlaceControls(this, EInPlaceEnd::Commit);
    // A click on OK leaves the focus in the field, which may not have read its text yet.
    if (auto* date = qobject_cast<CDateField*>(focusWidget());
        date != nullptr && !date->TakeTyped()) {
        return;
    }
    if (auto* field = qobject_cast<QAbstractSpinBox*>(focusWidget())) {
        field->interpretText();
    }
    if (Confirm() && (!m_store || m_store())) {
        QDialog::accept();
    }
}

int CDialog::exec() {
    const CModalLoop loop;
    return QDialog::exec();
}

void CDialog::reject() {
    if (CloseOverlay()) {
        return;
    }
    EndInPlaceControls(this, EInPlaceEnd::Cancel);
    QDialog::reject();
}

QFormLayout* CDialog::AddForm() {
    auto* form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    m_content->addLayout(form);
    return form;
}

QLabel* CDialog::AddText(const QString& text, const QString& objectName) {
    auto* label = new QLabel(text);
    label->setObjectName(objectName);
    label->setWordWrap(true);
    m_content->addWidget(label);
    return label;
}

void CDialog::HideCancel() {
    m_buttons->button(QDialogButtonBox::Cancel)->hide();
}

QPushButton* CDialog::AddButton(const QString& text) {
    auto* button = new QPushButton(text, this);
    button->setAutoDefault(false);
    MakeCompact(button);
    // The stretch and the box with OK and Cancel stay last.
    m_buttonRow->insertWidget(m_buttonRow->count() - 2, button);
    m_extraButtons.append(button);
    return button;
}

QWidget* CDialog::OverlayParent() const {
    return m_scroll;
}

void CDialog::SetPreferredSize(int width, int height) {
    m_preferredSize = {width, height};
}

// The fields are created after the buttons, so by default Tab would reach them after the buttons.
void CDialog::OrderTabs() {
    // Tab would go from Cancel to the box and by its proxy to OK, never back to the fields.
    m_buttons->setFocusProxy(nullptr);
    const QWidget* page = m_scroll->widget();
    QWidget* first = nullptr;
    QWidget* last = nullptr;
    for (QWidget* widget = nextInFocusChain(); widget != this;
         widget = widget->nextInFocusChain()) {
        const bool takesFocus = (widget->focusPolicy() & Qt::TabFocus) != 0;
        if (takesFocus && page->isAncestorOf(widget)) {
            last = widget;
            first = first == nullptr && widget->isEnabled() ? widget : first;
        }
    }
    if (last == nullptr) {
        return;
    }
    QList<QPushButton*> buttons = m_extraButtons;
    buttons << m_buttons->button(QDialogButtonBox::Ok)
            << m_buttons->button(QDialogButtonBox::Cancel);
    for (QPushButton* button : buttons) {
        setTabOrder(last, button);
        last = button;
    }
    if (first != nullptr && !page->isAncestorOf(focusWidget())) {
        first->setFocus(Qt::TabFocusReason);
    }
}

void CDialog::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) {
        OrderTabs();
        WatchWheel();
    }
    // A size that the caller has set is kept.
    if (!event->spontaneous() && !testAttribute(Qt::WA_Resized)) {
        const QRect available = screen()->availableGeometry();
        const QMargins frame = FrameMargins();
        if (available.width() < kSmallScreenWidth) {
            // Borders at the sides are not worth the width.
            setGeometry(available.adjusted(0, frame.top(), 0, -frame.bottom()));
        } else {
            const QSize page = m_scroll->widget()->sizeHint();
            const QSize buttons = m_buttonRow->sizeHint();
            // Room for the scroll bar keeps a form from wrapping its rows when the bar comes.
            const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
            const QSize wanted =
                m_preferredSize.isValid()
                    ? m_preferredSize.expandedTo({page.width() + bar, 0})
                    : QSize(std::max(page.width(), buttons.width()) + bar,
                            page.height() + layout()->spacing() + buttons.height());
            resize(wanted.boundedTo(available.marginsRemoved(frame).size()));
        }
    }
    QDialog::showEvent(event);
}

// The dialog has no frame of its own before it is shown; its window's is as large. Without one, a
// title bar as the style has it stands for that of the desktop.
QMargins CDialog::FrameMargins() const {
    const QWindow* window =
        parentWidget() == nullptr ? nullptr : parentWidget()->window()->windowHandle();
    return window == nullptr
               ? QMargins(0, style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, this), 0, 0)
               : window->frameMargins();
}

bool CDialog::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Wheel && !static_cast<QWidget*>(watched)->hasFocus()) {
        event->ignore();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void CDialog::WatchWheel() {
    for (auto* field : m_scroll->widget()->findChildren<QWidget*>()) {
        if (qobject_cast<QAbstractSpinBox*>(field) || qobject_cast<QComboBox*>(field)) {
            field->setFocusPolicy(Qt::StrongFocus);
            field->installEventFilter(this);
        }
    }
}

void CDialog::ShowFocusWidget(QWidget* focus) {
    // A clicked widget is visible already and must not move away under the pointer.
    if (focus != nullptr && m_scroll->widget()->isAncestorOf(focus) &&
        QGuiApplication::mouseButtons() == Qt::NoButton) {
        m_scroll->ensureWidgetVisible(focus);
    }
}
