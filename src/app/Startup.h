#pragma once

#include <QLoggingCategory>
#include <QString>

#include <memory>
#include <optional>

Q_DECLARE_LOGGING_CATEGORY(lcStartup)

class SingleInstance;
class StaffRecords;
class StartupView;
struct Services;
struct Session;

// The steps from loading the vendor window to showing it on the lookup panel.
class Startup {
public:
    // Exit codes of a start-up that refused to go on.
    enum ExitCode {
        AlreadyRunning = 1,
        UpdatePending = 2,
        NotFromLauncher = 3,
        AccessDenied = 4,
        DatabaseError = 5
    };

    // lockFolder is where the single-instance lock lives (the user's runtime folder).
    Startup(StartupView &view, Session &session, Services &services, StaffRecords &staff,
            const QString &lockFolder);
    ~Startup();

    // Runs the steps; returns the exit code when the program must end, nothing when it runs on.
    std::optional<int> run(const QString &argument);

private:
    void step(int number, const char *what);
    void applyAccessLevels();
    void leaveStaffRecord();

    StartupView &m_view;
    Session &m_session;
    Services &m_services;
    StaffRecords &m_staff;
    std::unique_ptr<SingleInstance> m_instance;
};
