// Pass 7: the pairwise scheme over a class bucket, checked on small cases and against a plain pass
// over every pair.

#include "overkill_bucket_drawing.h"
#include "tooldeck/commands/cleanup/overkill_object_compare.h"

#include <gtest/gtest.h>
#include <random>

namespace qvtd::overkill::bucket_testing {
namespace {

// Every pair in list order, as the scheme is stated.
OverkillEdits plainBucketPass(const std::vector<BucketMember>& members, const OverkillSettings& settings) {
    OverkillEdits edits;
    const double e = comparisonTolerance(settings);
    std::vector<bool> erased(members.size(), false);
    for (std::size_t i = 0; i < members.size(); ++i) {
        if (erased[i] || !members[i].entity) continue;
        for (std::size_t j = i + 1; j < members.size(); ++j) {
            if (erased[j] || !members[j].entity || members[j].key == members[i].key) continue;
            if (propertiesMatch(settings, members[i].props, members[j].props) &&
                sameObject(*members[i].entity, *members[j].entity, e)) {
                erased[j] = true;
                edits.erased.push_back(members[j].key);
                ++edits.erasedTally;
            }
        }
    }
    return edits;
}

OverkillEdits bucketPass(const std::vector<BucketMember>& members, const OverkillSettings& settings = {}) {
    OverkillEdits edits;
    runBucketPass(members, settings, edits);
    return edits;
}

TEST(OverkillBucketPass, TheFirstCopySurvivesAndChainsDoNotReach) {
    // 0x101 is within e of 0x100; 0x102 is within e of 0x101 but not of 0x100. Once 0x101 is gone,
    // nothing that matches 0x102 is left, so it stays.
    const BucketDrawing d(text(0x100, 0, 0) + text(0x101, 6e-7, 0) + text(0x102, 1.2e-6, 0) +
                          text(0x103, 5, 5) + text(0x104, 0, 0));
    const OverkillEdits edits = bucketPass(d.members({0x102, 0x100, 0x103, 0x101, 0x104}));
    // 0x102 comes first now and takes 0x101; 0x100 takes 0x104.
    EXPECT_EQ(edits.erased, (std::vector<ObjectKey>{0x101, 0x104}));
    EXPECT_EQ(edits.erasedTally, 2);
    const OverkillEdits inOrder = bucketPass(d.members({0x100, 0x101, 0x102, 0x103, 0x104}));
    EXPECT_EQ(inOrder.erased, (std::vector<ObjectKey>{0x101, 0x104}));
}

TEST(OverkillBucketPass, PropertiesMustMatchUnlessIgnored) {
    const BucketDrawing d(point(0x100, 1, 1) + point(0x101, 1, 1) + point(0x102, 1, 1));
    std::vector<BucketMember> members = d.members({0x100, 0x101, 0x102});
    members[1].props.colorIndex = 1; // red
    members[2].props.layer = 0x77;
    EXPECT_TRUE(bucketPass(members).erased.empty());
    OverkillSettings ignoreColor;
    ignoreColor.compareColor = false;
    EXPECT_EQ(bucketPass(members, ignoreColor).erased, (std::vector<ObjectKey>{0x101}));
    ignoreColor.compareLayer = false;
    EXPECT_EQ(bucketPass(members, ignoreColor).erased, (std::vector<ObjectKey>{0x101, 0x102}));
}

TEST(OverkillBucketPass, ToleranceZeroAndMembersWithoutObjects) {
    const BucketDrawing d(point(0x100, 1, 1) + point(0x101, 1, 1) + point(0x102, 1 + 1e-8, 1) +
                          point(0x103, 1, 1));
    std::vector<BucketMember> members = d.members({0x100, 0x101, 0x102, 0x103});
    members[3].entity = nullptr;
    OverkillSettings exact;
    exact.tolerance = 0.0;
    OverkillEdits edits;
    edits.erasedTally = 4; // a tally from earlier passes grows on
    runBucketPass(members, exact, edits);
    EXPECT_EQ(edits.erased, (std::vector<ObjectKey>{0x101}));
    EXPECT_EQ(edits.erasedTally, 5);
    // The same handle twice is one object, not a duplicate of itself.
    EXPECT_TRUE(bucketPass(d.members({0x100, 0x100})).erased.empty());
}

enum class RandomKind { Texts, Points, Xlines };

// A drawing of texts, points or construction lines (which compare by their fields): clusters of exact copies
// and near copies (some within e of each other, some just beyond), with properties drawn from a few values.
struct RandomBucket {
    std::string entities;
    std::vector<unsigned> handles;
    std::vector<Properties> props;
};

RandomBucket randomBucket(unsigned seed, RandomKind kind, std::size_t count, double e) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> coordinate(-50.0, 50.0);
    std::uniform_int_distribution<int> pick(0, 99);
    RandomBucket bucket;
    std::vector<std::array<double, 3>> placed;
    for (std::size_t i = 0; i < count; ++i) {
        std::array<double, 3> p{coordinate(random), coordinate(random), 0.0};
        const int copy = pick(random);
        if (!placed.empty() && copy < 60) {
            p = placed[std::uniform_int_distribution<std::size_t>(0, placed.size() - 1)(random)];
            if (copy >= 25) {
                // Near copies, straddling e along one or two axes.
                std::uniform_real_distribution<double> nudge(-1.6 * e, 1.6 * e);
                p[0] += nudge(random);
                if (copy >= 45) p[1] += nudge(random);
            }
        }
        placed.push_back(p);
        const unsigned handle = 0x100 + static_cast<unsigned>(i);
        bucket.handles.push_back(handle);
        const std::string content = (pick(random) < 80) ? "A" : "B";
        const bool turned = pick(random) < 10;
        if (kind == RandomKind::Texts)
            bucket.entities += text(handle, p[0], p[1], content, turned ? TagList{{50, "90"}} : TagList{});
        else if (kind == RandomKind::Points)
            bucket.entities += point(handle, p[0], p[1], p[2]);
        else
            bucket.entities += entityText("XLINE", handle,
                                          TagList{{100, "AcDbXline"}} + at(10, p[0], p[1]) +
                                              (turned ? at(11, 0, 1) : at(11, 1, 0)));
        Properties props;
        props.colorIndex = pick(random) < 85 ? 256 : 1;
        props.layer = pick(random) < 80 ? 0x10 : 0x11;
        props.linetypeScale = pick(random) < 90 ? 1.0 : 1.0 + 0.5 * e;
        bucket.props.push_back(props);
    }
    return bucket;
}

TEST(OverkillBucketPass, MatchesThePlainPairwisePassOnRandomBuckets) {
    for (unsigned seed : {1u, 2u, 3u, 4u}) {
        for (RandomKind kind : {RandomKind::Texts, RandomKind::Points, RandomKind::Xlines}) {
            SCOPED_TRACE(std::to_string(seed) + " kind " + std::to_string(static_cast<int>(kind)));
            // The field comparison is the slow one; the plain pass over every pair would take long.
            const std::size_t count = kind == RandomKind::Xlines ? 600 : 2000;
            OverkillSettings settings;
            settings.tolerance = seed == 3 ? 0.01 : 1e-6;
            settings.compareColor = seed != 2;
            const RandomBucket bucket = randomBucket(seed, kind, count, settings.tolerance);
            const BucketDrawing d(bucket.entities);
            std::vector<BucketMember> members = d.members(bucket.handles);
            for (std::size_t i = 0; i < members.size(); ++i) members[i].props = bucket.props[i];
            const OverkillEdits expected = plainBucketPass(members, settings);
            const OverkillEdits found = bucketPass(members, settings);
            EXPECT_GT(expected.erasedTally, static_cast<int>(count / 20)); // the case really has duplicates
            EXPECT_EQ(found.erased, expected.erased);
            EXPECT_EQ(found.erasedTally, expected.erasedTally);
        }
    }
}

} // namespace
} // namespace qvtd::overkill::bucket_testing
