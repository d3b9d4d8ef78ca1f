#include "qvad/db/entities/OdDbText.h"

#include "qvad/ge/ocs.h"

OdGePoint3d OdDbText::positionWcs() const {
    return ocsToWcs(position(), normal());
}
OdGePoint3d OdDbText::alignmentPointWcs() const {
    return ocsToWcs(alignmentPoint(), normal());
}

void OdDbText::setTextString(std::string_view text) {
    qvad::db::requireSingleLine(text, "a text's string");
    setString(1, text, part());
}

void OdDbText::setTextStyle(std::string_view name) {
    qvad::db::requireSingleLine(name, "a text style name");
    setString(7, name, part());
}

void OdDbText::setGenerationFlag(int bit, bool on) {
    int f = generationFlags();
    int wanted = on ? (f | bit) : (f & ~bit);
    if (wanted != f) setInt(71, wanted, part());
}

int OdDbText::verticalMode() const {
    auto [b, e] = qvad::db::lastSubclassRange(*this, kSubclass);
    if (b == e && !hasSubclass(kSubclass)) return static_cast<int>(getInt(73, 0));
    for (std::size_t i = b; i < e; ++i)
        if (tags()[i].code == 73) return static_cast<int>(qvad::db::parseInteger(tags()[i].value()));
    return kTextBase;
}

void OdDbText::setVerticalMode(int mode) {
    const Tag value(73, keep(std::to_string(mode)));
    if (!hasSubclass(kSubclass)) {
        setString(73, value.value());
        return;
    }
    auto first = subclassRange(kSubclass);
    auto last = qvad::db::lastSubclassRange(*this, kSubclass);
    qvad::db::editTags(*this, [&](std::vector<Tag>& tags) {
        for (std::size_t i = last.first; i < last.second; ++i)
            if (tags[i].code == 73) {
                tags[i] = value;
                return;
            }
        if (last.first != first.first) {
            tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(last.second), value);
            return;
        }
        // Other readers look for the vertical alignment after the second marker only.
        const Tag added[] = {Tag(100, kSubclass), value};
        tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(first.second), std::begin(added),
                    std::end(added));
    });
}
