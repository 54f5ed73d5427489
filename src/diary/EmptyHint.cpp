#include "diary/EmptyHint.h"

#include <QAbstractScrollArea>
#include <QLabel>
#include <QVBoxLayout>

namespace {
constexpr int kMargin = 8;
}

QLabel* CreateEmptyHint(QAbstractScrollArea* list, const QString& text) {
    auto* hint = new QLabel(text, list->viewport());
    hint->setObjectName(QStringLiteral("emptyHint"));
    hint->setAttribute(Qt::WA_TransparentForMouseEvents);
    hint->setAlignment(Qt::AlignCenter);
    hint->setWordWrap(true);
    hint->setMargin(kMargin);
    auto* over = new QVBoxLayout(list->viewport());
    over->setSizeConstraint(QLayout::SetNoConstraint);
    over->setContentsMargins(0, 0, 0, 0);
    over->addWidget(hint);
    return hint;
}
