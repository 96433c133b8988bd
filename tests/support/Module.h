#pragma once

#include "common/Services.h"
#include "common/Session.h"
#include "app/Startup.h"
#include "common/Clipboard.h"
#include "common/Processes.h"
#include "data/Databases.h"
#include "data/Dialect.h"
#include "support/FakeDialogs.h"
#include "support/FixedClock.h"
#include "support/QtPrinters.h"
#include "vendorscreen/VendorWindow.h"

#include <memory>
#include <optional>

// One copy of the module as a test drives it: the real window, real databases, real processes
// and clipboard, the scripted dialogs and a fixed clock. Its single-instance lock lives in the
// given folder so that tests running side by side do not meet.
struct Module {
    explicit Module(const QString &lockFolder) :
        services{dialogs, clock, clipboard, processes, databases}
    {
        databases.setBusyTimeoutMsecs(200);
        window = std::make_unique<VendorWindow>(session, services);
        startup = std::make_unique<Startup>(*window, lockFolder);
    }
    ~Module()
    {
        if (window && window->started())
            window->close();
    }

    std::optional<int> start(const QString &argument) { return startup->run(argument); }

    Session session;
    FakeDialogs dialogs;
    FixedClock clock;
    SystemClipboard clipboard;
    SystemProcesses processes;
    Databases databases;
    Services services;
    std::unique_ptr<VendorWindow> window;
    std::unique_ptr<Startup> startup;
};
