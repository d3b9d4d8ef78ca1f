#include "qvad/db/object_factory.h"

#include "qvad/db/OdDbSymbolTable.h"

#include <string>
#include <unordered_map>

namespace {
std::unordered_map<std::string, ObjectCreator>& registry() {
    static std::unordered_map<std::string, ObjectCreator> creators;
    return creators;
}
} // namespace

void registerObjectClass(std::string_view typeName, ObjectCreator creator) {
    registry()[std::string(typeName)] = std::move(creator);
}

std::unique_ptr<OdDbObject> createObject(std::string_view typeName, ObjectContext context) {
    auto& creators = registry();
    if (!creators.empty()) {
        auto it = creators.find(std::string(typeName));
        if (it != creators.end()) return it->second(typeName);
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
