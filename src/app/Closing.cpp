#include "app/Closing.h"

#include "app/StaffRecords.h"
#include "common/Services.h"
#include "common/Session.h"
#include "data/Databases.h"
#include "vendorscreen/StartupView.h"

#include <QCoreApplication>

#include <exception>
#include <functional>

Q_LOGGING_CATEGORY(lcClosing, "vendor.closing", QtWarningMsg)

namespace Closing {
namespace {
void step(int number, const char *what, const std::function<void()> &work)
{
    qCInfo(lcClosing).noquote() << "step" << number << what;
    try {
        work();
    } catch (const std::exception &error) {
        qCInfo(lcClosing).noquote() << "step" << number << "ignored:" << error.what();
    }
}

} // namespace

void run(StartupView &view, Session &session, Services &services, StaffRecords &staff)
{
    if (!view.started())
        return;
    step(1, "user-defined information window", [&] { view.closeUserFields(); });
    step(2, "staff location", [&] {
        session.staffLocation = QStringLiteral("A/P Master");
        staff.writeLocation();
    });
    step(3, "release locks", [] {});
    step(4, "detach record sources", [&] { view.releaseRecordSources(); });
    step(5, "events", [] { QCoreApplication::processEvents(); });
    step(6, "close databases", [&] {
        view.closeAccountNames();
        services.databases.closeAll();
        QCoreApplication::processEvents();
    });
    step(7, "done", [&] { view.setStarted(false); });
}

} // namespace Closing
