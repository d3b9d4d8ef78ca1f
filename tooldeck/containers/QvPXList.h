#pragma once

#include "tooldeck/containers/QvOwningList.h"
#include "tooldeck/containers/QvXList.h"

// An indexed list of pointers that owns the objects (see QvOwning for the rules).
template <class T> class QvPXList : public QvOwningList<T, QvXList<T*>> {
    using Base = QvOwningList<T, QvXList<T*>>;

public:
    explicit QvPXList(long initSize = 0, long groupSize = 25, long indexAllocUnit = 100)
        : Base(typename Base::ShapeTag{}, initSize, groupSize, indexAllocUnit) {}
    QvPXList(const QvPXList& src) : Base(src) {}
    QvPXList(const QvDynArrayBase<T*>& src) : Base(src) {}
    QvPXList& operator=(const QvPXList& src) {
        Base::operator=(src);
        return *this;
    }
    QvPXList& operator=(const QvDynArrayBase<T*>& src) {
        Base::operator=(src);
        return *this;
    }
};
