// Data rows as tables: a row a line, its name and then its values.
#pragma once

#include <QTest>
#include <tuple>

using namespace Qt::StringLiterals;

/// For a test's _data function.
template <typename... Values>
void AddRows(std::initializer_list<std::tuple<const char*, Values...>> rows) {
    QTest::addColumn<std::tuple<Values...>>("row");
    const auto add = [](const char* name, const Values&... values) {
        QTest::newRow(name) << std::tuple(values...);
    };
    for (const auto& row : rows) {
        std::apply(add, row);
    }
}

/// The values of the row that is run. The types are those given to AddRows.
template <typename... Values>
const std::tuple<Values...>& DataRow() {
    using CValues = std::tuple<Values...>;
    return *static_cast<const CValues*>(QTest::qData("row", qMetaTypeId<CValues>()));
}
