#pragma once
// The comparison rules of the object classes, one pair of functions per family of classes: whether
// two objects are the same within e, and the signature the grouping uses (see ObjectSignature).

#include "tooldeck/commands/cleanup/overkill_compare_tools.h"
#include "tooldeck/commands/cleanup/overkill_object_compare.h"

class OdDbDimension;
class OdDbHatch;
class OdDbRasterImage;

namespace qvtd::overkill::rules {

// The seven dimension kinds; false (and an empty signature) for any other class.
bool isDimensionKind(const OdDbEntity& entity);
bool sameDimension(const OdDbDimension& a, const OdDbDimension& b, const compare::Within& within);
ObjectSignature dimensionSignature(const OdDbDimension& dimension);

bool sameHatch(const OdDbHatch& a, const OdDbHatch& b, const compare::Within& within);
ObjectSignature hatchSignature(const OdDbHatch& hatch);

// IMAGE and WIPEOUT.
bool sameImage(const OdDbRasterImage& a, const OdDbRasterImage& b, const compare::Within& within);
ObjectSignature imageSignature(const OdDbRasterImage& image);

// REGION, 3DSOLID and BODY: equal field streams.
bool sameModelerStream(const OdDbEntity& a, const OdDbEntity& b);
ObjectSignature modelerSignature(const OdDbEntity& entity);

// Any other class: the field streams, numbers within e.
bool sameFields(const OdDbEntity& a, const OdDbEntity& b, const compare::Within& within);
ObjectSignature fieldsSignature(const OdDbEntity& entity);

} // namespace qvtd::overkill::rules
