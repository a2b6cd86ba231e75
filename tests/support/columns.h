#pragma once
// A data table's columns in one line, each type with its name in turn, and a
// row's values fetched in one line by the same names:
//   addColumns<QString, int>("name", "count");
//   auto [name, count] = fetch<QString, int>("name", "count");

#include <QTest>
#include <tuple>

template <class... Types, class... Names> void addColumns(Names... names)
{
    static_assert(sizeof...(Types) == sizeof...(Names), "one name for each type");
    (QTest::addColumn<Types>(names), ...);
}

template <class... Types, class... Names> std::tuple<Types...> fetch(Names... names)
{
    static_assert(sizeof...(Types) == sizeof...(Names), "one name for each type");
    return {*static_cast<Types*>(QTest::qData(names, qMetaTypeId<Types>()))...};
}
