#pragma once

#include "common/NumberedError.h"

// An error of the database engine, with the engine's number, so that callers can tell the cases
// apart the way the module's messages do.
class DbError : public NumberedError {
public:
    enum Code : int {
        Generic = 3000,
        NoCurrentRecord = 3021, // the cursor stands before the first or after the last row
        FileNotFound = 3024,
        NoSuchColumn = 3061,
        NoSuchTable = 3078,
        NotUpdatable = 3027,
        RecordLocked = 3260,  // another user holds the record or the file
        NotADatabase = 3343,  // unrecognised database format (an Access file, say)
        RecordChanged = 3197, // another user changed the data since it was read
        ReadOnlyFile = 3051,  // the file or its folder cannot be written
    };

    DbError(int code, const QString &text) : NumberedError(code, text) {}

    static DbError noCurrentRecord()
    {
        return {NoCurrentRecord, QStringLiteral("No current record.")};
    }
};
