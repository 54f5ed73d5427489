// Drawings made of filled paths, read from SVG files of our own.
#pragma once

#include <QByteArray>
#include <QColor>
#include <QPainterPath>
#include <vector>

struct CFilledPath {
    QPainterPath path;
    QColor color;
};

/// The paths of an SVG file in the order they are painted. Only what our own files use is
/// understood: elements "path" with the attributes "fill" and "d", in that the absolute commands M,
/// L, C and Z, and blanks between all words.
std::vector<CFilledPath> ReadFilledPaths(const QByteArray& svg);
