#include "app/Closing.h"

#include "common/Services.h"
#include "common/Session.h"
#include "app/StaffRecords.h"
#include "data/Databases.h"
#include "data/RecordSource.h"
#include "vendorscreen/VendorWindow.h"

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

void detach(RecordSource &source)
{
    source.setRecordSource(QString());
    source.setDatabaseName(QString());
    source.refresh();
}
} // namespace

void run(VendorWindow &window)
{
    if (!window.started())
        return;
    step(1, "user-defined information window", [&] { window.closeUserFields(); });
    step(2, "staff location", [&] {
        window.session().staffLocation = QStringLiteral("A/P Master");
        window.staff().writeLocation();
    });
    step(3, "release locks", [] {});
    step(4, "detach record sources", [&] {
        detach(window.datavendor());
        detach(window.datachecks());
        detach(window.datainvoice());
    });
    step(5, "events", [] { QCoreApplication::processEvents(); });
    step(6, "close databases", [&] {
        window.closeAccountNames();
        window.services().databases.closeAll();
        QCoreApplication::processEvents();
    });
    step(7, "done", [&] { window.setStarted(false); });
}

} // namespace Closing
