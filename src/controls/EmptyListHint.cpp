#include "controls/EmptyListHint.h"

#include <QEvent>
#include <QLabel>
#include <QScrollBar>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>
#include <utility>

using namespace Qt::StringLiterals;

namespace {
constexpr int kHintMargin = 8;
constexpr int kBetweenOffers = 2;
/// Frame and margins of a button, both sides.
constexpr int kButtonMargin = 14;

/// Broken at a blank into two lines if it is wider than `width` pixels.
QString InTwoLines(const QString& text, const QFontMetrics& font, int width) {
    qsizetype end = text.size();
    while (end > 0 && font.horizontalAdvance(text.first(end)) > width) {
        end = text.lastIndexOf(u' ', end - 1);
    }
    return end <= 0 || end == text.size() ? text : text.first(end) + u'\n' + text.sliced(end + 1);
}
}  // namespace

CEmptyListHint::CEmptyListHint(QWidget* viewport) : QScrollArea(viewport), m_hint(new QLabel) {
    m_hint->setObjectName(u"emptyHint"_s);
    m_hint->setForegroundRole(QPalette::Text);
    m_hint->setAlignment(Qt::AlignCenter);
    m_hint->setWordWrap(true);
    m_hint->setMargin(kHintMargin);
    auto* content = new QWidget;
    m_layout = new QVBoxLayout(content);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(kBetweenOffers);
    m_layout->addStretch();
    m_layout->addWidget(m_hint);
    m_layout->addStretch();
    setWidget(content);
    setWidgetResizable(true);
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // The list's own background stays in sight.
    content->setAutoFillBackground(false);
    this->viewport()->setAutoFillBackground(false);
    auto* over = new QVBoxLayout(viewport);
    over->setSizeConstraint(QLayout::SetNoConstraint);
    over->setContentsMargins(0, 0, 0, 0);
    over->addWidget(this);
}

void CEmptyListHint::SetText(const QString& text) {
    m_hint->setText(text);
    Arrange();
}

void CEmptyListHint::SetOffers(const QStringList& offers) {
    for (QToolButton* button : std::exchange(m_offers, {})) {
        button->deleteLater();  // it may have been clicked
        button->hide();
    }
    m_texts.clear();
    for (const QString& offer : offers) {
        const auto index = static_cast<int>(m_offers.size());
        auto* button = new QToolButton(widget());
        button->setObjectName(u"offer%1"_s.arg(index + 1));
        button->setAccessibleName(offer);
        button->setFocusPolicy(Qt::NoFocus);
        button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        connect(button, &QToolButton::clicked, this, [this, index] { emit OfferTaken(index); });
        m_layout->insertWidget(m_layout->count() - 1, button, 0, Qt::AlignHCenter);
        m_offers.push_back(button);
        m_texts.append(u"%1  %2"_s.arg(index + 1).arg(offer));
    }
    Arrange();
}

void CEmptyListHint::ShowWhen(bool isListEmpty) {
    m_isListEmpty = isListEmpty;
    Arrange();
}

bool CEmptyListHint::ScrollByKey(int key) {
    if (!isVisible() || m_offers.empty() || (key != Qt::Key_Up && key != Qt::Key_Down)) {
        return false;
    }
    verticalScrollBar()->triggerAction(key == Qt::Key_Down ? QScrollBar::SliderSingleStepAdd
                                                           : QScrollBar::SliderSingleStepSub);
    return true;
}

void CEmptyListHint::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    Arrange();
}

void CEmptyListHint::changeEvent(QEvent* event) {
    QScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        Arrange();
    }
}

void CEmptyListHint::Arrange() {
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    int height = m_hint->heightForWidth(width());
    int step = 0;
    for (std::size_t i = 0; i < m_offers.size(); ++i) {
        QToolButton* button = m_offers[i];
        button->setText(InTwoLines(m_texts[static_cast<qsizetype>(i)], button->fontMetrics(),
                                   width() - bar - kButtonMargin));
        step = kBetweenOffers + button->sizeHint().height();
        height += step;
    }
    verticalScrollBar()->setSingleStep(step);
    const bool hasText = !m_hint->text().isEmpty();
    m_hint->setVisible(hasText && (m_offers.empty() || height <= this->height()));
    setVisible(m_isListEmpty && (hasText || !m_offers.empty()));
    // Without offers, clicks and context menus go to the list.
    setAttribute(Qt::WA_TransparentForMouseEvents, m_offers.empty());
}
