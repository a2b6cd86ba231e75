#pragma once
// A data table's columns in one line, each type with its name in turn:
//   addColumns<QString, int>("name", "count");

#include <QTest>

template <class... Types, class... Names> void addColumns(Names... names)
{
    static_assert(sizeof...(Types) == sizeof...(Names), "one name for each type");
    (QTest::addColumn<Types>(names), ...);
}
