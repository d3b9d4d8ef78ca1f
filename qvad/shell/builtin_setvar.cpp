// SETVAR: system variables by name from the command line.

#include "qvad/api/sysvars_table.h"
#include "qvad/api/sysvars_value.h"
#include "qvad/shell/builtin_commands.h"
#include "qvad/shell/builtin_prompts.h"

#include <cstdio>

namespace qvad::shell {
namespace {

std::string numberText(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.10g", value);
    return text;
}

// The variable's value as a person would type it; nullopt when it cannot be read.
std::optional<std::string> valueText(const std::string& name) {
    qv_resbuf value{};
    value.restype = QV_RTSHORT;
    if (qvedGetVar(name.c_str(), &value) != QV_NORM) return std::nullopt;
    switch (value.restype) {
    case QV_RTSHORT:
        return std::to_string(value.resval.rint);
    case QV_RTLONG:
        return std::to_string(value.resval.rlong);
    case QV_RTREAL:
    case QV_RTANG:
        return numberText(value.resval.rreal);
    case QV_RTPOINT:
        return numberText(value.resval.rpoint[0]) + "," + numberText(value.resval.rpoint[1]);
    case QV_RT3DPOINT:
        return numberText(value.resval.rpoint[0]) + "," + numberText(value.resval.rpoint[1]) + "," +
               numberText(value.resval.rpoint[2]);
    case QV_RTSTR: {
        std::string text = value.resval.rstring ? value.resval.rstring : "";
        qvad_free(value.resval.rstring);
        return text;
    }
    default:
        return std::nullopt;
    }
}

std::optional<OdGePoint3d> parsePoint(const std::string& text, bool threeD) {
    std::vector<double> numbers;
    std::string part;
    for (std::size_t start = 0;;) {
        const std::size_t comma = text.find(',', start);
        auto number = api::parseReal(text.substr(start, comma == std::string::npos ? comma : comma - start));
        if (!number) return std::nullopt;
        numbers.push_back(*number);
        if (comma == std::string::npos) break;
        start = comma + 1;
    }
    if (numbers.size() < 2 || numbers.size() > (threeD ? 3u : 2u)) return std::nullopt;
    return OdGePoint3d(numbers[0], numbers[1], numbers.size() == 3 ? numbers[2] : 0.0);
}

// Writes the typed value; false when it does not fit the variable (nothing changed).
bool setFromText(const api::SysVarDef& def, const std::string& text) {
    qv_resbuf value{};
    switch (def.type) {
    case api::SysVarType::Short: {
        auto number = api::parseInteger(text);
        if (!number || *number < -32768 || *number > 32767) return false;
        value.restype = QV_RTSHORT;
        value.resval.rint = static_cast<short>(*number);
        break;
    }
    case api::SysVarType::Real: {
        auto number = api::parseReal(text);
        if (!number) return false;
        value.restype = QV_RTREAL;
        value.resval.rreal = *number;
        break;
    }
    case api::SysVarType::String:
        value.restype = QV_RTSTR;
        value.resval.rstring = const_cast<char*>(text.c_str());
        break;
    case api::SysVarType::Point2d:
    case api::SysVarType::Point3d: {
        auto point = parsePoint(text, def.type == api::SysVarType::Point3d);
        if (!point) return false;
        value.restype = def.type == api::SysVarType::Point3d ? QV_RT3DPOINT : QV_RTPOINT;
        value.resval.rpoint[0] = point->x;
        value.resval.rpoint[1] = point->y;
        value.resval.rpoint[2] = point->z;
        break;
    }
    }
    return qvedSetVar(std::string(def.name).c_str(), &value) == QV_NORM;
}

void listVariables() {
    std::optional<std::string> pattern = askText("\nEnter variable(s) to list <*>: ");
    if (!pattern) return;
    const std::string wanted = upperCase(pattern->empty() ? "*" : *pattern);
    for (auto group : {api::generalSysVars(), api::dimensionSysVars()}) {
        for (const api::SysVarDef& def : group) {
            const std::string name(def.name);
            if (qvutWcMatch(name.c_str(), wanted.c_str()) != QV_NORM) continue;
            std::optional<std::string> text = valueText(name);
            if (!text) continue;
            char line[600];
            std::snprintf(line, sizeof line, "%-16s %s%s", name.c_str(),
                          def.type == api::SysVarType::String ? ("\"" + *text + "\"").c_str() : text->c_str(),
                          def.readOnly ? "  (read only)" : "");
            say(line);
        }
    }
}

std::string g_lastName;

} // namespace

void cmdSetVar() {
    const api::SysVarDef* def = nullptr;
    while (!def) {
        const std::string prompt = g_lastName.empty() ? "\nEnter variable name or [?]: "
                                                      : "\nEnter variable name or [?] <" + g_lastName + ">: ";
        std::optional<std::string> name = askText(prompt);
        if (!name) return;
        if (name->empty()) {
            if (g_lastName.empty()) return;
            *name = g_lastName;
        }
        if (*name == "?") {
            listVariables();
            return;
        }
        def = api::findSysVar(*name);
        if (!def) say("Unknown variable name \"" + upperCase(*name) + "\".");
    }
    const std::string name(def->name);
    g_lastName = name;
    const std::string current = valueText(name).value_or("");
    if (def->readOnly) {
        say(name + " = " + current + " (read only)");
        qvedRetVoid();
        return;
    }
    for (;;) {
        std::optional<std::string> text = askText("\nEnter new value for " + name + " <" + current + ">: ",
                                                  def->type == api::SysVarType::String);
        if (!text || text->empty()) break;
        if (setFromText(*def, *text)) break;
        say("Invalid value for " + name + ": \"" + *text + "\".");
    }
    qvedRetVoid();
}

} // namespace qvad::shell
