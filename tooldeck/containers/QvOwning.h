#pragma once

#include "tooldeck/containers/QvDynArrayBase.h"
#include "tooldeck/containers/QvOwnership.h"

#include <algorithm>

// What makes a container of T* own its objects, on top of any storage (array or list). Every object held is
// deleted exactly once, through its virtual destructor: when its element is deleted, overwritten by
// SetCurData, dropped by a shorter length, released, or when the container goes. The TakeOff family hands
// objects back to the caller and deletes nothing. Pointers handed in one at a time (Append, Insert,
// PlaceIn, SortInto) are adopted; copies of whole containers or ranges clone the objects.
//
// The Find*Data and BFind*Data searches and SortEx compare the objects, not the pointers; a null slot sorts
// before every object and equals none.
template <class T, class Storage> class QvOwning : public Storage, public QvOwningContainer {
public:
    QvOwning& operator=(const QvOwning& src) {
        Storage::operator=(src);
        return *this;
    }
    QvOwning& operator=(const QvDynArrayBase<T*>& src) {
        Storage::operator=(src);
        return *this;
    }
    ~QvOwning() override { DeleteFrom(0); }

    void SetLength(long n, bool keepData) override {
        DeleteFrom(keepData ? n : 0);
        Storage::SetLength(n, keepData);
    }
    void Reset() override {
        DeleteFrom(0);
        Storage::Reset();
    }
    void SetCurData(T* const& value) override {
        if (this->IsOut()) return;
        T* incoming = value;
        T*& slot = this->GetCurData();
        if (slot != incoming) delete slot;
        slot = incoming;
    }
    void DelCur() override {
        ReleaseCur();
        Storage::DelCur();
    }

    // Deletes the current object and leaves its slot null.
    virtual void ReleaseCur() {
        if (this->IsOut()) return;
        T*& slot = this->GetCurData();
        delete slot;
        slot = nullptr;
    }
    // Hands the current object to the caller and leaves its slot null.
    virtual T* TakeOffCur() {
        if (this->IsOut()) return nullptr;
        T*& slot = this->GetCurData();
        T* object = slot;
        slot = nullptr;
        return object;
    }

    // Fills the first null slot, or appends; returns the index used.
    long PlaceIn(T* object) {
        long i = 0;
        for (T** slot = this->GetFirst(); slot; slot = this->GetNext(slot), ++i) {
            if (!*slot) {
                *slot = object;
                return i;
            }
        }
        return this->Append(object);
    }
    void Release(long i) {
        if (T** slot = this->ElementAt(i)) {
            delete *slot;
            *slot = nullptr;
        }
    }
    // Deletes every object; the slots stay, null.
    void ReleaseAll() { DeleteFrom(0); }
    // Remove the first / last element and hand its object to the caller.
    T* TakeOffHead() { return TakeOffAt(0); }
    T* TakeOffTail() { return TakeOffAt(this->m_length - 1); }
    bool IsCurEmpty() const { return this->IsOut() || !this->GetAt(this->m_curIndex); }
    long GetDataNum() const {
        long count = 0;
        for (T* const* slot = this->GetFirst(); slot; slot = this->GetNext(slot)) count += *slot != nullptr;
        return count;
    }

    long FindData(const T& value, long start = 0, long end = -1) const {
        return this->FindWhere([&value](T* const& e) { return e && *e == value; }, start, end);
    }
    long FindDataDel(const T& value) {
        const long i = FindData(value);
        if (i >= 0) this->Del(i);
        return i;
    }
    long BFindData(const T& value, long start = 0, long end = -1) const {
        bool hit = false;
        const long place = this->SearchSorted(Probe(value), PointeeLess{}, start, end, hit);
        return hit ? place : -1;
    }
    long BFindDataTo(const T& value, long start = 0, long end = -1) {
        bool hit = false;
        const long place = this->SearchSorted(Probe(value), PointeeLess{}, start, end, hit);
        this->MoveTo(place);
        return hit ? place : -1;
    }
    long SortInto(T* object, bool ascending = true) {
        return this->InsertSorted(object, PointeeLess{}, ascending);
    }
    void SortEx(bool ascending) {
        if (ascending) {
            this->SortBy(PointeeLess{});
        } else {
            this->SortBy([](T* const& a, T* const& b) { return PointeeLess{}(b, a); });
        }
    }

    // Every slot would own the same object; ReleaseAll is the owning way to clear the values.
    void SetAll(T* const&) = delete;

protected:
    struct ShapeTag {};
    template <class... Shape> explicit QvOwning(ShapeTag, Shape... shape) : Storage(shape...) {}
    // The storage copies the pointers; each is then replaced by a copy of its object.
    QvOwning(const QvOwning& src) : Storage(src), QvOwningContainer() { CloneAll(); }
    QvOwning(const QvDynArrayBase<T*>& src) : Storage(src), QvOwningContainer() { CloneAll(); }

    struct PointeeLess {
        bool operator()(const T* a, const T* b) const { return (a && b) ? *a < *b : (!a && b); }
    };

    void DeleteFrom(long first) {
        long i = 0;
        for (T** slot = this->GetFirst(); slot; slot = this->GetNext(slot), ++i) {
            if (i < first) continue;
            delete *slot;
            *slot = nullptr;
        }
    }

private:
    static T* Probe(const T& value) { return const_cast<T*>(&value); }

    void CloneAll() {
        for (T** slot = this->GetFirst(); slot; slot = this->GetNext(slot)) *slot = QvCloneElement(*slot);
    }

    T* TakeOffAt(long i) {
        T** slot = this->ElementAt(i);
        if (!slot) return nullptr;
        T* object = *slot;
        *slot = nullptr;
        this->Del(i);
        return object;
    }
};
