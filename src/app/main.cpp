#include "common/Services.h"
#include "common/Session.h"
#include "app/SingleInstance.h"
#include "app/Startup.h"
#include "common/Clipboard.h"
#include "common/Clock.h"
#include "common/Processes.h"
#include "common/QtDialogs.h"
#include "data/Databases.h"
#include "data/Dialect.h"
#include "vendorscreen/VendorWindow.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("apmaster"));

    Session session;
    SystemClock clock;
    QtDialogs dialogs;
    SystemClipboard clipboard;
    SystemProcesses processes;
    Databases databases;
    Services services{dialogs, clock, clipboard, processes, databases};

    VendorWindow window(session, services);
    dialogs.setParent(&window);
    // The launcher passes one argument: module code, two-digit level and user name.
    const QString argument = QApplication::arguments().mid(1).join(QLatin1Char(' '));
    Startup startup(window, SingleInstance::defaultFolder());
    if (const std::optional<int> refused = startup.run(argument))
        return *refused;
    return QApplication::exec();
}
