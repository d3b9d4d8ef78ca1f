// Buffers freed and made again, in any order and on any thread, come back as new ones: zeroed, each
// handed out once.

#include "qvad/api/data_list_buffers.h"
#include "qvad/api/qvad_api.h"

#include <cstring>
#include <gtest/gtest.h>
#include <set>
#include <thread>
#include <vector>

namespace {

// A chain of n buffers with every field in use: strings, points, names.
qv_resbuf* busyChain(int n) {
    qv_resbuf* head = nullptr;
    for (int i = 0; i < n; ++i) {
        qv_resbuf* rb = qvutNewRb(i % 2 ? QV_RTSTR : QV_RT3DPOINT);
        if (i % 2)
            rb->resval.rstring = qvad::api::hostString("some text");
        else
            rb->resval.rpoint[0] = rb->resval.rpoint[1] = rb->resval.rpoint[2] = 7.0;
        rb->rbnext = head;
        head = rb;
    }
    return head;
}

bool isFresh(const qv_resbuf* rb, int code) {
    qv_resbuf zero{};
    zero.restype = static_cast<short>(code);
    return rb->restype == code && rb->rbnext == nullptr &&
           std::memcmp(&rb->resval, &zero.resval, sizeof zero.resval) == 0;
}

TEST(ResultBuffers, ReusedBuffersAreZeroedAndHandedOutOnce) {
    qvutRelRb(busyChain(10000));
    std::vector<qv_resbuf*> made;
    std::set<qv_resbuf*> distinct;
    for (int i = 0; i < 10000; ++i) {
        made.push_back(qvutNewRb(QV_RTLONG));
        ASSERT_TRUE(isFresh(made.back(), QV_RTLONG)) << "buffer " << i;
        distinct.insert(made.back());
    }
    EXPECT_EQ(distinct.size(), made.size());
    for (qv_resbuf* rb : made) qvutRelRb(rb);
}

TEST(ResultBuffers, SplicedChainsAndOtherThreadsFreeCleanly) {
    // Two chains cut and joined crosswise, then freed piece by piece in another order.
    qv_resbuf* a = busyChain(6);
    qv_resbuf* b = busyChain(6);
    qv_resbuf* aTail = a->rbnext->rbnext;
    qv_resbuf* bTail = b->rbnext->rbnext->rbnext;
    a->rbnext->rbnext = bTail;
    b->rbnext->rbnext->rbnext = aTail;
    qvutRelRb(b);
    qvutRelRb(a);

    // Made here, freed on a thread that then ends, made again here.
    qv_resbuf* chain = busyChain(100);
    std::thread([chain] { qvutRelRb(chain); }).join();
    std::thread([] {
        qvutRelRb(busyChain(100));
        qv_resbuf* rb = qvutNewRb(QV_RTREAL);
        EXPECT_TRUE(isFresh(rb, QV_RTREAL));
        qvutRelRb(rb);
    }).join();
    qv_resbuf* again = qvutNewRb(QV_RTSHORT);
    EXPECT_TRUE(isFresh(again, QV_RTSHORT));
    qvutRelRb(again);
}

} // namespace
