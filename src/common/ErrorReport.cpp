#include "common/ErrorReport.h"

#include "common/Dialogs.h"
#include "common/NumberedError.h"

void showErrorReport(Dialogs &dialogs, const NumberedError &error)
{
    dialogs.message(QStringLiteral("Error ") + QString::number(error.code()) +
                        QStringLiteral(": ") + error.text() + QLatin1Char('\n') +
                        QStringLiteral("If this keeps happening, call Velmora Data."),
                    Dialogs::Icon::Critical, QStringLiteral("Uh-oh..."));
}
