#pragma once

#include <QLoggingCategory>

Q_DECLARE_LOGGING_CATEGORY(lcClosing)

class StaffRecords;
class StartupView;
struct Services;
struct Session;

// The steps that run when the vendor window closes; each step's errors are ignored.
namespace Closing {
void run(StartupView &view, Session &session, Services &services, StaffRecords &staff);
}
