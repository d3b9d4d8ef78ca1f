#pragma once

#include "qvad/db/OdDbEntity.h"
#include "qvad/db/entities/tag_access.h"

#include <string>

// REGION, 3DSOLID and BODY: solid-modeler data kept exactly as the file holds it (newer files keep
// it in a separate section and only name it here).
class OdDbModelerGeometry : public OdDbEntity {
public:
    static constexpr std::string_view kSubclass = "AcDbModelerGeometry";

    int modelerFormatVersion() const { return static_cast<int>(getInt(70, 1, part())); }
    // The data lines as stored (still in the file's encoding), joined by newlines; group 3 continues
    // the line before it.
    std::string modelerData() const;
    bool hasModelerData() const { return findTag(1, part()) != nullptr; }

protected:
    using OdDbEntity::OdDbEntity;
    std::string_view part() const { return qvad::db::dataPart(*this, kSubclass); }
};

class OdDbRegion : public OdDbModelerGeometry {
public:
    OdDbRegion() : OdDbModelerGeometry("REGION") {}
};

class OdDb3dSolid : public OdDbModelerGeometry {
public:
    OdDb3dSolid() : OdDbModelerGeometry("3DSOLID") {}
};

class OdDbBody : public OdDbModelerGeometry {
public:
    OdDbBody() : OdDbModelerGeometry("BODY") {}
};
