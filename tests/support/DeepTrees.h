// SQLite files whose trees are deeper or wider than SQLite makes them.
#pragma once

#include <QByteArray>
#include <QtEndian>

/// An inner page of a table's tree: all its cells lead to the same page. They stand at the page's
/// end, each a page number and a row number.
inline QByteArray InnerPage(qsizetype size, quint32 child, int cells) {
    constexpr int kCellBytes = 5;
    QByteArray page(size, '\0');
    page[0] = 5;
    qToBigEndian(static_cast<quint16>(cells), page.data() + 3);
    qToBigEndian(static_cast<quint16>(size - cells * kCellBytes), page.data() + 5);
    qToBigEndian(child, page.data() + 8);
    for (int cell = 0; cell < cells; ++cell) {
        const qsizetype at = size - (cell + 1) * kCellBytes;
        qToBigEndian(static_cast<quint16>(at), page.data() + 12 + 2 * cell);
        qToBigEndian(child, page.data() + at);
        page[at + 4] = static_cast<char>(cell + 1);
    }
    return page;
}

/// The file with so many inner pages between the page `root`, which counts from 1, and what it
/// held. Page 1 begins with the file's header.
inline QByteArray WithDeepTree(QByteArray file, qsizetype pageSize, qint64 root, int levels,
                               int cells) {
    constexpr qsizetype kLeafHeader = 8;
    const qsizetype rootAt = (root - 1) * pageSize;
    const qsizetype header = root == 1 ? 100 : 0;
    const QByteArray page = file.sliced(rootAt, pageSize);
    const qsizetype places =
        kLeafHeader + 2 * qFromBigEndian<quint16>(page.constData() + header + 3);
    QByteArray leaf = page;
    leaf.replace(0, places, page.sliced(header, places));
    auto next = static_cast<quint32>(file.size() / pageSize + 1);
    QByteArray inner = InnerPage(pageSize, next, cells);
    inner.remove(12 + 2 * cells, header);
    file.replace(rootAt, pageSize, page.first(header) + inner);
    for (int level = 0; level < levels; ++level) {
        file += InnerPage(pageSize, ++next, cells);
    }
    file += leaf;
    qToBigEndian(static_cast<quint32>(file.size() / pageSize), file.data() + 28);
    return file;
}
