#pragma once
// How the typed classes reach their tags: numbers parsed the one way the whole program parses them,
// repeated groups (vertices, knots, member lists) read and replaced as runs, and the subclass a
// property lives in.

#include "qvad/db/OdDbObject.h"

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace qvad::db {

// Tolerant like the rest of the loader: spaces and a leading '+' are ignored, and text that is no
// number reads as the fallback.
double parseReal(std::string_view text, double fallback = 0.0);
long long parseInteger(std::string_view text, long long fallback = 0);

// A value for one DXF line: throws std::invalid_argument naming `what` when it holds a line break,
// which would tear the file apart.
void requireSingleLine(std::string_view text, std::string_view what);

double degreesToRadians(double degrees);
double radiansToDegrees(double radians);

// The subclass to look a property up in: the named one when the object carries that marker, else
// the whole data part, so that objects made from lists without markers still read and write right.
std::string_view dataPart(const OdDbObject& object, std::string_view subclass);
std::pair<std::size_t, std::size_t> partRange(const OdDbObject& object, std::string_view subclass);
// The range after the last marker of that name (TEXT repeats its AcDbText marker); none: {end, end}.
std::pair<std::size_t, std::size_t> lastSubclassRange(const OdDbObject& object, std::string_view subclass);

// The first value of a group in the data part of a tag list not yet held by an object (creators
// pick a class by it).
long long firstInteger(std::span<const Tag> tags, int code, long long fallback = 0);
bool hasMarker(std::span<const Tag> tags, std::string_view subclass);

// Reads a point whose x tag sits at index i (y and z follow when present).
OdGePoint3d pointAt(std::span<const Tag> tags, std::size_t i);

std::vector<double> repeatedReals(const OdDbObject& object, int code, std::string_view subclass);
std::vector<OdGePoint3d> repeatedPoints(const OdDbObject& object, int code, std::string_view subclass);
std::vector<Handle> repeatedHandles(const OdDbObject& object, int code, std::string_view subclass);

// Changes one coordinate (axis 0, 1 or 2) of a point and leaves the text of the others alone.
void setPointCoordinate(OdDbObject& object, int code, int axis, double value, std::string_view subclass);

// Tags of a point, kept in the object's string pool; a 2D point gets no z tag.
std::vector<Tag> pointTags(OdDbObject& object, int code, const OdGePoint3d& p, bool twoD = false);
Tag realTag(OdDbObject& object, int code, double value);
Tag integerTag(OdDbObject& object, int code, long long value);

// Removes every tag whose code is in `codes` from the part and puts `replacement` where the first
// of them stood, or, when there was none, before the first tag with a code in `before`, or at the
// end of the part.
void replaceTagRun(OdDbObject& object, std::string_view subclass, std::initializer_list<int> codes,
                   std::span<const Tag> replacement, std::initializer_list<int> before = {});

// Edits the object's own tag vector and refreshes the object's view of it afterwards.
template <class F> void editTags(OdDbObject& object, F&& edit) {
    edit(object.mutableTags());
    object.mutableTags();
}

} // namespace qvad::db
