#include "qvad/db/entities/OdDbAttribute.h"

#include <stdexcept>

namespace {
void requireTag(std::string_view tag) {
    if (tag.empty() || tag.find_first_of(" \t\r\n") != std::string_view::npos)
        throw std::invalid_argument("an attribute tag must be one word without spaces");
}

template <class Attribute> void changeFlag(Attribute& a, int flags, int bit, bool on, std::string_view part) {
    int wanted = on ? (flags | bit) : (flags & ~bit);
    if (wanted != flags) a.setInt(70, wanted, part);
}
} // namespace

void OdDbAttributeDefinition::setTag(std::string_view tag) {
    requireTag(tag);
    setString(2, tag, attributePart());
}

void OdDbAttributeDefinition::setPrompt(std::string_view prompt) {
    qvad::db::requireSingleLine(prompt, "an attribute prompt");
    setString(3, prompt, attributePart());
}

void OdDbAttributeDefinition::setFlag(int bit, bool on) {
    changeFlag(*this, flags(), bit, on, attributePart());
}

void OdDbAttribute::setTag(std::string_view tag) {
    requireTag(tag);
    setString(2, tag, attributePart());
}

void OdDbAttribute::setFlag(int bit, bool on) {
    changeFlag(*this, flags(), bit, on, attributePart());
}
