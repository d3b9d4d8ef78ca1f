#pragma once
// The reference-counted object base, smart pointer, string and result codes through which the host and
// its modules share C++ objects (the command stack, module objects). Modules are built with the same
// compiler and standard library as the host, so these cross the boundary as ordinary classes.

#include <atomic>
#include <string>
#include <string_view>
#include <utility>

#include "qvad/db/OdResult.h"

class OdString {
public:
    OdString() = default;
    OdString(const char* text) : m_text(text ? text : "") {}
    OdString(std::string text) : m_text(std::move(text)) {}
    OdString(std::string_view text) : m_text(text) {}
    const char* c_str() const { return m_text.c_str(); }
    const std::string& str() const { return m_text; }
    bool isEmpty() const { return m_text.empty(); }
    int getLength() const { return static_cast<int>(m_text.size()); }
    friend bool operator==(const OdString& a, const OdString& b) { return a.m_text == b.m_text; }

private:
    std::string m_text; // UTF-8
};

class OdRxObject {
public:
    virtual ~OdRxObject() = default;
    void addRef() { m_references.fetch_add(1, std::memory_order_relaxed); }
    void release() {
        if (m_references.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
    }
    long numRefs() const { return m_references.load(std::memory_order_relaxed); }

protected:
    OdRxObject() = default;

private:
    std::atomic<long> m_references{0};
};

// Holds one reference; a null pointer is allowed.
template <class T> class OdSmartPtr {
public:
    OdSmartPtr() = default;
    OdSmartPtr(T* object) : m_object(object) {
        if (m_object) m_object->addRef();
    }
    OdSmartPtr(const OdSmartPtr& other) : OdSmartPtr(other.m_object) {}
    OdSmartPtr(OdSmartPtr&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    OdSmartPtr& operator=(OdSmartPtr other) noexcept {
        std::swap(m_object, other.m_object);
        return *this;
    }
    ~OdSmartPtr() { release(); }
    void release() {
        if (m_object) std::exchange(m_object, nullptr)->release();
    }
    T* get() const { return m_object; }
    T* operator->() const { return m_object; }
    T& operator*() const { return *m_object; }
    bool isNull() const { return m_object == nullptr; }
    explicit operator bool() const { return m_object != nullptr; }

private:
    T* m_object = nullptr;
};
