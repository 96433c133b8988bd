#pragma once

#include "JobArgument.h"

#include <QString>

#include <functional>

class Clock;
class Databases;
class Dialogs;
class ProgramRunner;
struct Session;
struct VendorFigures;

// The vendor-number utility's work: checks who asks, asks which vendors, shows what will change
// and asks again (No unless the user says Yes), then changes or merges in one transaction of the
// vendor file, waiting for a vendor another user is saving as the vendor screen's save waits.
// Says what it did and writes one line to the administrator's log.
class NumberJob {
public:
    struct Services {
        Databases &databases;
        Dialogs &dialogs;
        const Clock &clock;
        ProgramRunner &log; // its administrator's log line, with the session's values
        Session &session;
        // Shows how the wait for another user goes ("" when it is over).
        std::function<void(const QString &)> status;
        // Called inside the transaction, just before the commit (a test holds the job there).
        std::function<void()> beforeCommit;
    };

    // As the vendor screen's save: one try waits this long for the lock, then a pause, up to
    // the retry budget.
    static constexpr int retryBudget = 21;
    static constexpr int tryWaitMsecs = 150;
    static constexpr int pauseMsecs = 100;

    explicit NumberJob(Services services) : m_s(std::move(services)) {}

    // The exit code: 0 when the job was done or the user chose not to, 1 when it was refused
    // or failed (nothing changed then).
    int run(const QString &argument, const QString &clipboardText);

    static QString title() { return QStringLiteral("Velmora Office Message"); }

private:
    bool userMayRun(const JobArgument &job);
    // A vendor number typed by the user; 0 when cancelled, -1 when it is not a number.
    qlonglong askNumber(const QString &prompt);
    bool transact(const JobArgument &job, qlonglong from, qlonglong to, QStringList &conflicts);
    void refuse(const QString &text);
    void pause();

    Services m_s;
};
