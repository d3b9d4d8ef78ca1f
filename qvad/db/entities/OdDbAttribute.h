#pragma once

#include "qvad/db/entities/OdDbText.h"

// What an attribute definition and an attribute value share: a TEXT's text part, then a part of their
// own (named by the subclass) holding tag, flags, field length and vertical alignment.
class OdDbAttributePart : public OdDbText {
public:
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

protected:
    explicit OdDbAttributePart(std::string_view typeName) : OdDbText(typeName) {}
    // A virtual rather than a member: typed classes keep the size of the plain object.
    virtual std::string_view attributeSubclass() const = 0;
    std::string_view attributePart() const { return qvad::db::dataPart(*this, attributeSubclass()); }

private:
    int flags() const { return static_cast<int>(getInt(70, 0, attributePart())); }
    void setFlag(int bit, bool on);
};

// ATTDEF: the template of an attribute inside a block definition; it also holds the prompt.
class OdDbAttributeDefinition : public OdDbAttributePart {
public:
    static constexpr std::string_view kAttributeSubclass = "AcDbAttributeDefinition";
    OdDbAttributeDefinition() : OdDbAttributePart("ATTDEF") {}

    std::string_view prompt() const { return getString(3, {}, attributePart()); }
    void setPrompt(std::string_view prompt);

protected:
    std::string_view attributeSubclass() const override { return kAttributeSubclass; }
};

// ATTRIB: an attribute value of a block reference, one of the entities that follow its INSERT.
class OdDbAttribute : public OdDbAttributePart {
public:
    static constexpr std::string_view kAttributeSubclass = "AcDbAttribute";
    OdDbAttribute() : OdDbAttributePart("ATTRIB") {}

protected:
    std::string_view attributeSubclass() const override { return kAttributeSubclass; }
};
