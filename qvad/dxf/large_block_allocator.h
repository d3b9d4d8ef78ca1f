#pragma once
// An allocator for the few very large arrays a big drawing needs (its tags). Blocks of several
// megabytes are mapped directly and asked to be backed by huge pages, which saves the tens of
// thousands of page faults that touching them page by page would cost; small blocks go to new.

#include <cstddef>
#include <new>
#include <sys/mman.h>

namespace qvad::dxf {

template <class T> struct LargeBlockAllocator {
    using value_type = T;
    static constexpr std::size_t kMapped = std::size_t(4) << 20;

    LargeBlockAllocator() = default;
    template <class U> LargeBlockAllocator(const LargeBlockAllocator<U>&) noexcept {}

    T* allocate(std::size_t n) {
        std::size_t bytes = n * sizeof(T);
        if (bytes < kMapped) return static_cast<T*>(::operator new(bytes));
        void* p = ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (p == MAP_FAILED) throw std::bad_alloc();
        ::madvise(p, bytes, MADV_HUGEPAGE);
        return static_cast<T*>(p);
    }
    void deallocate(T* p, std::size_t n) noexcept {
        std::size_t bytes = n * sizeof(T);
        if (bytes < kMapped)
            ::operator delete(p);
        else
            ::munmap(p, bytes);
    }
    template <class U> bool operator==(const LargeBlockAllocator<U>&) const noexcept { return true; }
};

} // namespace qvad::dxf
