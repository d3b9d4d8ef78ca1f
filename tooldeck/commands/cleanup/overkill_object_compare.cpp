// The rules of the classes whose defining properties are few: texts, points, curves, fills of
// corners and block references. The remaining families have files of their own.
//
// Each signature holds exactly what its rule demands: the key hashes only what the rule compares
// exactly (strings, names, flags, counts), and the anchor numbers are coordinates the rule requires
// within e. So two objects the rule calls the same always share key and anchor.

#include "tooldeck/commands/cleanup/overkill_object_compare.h"

#include "qvad/db/OdDbSymbolTable.h"
#include "qvad/db/entities/OdDbBlockReference.h"
#include "qvad/db/entities/OdDbDimensionKinds.h"
#include "qvad/db/entities/OdDbEllipse.h"
#include "qvad/db/entities/OdDbHatch.h"
#include "qvad/db/entities/OdDbLeader.h"
#include "qvad/db/entities/OdDbMText.h"
#include "qvad/db/entities/OdDbModelerGeometry.h"
#include "qvad/db/entities/OdDbPoint.h"
#include "qvad/db/entities/OdDbRasterImage.h"
#include "qvad/db/entities/OdDbSolid.h"
#include "qvad/db/entities/OdDbSpline.h"
#include "qvad/db/entities/OdDbText.h"
#include "tooldeck/commands/cleanup/overkill_class_rules.h"

#include <typeinfo>

namespace qvtd::overkill {
namespace {

using compare::KeyHasher;
using compare::sameName;
using compare::Within;

void anchorAt(ObjectSignature& signature, const OdGePoint3d& p) {
    signature.anchor = {p.x, p.y, p.z};
    signature.anchorCount = 3;
}

// TEXT: left-aligned text is placed by its position, fitted and aligned text by both points, any
// other justification by its alignment point alone (the position is recomputed from it).
bool usesPosition(const OdDbText& text) {
    const int h = text.horizontalMode();
    return text.isDefaultAlignment() || h == OdDbText::kTextAlign || h == OdDbText::kTextFit;
}

bool sameText(const OdDbText& a, const OdDbText& b, const Within& w) {
    if (a.horizontalMode() != b.horizontalMode() || a.verticalMode() != b.verticalMode() ||
        a.isMirroredInX() != b.isMirroredInX() || a.isMirroredInY() != b.isMirroredInY() ||
        a.textString() != b.textString() || !sameName(a.textStyle(), b.textStyle()))
        return false;
    if (usesPosition(a) && !w.point(a.position(), b.position())) return false;
    if (!a.isDefaultAlignment() && !w.point(a.alignmentPoint(), b.alignmentPoint())) return false;
    return w.scalar(a.height(), b.height()) && w.angle(a.rotation(), b.rotation()) &&
           w.scalar(a.widthFactor(), b.widthFactor()) && w.angle(a.oblique(), b.oblique()) &&
           w.scalar(a.thickness(), b.thickness()) && w.codirectional(a.normal(), b.normal());
}

ObjectSignature textSignature(const OdDbText& text) {
    ObjectSignature s;
    s.key = KeyHasher()
                .add(text.horizontalMode())
                .add(text.verticalMode())
                .add((text.isMirroredInX() ? 1 : 0) + (text.isMirroredInY() ? 2 : 0))
                .add(text.textString())
                .addName(text.textStyle())
                .value();
    anchorAt(s, usesPosition(text) ? text.position() : text.alignmentPoint());
    return s;
}

bool sameMText(const OdDbMText& a, const OdDbMText& b, const Within& w) {
    return a.attachment() == b.attachment() && a.flowDirection() == b.flowDirection() &&
           a.lineSpacingStyle() == b.lineSpacingStyle() && sameName(a.textStyle(), b.textStyle()) &&
           w.point(a.location(), b.location()) && w.scalar(a.textHeight(), b.textHeight()) &&
           w.scalar(a.width(), b.width()) && w.scalar(a.lineSpacingFactor(), b.lineSpacingFactor()) &&
           w.codirectional(a.direction(), b.direction()) && w.codirectional(a.normal(), b.normal()) &&
           a.contents() == b.contents();
}

ObjectSignature mtextSignature(const OdDbMText& text) {
    ObjectSignature s;
    s.key = KeyHasher()
                .add(text.attachment())
                .add(text.flowDirection())
                .add(text.lineSpacingStyle())
                .addName(text.textStyle())
                .add(text.contents())
                .value();
    anchorAt(s, text.location());
    return s;
}

// A point's normal only gives its thickness a direction.
bool samePoint(const OdDbPoint& a, const OdDbPoint& b, const Within& w) {
    return w.point(a.position(), b.position()) && w.scalar(a.thickness(), b.thickness()) &&
           w.parallel(a.normal(), b.normal());
}

bool sameEllipse(const OdDbEllipse& a, const OdDbEllipse& b, const Within& w) {
    return w.point(a.center(), b.center()) && w.vector(a.majorAxis(), b.majorAxis()) &&
           w.scalar(a.radiusRatio(), b.radiusRatio()) &&
           w.range(a.startParam(), a.endParam(), b.startParam(), b.endParam()) &&
           w.codirectional(a.normal(), b.normal());
}

int splineFlags(const OdDbSpline& spline) {
    return (spline.isClosed() ? 1 : 0) | (spline.isPeriodic() ? 2 : 0) | (spline.isRational() ? 4 : 0) |
           (spline.isPlanar() ? 8 : 0) | (spline.isLinear() ? 16 : 0) | (spline.hasStartTangent() ? 32 : 0) |
           (spline.hasEndTangent() ? 64 : 0);
}

// No weights stored means every weight is 1.
std::vector<double> weightsOf(const OdDbSpline& spline, std::size_t controlPoints) {
    std::vector<double> weights = spline.weights();
    if (weights.empty()) weights.assign(controlPoints, 1.0);
    return weights;
}

bool sameSpline(const OdDbSpline& a, const OdDbSpline& b, const Within& w) {
    if (a.degree() != b.degree() || splineFlags(a) != splineFlags(b)) return false;
    const auto controlA = a.controlPoints();
    const auto controlB = b.controlPoints();
    if (!w.points(controlA, controlB) || !w.points(a.fitPoints(), b.fitPoints()) ||
        !w.scalars(a.knots(), b.knots()) ||
        !w.scalars(weightsOf(a, controlA.size()), weightsOf(b, controlB.size())))
        return false;
    if (a.hasStartTangent() && !w.vector(a.startTangent(), b.startTangent())) return false;
    if (a.hasEndTangent() && !w.vector(a.endTangent(), b.endTangent())) return false;
    return true;
}

ObjectSignature splineSignature(const OdDbSpline& spline) {
    ObjectSignature s;
    const auto control = spline.controlPoints();
    const auto fit = spline.fitPoints();
    s.key = KeyHasher()
                .add(spline.degree())
                .add(splineFlags(spline))
                .add(static_cast<long long>(control.size()))
                .add(static_cast<long long>(fit.size()))
                .add(static_cast<long long>(spline.knots().size()))
                .value();
    if (!control.empty())
        anchorAt(s, control.front());
    else if (!fit.empty())
        anchorAt(s, fit.front());
    return s;
}

// SOLID and TRACE: corners in the order stored, in the object coordinates of the normal.
bool sameQuadrilateral(const OdDbQuadrilateral& a, const OdDbQuadrilateral& b, const Within& w) {
    for (int corner = 0; corner < 4; ++corner)
        if (!w.point(a.getPointAt(corner), b.getPointAt(corner))) return false;
    return w.scalar(a.thickness(), b.thickness()) && w.codirectional(a.normal(), b.normal());
}

int hiddenEdges(const OdDbFace& face) {
    int bits = 0;
    for (int corner = 0; corner < 4; ++corner)
        if (!face.isEdgeVisibleAt(corner)) bits |= 1 << corner;
    return bits;
}

bool sameFace(const OdDbFace& a, const OdDbFace& b, const Within& w) {
    if (hiddenEdges(a) != hiddenEdges(b)) return false;
    for (int corner = 0; corner < 4; ++corner)
        if (!w.point(a.getVertexAt(corner), b.getVertexAt(corner))) return false;
    return true;
}

// The block by its record's handle; by name when the record is missing.
bool sameBlock(const OdDbBlockReference& a, const OdDbBlockReference& b) {
    const OdDbBlockTableRecord* recordA = a.blockTableRecord();
    const OdDbBlockTableRecord* recordB = b.blockTableRecord();
    if (recordA && recordB) return recordA->handle() == recordB->handle();
    if (recordA || recordB) return false;
    return sameName(a.blockName(), b.blockName());
}

// Attribute values are not compared: the block, its placement and its grid decide.
bool sameBlockReference(const OdDbBlockReference& a, const OdDbBlockReference& b, const Within& w) {
    if (!sameBlock(a, b) || !w.point(a.position(), b.position()) || !w.scalar(a.xScale(), b.xScale()) ||
        !w.scalar(a.yScale(), b.yScale()) || !w.scalar(a.zScale(), b.zScale()) ||
        !w.angle(a.rotation(), b.rotation()) || !w.codirectional(a.normal(), b.normal()))
        return false;
    const auto* gridA = dynamic_cast<const OdDbMInsertBlock*>(&a);
    const auto* gridB = dynamic_cast<const OdDbMInsertBlock*>(&b);
    if (!gridA || !gridB) return !gridA && !gridB;
    return gridA->rows() == gridB->rows() && gridA->columns() == gridB->columns() &&
           w.scalar(gridA->rowSpacing(), gridB->rowSpacing()) &&
           w.scalar(gridA->columnSpacing(), gridB->columnSpacing());
}

ObjectSignature blockReferenceSignature(const OdDbBlockReference& reference) {
    ObjectSignature s;
    KeyHasher key;
    key.addName(reference.blockName());
    if (const auto* grid = dynamic_cast<const OdDbMInsertBlock*>(&reference))
        key.add(grid->rows()).add(grid->columns());
    s.key = key.value();
    anchorAt(s, reference.position());
    return s;
}

// The annotation a leader points at is an object of its own (each copy has its own), so it is left
// out; the path and the way it is drawn decide.
bool sameLeader(const OdDbLeader& a, const OdDbLeader& b, const Within& w) {
    if (!sameName(a.dimensionStyle(), b.dimensionStyle()) || a.hasArrowHead() != b.hasArrowHead() ||
        a.isSplined() != b.isSplined() || a.annoType() != b.annoType() ||
        a.hasHookLine() != b.hasHookLine() || a.numVertices() != b.numVertices())
        return false;
    for (int i = 0; i < a.numVertices(); ++i)
        if (!w.point(a.vertexAt(i), b.vertexAt(i))) return false;
    return w.scalar(a.textHeight(), b.textHeight()) && w.scalar(a.textWidth(), b.textWidth()) &&
           w.codirectional(a.horizontalDirection(), b.horizontalDirection()) &&
           w.codirectional(a.normal(), b.normal());
}

ObjectSignature leaderSignature(const OdDbLeader& leader) {
    ObjectSignature s;
    s.key = KeyHasher()
                .addName(leader.dimensionStyle())
                .add((leader.hasArrowHead() ? 1 : 0) | (leader.isSplined() ? 2 : 0) |
                     (leader.hasHookLine() ? 4 : 0))
                .add(leader.annoType())
                .add(leader.numVertices())
                .value();
    if (leader.numVertices() > 0) anchorAt(s, leader.vertexAt(0));
    return s;
}

enum class Rule {
    Text,
    MText,
    Point,
    Ellipse,
    Spline,
    Quadrilateral,
    Face,
    BlockReference,
    Leader,
    Hatch,
    Image,
    Dimension,
    Modeler,
    Fields
};

// By exact class: a class derived from one of these (an attribute definition is a kind of text)
// carries fields the rule does not know and falls back to the field streams.
Rule ruleOf(const OdDbEntity& entity) {
    const std::type_info& type = typeid(entity);
    if (type == typeid(OdDbText)) return Rule::Text;
    if (type == typeid(OdDbMText)) return Rule::MText;
    if (type == typeid(OdDbPoint)) return Rule::Point;
    if (type == typeid(OdDbEllipse)) return Rule::Ellipse;
    if (type == typeid(OdDbSpline)) return Rule::Spline;
    if (type == typeid(OdDbSolid) || type == typeid(OdDbTrace)) return Rule::Quadrilateral;
    if (type == typeid(OdDbFace)) return Rule::Face;
    if (type == typeid(OdDbBlockReference) || type == typeid(OdDbMInsertBlock)) return Rule::BlockReference;
    if (type == typeid(OdDbLeader)) return Rule::Leader;
    if (type == typeid(OdDbHatch)) return Rule::Hatch;
    if (type == typeid(OdDbRasterImage) || type == typeid(OdDbWipeout)) return Rule::Image;
    if (rules::isDimensionKind(entity)) return Rule::Dimension;
    if (type == typeid(OdDbRegion) || type == typeid(OdDb3dSolid) || type == typeid(OdDbBody))
        return Rule::Modeler;
    return Rule::Fields;
}

template <class T> const T& as(const OdDbEntity& entity) {
    return static_cast<const T&>(entity);
}

bool sameByRule(Rule rule, const OdDbEntity& a, const OdDbEntity& b, const Within& w) {
    switch (rule) {
    case Rule::Text:
        return sameText(as<OdDbText>(a), as<OdDbText>(b), w);
    case Rule::MText:
        return sameMText(as<OdDbMText>(a), as<OdDbMText>(b), w);
    case Rule::Point:
        return samePoint(as<OdDbPoint>(a), as<OdDbPoint>(b), w);
    case Rule::Ellipse:
        return sameEllipse(as<OdDbEllipse>(a), as<OdDbEllipse>(b), w);
    case Rule::Spline:
        return sameSpline(as<OdDbSpline>(a), as<OdDbSpline>(b), w);
    case Rule::Quadrilateral:
        return sameQuadrilateral(as<OdDbQuadrilateral>(a), as<OdDbQuadrilateral>(b), w);
    case Rule::Face:
        return sameFace(as<OdDbFace>(a), as<OdDbFace>(b), w);
    case Rule::BlockReference:
        return sameBlockReference(as<OdDbBlockReference>(a), as<OdDbBlockReference>(b), w);
    case Rule::Leader:
        return sameLeader(as<OdDbLeader>(a), as<OdDbLeader>(b), w);
    case Rule::Hatch:
        return rules::sameHatch(as<OdDbHatch>(a), as<OdDbHatch>(b), w);
    case Rule::Image:
        return rules::sameImage(as<OdDbRasterImage>(a), as<OdDbRasterImage>(b), w);
    case Rule::Dimension:
        return rules::sameDimension(as<OdDbDimension>(a), as<OdDbDimension>(b), w);
    case Rule::Modeler:
        return rules::sameModelerStream(a, b);
    case Rule::Fields:
        return rules::sameFields(a, b, w);
    }
    return false;
}

ObjectSignature signatureByRule(Rule rule, const OdDbEntity& entity) {
    switch (rule) {
    case Rule::Text:
        return textSignature(as<OdDbText>(entity));
    case Rule::MText:
        return mtextSignature(as<OdDbMText>(entity));
    case Rule::Point: {
        ObjectSignature s;
        anchorAt(s, as<OdDbPoint>(entity).position());
        return s;
    }
    case Rule::Ellipse: {
        ObjectSignature s;
        anchorAt(s, as<OdDbEllipse>(entity).center());
        return s;
    }
    case Rule::Spline:
        return splineSignature(as<OdDbSpline>(entity));
    case Rule::Quadrilateral: {
        ObjectSignature s;
        anchorAt(s, as<OdDbQuadrilateral>(entity).getPointAt(0));
        return s;
    }
    case Rule::Face: {
        ObjectSignature s;
        s.key = KeyHasher().add(hiddenEdges(as<OdDbFace>(entity))).value();
        anchorAt(s, as<OdDbFace>(entity).getVertexAt(0));
        return s;
    }
    case Rule::BlockReference:
        return blockReferenceSignature(as<OdDbBlockReference>(entity));
    case Rule::Leader:
        return leaderSignature(as<OdDbLeader>(entity));
    case Rule::Hatch:
        return rules::hatchSignature(as<OdDbHatch>(entity));
    case Rule::Image:
        return rules::imageSignature(as<OdDbRasterImage>(entity));
    case Rule::Dimension:
        return rules::dimensionSignature(as<OdDbDimension>(entity));
    case Rule::Modeler:
        return rules::modelerSignature(entity);
    case Rule::Fields:
        return rules::fieldsSignature(entity);
    }
    return {};
}

} // namespace

bool sameObject(const OdDbEntity& a, const OdDbEntity& b, double e) {
    if (typeid(a) != typeid(b) || a.typeName() != b.typeName()) return false;
    try {
        return sameByRule(ruleOf(a), a, b, Within{e});
    } catch (const std::exception&) {
        // Data an accessor cannot make sense of: not provably the same, so it stays.
        return false;
    }
}

ObjectSignature objectSignature(const OdDbEntity& entity) {
    ObjectSignature signature;
    try {
        signature = signatureByRule(ruleOf(entity), entity);
    } catch (const std::exception&) {
        // sameObject refuses such an object anyway; any signature keeps the grouping sound.
        signature = {};
    }
    // Classes never share a bucket, but keys of different rules must not meet even if they did.
    signature.key =
        compare::KeyHasher().add(static_cast<long long>(signature.key)).add(entity.typeName()).value();
    return signature;
}

} // namespace qvtd::overkill
