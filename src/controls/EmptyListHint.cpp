#include "controls/EmptyListHint.h"

#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>
#include <utility>

namespace {
constexpr int kHintMargin = 8;
}

CEmptyListHint::CEmptyListHint(QWidget* viewport)
    : QObject(viewport),
      m_viewport(viewport),
      m_over(new QVBoxLayout(viewport)),
      m_hint(new QLabel(viewport)) {
    m_hint->setObjectName(QStringLiteral("emptyHint"));
    m_hint->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_hint->setForegroundRole(QPalette::Text);
    m_hint->setAlignment(Qt::AlignCenter);
    m_hint->setWordWrap(true);
    m_hint->setMargin(kHintMargin);
    m_over->setSizeConstraint(QLayout::SetNoConstraint);
    m_over->setContentsMargins(0, 0, 0, 0);
    m_over->addWidget(m_hint, 1);
}

void CEmptyListHint::SetText(const QString& text) {
    m_hint->setText(text);
}

void CEmptyListHint::ShowText(bool isShown) {
    m_hint->setVisible(isShown && !m_hint->text().isEmpty());
}

void CEmptyListHint::SetOffers(const QStringList& offers) {
    for (QToolButton* button : std::exchange(m_offers, {})) {
        button->deleteLater();  // it may have been clicked
        button->hide();
    }
    for (const QString& offer : offers) {
        const auto index = static_cast<int>(m_offers.size());
        auto* button = new QToolButton(m_viewport);
        button->setObjectName(QStringLiteral("offer%1").arg(index + 1));
        button->setText(QStringLiteral("%1  %2").arg(index + 1).arg(offer));
        button->setAccessibleName(offer);
        button->setFocusPolicy(Qt::NoFocus);
        button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        connect(button, &QToolButton::clicked, this, [this, index] { emit OfferTaken(index); });
        m_over->addWidget(button, 0, Qt::AlignHCenter);
        m_offers.push_back(button);
    }
}
