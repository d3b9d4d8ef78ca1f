#pragma once
// The order in which qvdbEntNext and qvdbEntLast see a drawing: model space, then paper space, each
// complex entity followed by its attributes or vertices and its SEQEND.

#include <vector>

class OdDbDatabase;
class OdDbEntity;

namespace qvad::api {

struct WalkedEntity {
    OdDbEntity* entity;
    bool isSubEntity;
};

// Erased entities (and the pieces of erased complex entities) are left out.
std::vector<WalkedEntity> drawingEntities(const OdDbDatabase& db);

} // namespace qvad::api
