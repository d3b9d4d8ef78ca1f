#include "qvad/db/OdDbObject.h"

#include "qvad/db/OdDbDatabase.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <functional>

OdDbObject::~OdDbObject() = default;

namespace {
// The text of a real in the caller's buffer: setters hand it straight to the string pool.
struct RealText {
    char text[40];
    std::size_t size = 0;

    explicit RealText(double value) {
        if (value == 0.0) {
            size = 3;
            std::memcpy(text, "0.0", 3);
            return;
        }
        const auto r = std::to_chars(text, text + sizeof text - 2, value);
        size = static_cast<std::size_t>(r.ptr - text);
        // Every reader accepts "1.0"; some choke on "1" where a real is due.
        if (view().find_first_of(".eEn") == std::string_view::npos) {
            text[size++] = '.';
            text[size++] = '0';
        }
    }
    std::string_view view() const { return {text, size}; }
};
} // namespace

std::string formatReal(double value) {
    return std::string(RealText(value).view());
}

void OdDbObject::viewTags(const Tag* data, std::size_t count) {
    m_ownTags.reset();
    m_tagData = data;
    m_tagCount = static_cast<std::uint32_t>(count);
}

void OdDbObject::aboutToChange() {
    if (m_inDatabase && m_db->changeObserver()) m_db->notifyBeforeModify(*this);
}

void OdDbObject::setErased(bool erased) {
    if (m_inDatabase && m_db->changeObserver()) m_db->notifyBeforeEraseChange(*this, erased);
    m_erased = erased;
}

bool OdDbObject::tagsAreFileView() const {
    if (m_ownTags || !m_db || m_tagCount == 0) return false;
    const auto& file = m_db->fileTags();
    const std::less<const Tag*> before;
    return !before(m_tagData, file.data()) && !before(file.data() + file.size(), m_tagData + m_tagCount);
}

void OdDbObject::restoreState(std::span<const Tag> tags, bool fileView, bool erased, qvad::Handle handle,
                              qvad::Handle owner) {
    if (fileView) {
        viewTags(tags.data(), tags.size());
    } else {
        m_ownTags = std::make_unique<std::vector<Tag>>(tags.data(), tags.data() + tags.size());
        m_tagData = m_ownTags->data();
        m_tagCount = static_cast<std::uint32_t>(m_ownTags->size());
    }
    m_erased = erased;
    m_handle = handle;
    m_owner = owner;
}

std::vector<Tag>& OdDbObject::mutableTags() {
    aboutToChange();
    if (!m_ownTags) {
        m_ownTags = std::make_unique<std::vector<Tag>>(m_tagData, m_tagData + m_tagCount);
    }
    // The caller may grow the vector; the span is refreshed on every access through tags().
    m_tagData = m_ownTags->data();
    m_tagCount = static_cast<std::uint32_t>(m_ownTags->size());
    return *m_ownTags;
}

void OdDbObject::assignTags(std::vector<Tag> tags) {
    aboutToChange();
    m_ownTags = std::make_unique<std::vector<Tag>>(std::move(tags));
    m_tagData = m_ownTags->data();
    m_tagCount = static_cast<std::uint32_t>(m_ownTags->size());
}

void OdDbObject::syncHeadFromTags() {
    aboutToChange();
    std::size_t h = handleTagIndex();
    m_handle = h < m_tagCount ? qvad::parseHandle(m_tagData[h].value()) : 0;
    std::size_t o = ownerTagIndex();
    m_owner = o < m_tagCount ? qvad::parseHandle(m_tagData[o].value()) : 0;
}

std::size_t OdDbObject::handleTagIndex() const {
    // A dimension style keeps its handle in 105: its group 5 is the DIMBLK name in R12 files.
    bool dimStyle = m_type == "DIMSTYLE";
    for (std::size_t i = 0; i < m_tagCount; ++i) {
        int c = m_tagData[i].code;
        if (c == 105 || (c == 5 && !dimStyle)) return i;
        // Some R12 writers put the handle after the subclass markers they borrowed from R2000.
        if (c == 1001) break;
    }
    return m_tagCount;
}

std::size_t OdDbObject::ownerTagIndex() const {
    bool inGroup = false;
    for (std::size_t i = 0; i < m_tagCount; ++i) {
        const Tag& t = m_tagData[i];
        if (t.code == 102) {
            inGroup = t.value().starts_with("{");
            continue;
        }
        if (inGroup) continue;
        if (t.code == 330) return i;
        if (t.code == 100 || t.code == 1001) break;
    }
    return m_tagCount;
}

void OdDbObject::setHandle(qvad::Handle h) {
    aboutToChange();
    m_handle = h;
    std::string text = qvad::formatHandle(h);
    std::size_t i = handleTagIndex();
    auto& tags = mutableTags();
    if (i < tags.size()) {
        tags[i] = Tag(tags[i].code, keep(text));
    } else {
        tags.insert(tags.begin(), Tag(m_type == "DIMSTYLE" ? 105 : 5, keep(text)));
    }
    mutableTags();
}

void OdDbObject::setOwnerHandle(qvad::Handle h) {
    aboutToChange();
    m_owner = h;
    std::string text = qvad::formatHandle(h);
    std::size_t i = ownerTagIndex();
    auto& tags = mutableTags();
    if (i < tags.size()) {
        tags[i] = Tag(330, keep(text));
    } else {
        // After the handle and any 102 groups, before the first subclass marker.
        std::size_t at = 0;
        bool inGroup = false;
        for (; at < tags.size(); ++at) {
            const Tag& t = tags[at];
            if (t.code == 102) {
                inGroup = t.value().starts_with("{");
                continue;
            }
            if (inGroup || t.code == 5 || t.code == 105) continue;
            break;
        }
        tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(at), Tag(330, keep(text)));
    }
    mutableTags();
}

std::size_t OdDbObject::xdataStart() const {
    for (std::size_t i = 0; i < m_tagCount; ++i)
        if (m_tagData[i].code == 1001) return i;
    return m_tagCount;
}

std::pair<std::size_t, std::size_t> OdDbObject::subclassRange(std::string_view subclass) const {
    // One pass that stops at the extended data: property reads run for every object on load.
    std::size_t n = m_tagCount;
    if (subclass.empty()) {
        std::size_t i = 0;
        while (i < n && m_tagData[i].code != 1001) ++i;
        return {0, i};
    }
    for (std::size_t i = 0; i < n; ++i) {
        int code = m_tagData[i].code;
        if (code == 1001) return {i, i};
        if (code == 100 && m_tagData[i].value() == subclass) {
            std::size_t j = i + 1;
            while (j < n && m_tagData[j].code != 100 && m_tagData[j].code != 1001) ++j;
            return {i + 1, j};
        }
    }
    return {n, n};
}

bool OdDbObject::hasSubclass(std::string_view subclass) const {
    auto [b, e] = subclassRange(subclass);
    return b != e ||
           (b > 0 && b <= m_tagCount && m_tagData[b - 1].code == 100 && m_tagData[b - 1].value() == subclass);
}

const Tag* OdDbObject::findTag(int code, std::string_view subclass) const {
    if (subclass.empty()) {
        for (std::size_t i = 0; i < m_tagCount; ++i) {
            int c = m_tagData[i].code;
            if (c == code) return &m_tagData[i];
            if (c == 1001) break;
        }
        return nullptr;
    }
    auto [b, e] = subclassRange(subclass);
    for (std::size_t i = b; i < e; ++i)
        if (m_tagData[i].code == code) return &m_tagData[i];
    return nullptr;
}

std::string_view OdDbObject::getString(int code, std::string_view fallback, std::string_view subclass) const {
    const Tag* t = findTag(code, subclass);
    return t ? t->value() : fallback;
}

namespace {
std::string_view trimmed(std::string_view s) {
    while (!s.empty() && s.front() == ' ') s.remove_prefix(1);
    while (!s.empty() && s.back() == ' ') s.remove_suffix(1);
    if (!s.empty() && s.front() == '+') s.remove_prefix(1);
    return s;
}
} // namespace

double OdDbObject::getDouble(int code, double fallback, std::string_view subclass) const {
    const Tag* t = findTag(code, subclass);
    if (!t) return fallback;
    std::string_view s = trimmed(t->value());
    double v = fallback;
    std::from_chars(s.data(), s.data() + s.size(), v);
    return v;
}

long long OdDbObject::getInt(int code, long long fallback, std::string_view subclass) const {
    const Tag* t = findTag(code, subclass);
    if (!t) return fallback;
    std::string_view s = trimmed(t->value());
    long long v = fallback;
    std::from_chars(s.data(), s.data() + s.size(), v);
    return v;
}

OdGePoint3d OdDbObject::getPoint(int code, const OdGePoint3d& fallback, std::string_view subclass) const {
    auto [b, e] = subclassRange(subclass);
    for (std::size_t i = b; i < e; ++i) {
        if (m_tagData[i].code != code) continue;
        OdGePoint3d p = fallback;
        p.z = 0.0;
        auto read = [](const Tag& t, double& out) {
            std::string_view s = trimmed(t.value());
            std::from_chars(s.data(), s.data() + s.size(), out);
        };
        read(m_tagData[i], p.x);
        if (i + 1 < e && m_tagData[i + 1].code == code + 10) read(m_tagData[i + 1], p.y);
        if (i + 2 < e && m_tagData[i + 2].code == code + 20) read(m_tagData[i + 2], p.z);
        return p;
    }
    return fallback;
}

qvad::Handle OdDbObject::getHandle(int code, std::string_view subclass) const {
    const Tag* t = findTag(code, subclass);
    return t ? qvad::parseHandle(t->value()) : 0;
}

std::string_view OdDbObject::keep(std::string_view text) {
    if (m_db) return m_db->strings().store(text);
    static qvad::dxf::StringPool detached;
    return detached.store(text);
}

void OdDbObject::setString(int code, std::string_view value, std::string_view subclass) {
    std::string_view kept = keep(value);
    auto [b, e] = subclassRange(subclass);
    auto& tags = mutableTags();
    for (std::size_t i = b; i < e; ++i) {
        if (tags[i].code == code) {
            tags[i] = Tag(code, kept);
            return;
        }
    }
    tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(e), Tag(code, kept));
    mutableTags();
}

void OdDbObject::setDouble(int code, double value, std::string_view subclass) {
    setString(code, RealText(value).view(), subclass);
}

void OdDbObject::setInt(int code, long long value, std::string_view subclass) {
    setString(code, std::to_string(value), subclass);
}

void OdDbObject::setHandleRef(int code, qvad::Handle h, std::string_view subclass) {
    setString(code, qvad::formatHandle(h), subclass);
}

void OdDbObject::setPoint(int code, const OdGePoint3d& p, std::string_view subclass) {
    auto [b, e] = subclassRange(subclass);
    auto& tags = mutableTags();
    std::size_t at = e;
    for (std::size_t i = b; i < e; ++i)
        if (tags[i].code == code) {
            at = i;
            break;
        }
    std::string_view x = keep(RealText(p.x).view()), y = keep(RealText(p.y).view()),
                     z = keep(RealText(p.z).view());
    if (at == e) {
        Tag inserted[3] = {Tag(code, x), Tag(code + 10, y), Tag(code + 20, z)};
        tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(at), inserted, inserted + 3);
    } else {
        tags[at] = Tag(code, x);
        if (at + 1 < tags.size() && tags[at + 1].code == code + 10)
            tags[at + 1] = Tag(code + 10, y);
        else
            tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(at + 1), Tag(code + 10, y));
        if (at + 2 < tags.size() && tags[at + 2].code == code + 20) tags[at + 2] = Tag(code + 20, z);
        // A 2D point stays 2D in the file unless it leaves the plane.
        else if (p.z != 0.0)
            tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(at + 2), Tag(code + 20, z));
    }
    mutableTags();
}

void OdDbObject::removeTags(int code, std::string_view subclass) {
    auto [b, e] = subclassRange(subclass);
    auto& tags = mutableTags();
    std::size_t out = b;
    for (std::size_t i = b; i < e; ++i)
        if (tags[i].code != code) tags[out++] = tags[i];
    tags.erase(tags.begin() + static_cast<std::ptrdiff_t>(out),
               tags.begin() + static_cast<std::ptrdiff_t>(e));
    mutableTags();
}
