// The pictures of the lists, painted in a colour that stands out from its background: no image
// files, no icon theme.
#pragma once

#include <QIcon>

#include "store/DiaryEntries.h"

/// An apple, a card and a pot for food, menu and recipe.
QIcon KindIcon(EItemKind kind, const QColor& color);
QIcon AddIcon(const QColor& color);
QIcon DeleteIcon(const QColor& color);
