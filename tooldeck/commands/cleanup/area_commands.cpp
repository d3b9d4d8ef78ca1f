// xarea and xperim: the area or the perimeter of a polygon of picked points or of picked closed
// objects, alone or summed up in the Add and Minus modes.

#include "qvad/api/qvad_api.h"
#include "tooldeck/commands/cleanup/curve_measure.h"
#include "tooldeck/commands/cleanup/quantity_clipboard.h"
#include "tooldeck/commands/cleanup/quantity_markers.h"
#include "tooldeck/commands/cleanup/quantity_settings.h"
#include "tooldeck/host/CSysVarSet.h"
#include "tooldeck/module/command_handlers.h"

#include <cmath>
#include <optional>
#include <string>
#include <vector>

namespace qvtd::cmd {

namespace {

enum class Measure { Area, Perimeter };
enum class Mode { Single, Add, Minus };

struct AreaSession {
    Measure measure;
    quantity::QuantitySettings settings;
    quantity::TemporaryMarkers markers;
    double markerRadius = 5.0;

    double scaled(double drawingValue) const {
        double scale = settings.scale();
        return measure == Measure::Area ? drawingValue * scale * scale : drawingValue * scale;
    }
    std::string withUnits(double value) const {
        return settings.format(value) + " " +
               (measure == Measure::Area ? settings.areaUnits() : settings.units);
    }
    const char* name() const { return measure == Measure::Area ? "Area" : "Perimeter"; }
};

// The polygon whose first corner is given; the user adds corners until Enter.
std::optional<double> measurePickedPolygon(AreaSession& session, const qv_point first) {
    std::vector<quantity::PlanePoint> corners = {{first[0], first[1]}};
    qv_point last = {first[0], first[1], first[2]};
    for (;;) {
        qv_point next = {0, 0, 0};
        if (qvedGetPoint(last, "\nNext point:", next) != QV_NORM) break;
        session.markers.circleAt(next, session.markerRadius);
        corners.push_back({next[0], next[1]});
        for (int i = 0; i < 3; ++i) last[i] = next[i];
    }
    if (corners.size() < 3) {
        qvutPrintf("\nAt least three points are needed.");
        return std::nullopt;
    }
    return session.measure == Measure::Area ? quantity::polygonArea(corners)
                                            : quantity::polygonPerimeter(corners, true);
}

// The sum over the closed curves selected; open and unknown objects are left out and counted.
std::optional<double> measurePickedObjects(AreaSession& session) {
    qv_name selection = {0, 0};
    if (qvedSSGet(nullptr, nullptr, nullptr, nullptr, selection) != QV_NORM) return std::nullopt;
    long count = 0;
    qvedSSLength(selection, &count);
    double total = 0.0;
    long measured = 0;
    for (long i = 0; i < count; ++i) {
        qv_name entity = {0, 0};
        qv_resbuf* data = nullptr;
        if (qvedSSName(selection, i, entity) != QV_NORM || qvdbEntGet(entity, &data) != QV_NORM) continue;
        std::optional<quantity::CurveMeasure> curve = quantity::measureEntityData(data);
        qvutRelRb(data);
        // Hatches have an area but no perimeter of their own.
        double value = !curve || !curve->closed           ? 0.0
                       : session.measure == Measure::Area ? curve->area
                                                          : curve->length;
        if (value <= 0.0) continue;
        total += value;
        session.markers.circleOn(entity, session.markerRadius);
        ++measured;
    }
    qvedSSFree(selection);
    if (measured < count) qvutPrintf("\n%ld objects left out (nothing to measure).", count - measured);
    if (measured == 0) return std::nullopt;
    return total;
}

void measureArea(Measure measure) {
    CSysVarSet guard;
    AreaSession session{measure, quantity::loadQuantitySettings(), {}};
    session.markerRadius = std::fabs(session.settings.markerRadius);
    if (session.markerRadius == 0.0) session.markerRadius = 5.0;

    Mode mode = Mode::Single;
    double sum = 0.0;
    std::optional<double> result;
    for (;;) {
        qvedInitGet(0, "E e A a S s");
        qv_point first = {0, 0, 0};
        int status = qvedGetPoint(nullptr, "\n[Object(E)/Add(A)/Minus(S)]<The first point>:", first);
        std::optional<double> taken;
        if (status == QV_NORM) {
            session.markers.circleAt(first, session.markerRadius);
            taken = measurePickedPolygon(session, first);
        } else if (status == QV_KWORD) {
            char word[16] = {};
            qvedGetInput(word, sizeof word);
            if (word[0] == 'E' || word[0] == 'e') {
                taken = measurePickedObjects(session);
            } else if (word[0] == 'A' || word[0] == 'a') {
                mode = Mode::Add;
                qvutPrintf("\nAdd mode: each %s is added to the sum.", session.name());
                continue;
            } else if (word[0] == 'S' || word[0] == 's') {
                mode = Mode::Minus;
                qvutPrintf("\nMinus mode: each %s is taken from the sum.", session.name());
                continue;
            }
        } else if (status == QV_RTNONE || status == QV_CANCEL) {
            break;
        } else {
            qvutPrintf("\nPlease select a point, or select from the directory:");
            continue;
        }
        if (!taken) {
            if (mode == Mode::Single) break;
            continue;
        }
        double value = session.scaled(*taken);
        if (mode == Mode::Single) {
            qvutPrintf("\n%s = %s", session.name(), session.withUnits(value).c_str());
            result = value;
            break;
        }
        sum += mode == Mode::Add ? value : -value;
        result = sum;
        qvutPrintf("\n%s = %s,  Total = %s", session.name(), session.withUnits(value).c_str(),
                   session.withUnits(sum).c_str());
    }
    session.markers.eraseAll();
    if (result && session.settings.toClipboard)
        quantity::writeClipboardText(session.settings.format(*result));
    qvedRetVoid();
}

} // namespace

void cmd_xarea() {
    measureArea(Measure::Area);
}

void cmd_xperim() {
    measureArea(Measure::Perimeter);
}

} // namespace qvtd::cmd
