#pragma once

#include "qvad/db/OdDbEntity.h"
#include "qvad/db/entities/tag_access.h"

// Lines, arcs, polylines, splines and the like: the entities a command can measure or walk along.
class OdDbCurve : public OdDbEntity {
public:
    using OdDbEntity::OdDbEntity;
    virtual bool isClosed() const { return false; }
};
