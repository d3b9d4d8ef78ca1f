#pragma once

#include "tooldeck/containers/QvDList.h"
#include "tooldeck/containers/QvDynArray.h"
#include "tooldeck/containers/QvList.h"
#include "tooldeck/containers/QvXList.h"

#include <gtest/gtest.h>
#include <vector>

// An indexed list with groups small enough that every test crosses many index entries.
template <class T> struct SmallGroupXList : QvXList<T> {
    SmallGroupXList() : QvXList<T>(0, 3, 2) {}
    using QvXList<T>::operator=;
};

template <class T>
using ValueContainerKinds = ::testing::Types<QvDynArray<T>, QvList<T>, QvDList<T>, SmallGroupXList<T>>;
template <class T> using ListKinds = ::testing::Types<QvList<T>, QvDList<T>, SmallGroupXList<T>>;

template <class T> void Fill(QvDynArrayBase<T>& c, const std::vector<T>& values) {
    for (const T& v : values) c.Append(v);
}

// Contents read four ways (by position, const position, forward and backward pointer walks); they must
// agree, or a link or the index is broken.
template <class T> std::vector<T> ContentsOf(QvDynArrayBase<T>& c) {
    std::vector<T> byIndex, byAt, forward, backward;
    for (long i = 0; i < c.GetLength(); ++i) byIndex.push_back(c[i]);
    for (long i = 0; i < c.GetLength(); ++i) byAt.push_back(c.GetAt(i));
    for (T* e = c.GetFirst(); e; e = c.GetNext(e)) forward.push_back(*e);
    for (T* e = c.GetLast(); e; e = c.GetPre(e)) backward.insert(backward.begin(), *e);
    EXPECT_EQ(byIndex, byAt);
    EXPECT_EQ(byIndex, forward);
    EXPECT_EQ(byIndex, backward);
    return byIndex;
}
