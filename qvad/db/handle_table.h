#pragma once
// Handle to object, for every look-up a command makes. A drawing hands its handles out from 1 upward,
// so they index a plain array: one memory access per look-up, nothing to free object by object. The
// few handles far beyond the rest (a damaged or hand-written file) go to a map rather than stretch
// the array.

#include "qvad/db/handle.h"

#include <cstddef>
#include <unordered_map>
#include <vector>

class OdDbObject;

class HandleTable {
public:
    OdDbObject* find(qvad::Handle h) const {
        if (h < m_dense.size()) return m_dense[h];
        return m_far.empty() ? nullptr : findFar(h);
    }
    // Points the handle at the object (not null), replacing whatever it pointed at.
    void set(qvad::Handle h, OdDbObject* object);
    void erase(qvad::Handle h);
    void reserve(std::size_t count);
    std::size_t size() const { return m_count; }

private:
    OdDbObject* findFar(qvad::Handle h) const;
    // Past this the array would hold mostly empty slots.
    std::size_t denseLimit() const { return 2 * m_count + 65536; }
    void growDense(qvad::Handle h);

    std::vector<OdDbObject*> m_dense;
    std::unordered_map<qvad::Handle, OdDbObject*> m_far;
    std::size_t m_count = 0;
};
