#pragma once

#include "app/ModuleAssembly.h"
#include "app/Startup.h"
#include "common/Services.h"
#include "common/Session.h"
#include "data/Databases.h"
#include "support/FakeDialogs.h"
#include "support/FixedClock.h"
#include "support/QtPrinters.h"
#include "vendorscreen/VendorWindow.h"

#include <optional>

// One copy of the module as a test drives it: the module as the program builds it (the real
// window, real databases, real processes and clipboard), with the scripted dialogs and a fixed
// clock. Its single-instance lock lives in the given folder so that tests running side by side
// do not meet.
struct Module {
    explicit Module(const QString &lockFolder) :
        assembly({.dialogs = &dialogs,
                  .clock = &clock,
                  .lockFolder = lockFolder,
                  .busyTimeoutMsecs = 200})
    {
    }

    std::optional<int> start(const QString &argument) { return assembly.start(argument); }

    FakeDialogs dialogs;
    FixedClock clock;
    ModuleAssembly assembly;
    Session &session = assembly.session();
    Databases &databases = assembly.databases();
    Services &services = assembly.services();
    VendorWindow *const window = &assembly.window();
};
