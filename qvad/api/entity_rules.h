#pragma once
// What every list that changes the drawing must satisfy, shared by qvdbEntMod and qvdbEntMake: the
// groups a type cannot do without, layers that spring into being, registered applications and the
// room extended data may take.

#include "qvad/api/host_session.h"
#include "qvad/db/entity_data_list.h"

class OdDbDatabase;

namespace qvad::api {

// The type a list names in group 0, or empty.
std::string listType(const qvad::db::DataList& list);

// None when the list holds every group its type needs.
HostError checkRequiredGroups(const qvad::db::DataList& list, std::string_view type);

// None when the numbers an entity's own groups hold are ones the drawing can show: a colour number
// (62) from 0 (by block) to 256 (by layer), a lineweight (370) from -3 to 211, a visibility (60) of
// 0 or 1. The file format would store any short, so without this a bad colour would be written.
HostError checkEntityValues(const qvad::db::DataList& list);

// Angles cross the interface in radians but the file keeps degrees, and turning 30 degrees into
// radians and back gives 29.999999999999996. Each new angle gets the shortest degree text that reads
// back as the very same radians, so an angle read, passed on and written again stays what it was.
void chooseAngleText(qvad::db::DataList& list);

// Gives points that the file stores without z their 2D form, by type and group.
void markPlanarPoints(qvad::db::DataList& list, std::string_view type);

// Makes the layer of group 8 when the drawing has none of that name.
HostError ensureLayer(OdDbDatabase& db, const qvad::db::DataList& list);

// Every application of the extended data must be registered, and all of it must fit.
HostError checkExtendedData(const OdDbDatabase& db, const qvad::db::DataList& list);

// Bytes the extended data of a list takes: after the -3 marker, or the whole list without one.
// -1 when the list holds a group that is no extended data.
long extendedDataBytes(const qvad::db::DataList& list);

} // namespace qvad::api
