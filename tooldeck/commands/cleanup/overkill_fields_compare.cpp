// Classes without a rule of their own compare their field streams (OdDbObject::dwgOutFields): every
// field after the common entity part, in the order the object stores them, without handle, owner,
// references to other objects and extended data.
//
// Why this is safe: the stream holds all that defines the object, so two streams that agree field by
// field (same codes in the same order, strings and whole numbers equal, reals within e) describe the
// same object up to e. It can only be too strict (two spellings of one value, or a field that does
// not matter, keep a pair apart), which leaves a duplicate in place but never erases a distinct
// object. Two gaps of the stream are closed here: references to shared definitions (groups 340-349:
// an image's picture, a style) are compared by handle, since copies share them while different
// objects need not; and an object that owns sub-entities (a mesh's vertices) compares them too, as
// its own stream holds only the head.

#include "qvad/db/OdDbMemoryFiler.h"
#include "qvad/db/entities/tag_access.h"
#include "qvad/dxf/tag.h"
#include "tooldeck/commands/cleanup/overkill_class_rules.h"

#include <deque>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace qvtd::overkill::rules {
namespace {

using compare::KeyHasher;
using compare::Within;

struct Field {
    int code = 0;
    std::string_view value;
};

// The fields of one object (and its sub-entities), with the stream text they point into.
struct FieldList {
    std::deque<std::string> streams;
    std::vector<Field> fields;
};

// A sub-entity starts with this code, holding its type name.
constexpr int kSubEntityMark = -1;

void appendStream(const OdDbObject& object, FieldList& list) {
    OdDbMemoryFiler filer;
    object.dwgOutFields(filer);
    const std::string& bytes = list.streams.emplace_back(filer.bytes());
    std::size_t at = 0;
    while (at < bytes.size()) {
        const std::size_t unit = bytes.find('\x1f', at);
        const std::size_t end = bytes.find('\x1e', at);
        if (unit == std::string::npos || end == std::string::npos || unit > end) break;
        const std::string_view code(bytes.data() + at, unit - at);
        list.fields.push_back({static_cast<int>(qvad::db::parseInteger(code, 0)),
                               std::string_view(bytes.data() + unit + 1, end - unit - 1)});
        at = end + 1;
    }
}

void appendSharedReferences(const OdDbObject& object, FieldList& list) {
    const auto tags = object.tags();
    const std::size_t end = object.xdataStart();
    bool inGroup = false;
    for (std::size_t i = 0; i < end; ++i) {
        const Tag& tag = tags[i];
        if (tag.code == 102) {
            inGroup = !tag.value().empty() && tag.value().front() == '{';
            continue;
        }
        if (!inGroup && tag.code >= 340 && tag.code <= 349) list.fields.push_back({tag.code, tag.value()});
    }
}

FieldList fieldsOf(const OdDbEntity& entity) {
    FieldList list;
    appendStream(entity, list);
    appendSharedReferences(entity, list);
    if (entity.isComplex())
        for (const OdDbEntity* sub : static_cast<const OdDbComplexEntity&>(entity).subEntities()) {
            list.fields.push_back({kSubEntityMark, sub->typeName()});
            appendStream(*sub, list);
            appendSharedReferences(*sub, list);
        }
    return list;
}

bool isReal(int code) {
    return code >= 0 && qvad::dxf::valueKind(code) == qvad::dxf::ValueKind::Double;
}

bool isWholeNumber(int code) {
    return code >= 0 && qvad::dxf::isNumericKind(code) && !isReal(code);
}

// Nothing for text that is no number: such a field only matches the very same text.
std::optional<long long> wholeNumber(std::string_view text) {
    const long long value = qvad::db::parseInteger(text, 0);
    if (value != qvad::db::parseInteger(text, 1)) return std::nullopt;
    return value;
}

bool sameField(const Field& a, const Field& b, const Within& w) {
    if (a.code != b.code) return false;
    if (a.value == b.value) return true;
    if (isReal(a.code)) {
        const double nan = std::numeric_limits<double>::quiet_NaN();
        return w.scalar(qvad::db::parseReal(a.value, nan), qvad::db::parseReal(b.value, nan));
    }
    if (isWholeNumber(a.code)) {
        const auto numberA = wholeNumber(a.value);
        return numberA && numberA == wholeNumber(b.value);
    }
    return false;
}

std::string modelerStream(const OdDbEntity& entity) {
    OdDbMemoryFiler filer;
    entity.dwgOutFields(filer);
    return filer.bytes();
}

} // namespace

bool sameFields(const OdDbEntity& a, const OdDbEntity& b, const Within& w) {
    const FieldList listA = fieldsOf(a);
    const FieldList listB = fieldsOf(b);
    if (listA.fields.size() != listB.fields.size()) return false;
    for (std::size_t i = 0; i < listA.fields.size(); ++i)
        if (!sameField(listA.fields[i], listB.fields[i], w)) return false;
    return true;
}

ObjectSignature fieldsSignature(const OdDbEntity& entity) {
    const FieldList list = fieldsOf(entity);
    KeyHasher key;
    ObjectSignature s;
    for (const Field& field : list.fields) {
        key.add(field.code);
        if (isReal(field.code)) {
            // The first reals anchor the grouping; reals never enter the key, as they only match
            // within e. A value that is no number compares with nothing, so any anchor does.
            if (s.anchorCount < 3) {
                const double v = qvad::db::parseReal(field.value, 0.0);
                s.anchor[static_cast<std::size_t>(s.anchorCount++)] = v;
            }
        } else if (const auto number = isWholeNumber(field.code) ? wholeNumber(field.value) : std::nullopt) {
            key.add(*number);
        } else {
            key.add(field.value);
        }
    }
    s.key = key.value();
    return s;
}

bool sameModelerStream(const OdDbEntity& a, const OdDbEntity& b) {
    return modelerStream(a) == modelerStream(b);
}

ObjectSignature modelerSignature(const OdDbEntity& entity) {
    ObjectSignature s;
    s.key = KeyHasher().add(modelerStream(entity)).value();
    return s;
}

} // namespace qvtd::overkill::rules
