#pragma once

#include <QString>

#include <functional>

class Dialogs;

// Runs what a button or menu entry does so that no exception ever leaves the handler: whatever
// the handler did not catch itself gets the unexpected report, and the program goes on.
class HandlerGuard {
public:
    // userName gives the report's title ("NAME @ Apmaster"); it is read when a report is shown.
    HandlerGuard(Dialogs &dialogs, std::function<QString()> userName) :
        m_dialogs(dialogs), m_userName(std::move(userName))
    {
    }

    void run(const std::function<void()> &handler) const;

    // "Code N near S" and "Unexpected problem... Call Velmora Data.", titled "NAME @ Apmaster".
    static void unexpectedReport(Dialogs &dialogs, const QString &userName, int code, int step);

private:
    Dialogs &m_dialogs;
    std::function<QString()> m_userName;
};
