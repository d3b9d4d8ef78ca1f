#pragma once
// Makes the right class for a DXF type name. Typed entity classes register themselves here; any
// other type becomes a plain entity or object that keeps its tags.

#include "qvad/db/OdDbEntity.h"

#include <functional>
#include <memory>
#include <string_view>

enum class ObjectContext { Entity, TableRecord, Object };

using ObjectCreator = std::function<std::unique_ptr<OdDbObject>(std::string_view typeName)>;

void registerObjectClass(std::string_view typeName, ObjectCreator creator);
std::unique_ptr<OdDbObject> createObject(std::string_view typeName, ObjectContext context);
