#pragma once

#include "qvad/db/OdDbEntity.h"

#include <vector>

// A record of LAYER, LTYPE, STYLE, DIMSTYLE, APPID, BLOCK_RECORD, UCS, VIEW or VPORT.
class OdDbSymbolTableRecord : public OdDbObject {
public:
    using OdDbObject::OdDbObject;
    std::string_view name() const { return getString(2); }
    std::string getName() const { return std::string(name()); }
};

// LAYER record flags: frozen (70 bit 1), locked (70 bit 4), off (negative colour).
bool isLayerFrozen(const OdDbSymbolTableRecord& layer);
bool isLayerLocked(const OdDbSymbolTableRecord& layer);
bool isLayerOff(const OdDbSymbolTableRecord& layer);

// The TABLE head of one symbol table, with its records in file order.
class OdDbSymbolTable : public OdDbObject {
public:
    OdDbSymbolTable() : OdDbObject("TABLE") {}
    std::string_view name() const { return getString(2); }
    std::vector<OdDbSymbolTableRecord*>& records() { return m_records; }
    const std::vector<OdDbSymbolTableRecord*>& records() const { return m_records; }
    // Case-insensitive, as symbol names are; erased records are not found.
    OdDbSymbolTableRecord* find(std::string_view name) const;

private:
    std::vector<OdDbSymbolTableRecord*> m_records;
};

// A block: its BLOCK_RECORD, the BLOCK and ENDBLK that bracket it in the BLOCKS section, and its
// entities. Model space and paper space are blocks too.
class OdDbBlockTableRecord : public OdDbSymbolTableRecord {
public:
    OdDbBlockTableRecord() : OdDbSymbolTableRecord("BLOCK_RECORD") {}
    OdDbEntity* blockBegin() const { return m_begin; }
    OdDbEntity* blockEnd() const { return m_end; }
    void setBlockBegin(OdDbEntity* e) { m_begin = e; }
    void setBlockEnd(OdDbEntity* e) { m_end = e; }
    std::vector<OdDbEntity*>& entities() { return m_entities; }
    const std::vector<OdDbEntity*>& entities() const { return m_entities; }
    bool isModelSpace() const;
    bool isPaperSpace() const; // any layout block, "*Paper_Space", "*Paper_Space0", ...
    bool isLayout() const { return isModelSpace() || isPaperSpace(); }

private:
    OdDbEntity* m_begin = nullptr;
    OdDbEntity* m_end = nullptr;
    std::vector<OdDbEntity*> m_entities;
};

bool equalsNoCase(std::string_view a, std::string_view b);
