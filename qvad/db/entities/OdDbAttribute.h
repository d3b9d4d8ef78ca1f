#pragma once

#include "qvad/db/entities/OdDbText.h"

// ATTDEF: the template of an attribute inside a block definition. Its text part is a TEXT's; tag,
// prompt, flags and vertical alignment live in the AcDbAttributeDefinition part.
class OdDbAttributeDefinition : public OdDbText {
public:
    static constexpr std::string_view kAttributeSubclass = "AcDbAttributeDefinition";
    OdDbAttributeDefinition() : OdDbText("ATTDEF") {}

    std::string_view tag() const { return getString(2, {}, attributePart()); }
    // Throws std::invalid_argument for an empty tag or one with spaces or line breaks.
    void setTag(std::string_view tag);
    std::string_view prompt() const { return getString(3, {}, attributePart()); }
    void setPrompt(std::string_view prompt);
    bool isInvisible() const { return (flags() & 1) != 0; }
    bool isConstant() const { return (flags() & 2) != 0; }
    bool isVerifiable() const { return (flags() & 4) != 0; }
    bool isPreset() const { return (flags() & 8) != 0; }
    void setInvisible(bool on) { setFlag(1, on); }
    int fieldLength() const { return static_cast<int>(getInt(73, 0, attributePart())); }
    int verticalMode() const override { return static_cast<int>(getInt(74, 0, attributePart())); }
    void setVerticalMode(int mode) override { setInt(74, mode, attributePart()); }

private:
    int flags() const { return static_cast<int>(getInt(70, 0, attributePart())); }
    void setFlag(int bit, bool on);
    std::string_view attributePart() const { return qvad::db::dataPart(*this, kAttributeSubclass); }
};

// ATTRIB: an attribute value of a block reference, one of the entities that follow its INSERT.
class OdDbAttribute : public OdDbText {
public:
    static constexpr std::string_view kAttributeSubclass = "AcDbAttribute";
    OdDbAttribute() : OdDbText("ATTRIB") {}

    std::string_view tag() const { return getString(2, {}, attributePart()); }
    // Throws std::invalid_argument for an empty tag or one with spaces or line breaks.
    void setTag(std::string_view tag);
    bool isInvisible() const { return (flags() & 1) != 0; }
    bool isConstant() const { return (flags() & 2) != 0; }
    bool isVerifiable() const { return (flags() & 4) != 0; }
    bool isPreset() const { return (flags() & 8) != 0; }
    void setInvisible(bool on) { setFlag(1, on); }
    int fieldLength() const { return static_cast<int>(getInt(73, 0, attributePart())); }
    int verticalMode() const override { return static_cast<int>(getInt(74, 0, attributePart())); }
    void setVerticalMode(int mode) override { setInt(74, mode, attributePart()); }

private:
    int flags() const { return static_cast<int>(getInt(70, 0, attributePart())); }
    void setFlag(int bit, bool on);
    std::string_view attributePart() const { return qvad::db::dataPart(*this, kAttributeSubclass); }
};
