#include "qvad/db/entity_data_list.h"

#include "qvad/db/OdDbSymbolTable.h"
#include "qvad/db/entities/tag_access.h"

#include <bit>
#include <cmath>
#include <limits>

namespace qvad::db {

using qvad::dxf::ValueKind;
using qvad::dxf::valueKind;

bool isPointCode(int code) {
    return (code >= 10 && code <= 18) || (code >= 110 && code <= 112) || (code >= 210 && code <= 219) ||
           (code >= 1010 && code <= 1013);
}

bool isAngleCode(int code) {
    return code >= 50 && code <= 58;
}

bool isObjectReferenceCode(int code) {
    return qvad::dxf::isHandleReference(code) && !(code >= 320 && code <= 329);
}

namespace {

constexpr int kExtendedDataMarker = -3;

bool sameNumber(double a, double b) {
    return a == b || std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) ||
           (std::isnan(a) && std::isnan(b));
}

// The value a list shows for a real's text.
double listReal(std::string_view text, bool angle) {
    double v = parseReal(text);
    return angle ? degreesToRadians(v) : v;
}

DataItem readItem(std::span<const Tag> tags, std::size_t& i, bool inExtendedData, bool withSource) {
    const Tag& t = tags[i];
    const int code = t.code;
    if (isPointCode(code) && i + 1 < tags.size() && tags[i + 1].code == code + 10) {
        DataItem item(code, OdGePoint3d());
        OdGePoint3d p;
        p.x = parseReal(t.value());
        p.y = parseReal(tags[i + 1].value());
        if (withSource) {
            item.source[0] = t.value();
            item.source[1] = tags[i + 1].value();
        }
        item.is2d = !(i + 2 < tags.size() && tags[i + 2].code == code + 20);
        if (!item.is2d) {
            p.z = parseReal(tags[i + 2].value());
            if (withSource) item.source[2] = tags[i + 2].value();
        }
        item.value = p;
        i += item.is2d ? 2 : 3;
        return item;
    }
    ++i;
    DataItem item;
    item.code = code;
    switch (valueKind(code)) {
    case ValueKind::Double:
        item.value = listReal(t.value(), !inExtendedData && isAngleCode(code));
        break;
    case ValueKind::Int16:
    case ValueKind::Int32:
    case ValueKind::Int64:
    case ValueKind::Bool:
        item.value = static_cast<std::int64_t>(parseInteger(t.value()));
        break;
    case ValueKind::Handle:
        if (isObjectReferenceCode(code))
            item.value = ObjectRef{parseHandle(t.value())};
        else
            item.value = std::string(t.value());
        break;
    default:
        item.value = std::string(t.value());
        break;
    }
    if (withSource && !item.text()) item.source[0] = t.value();
    return item;
}

[[noreturn]] void fail(int code, const std::string& what) {
    throw DataListError("group " + std::to_string(code) + " " + what);
}

const char* kindName(ValueKind kind) {
    switch (kind) {
    case ValueKind::Double:
        return "takes a real number";
    case ValueKind::Int16:
    case ValueKind::Int32:
    case ValueKind::Int64:
        return "takes a whole number";
    case ValueKind::Bool:
        return "takes 0 or 1";
    case ValueKind::Handle:
        return "takes a handle";
    default:
        return "takes text";
    }
}

bool isHexText(std::string_view s) {
    for (char c : s)
        if (!std::isxdigit(static_cast<unsigned char>(c))) return false;
    return true;
}

class TagWriter {
public:
    TagWriter(std::string_view typeName, qvad::dxf::StringPool& pool) : m_type(typeName), m_pool(pool) {}

    void add(const DataItem& item) {
        const int code = item.code;
        if (code == -1) return;
        if (code == 0) {
            const std::string* type = item.text();
            if (!type || !equalsNoCase(*type, m_type))
                throw DataListError("the list describes " + (type ? "a " + *type : std::string("no type")) +
                                    ", not a " + std::string(m_type));
            return;
        }
        if (code == kExtendedDataMarker) {
            if (m_extended) fail(code, "may stand only once");
            m_extended = true;
            return;
        }
        checkPlace(item);
        if (const OdGePoint3d* p = item.point()) return addPoint(item, *p);
        if (const std::string* s = item.text()) return addText(code, *s);
        if (const ObjectRef* r = item.reference()) return addReference(item, *r);
        if (const double* d = item.real()) return addReal(item, *d);
        if (const std::int64_t* n = item.integer()) return addInteger(item, *n);
        fail(code, "has no value");
    }

    std::vector<Tag> finish() {
        if (m_extended && m_braces != 0) fail(1002, "braces of the last application do not close");
        return std::move(m_tags);
    }

private:
    void checkPlace(const DataItem& item) {
        const int code = item.code;
        if (code < 0 || code == 999) fail(code, "cannot be stored in a drawing");
        if (!m_extended) {
            if (code >= 1000) fail(code, "is extended data and must follow the -3 marker");
            return;
        }
        if (code < 1000 || code > 1071) fail(code, "cannot stand in extended data");
        if (code == 1001) {
            if (m_braces != 0) fail(1002, "braces do not close before the next application");
            const std::string* app = item.text();
            if (!app || app->empty()) fail(code, "needs an application name");
            m_application = true;
        } else if (!m_application) {
            fail(code, "must follow an application name (1001)");
        }
        if (code == 1002) {
            const std::string* brace = item.text();
            if (!brace || (*brace != "{" && *brace != "}")) fail(code, "takes \"{\" or \"}\"");
            m_braces += *brace == "{" ? 1 : -1;
            if (m_braces < 0) fail(code, "closes a brace that was never opened");
        }
    }

    std::string_view keep(std::string_view s) { return m_pool.store(s); }

    void addText(int code, const std::string& s) {
        ValueKind kind = valueKind(code);
        if (s.find_first_of("\r\n") != std::string::npos) fail(code, "cannot hold a line break");
        switch (kind) {
        case ValueKind::String:
        case ValueKind::Comment:
            break;
        case ValueKind::Handle:
            if (isObjectReferenceCode(code)) fail(code, "takes an object reference");
            if (s.empty() || s.size() > 16 || !isHexText(s))
                fail(code, "takes a hexadecimal handle, not \"" + s + "\"");
            break;
        case ValueKind::Binary:
            if (s.size() % 2 != 0 || !isHexText(s)) fail(code, "takes hexadecimal bytes");
            break;
        default:
            fail(code, kindName(kind));
        }
        m_tags.emplace_back(code, keep(s));
    }

    void addReference(const DataItem& item, const ObjectRef& r) {
        if (!isObjectReferenceCode(item.code)) fail(item.code, kindName(valueKind(item.code)));
        bool unchanged = !item.source[0].empty() && parseHandle(item.source[0]) == r.handle;
        m_tags.emplace_back(item.code, keep(unchanged ? item.source[0] : formatHandle(r.handle)));
    }

    std::string_view realText(int code, double value, const std::string& source, bool angle) {
        if (!source.empty() && sameNumber(listReal(source, angle), value)) return keep(source);
        if (!std::isfinite(value)) fail(code, "takes a finite number");
        return keep(formatReal(angle ? radiansToDegrees(value) : value));
    }

    void addReal(const DataItem& item, double value) {
        if (valueKind(item.code) != ValueKind::Double) fail(item.code, kindName(valueKind(item.code)));
        m_tags.emplace_back(item.code, realText(item.code, value, item.source[0], isAngle(item.code)));
    }

    void addInteger(const DataItem& item, std::int64_t value) {
        const int code = item.code;
        const ValueKind kind = valueKind(code);
        if (kind == ValueKind::Double) {
            m_tags.emplace_back(code, realText(code, static_cast<double>(value), {}, isAngle(code)));
            return;
        }
        std::int64_t low = std::numeric_limits<std::int64_t>::min(),
                     high = std::numeric_limits<std::int64_t>::max();
        switch (kind) {
        case ValueKind::Int16:
            low = -32768;
            high = 32767;
            break;
        case ValueKind::Int32:
            low = std::numeric_limits<std::int32_t>::min();
            high = std::numeric_limits<std::int32_t>::max();
            break;
        case ValueKind::Int64:
            break;
        case ValueKind::Bool:
            low = 0;
            high = 1;
            break;
        default:
            fail(code, kindName(kind));
        }
        if (value < low || value > high)
            fail(code, "value " + std::to_string(value) + " is outside " + std::to_string(low) + " to " +
                           std::to_string(high));
        bool unchanged = !item.source[0].empty() && parseInteger(item.source[0]) == value;
        m_tags.emplace_back(code, keep(unchanged ? item.source[0] : std::to_string(value)));
    }

    void addPoint(const DataItem& item, const OdGePoint3d& p) {
        if (!isPointCode(item.code)) fail(item.code, "takes no point");
        const double xyz[3] = {p.x, p.y, p.z};
        for (int axis = 0; axis < (item.is2d ? 2 : 3); ++axis)
            m_tags.emplace_back(
                item.code + 10 * axis,
                realText(item.code, xyz[axis], item.source[static_cast<std::size_t>(axis)], false));
    }

    bool isAngle(int code) const { return !m_extended && isAngleCode(code); }

    std::string_view m_type;
    qvad::dxf::StringPool& m_pool;
    std::vector<Tag> m_tags;
    bool m_extended = false;
    bool m_application = false;
    int m_braces = 0;
};

} // namespace

DataItem readDataItem(std::span<const Tag> tags, std::size_t& i) {
    return readItem(tags, i, false, false);
}

DataList entityToDataList(const OdDbObject& object, bool withSourceText) {
    DataList list;
    auto tags = object.tags();
    list.reserve(tags.size() + 3);
    list.emplace_back(-1, ObjectRef{object.handle()});
    list.emplace_back(0, std::string(object.typeName()));
    const std::size_t extended = object.xdataStart();
    auto data = tags.subspan(0, extended);
    for (std::size_t i = 0; i < data.size();) list.push_back(readItem(data, i, false, withSourceText));
    if (extended < tags.size()) {
        list.emplace_back().code = kExtendedDataMarker;
        auto xdata = tags.subspan(extended);
        for (std::size_t i = 0; i < xdata.size();) list.push_back(readItem(xdata, i, true, withSourceText));
    }
    return list;
}

std::vector<Tag> dataListToTags(const DataList& list, std::string_view typeName,
                                qvad::dxf::StringPool& pool) {
    TagWriter writer(typeName, pool);
    for (const DataItem& item : list) writer.add(item);
    return writer.finish();
}

bool matchesApplication(std::string_view name, std::string_view pattern) {
    auto upper = [](char c) { return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 32) : c; };
    std::size_t n = 0, p = 0, starP = std::string_view::npos, starN = 0;
    while (n < name.size()) {
        if (p < pattern.size() && (pattern[p] == '?' || upper(pattern[p]) == upper(name[n]))) {
            ++n;
            ++p;
        } else if (p < pattern.size() && pattern[p] == '*') {
            starP = p++;
            starN = n;
        } else if (starP != std::string_view::npos) {
            p = starP + 1;
            n = ++starN;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*') ++p;
    return p == pattern.size();
}

void filterExtendedData(DataList& list, std::span<const std::string> applicationPatterns) {
    std::size_t marker = 0;
    while (marker < list.size() && list[marker].code != kExtendedDataMarker) ++marker;
    if (marker == list.size()) return;
    DataList kept(std::make_move_iterator(list.begin()),
                  std::make_move_iterator(list.begin() + static_cast<std::ptrdiff_t>(marker) + 1));
    bool keeping = false;
    for (std::size_t i = marker + 1; i < list.size(); ++i) {
        if (list[i].code == 1001) {
            const std::string* app = list[i].text();
            keeping = false;
            for (const std::string& pattern : applicationPatterns)
                if (app && matchesApplication(*app, pattern)) keeping = true;
        }
        if (keeping) kept.push_back(std::move(list[i]));
    }
    if (kept.size() == marker + 1) kept.pop_back();
    list = std::move(kept);
}

} // namespace qvad::db
