#include "qvad/db/entities/builtin_classes.h"

#include "qvad/db/dictionary.h"
#include "qvad/db/entities/OdDbArc.h"
#include "qvad/db/entities/OdDbBlockReference.h"
#include "qvad/db/entities/OdDbCircle.h"
#include "qvad/db/entities/OdDbDimensionKinds.h"
#include "qvad/db/entities/OdDbEllipse.h"
#include "qvad/db/entities/OdDbGroup.h"
#include "qvad/db/entities/OdDbHatch.h"
#include "qvad/db/entities/OdDbLeader.h"
#include "qvad/db/entities/OdDbLine.h"
#include "qvad/db/entities/OdDbMText.h"
#include "qvad/db/entities/OdDbModelerGeometry.h"
#include "qvad/db/entities/OdDbPoint.h"
#include "qvad/db/entities/OdDbPolyFaceMesh.h"
#include "qvad/db/entities/OdDbPolyline.h"
#include "qvad/db/entities/OdDbRasterImage.h"
#include "qvad/db/entities/OdDbSolid.h"
#include "qvad/db/entities/OdDbSortentsTable.h"
#include "qvad/db/entities/OdDbSpline.h"
#include "qvad/db/entities/OdDbXrecord.h"
#include "qvad/db/object_factory.h"

#include <type_traits>

namespace {
// The typed classes only interpret tags: a million loaded entities must cost what plain ones cost.
template <class... T> constexpr bool keepObjectSize() {
    return ((sizeof(T) ==
             (std::is_base_of_v<OdDbComplexEntity, T> ? sizeof(OdDbComplexEntity) : sizeof(OdDbObject))) &&
            ...);
}
static_assert(keepObjectSize<
              OdDbLine, OdDbPoint, OdDbCircle, OdDbArc, OdDbEllipse, OdDbPolyline, OdDb2dPolyline,
              OdDb3dPolyline, OdDbPolyFaceMesh, OdDbPolygonMesh, OdDb2dVertex, OdDb3dPolylineVertex,
              OdDbPolygonMeshVertex, OdDbPolyFaceMeshVertex, OdDbFaceRecord, OdDbText, OdDbMText,
              OdDbAttributeDefinition, OdDbAttribute, OdDbBlockReference, OdDbMInsertBlock, OdDbSolid,
              OdDbTrace, OdDbFace, OdDbRasterImage, OdDbWipeout, OdDbHatch, OdDbSpline, OdDbLeader,
              OdDbRotatedDimension, OdDbAlignedDimension, OdDb2LineAngularDimension, OdDbDiametricDimension,
              OdDbRadialDimension, OdDb3PointAngularDimension, OdDbOrdinateDimension, OdDbRegion, OdDb3dSolid,
              OdDbBody, OdDbDictionary, OdDbGroup, OdDbSortentsTable, OdDbXrecord>());

template <class T> void plain(std::string_view type) {
    registerObjectClass(type, [](std::string_view) { return std::make_unique<T>(); });
}

template <class F> void byData(std::string_view type, F make) {
    registerTaggedObjectClass(type, [make](std::string_view, std::span<const Tag> tags) {
        return std::unique_ptr<OdDbObject>(make(tags));
    });
}
} // namespace

void registerBuiltinObjectClasses() {
    plain<OdDbLine>("LINE");
    plain<OdDbPoint>("POINT");
    plain<OdDbCircle>("CIRCLE");
    plain<OdDbArc>("ARC");
    plain<OdDbEllipse>("ELLIPSE");
    plain<OdDbPolyline>("LWPOLYLINE");
    byData("POLYLINE", makeHeavyPolyline);
    byData("VERTEX", makeVertex);
    plain<OdDbText>("TEXT");
    plain<OdDbMText>("MTEXT");
    plain<OdDbAttributeDefinition>("ATTDEF");
    plain<OdDbAttribute>("ATTRIB");
    byData("INSERT", makeBlockReference);
    plain<OdDbSolid>("SOLID");
    plain<OdDbTrace>("TRACE");
    plain<OdDbFace>("3DFACE");
    plain<OdDbRasterImage>("IMAGE");
    plain<OdDbWipeout>("WIPEOUT");
    plain<OdDbHatch>("HATCH");
    plain<OdDbSpline>("SPLINE");
    plain<OdDbLeader>("LEADER");
    byData("DIMENSION", makeDimension);
    plain<OdDbRegion>("REGION");
    plain<OdDb3dSolid>("3DSOLID");
    plain<OdDbBody>("BODY");

    plain<OdDbDictionary>("DICTIONARY");
    registerObjectClass("ACDBDICTIONARYWDFLT",
                        [](std::string_view type) { return std::make_unique<OdDbDictionary>(type); });
    plain<OdDbGroup>("GROUP");
    plain<OdDbSortentsTable>("SORTENTSTABLE");
    plain<OdDbXrecord>("XRECORD");
}
