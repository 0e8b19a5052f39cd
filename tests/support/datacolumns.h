#pragma once

#include <QtTest>

// One Qt Test data column per name, typed in the same order:
// addColumns<int, QString>({"count", "name"}).
template<typename... T>
void addColumns(const char *const (&names)[sizeof...(T)])
{
    int column = 0;
    (QTest::addColumn<T>(names[column++]), ...);
}
