#pragma once
// Result codes of the drawing library and the command stack, shared by the host and its modules.

enum OdResult {
    eOk = 0,
    eInvalidInput = 5,
    eKeyNotFound = 6,
    eDuplicateKey = 7,
    eNotApplicable = 8,
    eNullObjectId = 9,
    eWasErased = 10,
    eNotThatKindOfClass = 11,
    eNoDatabase = 12,
    eInvalidOwnerObject = 13,
};
