// qvedEntSel and qvedNEntSelP: one object picked at the "Select object:" prompt.
//
// Answers: a point (the object nearest it within the pick aperture), "#HANDLE", or an entity handed
// over by a feed. A point that hits nothing prints "Nothing selected." and asks again, as a missed
// pick does. An empty answer returns QV_RTNONE (nothing chosen, nothing wrong); a cancelled prompt or
// ended input QV_CANCEL. A nested pick names the innermost entity inside block references; an
// attribute is returned by itself, without its reference.

#include "qvad/api/answers.h"
#include "qvad/api/data_list_buffers.h"
#include "qvad/api/entity_names.h"
#include "qvad/api/host_session.h"
#include "qvad/api/input_points.h"
#include "qvad/api/selection_query.h"
#include "qvad/db/OdDbDatabase.h"
#include "qvad/db/OdDbEntity.h"
#include "qvad/db/entity_geometry.h"

#include <cctype>
#include <charconv>
#include <functional>

namespace qvad::api {

namespace {

constexpr const char* kDefaultPrompt = "\nSelect object: ";

struct Picked {
    OdGePoint3d point;
    std::optional<qvad::Handle> byHandle; // set when the answer named the entity rather than a point
};

std::string trimmed(std::string_view text) {
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front()))) text.remove_prefix(1);
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back()))) text.remove_suffix(1);
    return std::string(text);
}

// A point on the entity, to report as the pick point when it was chosen without one.
OdGePoint3d pointOn(qvad::Handle handle) {
    const OdDbObject* object = HostSession::current().drawing()->getObject(handle);
    if (object && object->isEntity()) {
        const auto geometry = qvad::db::planGeometry(*static_cast<const OdDbEntity*>(object));
        if (!geometry.empty()) return {geometry.chains[0].points[0], 0.0};
    }
    return {};
}

// QV_NORM with a point or an entity, QV_RTNONE, QV_CANCEL.
int readPick(const char* prompt, const std::function<bool(const OdGePoint2d&)>& hits, Picked& picked) {
    while (true) {
        Answer answer;
        if (ask(prompt ? prompt : kDefaultPrompt, answer) != ReadStatus::Answer ||
            answer.kind == Answer::Kind::Cancel)
            return QV_CANCEL;
        if (answer.kind == Answer::Kind::Entity) {
            const OdDbObject* object = objectOf(answer.name);
            if (object && object->isEntity() && !object->isErased()) {
                picked.byHandle = object->handle();
                picked.point = answer.point;
                return QV_NORM;
            }
        } else if (answer.kind == Answer::Kind::Point || answer.kind == Answer::Kind::Text) {
            const std::string text = trimmed(answer.text);
            if (answer.kind == Answer::Kind::Text && text.empty()) return QV_RTNONE;
            if (answer.kind == Answer::Kind::Text && text[0] == '#') {
                qvad::Handle handle = 0;
                const char* end = text.data() + text.size();
                auto [at, error] = std::from_chars(text.data() + 1, end, handle, 16);
                if (error == std::errc() && at == end && pickableByHandle(handle)) {
                    picked.byHandle = handle;
                    picked.point = pointOn(handle);
                    return QV_NORM;
                }
                show("\nNo object with handle " + text.substr(1) + " can be selected.");
                continue;
            }
            std::optional<OdGePoint3d> point;
            if (answer.kind == Answer::Kind::Point)
                point = answer.point;
            else
                point = parseTypedPoint(text);
            if (point) {
                setLastPoint(*point);
                if (hits(point->convert2d())) {
                    picked.point = *point;
                    return QV_NORM;
                }
                show("\nNothing selected.");
                continue;
            }
        }
        show("\n*Invalid selection*\nExpects a point or #handle.");
    }
}

void copyPoint(const OdGePoint3d& p, qv_point out) {
    if (!out) return;
    out[0] = p.x;
    out[1] = p.y;
    out[2] = p.z;
}

} // namespace

} // namespace qvad::api

using namespace qvad::api;

extern "C" {

QV_API int qvedEntSel(const char* prompt, qv_name entity, qv_point pickPoint) {
    return guarded([&] {
        if (!entity) return refuse(HostError::BadArgument);
        clearName(entity);
        if (!HostSession::current().drawing()) return refuse(HostError::NoDrawing);
        std::optional<qvad::Handle> hit;
        Picked picked;
        const int status = readPick(
            prompt, [&](const OdGePoint2d& p) { return (hit = entityAtPoint(p)).has_value(); }, picked);
        if (status != QV_NORM) return status;
        nameOfHandle(picked.byHandle ? *picked.byHandle : *hit, entity);
        copyPoint(picked.point, pickPoint);
        return QV_NORM;
    });
}

QV_API int qvedNEntSelP(const char* prompt, qv_name entity, qv_point pickPoint, int pickGiven,
                        qv_real transform[4][4], struct qv_resbuf** containers) {
    return guarded([&] {
        if (!entity || (pickGiven && !pickPoint)) return refuse(HostError::BadArgument);
        clearName(entity);
        if (containers) *containers = nullptr;
        if (!HostSession::current().drawing()) return refuse(HostError::NoDrawing);
        std::optional<NestedPick> nested;
        Picked picked;
        if (pickGiven) {
            picked.point = {pickPoint[0], pickPoint[1], pickPoint[2]};
            nested = nestedEntityAtPoint(picked.point.convert2d());
            if (!nested) return refuse(HostError::BadEntityName);
        } else {
            const int status = readPick(
                prompt, [&](const OdGePoint2d& p) { return (nested = nestedEntityAtPoint(p)).has_value(); },
                picked);
            if (status != QV_NORM) return status;
            if (picked.byHandle) nested = NestedPick{*picked.byHandle, {}, {}};
        }
        BufferChain chain;
        for (qvad::Handle h : nested->containers) nameOfHandle(h, chain.append(QV_RTENAME).resval.rlname);
        nameOfHandle(nested->entity, entity);
        copyPoint(picked.point, pickPoint);
        if (transform)
            for (int row = 0; row < 4; ++row)
                for (int column = 0; column < 4; ++column)
                    transform[row][column] = nested->blockToWorld(row, column);
        qv_resbuf* list = chain.release();
        if (containers)
            *containers = list;
        else
            qvutRelRb(list);
        return QV_NORM;
    });
}

} // extern "C"
