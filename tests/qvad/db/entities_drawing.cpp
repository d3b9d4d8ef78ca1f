#include "entities_drawing.h"

#include "qvad/db/entity_data_list.h"
#include "qvad/dxf/dxf_reader.h"
#include "qvad/dxf/dxf_writer.h"
#include "tests/support/dxf_text.h"

#include <gtest/gtest.h>
#include <typeinfo>

namespace entities_test {

std::string dxf(TagText tags) {
    return dxfText(tags);
}

std::unique_ptr<OdDbDatabase> drawing(const std::string& entities, const std::string& blocks,
                                      const std::string& objects) {
    return qvad::dxf::readDxfBuffer(r2000DrawingText(entities, blocks, objects));
}

Lines snapshot(std::span<const Tag> tags) {
    Lines out;
    for (const Tag& t : tags) out.push_back(std::to_string(t.code) + " " + std::string(t.value()));
    return out;
}

Lines changes(const Lines& before, const Lines& after) {
    // Longest common subsequence; the lists are a few dozen tags long.
    const std::size_t n = before.size(), m = after.size();
    std::vector<std::vector<std::size_t>> common(n + 1, std::vector<std::size_t>(m + 1, 0));
    for (std::size_t i = n; i-- > 0;)
        for (std::size_t j = m; j-- > 0;)
            common[i][j] = before[i] == after[j] ? common[i + 1][j + 1] + 1
                                                 : std::max(common[i + 1][j], common[i][j + 1]);
    // Each run of differences lists a removed tag next to the added tag of the same code, so a
    // changed value reads as "-code old", "+code new".
    Lines out, removed, added;
    auto flush = [&] {
        std::vector<bool> used(added.size(), false);
        auto codeOf = [](const std::string& line) { return line.substr(0, line.find(' ')); };
        for (const std::string& r : removed) {
            out.push_back("-" + r);
            for (std::size_t k = 0; k < added.size(); ++k)
                if (!used[k] && codeOf(added[k]) == codeOf(r)) {
                    used[k] = true;
                    out.push_back("+" + added[k]);
                    break;
                }
        }
        for (std::size_t k = 0; k < added.size(); ++k)
            if (!used[k]) out.push_back("+" + added[k]);
        removed.clear();
        added.clear();
    };
    std::size_t i = 0, j = 0;
    while (i < n || j < m) {
        if (i < n && j < m && before[i] == after[j]) {
            flush();
            ++i;
            ++j;
        } else if (i < n && (j == m || common[i + 1][j] >= common[i][j + 1])) {
            removed.push_back(before[i++]);
        } else {
            added.push_back(after[j++]);
        }
    }
    flush();
    return out;
}

void expectRoundTrips(const OdDbDatabase& db, const OdDbObject& object) {
    SCOPED_TRACE(std::string(object.typeName()) + " " + qvad::formatHandle(object.handle()));
    qvad::dxf::StringPool pool;
    const auto list = qvad::db::entityToDataList(object);
    EXPECT_EQ(snapshot(qvad::db::dataListToTags(list, object.typeName(), pool)), snapshot(object));

    auto reloaded = qvad::dxf::readDxfBuffer(qvad::dxf::writeDxf(db));
    const OdDbObject* again = reloaded->getObject(object.handle());
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(typeid(*again), typeid(object));
    EXPECT_EQ(snapshot(*again), snapshot(object));
    auto* complex = dynamic_cast<const OdDbComplexEntity*>(&object);
    if (!complex) return;
    auto* complexAgain = dynamic_cast<const OdDbComplexEntity*>(again);
    ASSERT_NE(complexAgain, nullptr);
    ASSERT_EQ(complexAgain->subEntities().size(), complex->subEntities().size());
    for (std::size_t i = 0; i < complex->subEntities().size(); ++i) {
        EXPECT_EQ(typeid(*complexAgain->subEntities()[i]), typeid(*complex->subEntities()[i]));
        EXPECT_EQ(snapshot(*complexAgain->subEntities()[i]), snapshot(*complex->subEntities()[i]));
    }
}

} // namespace entities_test
