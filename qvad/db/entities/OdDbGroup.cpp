#include "qvad/db/entities/OdDbGroup.h"

#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/dictionary.h"
#include "qvad/db/entities/reactors.h"

std::string_view OdDbGroup::name() const {
    if (!database()) return {};
    auto* owner = dynamic_cast<OdDbDictionary*>(database()->getObject(ownerHandle()));
    return owner ? owner->nameOf(handle()) : std::string_view{};
}

void OdDbGroup::setDescription(std::string_view text) {
    qvad::db::requireSingleLine(text, "a group description");
    setString(300, text, part());
}

void OdDbGroup::setSelectable(bool on) {
    if (isSelectable() != on) setInt(71, on ? 1 : 0, part());
}

bool OdDbGroup::has(qvad::Handle entity) const {
    for (qvad::Handle h : entityHandles())
        if (h == entity) return true;
    return false;
}

void OdDbGroup::append(qvad::Handle entity) {
    if (entity == 0 || has(entity)) return;
    const Tag member(340, keep(qvad::formatHandle(entity)));
    // Plain variables: lambdas may not capture structured bindings with every compiler we build with.
    const std::size_t e = qvad::db::partRange(*this, kSubclass).second;
    qvad::db::editTags(*this, [&](std::vector<Tag>& tags) {
        tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(e), member);
    });
    if (database())
        if (OdDbObject* object = database()->getObject(entity)) qvad::db::addReactor(*object, handle());
}

bool OdDbGroup::remove(qvad::Handle entity) {
    if (!has(entity)) return false;
    const auto range = qvad::db::partRange(*this, kSubclass);
    const std::size_t b = range.first, e = range.second;
    qvad::db::editTags(*this, [&](std::vector<Tag>& tags) {
        for (std::size_t i = e; i-- > b;)
            if (tags[i].code == 340 && qvad::parseHandle(tags[i].value()) == entity)
                tags.erase(tags.begin() + static_cast<std::ptrdiff_t>(i));
    });
    if (database())
        if (OdDbObject* object = database()->getObject(entity)) qvad::db::removeReactor(*object, handle());
    return true;
}
