#include "tooldeck/module/ResourceText.h"

#include "tooldeck/module/resource_library.h"

#include <cstring>

namespace qvtd {

ResourceText::ResourceText(unsigned id, const char* fallback) : m_fallback(fallback), m_id(id) {
    openResourceLibrary();
}

const char* ResourceText::fetch() {
    int length = LoadStringA(resourceLibrary(), m_id, m_text, kCapacity);
    if (length > 0) {
        // The loader ends the text itself; this only guards one that did not.
        if (length < kCapacity && m_text[length - 1] != '\0') m_text[length] = '\0';
        return m_text;
    }
    if (m_fallback) {
        std::strncpy(m_text, m_fallback, kCapacity - 1);
        m_text[kCapacity - 1] = '\0';
    } else {
        m_text[0] = '\0';
    }
    return m_text;
}

} // namespace qvtd
