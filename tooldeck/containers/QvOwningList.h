#pragma once

#include "tooldeck/containers/QvOwning.h"

// The owning behaviour of the lists: cutting the chain deletes the objects cut off, and the searches can
// add a copy of the value they did not find.
template <class T, class ListStorage> class QvOwningList : public QvOwning<T, ListStorage> {
    using Base = QvOwning<T, ListStorage>;

public:
    QvOwningList& operator=(const QvOwningList& src) {
        Base::operator=(src);
        return *this;
    }
    QvOwningList& operator=(const QvDynArrayBase<T*>& src) {
        Base::operator=(src);
        return *this;
    }

    void DetachAfterCur() override {
        if (this->IsOut()) return;
        this->DeleteFrom(this->m_curIndex + 1);
        Base::DetachAfterCur();
    }

    // The index of an equal object, or of a new copy of value added at the end / at the head.
    long FindDataOrAppend(const T& value) {
        const long i = this->FindData(value);
        return i >= 0 ? i : this->Append(new T(value));
    }
    long FindDataOrInsertHead(const T& value) {
        const long i = this->FindData(value);
        if (i >= 0) return i;
        this->InsertHead(new T(value));
        return 0;
    }

protected:
    using Base::Base;
    QvOwningList(const QvOwningList& src) : Base(src) {}
};
