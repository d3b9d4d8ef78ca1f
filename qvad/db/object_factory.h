#pragma once
// Makes the right class for a DXF type name. Typed entity classes register themselves here; any
// other type becomes a plain entity or object that keeps its tags.

#include "qvad/db/OdDbEntity.h"

#include <functional>
#include <memory>
#include <span>
#include <string_view>

enum class ObjectContext { Entity, TableRecord, Object };

using ObjectCreator = std::function<std::unique_ptr<OdDbObject>(std::string_view typeName)>;
// For types whose class depends on the data, such as POLYLINE by its flags or DIMENSION by its kind.
using TaggedObjectCreator =
    std::function<std::unique_ptr<OdDbObject>(std::string_view typeName, std::span<const Tag> tags)>;

void registerObjectClass(std::string_view typeName, ObjectCreator creator);
void registerTaggedObjectClass(std::string_view typeName, TaggedObjectCreator creator);
// Pass the tags the object will hold so that data-dependent types get their class; without them
// such types get the class of their most common kind.
std::unique_ptr<OdDbObject> createObject(std::string_view typeName, ObjectContext context,
                                         std::span<const Tag> tags = {});
