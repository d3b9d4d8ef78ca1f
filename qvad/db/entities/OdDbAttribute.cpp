#include "qvad/db/entities/OdDbAttribute.h"

#include <stdexcept>

void OdDbAttributePart::setTag(std::string_view tag) {
    if (tag.empty() || tag.find_first_of(" \t\r\n") != std::string_view::npos)
        throw std::invalid_argument("an attribute tag must be one word without spaces");
    setString(2, tag, attributePart());
}

void OdDbAttributePart::setFlag(int bit, bool on) {
    const int flags = this->flags();
    const int wanted = on ? (flags | bit) : (flags & ~bit);
    if (wanted != flags) setInt(70, wanted, attributePart());
}

void OdDbAttributeDefinition::setPrompt(std::string_view prompt) {
    qvad::db::requireSingleLine(prompt, "an attribute prompt");
    setString(3, prompt, attributePart());
}
