#pragma once

#include <QString>

class Databases;
class Dialogs;
struct Session;

// The user's row in the staff table of user.mdb: where the user is, and the user's levels.
class StaffRecords {
public:
    StaffRecords(Databases &dbs, Dialogs &dialogs, Session &session) :
        m_dbs(dbs), m_dialogs(dialogs), m_session(session)
    {
    }

    // Writes session.staffLocation and the work text into the user's row and reads sysuser.
    // Throws DbError when user.mdb cannot be used; the write is then skipped as a whole.
    void writeLocation();
    // Reads the user's levels, local folder and mail flag again; creates the local folder.
    void reloadUser();

private:
    Databases &m_dbs;
    Dialogs &m_dialogs;
    Session &m_session;
};
