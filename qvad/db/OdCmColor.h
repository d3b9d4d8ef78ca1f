#pragma once
// An entity's colour as a whole: the colour index, a true colour when there is one, and the colour
// book name. Two colours are equal only when all three are.

#include <string>

class OdCmColor {
public:
    OdCmColor() = default;
    OdCmColor(int colorIndex, long long trueColor, std::string colorName)
        : m_index(colorIndex), m_true(trueColor), m_name(std::move(colorName)) {}

    int colorIndex() const { return m_index; } // 256 BYLAYER, 0 BYBLOCK
    bool hasTrueColor() const { return m_true >= 0; }
    long long trueColor() const { return m_true; } // 0xRRGGBB, -1 when none
    const std::string& colorName() const { return m_name; }
    bool isByLayer() const { return m_index == 256 && m_true < 0; }
    bool isByBlock() const { return m_index == 0 && m_true < 0; }

    friend bool operator==(const OdCmColor&, const OdCmColor&) = default;

private:
    int m_index = 256;
    long long m_true = -1;
    std::string m_name;
};
