#pragma once
// An entity data list or any other result-buffer chain a command received from the host or built for
// it, released on every way out of the command.

#include "qvad/api/qvad_api.h"

#include <array>
#include <string>

namespace qvtd {

using Point3 = std::array<double, 3>;

class DataList {
public:
    explicit DataList(qv_resbuf* list = nullptr) : m_list(list) {}
    ~DataList() { reset(); }
    DataList(DataList&& other) noexcept : m_list(other.release()) {}
    DataList& operator=(DataList&& other) noexcept;
    DataList(const DataList&) = delete;
    DataList& operator=(const DataList&) = delete;

    // The entity's list without extended data; empty when the host refuses the name.
    static DataList ofEntity(const qv_name entity);

    // For the host to fill; what was held is released first.
    qv_resbuf** out();
    qv_resbuf* get() const { return m_list; }
    qv_resbuf* release();
    void reset(qv_resbuf* list = nullptr);
    explicit operator bool() const { return m_list != nullptr; }

    // The first buffer with this code, or null.
    qv_resbuf* find(int code) const;
    bool has(int code) const { return find(code) != nullptr; }
    std::string text(int code, const char* fallback = "") const;
    double real(int code, double fallback = 0.0) const;
    // Short and long groups alike, whichever member of the value union the code uses.
    long integer(int code, long fallback = 0) const;
    Point3 point(int code, Point3 fallback = {0.0, 0.0, 0.0}) const;

private:
    qv_resbuf* m_list;
};

} // namespace qvtd
