// Long random edit sequences against a std::vector model: any broken link, stale index entry, lost tail or
// misplaced cursor shows up as a difference at the step that caused it.

#include "ContainerKinds.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {

struct Model {
    std::vector<int> values;
    long cursor = -1;

    long size() const { return static_cast<long>(values.size()); }
    bool valid(long i) const { return i >= 0 && i < size(); }
    void eraseAt(long i) {
        values.erase(values.begin() + i);
        if (i == cursor) {
            if (cursor >= size()) cursor = -1;
        } else if (cursor > i) {
            --cursor;
        }
    }
    void insertAt(long i, int v) {
        values.insert(values.begin() + i, v);
        if (cursor >= i) ++cursor;
    }
    void move(long from, long to) {
        const int v = values[from];
        const bool carried = cursor == from;
        eraseAt(from);
        if (carried) cursor = -1;
        insertAt(to, v);
        if (carried) cursor = to;
    }
};

} // namespace

template <class Container> class ModelTest : public ::testing::Test {};
TYPED_TEST_SUITE(ModelTest, ValueContainerKinds<int>);

TYPED_TEST(ModelTest, RandomEditsMatchAVectorModel) {
    std::mt19937 rng(20240611);
    TypeParam c;
    Model m;
    for (int step = 0; step < 4000; ++step) {
        const long n = m.size();
        const long i = static_cast<long>(rng() % (n + 2)) - (rng() % 8 == 0 ? 1 : 0);
        const int v = static_cast<int>(rng() % 1000);
        switch (rng() % 13) {
        case 0:
            c.Append(v);
            m.values.push_back(v);
            break;
        case 1:
            c.InsertHead(v);
            m.insertAt(0, v);
            break;
        case 2:
            c.Insert(i, v);
            if (i >= 0 && i <= n) m.insertAt(i, v);
            break;
        case 3:
            c.InsertCur(v);
            if (m.cursor < 0) {
                m.values.push_back(v);
                m.cursor = n;
            } else {
                m.values.insert(m.values.begin() + m.cursor, v);
            }
            break;
        case 4:
            c.DelCur();
            if (m.cursor >= 0) m.eraseAt(m.cursor);
            break;
        case 5:
            c.Del(i);
            if (m.valid(i)) m.eraseAt(i);
            break;
        case 6: {
            const long to = n > 0 ? static_cast<long>(rng() % n) : 0;
            c.Move(i, to);
            if (m.valid(i) && m.valid(to)) m.move(i, to);
            break;
        }
        case 7:
            c.MoveTo(i);
            m.cursor = m.valid(i) ? i : -1;
            break;
        case 8:
            c.MoveToNext();
            if (m.cursor >= 0) m.cursor = m.cursor + 1 < n ? m.cursor + 1 : -1;
            break;
        case 9:
            c.MoveToPre();
            if (m.cursor >= 0) --m.cursor;
            break;
        case 10: {
            const long length = static_cast<long>(rng() % (n + 6));
            const bool keep = rng() % 4 != 0;
            c.SetLength(length, keep);
            m.values.resize(static_cast<size_t>(length));
            if (!keep) std::fill(m.values.begin(), m.values.end(), 0);
            if (m.cursor >= length) m.cursor = -1;
            break;
        }
        case 11: {
            const long to = rng() % 3 == 0 ? -1 : static_cast<long>(rng() % (n + 3));
            c.Reverse(i, to);
            const long from = std::max(i, 0L);
            const long last = to < 0 || to >= n ? n - 1 : to;
            if (from < last) std::reverse(m.values.begin() + from, m.values.begin() + last + 1);
            break;
        }
        case 12:
            if (rng() % 10 == 0) {
                c.Reset();
                m.values.clear();
                m.cursor = -1;
            }
            break;
        }
        ASSERT_EQ(ContentsOf<int>(c), m.values) << "after step " << step;
        ASSERT_EQ(c.GetCurIndex(), m.cursor) << "after step " << step;
        if (m.cursor >= 0) {
            ASSERT_EQ(c.GetCurData(), m.values[m.cursor]);
        }
    }
}
