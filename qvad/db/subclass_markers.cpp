#include "qvad/db/subclass_markers.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace qvad::db {
namespace {

struct Segment {
    std::string_view marker;
    std::vector<int> codes; // groups that belong here; the fallback segment takes every other group
};

struct Layout {
    std::vector<Segment> segments;
    std::size_t fallback = 0;
    bool entity = true;
};

Layout single(std::string_view marker) {
    return {{{marker, {}}}, 0, true};
}

bool isCommonEntityCode(int code) {
    switch (code) {
    case 6:
    case 8:
    case 48:
    case 60:
    case 62:
    case 67:
    case 92:
    case 160:
    case 284:
    case 310:
    case 347:
    case 370:
    case 390:
    case 420:
    case 430:
    case 440:
        return true;
    default:
        return false;
    }
}

bool isPointX(int code) {
    return (code >= 10 && code <= 18) || (code >= 110 && code <= 112) || code == 210;
}

std::string_view polylineSubclass(long long flags) {
    if (flags & 64) return "AcDbPolyFaceMesh";
    if (flags & 16) return "AcDbPolygonMesh";
    if (flags & 8) return "AcDb3dPolyline";
    return "AcDb2dPolyline";
}

Layout vertexLayout(const OdDbEntity& vertex, const OdDbEntity* parent) {
    long long own = vertex.getInt(70);
    long long kind = parent ? parent->getInt(70) : 0;
    // A polyface mesh has two kinds of VERTEX: corner points and the face records that index them.
    if ((kind & 64) || (own & 128)) {
        if (own & 64) return {{{"AcDbVertex", {}}, {"AcDbPolyFaceMeshVertex", {}}}, 1, true};
        return single("AcDbFaceRecord");
    }
    std::string_view marker = (kind & 16) || (own & 64)  ? "AcDbPolygonMeshVertex"
                              : (kind & 8) || (own & 32) ? "AcDb3dPolylineVertex"
                                                         : "AcDb2dVertex";
    return {{{"AcDbVertex", {}}, {marker, {}}}, 1, true};
}

Layout dimensionLayout(long long flags) {
    Layout layout{{{"AcDbDimension", {}}}, 0, true};
    auto& s = layout.segments;
    switch (flags & 7) {
    case 0:
        s.push_back({"AcDbAlignedDimension", {12, 13, 14, 50, 52}});
        s.push_back({"AcDbRotatedDimension", {}});
        break;
    case 1:
        s.push_back({"AcDbAlignedDimension", {12, 13, 14, 50, 52}});
        break;
    case 2:
        s.push_back({"AcDb2LineAngularDimension", {13, 14, 15, 16}});
        break;
    case 3:
        s.push_back({"AcDbDiametricDimension", {15, 40}});
        break;
    case 4:
        s.push_back({"AcDbRadialDimension", {15, 40}});
        break;
    case 5:
        s.push_back({"AcDb3PointAngularDimension", {13, 14, 15}});
        break;
    case 6:
        s.push_back({"AcDbOrdinateDimension", {13, 14}});
        break;
    default:
        break;
    }
    return layout;
}

std::optional<Layout> entityLayout(const OdDbEntity& e, const OdDbEntity* parent) {
    std::string_view type = e.typeName();
    if (type == "LINE" || type == "3DLINE") return single("AcDbLine");
    if (type == "POINT") return single("AcDbPoint");
    if (type == "CIRCLE") return single("AcDbCircle");
    if (type == "ARC") return Layout{{{"AcDbCircle", {}}, {"AcDbArc", {50, 51}}}, 0, true};
    if (type == "TRACE" || type == "SOLID") return single("AcDbTrace");
    if (type == "3DFACE") return single("AcDbFace");
    if (type == "SHAPE") return single("AcDbShape");
    // Vertical alignment sits in a second AcDbText part of its own.
    if (type == "TEXT") return Layout{{{"AcDbText", {}}, {"AcDbText", {73}}}, 0, true};
    if (type == "ATTDEF")
        return Layout{{{"AcDbText", {}}, {"AcDbAttributeDefinition", {2, 3, 70, 73, 74, 280}}}, 0, true};
    if (type == "ATTRIB") return Layout{{{"AcDbText", {}}, {"AcDbAttribute", {2, 70, 73, 74, 280}}}, 0, true};
    if (type == "INSERT") return single("AcDbBlockReference");
    if (type == "POLYLINE") return single(polylineSubclass(e.getInt(70)));
    if (type == "VERTEX") return vertexLayout(e, parent);
    if (type == "SEQEND") return Layout{{}, 0, true};
    if (type == "VIEWPORT") return single("AcDbViewport");
    if (type == "DIMENSION") return dimensionLayout(e.getInt(70));
    if (type == "BLOCK") return single("AcDbBlockBegin");
    if (type == "ENDBLK") return single("AcDbBlockEnd");
    // Types R12 never had, for entities a module makes from a flat data list.
    if (type == "MTEXT") return single("AcDbMText");
    if (type == "LWPOLYLINE") return single("AcDbPolyline");
    if (type == "ELLIPSE") return single("AcDbEllipse");
    if (type == "SPLINE") return single("AcDbSpline");
    if (type == "HATCH") return single("AcDbHatch");
    if (type == "LEADER") return single("AcDbLeader");
    if (type == "RAY") return single("AcDbRay");
    if (type == "XLINE") return single("AcDbXline");
    if (type == "TOLERANCE") return single("AcDbFcf");
    if (type == "IMAGE") return single("AcDbRasterImage");
    if (type == "WIPEOUT") return Layout{{{"AcDbRasterImage", {}}, {"AcDbWipeout", {}}}, 0, true};
    return std::nullopt;
}

// The X group that a Y or Z group belongs to; a point's coordinates stay in one subclass.
int pointXOf(int code) {
    if ((code >= 20 && code <= 28) || (code >= 120 && code <= 122) || code == 220) return code - 10;
    if ((code >= 30 && code <= 37) || (code >= 130 && code <= 132) || code == 230) return code - 20;
    return code;
}

std::size_t segmentOf(const Layout& layout, int code) {
    code = pointXOf(code);
    for (std::size_t s = 0; s < layout.segments.size(); ++s)
        if (std::find(layout.segments[s].codes.begin(), layout.segments[s].codes.end(), code) !=
            layout.segments[s].codes.end())
            return s;
    return layout.fallback;
}

// Puts each point's Y and Z right after its X: the earliest writers listed all X values first.
std::vector<Tag> pairCoordinates(const std::vector<Tag>& tags) {
    std::vector<Tag> out;
    out.reserve(tags.size());
    std::vector<bool> used(tags.size(), false);
    for (std::size_t i = 0; i < tags.size(); ++i) {
        if (used[i]) continue;
        used[i] = true;
        out.push_back(tags[i]);
        int x = tags[i].code;
        if (!isPointX(x)) continue;
        for (int axis : {x + 10, x + 20}) {
            for (std::size_t j = i + 1; j < tags.size(); ++j) {
                if (used[j]) continue;
                if (tags[j].code == x) break; // the next point of the same kind
                if (tags[j].code == axis) {
                    used[j] = true;
                    out.push_back(tags[j]);
                    break;
                }
            }
        }
    }
    return out;
}

// R12 kept the elevation of 2D points in group 38; later versions store it as their Z.
void foldElevation(std::vector<Tag>& tags, std::string_view elevation) {
    for (std::size_t i = 0; i + 1 < tags.size(); ++i) {
        int x = tags[i].code;
        if (x < 10 || x > 18 || tags[i + 1].code != x + 10) continue;
        if (i + 2 < tags.size() && tags[i + 2].code == x + 20) continue;
        tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(i + 2), Tag(x + 20, elevation));
    }
}

bool isZero(std::string_view text) {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    double value = 0.0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value == 0.0;
}

std::vector<Tag> relayout(std::span<const Tag> tags, const Layout& layout, int handleCode) {
    std::vector<Tag> handle, groups, owner, common;
    std::vector<std::vector<Tag>> data(std::max<std::size_t>(layout.segments.size(), 1));
    std::string_view elevation;
    bool inGroup = false;
    std::size_t i = 0;
    for (; i < tags.size() && tags[i].code != 1001; ++i) {
        const Tag& t = tags[i];
        if (inGroup) {
            groups.push_back(t);
            inGroup = t.code != 102;
        } else if (t.code == 102 && t.value().starts_with("{")) {
            groups.push_back(t);
            inGroup = true;
        } else if (t.code == handleCode && handle.empty()) {
            handle.push_back(t);
        } else if (t.code == 330 && owner.empty()) {
            owner.push_back(t);
        } else if (t.code == 100) {
            // Stray or partial markers of a half-converted file; the full set is written below.
        } else if (layout.entity && t.code == 38) {
            elevation = t.value();
        } else if (layout.entity && (isCommonEntityCode(t.code) || layout.segments.empty())) {
            common.push_back(t);
        } else {
            data[segmentOf(layout, t.code)].push_back(t);
        }
    }
    std::vector<Tag> out;
    out.reserve(tags.size() + layout.segments.size() + 4);
    out.insert(out.end(), handle.begin(), handle.end());
    out.insert(out.end(), groups.begin(), groups.end());
    out.insert(out.end(), owner.begin(), owner.end());
    if (layout.entity) {
        out.emplace_back(100, "AcDbEntity");
        out.insert(out.end(), common.begin(), common.end());
    }
    for (std::size_t s = 0; s < layout.segments.size(); ++s) {
        out.emplace_back(100, layout.segments[s].marker);
        std::vector<Tag> part = pairCoordinates(data[s]);
        if (!elevation.empty() && !isZero(elevation)) foldElevation(part, elevation);
        out.insert(out.end(), part.begin(), part.end());
    }
    out.insert(out.end(), tags.begin() + static_cast<std::ptrdiff_t>(i), tags.end());
    return out;
}

// Each dash length (49) of an R2000 linetype is followed by its element type (74).
void addDashKinds(std::vector<Tag>& tags) {
    for (std::size_t i = 0; i < tags.size(); ++i) {
        if (tags[i].code != 49) continue;
        if (i + 1 < tags.size() && tags[i + 1].code == 74) continue;
        tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(i + 1), Tag(74, "0"));
    }
}

} // namespace

std::string_view recordSubclass(std::string_view table) {
    if (table == "LAYER") return "AcDbLayerTableRecord";
    if (table == "LTYPE") return "AcDbLinetypeTableRecord";
    if (table == "STYLE") return "AcDbTextStyleTableRecord";
    if (table == "DIMSTYLE") return "AcDbDimStyleTableRecord";
    if (table == "VPORT") return "AcDbViewportTableRecord";
    if (table == "VIEW") return "AcDbViewTableRecord";
    if (table == "UCS") return "AcDbUCSTableRecord";
    if (table == "APPID") return "AcDbRegAppTableRecord";
    if (table == "BLOCK_RECORD") return "AcDbBlockTableRecord";
    return {};
}

bool layoutLegacyEntity(OdDbEntity& entity, const OdDbEntity* parent) {
    std::optional<Layout> layout = entityLayout(entity, parent);
    if (!layout) return false;
    entity.assignTags(relayout(entity.tags(), *layout, 5));
    return true;
}

void layoutLegacyTableRecord(OdDbSymbolTableRecord& record) {
    std::string_view marker = recordSubclass(record.typeName());
    if (marker.empty()) return;
    Layout layout{{{"AcDbSymbolTableRecord", {}}, {marker, {}}}, 1, false};
    std::vector<Tag> tags = relayout(record.tags(), layout, record.typeName() == "DIMSTYLE" ? 105 : 5);
    if (record.typeName() == "LTYPE") addDashKinds(tags);
    record.assignTags(std::move(tags));
}

void layoutLegacyTableHead(OdDbSymbolTable& table) {
    std::vector<Tag> name, head, rest;
    std::span<const Tag> tags = table.tags();
    std::size_t end = table.xdataStart();
    bool inGroup = false, owned = false;
    for (std::size_t i = 0; i < end; ++i) {
        const Tag& t = tags[i];
        if (inGroup || (t.code == 102 && t.value().starts_with("{"))) {
            head.push_back(t);
            inGroup = inGroup ? t.code != 102 : true;
        } else if (t.code == 2 && name.empty()) {
            name.push_back(t);
        } else if (t.code == 5) {
            head.insert(head.begin(), t);
        } else if (t.code == 330 && !owned) {
            owned = true;
        } else if (t.code != 100) {
            rest.push_back(t);
        }
    }
    std::vector<Tag> out = name;
    out.insert(out.end(), head.begin(), head.end());
    // A table belongs to no one.
    out.emplace_back(330, "0");
    out.emplace_back(100, "AcDbSymbolTable");
    out.insert(out.end(), rest.begin(), rest.end());
    if (table.name() == "DIMSTYLE") out.emplace_back(100, "AcDbDimStyleTable");
    out.insert(out.end(), tags.begin() + static_cast<std::ptrdiff_t>(end), tags.end());
    table.assignTags(std::move(out));
    table.syncHeadFromTags();
}

} // namespace qvad::db
