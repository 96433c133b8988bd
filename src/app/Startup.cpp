#include "app/Startup.h"

#include "app/ModuleSettings.h"
#include "app/PracticeColour.h"
#include "common/Services.h"
#include "common/Session.h"
#include "app/SingleInstance.h"
#include "app/StaffRecords.h"
#include "app/UpdateGate.h"
#include "common/Dialogs.h"
#include "common/ErrorReport.h"
#include "data/Databases.h"
#include "data/DbError.h"
#include "vendorscreen/VendorWindow.h"

#include <QAction>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QMenu>

Q_LOGGING_CATEGORY(lcStartup, "vendor.startup", QtWarningMsg)

Startup::Startup(VendorWindow &window, const QString &lockFolder) :
    m_window(window),
    m_instance(std::make_unique<SingleInstance>(lockFolder, QStringLiteral("VDR")))
{
}

Startup::~Startup() = default;

void Startup::step(int number, const char *what)
{
    qCInfo(lcStartup).noquote() << "step" << number << what;
}

std::optional<int> Startup::run(const QString &argument)
{
    Session &session = m_window.session();
    Services &services = m_window.services();
    Dialogs &dialogs = services.dialogs;

    step(1, "single instance");
    if (!m_instance->acquire()) {
        dialogs.message(QStringLiteral("The module is already running."),
                        Dialogs::Icon::Information, QStringLiteral("Uh-oh..."));
        return AlreadyRunning;
    }
    step(2, "topmost");
    m_window.setTopmost(true);
    step(3, "centre");
    m_window.centreOnScreen();
    step(4, "practice colour");
    if (const std::optional<int> colour = PracticeColour::forDataFolder())
        m_window.setBackgroundColour(*colour);
    step(5, "update gate");
    UpdateGate::check(dialogs, session);
    if (session.messageText == QLatin1String("UPDREQ"))
        return UpdatePending;

    step(6, "command line and settings");
    try {
        bool canadian = false;
        switch (ModuleSettings::read(argument, services.databases, dialogs, session, canadian)) {
        case ModuleSettings::Outcome::NotFromLauncher:
            return NotFromLauncher;
        case ModuleSettings::Outcome::AccessDenied:
            return AccessDenied;
        default:
            break;
        }
        if (canadian)
            m_window.useCanadianLabels();
    } catch (const DbError &error) {
        showErrorReport(dialogs, error);
        return DatabaseError;
    }

    step(7, "caption");
    m_window.setWindowTitle(session.userName + QStringLiteral(" @ Vendors"));
    step(8, "grid widths");
    m_window.rememberGridWidths();
    step(9, "menus by access level");
    applyAccessLevels();

    step(10, "staff location");
    session.staffLocation = QStringLiteral("Vendors");
    try {
        m_window.staff().writeLocation();
    } catch (const DbError &error) {
        showErrorReport(dialogs, error);
    }
    step(11, "arrow pointer");
    while (QGuiApplication::overrideCursor())
        QGuiApplication::restoreOverrideCursor();
    step(12, "show");
    m_window.show();

    step(13, "open ap.mdb and gl.mdb");
    try {
        services.databases.open(QStringLiteral("ap.mdb"));
        services.databases.open(QStringLiteral("gl.mdb"));
        m_window.openAccountNames();
    } catch (const DbError &error) {
        dialogs.message(error.text(), Dialogs::Icon::Critical, QStringLiteral("Uh-oh..."));
        m_window.hide();
        leaveStaffRecord();
        return DatabaseError;
    }
    step(14, "idle");
    QCoreApplication::processEvents();
    step(15, "lookup");
    m_window.setStarted(true);
    m_window.openLookup();
    return std::nullopt;
}

// A start-up that fails after the location was written puts the user back where closing would.
void Startup::leaveStaffRecord()
{
    m_window.session().staffLocation = QStringLiteral("A/P Master");
    try {
        m_window.staff().writeLocation();
    } catch (const DbError &error) {
        qCInfo(lcStartup).noquote() << "staff location not written back:" << error.text();
    }
}

void Startup::applyAccessLevels()
{
    const Session &session = m_window.session();
    if (session.userLevel < session.accessLevel[3])
        m_window.action(QStringLiteral("mnurecalc"))->setEnabled(false);
    if (session.userLevel < session.accessLevel[1])
        m_window.action(QStringLiteral("mnuchavennumber"))->setVisible(false);
    if (session.userLevel >= session.accessLevel[3])
        m_window.menu(QStringLiteral("eoy"))->menuAction()->setVisible(true);
    if (session.userLevel == 99)
        m_window.action(QStringLiteral("mnumergevendor"))->setEnabled(true);
}
