#pragma once
// What the exported interface remembers between calls: the open drawing, the error number of the last
// failed call, and the cursors and half-made entities that calls build up over several steps.

#include "qvad/api/qvad_api.h"

#include <cstdint>
#include <map>
#include <memory>
#include <new>
#include <string>
#include <vector>

class OdDbDatabase;
class OdDbObject;

namespace qvad::api {

// Why the last call failed, for the ERRNO system variable. 0 after a call that went well is not
// promised: like the variable it stands for, it only ever says why the last failure happened.
enum class HostError : int {
    None = 0,
    NoDrawing = 1,
    BadEntityName = 2,
    ErasedEntity = 3,
    BadDataList = 4,
    WrongEntityType = 5,
    MissingGroup = 6,
    UnknownTable = 7,
    DuplicateName = 8,
    BadSymbolName = 9,
    ExtendedDataFull = 10,
    UnregisteredApplication = 11,
    BadSequence = 12,
    NotAnEntity = 13,
    UnknownBlock = 14,
    BadArgument = 15,
    OutOfMemory = 16,
    Internal = 17,
};

// An INSERT with attributes or a POLYLINE being made piece by piece until its SEQEND arrives.
struct PendingComplex {
    std::unique_ptr<OdDbObject> header;
    std::vector<std::unique_ptr<OdDbObject>> pieces;
    bool paperSpace = false;
};

class HostSession {
public:
    static HostSession& current();

    // The app sets the drawing it opened (null when it closes it). Every name handed out for the
    // previous drawing goes stale, and half-made entities and table cursors are dropped.
    void setDrawing(OdDbDatabase* drawing);
    OdDbDatabase* drawing() const { return m_drawing; }
    // Nonzero while a drawing is open; different for every drawing ever set.
    std::uint64_t drawingSerial() const { return m_drawing ? m_serial : 0; }

    int errorNumber() const { return m_errno; }
    void setErrorNumber(int value) { m_errno = value; }
    void fail(HostError error) { m_errno = static_cast<int>(error); }

    // Where qvdbEntMake puts entities that do not say (group 67).
    bool paperSpaceCurrent() const { return m_paperSpace; }
    void setPaperSpaceCurrent(bool paper) { m_paperSpace = paper; }

    std::unique_ptr<PendingComplex>& pendingComplex() { return m_pending; }
    // Index (into the table's records) of the record qvdbTblNext returned last, by upper-case table name.
    std::map<std::string, long>& tableCursors() { return m_tableCursors; }

private:
    OdDbDatabase* m_drawing = nullptr;
    std::uint64_t m_serial = 0;
    int m_errno = 0;
    bool m_paperSpace = false;
    std::unique_ptr<PendingComplex> m_pending;
    std::map<std::string, long> m_tableCursors;
};

// Runs the body of an exported function: no exception ever leaves it; one that would becomes
// QV_ERROR with ERRNO saying why.
template <class Body> int guarded(Body&& body) noexcept {
    try {
        return body();
    } catch (const std::bad_alloc&) {
        HostSession::current().fail(HostError::OutOfMemory);
    } catch (...) {
        HostSession::current().fail(HostError::Internal);
    }
    return QV_ERROR;
}

// QV_ERROR with ERRNO set, for the many early exits.
inline int refuse(HostError error) {
    HostSession::current().fail(error);
    return QV_ERROR;
}

} // namespace qvad::api
