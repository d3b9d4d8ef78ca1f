#pragma once

#include "qvad/db/OdCmColor.h"
#include "qvad/db/OdDbObject.h"

#include <string>

// Anything that lives in a block: the common properties every entity stores in its AcDbEntity part.
class OdDbEntity : public OdDbObject {
public:
    using OdDbObject::OdDbObject;
    bool isEntity() const override { return true; }

    std::string_view layer() const { return getString(8, "0"); }
    void setLayer(std::string_view name) { setString(8, name, kSubclass()); }
    std::string_view linetype() const { return getString(6, "BYLAYER"); }
    void setLinetype(std::string_view name) { setString(6, name, kSubclass()); }
    // ACI colour: 0 BYBLOCK, 256 BYLAYER (the default when absent), negative when the layer is off.
    int colorIndex() const { return static_cast<int>(getInt(62, 256)); }
    void setColorIndex(int aci) { setInt(62, aci, kSubclass()); }
    bool hasTrueColor() const { return findTag(420) != nullptr; }
    long trueColor() const { return static_cast<long>(getInt(420, 0)); }
    int lineWeight() const { return static_cast<int>(getInt(370, -1)); }
    void setLineWeight(int weight) { setInt(370, weight, kSubclass()); }
    double linetypeScale() const { return getDouble(48, 1.0); }
    void setLinetypeScale(double scale) { setDouble(48, scale, kSubclass()); }
    OdCmColor color() const;
    void setColor(const OdCmColor& color);

    // Records this entity refers to; null ids when the drawing lacks them.
    OdDbObjectId layerId() const;
    OdDbObjectId linetypeId() const; // BYLAYER and BYBLOCK are records of their own
    OdDbObjectId getPlotStyleNameId() const;
    // The block (model space, a layout or a block definition) that owns the entity.
    OdDbObjectId blockId() const { return ownerId(); }
    bool isInvisible() const { return getInt(60, 0) != 0; }
    bool isInPaperSpace() const { return getInt(67, 0) != 0; }
    OdGeVector3d normal() const {
        OdGePoint3d n = getPoint(210, OdGePoint3d(0, 0, 1));
        return {n.x, n.y, n.z};
    }

    // POLYLINE and INSERT own the VERTEX or ATTRIB entities that follow them, closed by SEQEND.
    virtual bool isComplex() const { return false; }

    static std::string_view kSubclass() { return "AcDbEntity"; }
};

// An entity followed by its own sub-entities in the file: POLYLINE (vertices) and INSERT (attributes).
class OdDbComplexEntity : public OdDbEntity {
public:
    using OdDbEntity::OdDbEntity;
    bool isComplex() const override { return true; }
    // Sub-entities in file order; the last one is the SEQEND when there is one.
    std::vector<OdDbEntity*>& subEntities() { return m_subEntities; }
    const std::vector<OdDbEntity*>& subEntities() const { return m_subEntities; }

private:
    std::vector<OdDbEntity*> m_subEntities;
};
