// The program's own icons, drawn when painted and so sharp at every size. No icon theme.
#pragma once

#include <QColor>
#include <QIcon>

enum class EIcon { Apple, Card, Pot, Add, Delete, NewFolder, Find, FindNext, Refused };

/// An invalid colour is replaced by the palette's for button texts whenever the icon is painted.
QIcon PaintedIcon(EIcon icon, const QColor& color = {});
/// The icon of the program itself, in fixed colours.
QIcon ProgramIcon();
