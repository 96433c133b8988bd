#include "app/ModuleAssembly.h"

#include "app/Closing.h"
#include "app/SingleInstance.h"
#include "app/StaffRecords.h"
#include "app/Startup.h"
#include "common/Clipboard.h"
#include "common/Clock.h"
#include "common/Processes.h"
#include "common/ProgramRunner.h"
#include "common/QtDialogs.h"
#include "data/Databases.h"
#include "vendorscreen/VendorWindow.h"

ModuleAssembly::ModuleAssembly() : ModuleAssembly(Options{}) {}

ModuleAssembly::ModuleAssembly(const Options &options)
{
    Dialogs *dialogs = options.dialogs;
    QtDialogs *desktopDialogs = nullptr;
    if (!dialogs) {
        auto made = std::make_unique<QtDialogs>();
        desktopDialogs = made.get();
        dialogs = made.get();
        m_ownDialogs = std::move(made);
    }
    Clock *clock = options.clock;
    if (!clock) {
        m_ownClock = std::make_unique<SystemClock>();
        clock = m_ownClock.get();
    }
    m_clipboard = std::make_unique<SystemClipboard>();
    m_processes = std::make_unique<SystemProcesses>();
    m_databases = std::make_unique<Databases>();
    if (options.busyTimeoutMsecs >= 0)
        m_databases->setBusyTimeoutMsecs(options.busyTimeoutMsecs);
    m_services = std::make_unique<Services>(
        Services{*dialogs, *clock, *m_clipboard, *m_processes, *m_databases});
    m_staff = std::make_unique<StaffRecords>(*m_databases, *dialogs, m_session);
    m_programs =
        std::make_unique<ProgramRunner>(*m_processes, *dialogs, *clock, *m_clipboard, m_session);
    m_window = std::make_unique<VendorWindow>(m_session, *m_services, *m_programs);
    if (desktopDialogs)
        desktopDialogs->setParent(m_window.get());
    m_window->setStaffReload([this] { m_staff->reloadUser(); });
    QObject::connect(m_window.get(), &VendorWindow::closing, m_window.get(),
                     [this] { Closing::run(*m_window, m_session, *m_services, *m_staff); });
    const QString lockFolder =
        options.lockFolder.isEmpty() ? SingleInstance::defaultFolder() : options.lockFolder;
    m_startup = std::make_unique<Startup>(*m_window, m_session, *m_services, *m_staff, lockFolder);
}

ModuleAssembly::~ModuleAssembly()
{
    // A window still open closes through its closing steps, as the user's close would.
    if (m_window && m_window->started())
        m_window->close();
}

std::optional<int> ModuleAssembly::start(const QString &argument)
{
    return m_startup->run(argument);
}
