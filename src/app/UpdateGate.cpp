#include "app/UpdateGate.h"
#include "common/DataFiles.h"

#include "common/Session.h"
#include "common/Dialogs.h"
#include "data/Databases.h"

#include <QFileInfo>

namespace UpdateGate {

void check(Dialogs &dialogs, Session &session)
{
    if (!QFileInfo::exists(DataFiles::pathOf(QStringLiteral("dbupdate.dat")))) {
        session.messageText.clear();
        return;
    }
    QString text = QStringLiteral("Before you may continue, you must run the \n"
                                  "DBUPDATE module.  Note that no users may be  \n"
                                  "using Velmora Office Accounting during an update.  \n\n");
    if (QFileInfo::exists(DataFiles::pathOf(QStringLiteral("KASSOR.EXE"))))
        text += QStringLiteral("Unless the instructions specify otherwise, it is NOT \n"
                               "necessary to shut down Kassor Point of sale.");
    dialogs.message(text, Dialogs::Icon::Critical,
                    QStringLiteral("Velmora Office Database Update Required"));
    session.messageText = QStringLiteral("UPDREQ");
}

} // namespace UpdateGate
