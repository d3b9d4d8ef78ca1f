#include "tooldeck/commands/cleanup/quantity_markers.h"

namespace qvtd::quantity {

TemporaryMarkers::~TemporaryMarkers() {
    eraseAll();
}

void TemporaryMarkers::circleAt(const qv_point centre, double radius) {
    if (radius <= 0.0) return;
    qv_resbuf* circle = qvutBuildList(QV_RTDXF0, "CIRCLE", 10, centre, 40, radius, 0);
    if (!circle) return;
    qv_name made = {0, 0};
    if (qvdbEntMakeX(circle, made) == QV_NORM) m_circles.push_back({made[0], made[1]});
    qvutRelRb(circle);
}

void TemporaryMarkers::circleOn(const qv_name entity, double radius) {
    qv_resbuf* data = nullptr;
    if (qvdbEntGet(entity, &data) != QV_NORM || !data) return;
    for (const qv_resbuf* item = data; item; item = item->rbnext) {
        if (item->restype == 10) {
            circleAt(item->resval.rpoint, radius);
            break;
        }
    }
    qvutRelRb(data);
}

void TemporaryMarkers::eraseAll() {
    for (const auto& circle : m_circles) {
        qv_name name = {circle[0], circle[1]};
        qvdbEntDel(name);
    }
    m_circles.clear();
}

} // namespace qvtd::quantity
