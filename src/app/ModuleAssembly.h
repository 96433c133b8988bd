#pragma once

#include "common/Services.h"
#include "common/Session.h"

#include <QString>

#include <memory>
#include <optional>

class Clipboard;
class Clock;
class Databases;
class Dialogs;
class Processes;
class ProgramRunner;
class StaffRecords;
class Startup;
class VendorWindow;

// The module put together: the session, the platform services, the staff records, the vendor
// window and its start-up and closing. The program, the tests and the benchmarks all build the
// module here; a test hands in its own dialogs and clock.
class ModuleAssembly {
public:
    struct Options {
        Dialogs *dialogs = nullptr; // nullptr: the desktop's message boxes
        Clock *clock = nullptr;     // nullptr: the system clock
        QString lockFolder;         // where the single-instance lock lives; empty: the user's
                                    // runtime folder
        int busyTimeoutMsecs = -1;  // how long a statement waits for another user; negative:
                                    // the engine's default
    };

    // The program's own module: the desktop's dialogs, the system clock, the runtime folder.
    ModuleAssembly();
    explicit ModuleAssembly(const Options &options);
    ~ModuleAssembly();
    ModuleAssembly(const ModuleAssembly &) = delete;
    ModuleAssembly &operator=(const ModuleAssembly &) = delete;

    // Runs the start-up steps with the launcher's argument; the exit code when the module must
    // end, nothing when it runs on.
    std::optional<int> start(const QString &argument);

    Session &session() { return m_session; }
    Services &services() { return *m_services; }
    Databases &databases() { return *m_databases; }
    StaffRecords &staff() { return *m_staff; }
    ProgramRunner &programs() { return *m_programs; }
    VendorWindow &window() { return *m_window; }

private:
    Session m_session;
    std::unique_ptr<Dialogs> m_ownDialogs;
    std::unique_ptr<Clock> m_ownClock;
    std::unique_ptr<Clipboard> m_clipboard;
    std::unique_ptr<Processes> m_processes;
    std::unique_ptr<Databases> m_databases;
    std::unique_ptr<Services> m_services;
    std::unique_ptr<StaffRecords> m_staff;
    std::unique_ptr<ProgramRunner> m_programs;
    std::unique_ptr<VendorWindow> m_window;
    std::unique_ptr<Startup> m_startup;
};
