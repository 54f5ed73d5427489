// The program's own icon set: drawn when painted, so sharp at every size and scale. No image files,
// no icon theme.
#pragma once

#include <QColor>
#include <QIcon>

enum class EIcon { Apple, Card, Pot, Add, Delete, NewFolder, Find, FindNext };

/// Without a colour, that of the palette's button texts at the moment of painting.
QIcon PaintedIcon(EIcon icon, const QColor& color = {});
/// The program's own, in its own colours.
QIcon ProgramIcon();
