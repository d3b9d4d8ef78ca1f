#pragma once
// The exact run-time class of a drawing object. Two objects share a class when they are of the same
// C++ class and the same DXF type: objects no typed class describes keep their own type apart.

#include <string>
#include <string_view>

class OdRxClass {
public:
    explicit OdRxClass(std::string_view name) : m_name(name) {}
    OdRxClass(const OdRxClass&) = delete;
    OdRxClass& operator=(const OdRxClass&) = delete;
    // The DXF type name of the objects of this class ("LINE", "DIMENSION", ...).
    std::string_view name() const { return m_name; }

private:
    std::string m_name;
};
