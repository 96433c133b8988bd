#pragma once

#include <QString>

class Databases;
struct Session;

// Loading one record into the session's field arrays and saving it back, for the
// user-defined information window.
namespace RecordHelpers {

// "ap" becomes "ap.MDB"; a name that already ends in ".mdb" in any case is kept.
QString withMdbExtension(const QString &fileName);

// Fills session.record from the first row of the query; with no row, the names and types only
// and "QUIT" in session.messageText. Returns false when the database file is missing (the
// arrays keep what they held; the caller shows Prompts::showDatabaseMissing).
bool loadRecord(Databases &dbs, Session &session, const QString &fileName, const QString &query);

// Writes session.record into the first row of the query (or into a new row); false when the
// database file is missing.
bool saveRecord(Databases &dbs, Session &session, const QString &fileName, const QString &query,
                bool addNew);

} // namespace RecordHelpers
