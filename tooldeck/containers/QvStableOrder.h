#pragma once

#include <algorithm>
#include <utility>
#include <vector>

// The rank sort of the containers in O(n log n): a stable merge of positions yields, for every target
// position, the position its element comes from. For a strict weak order this is exactly the permutation
// the pairwise rank count gives; for an inconsistent comparator it is still a permutation, so no element is
// ever lost or duplicated.
template <class Before> std::vector<long> QvStableOrder(long count, Before before) {
    std::vector<long> order(static_cast<size_t>(count));
    for (long i = 0; i < count; ++i) order[i] = i;

    // Short runs first by insertion: fewer passes over the position table. The guard on lo keeps it safe
    // with comparators that are not orders at all.
    constexpr long run = 8;
    for (long lo = 0; lo < count; lo += run) {
        const long hi = std::min(lo + run, count);
        for (long i = lo + 1; i < hi; ++i) {
            const long moving = order[i];
            long j = i;
            for (; j > lo && before(moving, order[j - 1]); --j) order[j] = order[j - 1];
            order[j] = moving;
        }
    }

    std::vector<long> merged(static_cast<size_t>(count));
    for (long width = run; width < count; width *= 2) {
        for (long lo = 0; lo < count; lo += 2 * width) {
            const long mid = std::min(lo + width, count);
            const long hi = std::min(lo + 2 * width, count);
            long left = lo, right = mid, out = lo;
            while (left < mid && right < hi) {
                // Taking from the right only when strictly before keeps equal elements in their order.
                merged[out++] = before(order[right], order[left]) ? order[right++] : order[left++];
            }
            while (left < mid) merged[out++] = order[left++];
            while (right < hi) merged[out++] = order[right++];
        }
        order.swap(merged);
    }
    return order;
}

// Puts element order[k] at slot k by following the cycles of the permutation, so that every element is
// moved exactly once (plus one temporary per cycle). Consumes the order table.
template <class T> void QvApplyOrder(const std::vector<T*>& slots, std::vector<long>& order) {
    const long count = static_cast<long>(slots.size());
    for (long start = 0; start < count; ++start) {
        if (order[start] == start) continue;
        T carried = std::move(*slots[start]);
        long target = start;
        while (order[target] != start) {
            const long source = order[target];
            *slots[target] = std::move(*slots[source]);
            order[target] = target;
            target = source;
        }
        *slots[target] = std::move(carried);
        order[target] = target;
    }
}
