#include "qvad/db/object_factory.h"

#include "qvad/db/OdDbSymbolTable.h"
#include "qvad/db/entities/builtin_classes.h"

#include <mutex>
#include <string>
#include <unordered_map>

namespace {
// Looked up once per object loaded, so by string_view without building a string.
struct TypeNameHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view s) const { return std::hash<std::string_view>{}(s); }
};
using Registry = std::unordered_map<std::string, TaggedObjectCreator, TypeNameHash, std::equal_to<>>;

Registry& registry() {
    static Registry creators;
    return creators;
}

// The built-in classes register through the public functions, which call back here: the flag lets
// that inner call through while other threads wait for the registration to finish.
thread_local bool registeringBuiltins = false;

void ensureBuiltinClasses() {
    static std::once_flag once;
    if (registeringBuiltins) return;
    std::call_once(once, [] {
        registeringBuiltins = true;
        registerBuiltinObjectClasses();
        registeringBuiltins = false;
    });
}
} // namespace

void registerObjectClass(std::string_view typeName, ObjectCreator creator) {
    registerTaggedObjectClass(typeName,
                              [creator = std::move(creator)](std::string_view type, std::span<const Tag>) {
                                  return creator(type);
                              });
}

void registerTaggedObjectClass(std::string_view typeName, TaggedObjectCreator creator) {
    ensureBuiltinClasses();
    registry()[std::string(typeName)] = std::move(creator);
}

std::unique_ptr<OdDbObject> createObject(std::string_view typeName, ObjectContext context,
                                         std::span<const Tag> tags) {
    ensureBuiltinClasses();
    auto& creators = registry();
    auto it = creators.find(typeName);
    if (it != creators.end()) {
        std::unique_ptr<OdDbObject> made = it->second(typeName, tags);
        // A damaged file can put any type anywhere; a class that does not fit the place (a
        // DICTIONARY among entities, a LINE in a table) gives way to the plain kind of the place,
        // which keeps the tags all the same.
        bool fits =
            context == ObjectContext::Object || (context == ObjectContext::Entity && made->isEntity()) ||
            (context == ObjectContext::TableRecord && dynamic_cast<OdDbSymbolTableRecord*>(made.get()));
        if (fits) return made;
    }
    switch (context) {
    case ObjectContext::Entity:
        if (typeName == "POLYLINE" || typeName == "INSERT")
            return std::make_unique<OdDbComplexEntity>(typeName);
        return std::make_unique<OdDbEntity>(typeName);
    case ObjectContext::TableRecord:
        if (typeName == "BLOCK_RECORD") return std::make_unique<OdDbBlockTableRecord>();
        return std::make_unique<OdDbSymbolTableRecord>(typeName);
    case ObjectContext::Object:
        break;
    }
    return std::make_unique<OdDbObject>(typeName);
}
