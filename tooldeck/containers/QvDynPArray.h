#pragma once

#include "tooldeck/containers/QvDynArray.h"
#include "tooldeck/containers/QvOwning.h"

#include <algorithm>

// An array of pointers that owns the objects (see QvOwning for the rules).
template <class T> class QvDynPArray : public QvOwning<T, QvDynArray<T*>> {
    using Base = QvOwning<T, QvDynArray<T*>>;

public:
    explicit QvDynPArray(long initSize = 0, long allocUnit = 10)
        : Base(typename Base::ShapeTag{}, initSize, allocUnit) {}
    QvDynPArray(const QvDynPArray& src) : Base(src) {}
    QvDynPArray(const QvDynArrayBase<T*>& src) : Base(src) {}
    QvDynPArray& operator=(const QvDynPArray& src) {
        Base::operator=(src);
        return *this;
    }
    QvDynPArray& operator=(const QvDynArrayBase<T*>& src) {
        Base::operator=(src);
        return *this;
    }

    void ReAllocate(long n) override {
        this->DeleteFrom(std::max(n, 0L));
        Base::ReAllocate(n);
    }
    void SetSpaceSize(long n) {
        this->DeleteFrom(std::max(n, 0L));
        Base::SetSpaceSize(n);
    }
    void Attach(long n, T** block) {
        this->DeleteFrom(0);
        Base::Attach(n, block);
    }
};
