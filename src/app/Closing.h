#pragma once

#include <QLoggingCategory>

Q_DECLARE_LOGGING_CATEGORY(lcClosing)

class VendorWindow;

// The steps that run when the vendor window closes; each step's errors are ignored.
namespace Closing {
void run(VendorWindow &window);
}
