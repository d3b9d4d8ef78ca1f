// The handle table and the journal's object set are checked against the standard containers over
// long runs of mixed operations: any slot a probe or a move between array and map loses shows up.

#include "qvad/db/OdDbObject.h"
#include "qvad/db/handle_table.h"
#include "qvad/db/object_set.h"

#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <vector>

namespace {

std::vector<std::unique_ptr<OdDbObject>> someObjects(std::size_t count) {
    std::vector<std::unique_ptr<OdDbObject>> objects;
    for (std::size_t i = 0; i < count; ++i) objects.push_back(std::make_unique<OdDbObject>("LINE"));
    return objects;
}

void expectSame(const HandleTable& table, const std::map<qvad::Handle, OdDbObject*>& expected,
                const std::vector<qvad::Handle>& probes) {
    ASSERT_EQ(table.size(), expected.size());
    for (qvad::Handle h : probes) {
        auto it = expected.find(h);
        ASSERT_EQ(table.find(h), it == expected.end() ? nullptr : it->second) << "handle " << h;
    }
}

} // namespace

TEST(HandleTable, FarHandlesStayFoundWhileTheArrayGrowsPastThem) {
    auto objects = someObjects(300000);
    HandleTable table;
    std::map<qvad::Handle, OdDbObject*> expected;
    std::vector<qvad::Handle> probes;
    // A few handles far ahead of everything first, then a long ascending run that overtakes them.
    const qvad::Handle far[] = {200000, 250001, 0xFFFFFFFFFFFFull, 1ull << 40};
    std::size_t next = 0;
    for (qvad::Handle h : far) {
        table.set(h, objects[next].get());
        expected[h] = objects[next++].get();
        probes.push_back(h);
    }
    for (qvad::Handle h = 1; h <= 260000; ++h) {
        if (h == 200000 || h == 250001) continue;
        table.set(h, objects[next].get());
        expected[h] = objects[next++].get();
    }
    for (qvad::Handle h = 0; h <= 260010; h += 997) probes.push_back(h);
    probes.insert(probes.end(), {0, 199999, 200000, 200001, 250001, 260000, 260001, (1ull << 40) + 1});
    expectSame(table, expected, probes);

    // Replacing keeps the count; erasing frees the handle wherever it lives.
    table.set(200000, objects[0].get());
    expected[200000] = objects[0].get();
    for (qvad::Handle h :
         {qvad::Handle{200000}, qvad::Handle{7}, qvad::Handle{1ull << 40}, qvad::Handle{123456789}}) {
        table.erase(h);
        expected.erase(h);
    }
    expectSame(table, expected, probes);
}

TEST(ObjectSet, MixedOperationsAgreeWithASet) {
    auto objects = someObjects(20000);
    ObjectSet set;
    std::set<const OdDbObject*> expected;
    std::mt19937 random(11);
    for (int i = 0; i < 300000; ++i) {
        // A small range at first, so that erasing meets long runs of neighbours; all of it later.
        const std::size_t range = i < 100000 ? 500 : objects.size();
        const OdDbObject* object = objects[random() % range].get();
        switch (random() % 3) {
        case 0:
            ASSERT_EQ(set.insert(object), expected.insert(object).second);
            break;
        case 1:
            set.erase(object);
            expected.erase(object);
            break;
        default:
            ASSERT_EQ(set.contains(object), expected.count(object) == 1);
        }
        ASSERT_EQ(set.size(), expected.size());
    }
    for (const auto& object : objects)
        ASSERT_EQ(set.contains(object.get()), expected.count(object.get()) == 1);
}

TEST(ObjectReals, SettersWriteTheShortestTextThatReadsBack) {
    OdDbObject object("LINE");
    const std::pair<double, const char*> cases[] = {
        {1.0, "1.0"},
        {0.0, "0.0"},
        {-0.0, "0.0"},
        {-2.5, "-2.5"},
        {0.1 + 0.2, "0.30000000000000004"},
        {1e300, "1e+300"},
        {-123456789012.0, "-123456789012.0"},
    };
    for (const auto& [value, text] : cases) {
        object.setDouble(40, value);
        EXPECT_EQ(object.getString(40), text);
        EXPECT_EQ(formatReal(value), text);
    }
    object.setPoint(10, OdGePoint3d(3.0, -0.5, 1e-7));
    EXPECT_EQ(object.getString(10), "3.0");
    EXPECT_EQ(object.getString(20), "-0.5");
    EXPECT_EQ(object.getString(30), "1e-07");
}
