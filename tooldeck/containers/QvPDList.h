#pragma once

#include "tooldeck/containers/QvDList.h"
#include "tooldeck/containers/QvOwningList.h"

// A doubly linked list of pointers that owns the objects (see QvOwning for the rules).
template <class T> class QvPDList : public QvOwningList<T, QvDList<T*>> {
    using Base = QvOwningList<T, QvDList<T*>>;

public:
    explicit QvPDList(long initSize = 0) : Base(typename Base::ShapeTag{}, initSize) {}
    QvPDList(const QvPDList& src) : Base(src) {}
    QvPDList(const QvDynArrayBase<T*>& src) : Base(src) {}
    QvPDList& operator=(const QvPDList& src) {
        Base::operator=(src);
        return *this;
    }
    QvPDList& operator=(const QvDynArrayBase<T*>& src) {
        Base::operator=(src);
        return *this;
    }
};
