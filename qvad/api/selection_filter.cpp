#include "qvad/api/selection_filter.h"

#include "qvad/api/data_list_buffers.h"

#include <cctype>
#include <cmath>
#include <cstring>

namespace qvad::api {

enum class Relation { Any, Equal, NotEqual, Less, LessEqual, Greater, GreaterEqual, BitsAny, BitsAll };

struct FilterNode {
    enum class Kind { Test, And, Or, Xor, Not, Applications };
    Kind kind = Kind::And;
    // Test
    int code = 0;
    BufferValue value = BufferValue::None;
    Relation relation[3] = {Relation::Equal, Relation::Equal, Relation::Equal};
    std::string text;
    double number = 0.0;
    long long integer = 0;
    double point[3] = {0, 0, 0};
    long long name[2] = {0, 0};
    // Applications
    std::vector<std::string> applications;
    // And, Or, Xor, Not
    std::vector<FilterNode> children;
};

namespace {

std::optional<Relation> relationOf(const std::string& op) {
    if (op == "*") return Relation::Any;
    if (op == "=") return Relation::Equal;
    if (op == "!=" || op == "/=" || op == "<>") return Relation::NotEqual;
    if (op == "<") return Relation::Less;
    if (op == "<=") return Relation::LessEqual;
    if (op == ">") return Relation::Greater;
    if (op == ">=") return Relation::GreaterEqual;
    if (op == "&") return Relation::BitsAny;
    if (op == "&=") return Relation::BitsAll;
    return std::nullopt;
}

std::string trimmed(const char* text) {
    std::string s(text);
    while (!s.empty() && std::isspace(static_cast<unsigned char>(s.back()))) s.pop_back();
    std::size_t start = 0;
    while (start < s.size() && std::isspace(static_cast<unsigned char>(s[start]))) ++start;
    return s.substr(start);
}

std::string upper(std::string text) {
    for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

bool isGroupingWord(const std::string& word) {
    const std::string w = upper(word);
    return w == "<AND" || w == "AND>" || w == "<OR" || w == "OR>" || w == "<XOR" || w == "XOR>" ||
           w == "<NOT" || w == "NOT>";
}

class Parser {
public:
    Parser(const qv_resbuf* list, std::string& error) : m_at(list), m_error(error) {}

    std::optional<FilterNode> parseAll(bool& needsXData) {
        FilterNode root;
        root.kind = FilterNode::Kind::And;
        if (!parseSequence(root, "")) return std::nullopt;
        needsXData = m_needsXData;
        return root;
    }

private:
    bool fail(std::string message) {
        m_error = std::move(message);
        return false;
    }

    // Reads operands into parent until the closing word (empty: the end of the list).
    bool parseSequence(FilterNode& parent, const std::string& closing) {
        while (m_at) {
            if (m_at->restype == -4) {
                if (!m_at->resval.rstring) return fail("a -4 group without an operator");
                const std::string word = upper(trimmed(m_at->resval.rstring));
                if (isGroupingWord(word)) {
                    if (word.back() == '>') {
                        if (word != closing) return fail("\"" + word + "\" closes nothing open");
                        m_at = m_at->rbnext;
                        return checkCount(parent, word);
                    }
                    FilterNode group;
                    group.kind = word == "<AND"   ? FilterNode::Kind::And
                                 : word == "<OR"  ? FilterNode::Kind::Or
                                 : word == "<XOR" ? FilterNode::Kind::Xor
                                                  : FilterNode::Kind::Not;
                    m_at = m_at->rbnext;
                    if (!parseSequence(group, word.substr(1) + ">")) return false;
                    parent.children.push_back(std::move(group));
                    continue;
                }
                if (!parseRelationalTest(parent, word)) return false;
                continue;
            }
            if (m_at->restype == -3) {
                if (!parseApplications(parent)) return false;
                continue;
            }
            FilterNode test;
            if (!readTest(test)) return false;
            parent.children.push_back(std::move(test));
        }
        if (!closing.empty())
            return fail("\"<" + closing.substr(0, closing.size() - 1) + "\" is never closed");
        return true;
    }

    bool checkCount(const FilterNode& group, const std::string& word) {
        const std::size_t n = group.children.size();
        if (group.kind == FilterNode::Kind::Not && n != 1) return fail("NOT takes exactly one test");
        if (group.kind == FilterNode::Kind::Xor && n != 2) return fail("XOR takes exactly two tests");
        if (n == 0) return fail("\"" + word + "\" closes an empty grouping");
        return true;
    }

    bool parseRelationalTest(FilterNode& parent, const std::string& word) {
        std::vector<Relation> relations;
        std::size_t start = 0;
        while (true) {
            const std::size_t comma = word.find(',', start);
            const std::string part = trimmed(word.substr(start, comma - start).c_str());
            auto relation = relationOf(part);
            if (!relation) return fail("unknown operator \"" + word + "\"");
            relations.push_back(*relation);
            if (comma == std::string::npos) break;
            start = comma + 1;
        }
        if (relations.size() != 1 && relations.size() != 3) return fail("unknown operator \"" + word + "\"");
        m_at = m_at->rbnext;
        if (!m_at || m_at->restype == -4 || m_at->restype == -3)
            return fail("operator \"" + word + "\" is not followed by a group to test");
        FilterNode test;
        if (!readTest(test)) return false;
        const bool isPoint = test.value == BufferValue::Point;
        if (relations.size() == 3 && !isPoint) return fail("operator \"" + word + "\" needs a point group");
        for (int i = 0; i < 3; ++i) test.relation[i] = relations[relations.size() == 3 ? i : 0];
        const bool bitwise = test.relation[0] == Relation::BitsAny || test.relation[0] == Relation::BitsAll;
        const bool integral = test.value == BufferValue::Short || test.value == BufferValue::Long ||
                              test.value == BufferValue::Int64;
        if (bitwise && !integral) return fail("operator \"" + word + "\" needs an integer group");
        if (test.value == BufferValue::Name && test.relation[0] != Relation::Equal &&
            test.relation[0] != Relation::NotEqual && test.relation[0] != Relation::Any)
            return fail("operator \"" + word + "\" cannot compare entity names");
        parent.children.push_back(std::move(test));
        return true;
    }

    bool parseApplications(FilterNode& parent) {
        m_at = m_at->rbnext;
        FilterNode node;
        node.kind = FilterNode::Kind::Applications;
        while (m_at && m_at->restype == 1001) {
            if (!m_at->resval.rstring) return fail("a 1001 group without a name");
            node.applications.push_back(upper(m_at->resval.rstring));
            m_at = m_at->rbnext;
        }
        if (node.applications.empty()) return fail("-3 is not followed by application names (1001)");
        m_needsXData = true;
        parent.children.push_back(std::move(node));
        return true;
    }

    bool readTest(FilterNode& test) {
        const qv_resbuf& rb = *m_at;
        test.kind = FilterNode::Kind::Test;
        test.code = rb.restype;
        test.value = bufferValueOf(rb.restype);
        if (rb.restype >= 5000 || rb.restype == 1001 || rb.restype == 1004 || rb.restype == 102)
            return fail("group " + std::to_string(rb.restype) + " cannot be tested");
        if (rb.restype >= 1000) m_needsXData = true;
        switch (test.value) {
        case BufferValue::String:
            if (!rb.resval.rstring) return fail("group " + std::to_string(rb.restype) + " without text");
            test.text = upper(rb.resval.rstring);
            break;
        case BufferValue::Real:
            test.number = rb.resval.rreal;
            break;
        case BufferValue::Point:
            std::memcpy(test.point, rb.resval.rpoint, sizeof test.point);
            break;
        case BufferValue::Short:
            test.integer = rb.resval.rint;
            break;
        case BufferValue::Long:
            test.integer = rb.resval.rlong;
            break;
        case BufferValue::Int64:
            test.integer = rb.resval.rlname[0];
            break;
        case BufferValue::Name:
            test.name[0] = rb.resval.rlname[0];
            test.name[1] = rb.resval.rlname[1];
            break;
        default:
            return fail("group " + std::to_string(rb.restype) + " cannot be tested");
        }
        m_at = m_at->rbnext;
        return true;
    }

    const qv_resbuf* m_at;
    std::string& m_error;
    bool m_needsXData = false;
};

template <class T> bool compare(Relation relation, T value, T wanted) {
    switch (relation) {
    case Relation::Any:
        return true;
    case Relation::Equal:
        return value == wanted;
    case Relation::NotEqual:
        return value != wanted;
    case Relation::Less:
        return value < wanted;
    case Relation::LessEqual:
        return value <= wanted;
    case Relation::Greater:
        return value > wanted;
    case Relation::GreaterEqual:
        return value >= wanted;
    default:
        return false;
    }
}

bool compareReal(Relation relation, double value, double wanted) {
    const double tolerance = 1e-10 * std::max(1.0, std::abs(wanted));
    if (relation == Relation::Equal) return std::abs(value - wanted) <= tolerance;
    if (relation == Relation::NotEqual) return std::abs(value - wanted) > tolerance;
    return compare(relation, value, wanted);
}

bool compareInteger(Relation relation, long long value, long long wanted) {
    if (relation == Relation::BitsAny) return (value & wanted) != 0;
    if (relation == Relation::BitsAll) return (value & wanted) == wanted;
    return compare(relation, value, wanted);
}

bool compareText(Relation relation, const char* value, const std::string& pattern) {
    const std::string text = upper(value ? value : "");
    switch (relation) {
    case Relation::Any:
        return true;
    case Relation::Equal:
        return qvutWcMatch(text.c_str(), pattern.c_str()) == QV_NORM;
    case Relation::NotEqual:
        return qvutWcMatch(text.c_str(), pattern.c_str()) != QV_NORM;
    default:
        return compare(relation, text, pattern);
    }
}

bool testBuffer(const FilterNode& test, const qv_resbuf& rb) {
    switch (test.value) {
    case BufferValue::String:
        return compareText(test.relation[0], rb.resval.rstring, test.text);
    case BufferValue::Real:
        return compareReal(test.relation[0], rb.resval.rreal, test.number);
    case BufferValue::Short:
        return compareInteger(test.relation[0], rb.resval.rint, test.integer);
    case BufferValue::Long:
        return compareInteger(test.relation[0], rb.resval.rlong, test.integer);
    case BufferValue::Int64:
        return compareInteger(test.relation[0], rb.resval.rlname[0], test.integer);
    case BufferValue::Point:
        for (int i = 0; i < 3; ++i)
            if (!compareReal(test.relation[i], rb.resval.rpoint[i], test.point[i])) return false;
        return true;
    case BufferValue::Name: {
        const bool same = rb.resval.rlname[0] == test.name[0] && rb.resval.rlname[1] == test.name[1];
        return test.relation[0] == Relation::Any || (test.relation[0] == Relation::NotEqual ? !same : same);
    }
    default:
        return false;
    }
}

// The value a group has when the data list leaves it out.
bool testDefault(const FilterNode& test) {
    qv_resbuf rb{};
    rb.restype = static_cast<short>(test.code);
    char layer[] = "0";
    char byLayer[] = "BYLAYER";
    switch (test.code) {
    case 8:
        rb.resval.rstring = layer;
        break;
    case 6:
        rb.resval.rstring = byLayer;
        break;
    case 62:
        rb.resval.rint = 256;
        break;
    case 67:
        rb.resval.rint = 0;
        break;
    default:
        return false;
    }
    return testBuffer(test, rb);
}

bool evaluate(const FilterNode& node, const qv_resbuf* list) {
    switch (node.kind) {
    case FilterNode::Kind::Test: {
        bool present = false;
        for (const qv_resbuf* rb = list; rb; rb = rb->rbnext) {
            if (rb->restype == -3) break; // extended data groups are tested only by 1000+ codes
            if (rb->restype != node.code) continue;
            present = true;
            if (testBuffer(node, *rb)) return true;
        }
        if (node.code >= 1000) {
            bool inXData = false;
            for (const qv_resbuf* rb = list; rb; rb = rb->rbnext) {
                if (rb->restype == -3) inXData = true;
                if (inXData && rb->restype == node.code && testBuffer(node, *rb)) return true;
            }
            return false;
        }
        return !present && testDefault(node);
    }
    case FilterNode::Kind::Applications:
        for (const qv_resbuf* rb = list; rb; rb = rb->rbnext)
            if (rb->restype == 1001 && rb->resval.rstring) {
                const std::string app = upper(rb->resval.rstring);
                for (const std::string& pattern : node.applications)
                    if (qvutWcMatch(app.c_str(), pattern.c_str()) == QV_NORM) return true;
            }
        return false;
    case FilterNode::Kind::And:
        for (const FilterNode& child : node.children)
            if (!evaluate(child, list)) return false;
        return true;
    case FilterNode::Kind::Or:
        for (const FilterNode& child : node.children)
            if (evaluate(child, list)) return true;
        return false;
    case FilterNode::Kind::Xor:
        return evaluate(node.children[0], list) != evaluate(node.children[1], list);
    case FilterNode::Kind::Not:
        return !evaluate(node.children[0], list);
    }
    return false;
}

} // namespace

SelectionFilter::SelectionFilter() = default;
SelectionFilter::~SelectionFilter() = default;
SelectionFilter::SelectionFilter(SelectionFilter&&) noexcept = default;
SelectionFilter& SelectionFilter::operator=(SelectionFilter&&) noexcept = default;

std::optional<SelectionFilter> SelectionFilter::parse(const qv_resbuf* list, std::string& error) {
    SelectionFilter filter;
    if (!list) return filter;
    Parser parser(list, error);
    bool needsXData = false;
    std::optional<FilterNode> root = parser.parseAll(needsXData);
    if (!root) return std::nullopt;
    filter.m_root = std::make_unique<FilterNode>(std::move(*root));
    filter.m_needsXData = needsXData;
    return filter;
}

bool SelectionFilter::passesEverything() const {
    return !m_root || m_root->children.empty();
}

bool SelectionFilter::matches(const qv_resbuf* dataList) const {
    return passesEverything() || evaluate(*m_root, dataList);
}

} // namespace qvad::api
