#include "app/Startup.h"

#include "app/ModuleSettings.h"
#include "app/PracticeColour.h"
#include "app/SingleInstance.h"
#include "app/StaffRecords.h"
#include "app/UpdateGate.h"
#include "common/Dialogs.h"
#include "common/ErrorReport.h"
#include "common/Services.h"
#include "common/Session.h"
#include "data/Databases.h"
#include "data/DbError.h"
#include "vendorscreen/StartupView.h"

#include <QAction>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QMenu>

Q_LOGGING_CATEGORY(lcStartup, "vendor.startup", QtWarningMsg)

Startup::Startup(StartupView &view, Session &session, Services &services, StaffRecords &staff,
                 const QString &lockFolder) :
    m_view(view),
    m_session(session), m_services(services), m_staff(staff),
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
    Session &session = m_session;
    Services &services = m_services;
    Dialogs &dialogs = services.dialogs;

    step(1, "single instance");
    if (!m_instance->acquire()) {
        dialogs.message(QStringLiteral("The module is already running."),
                        Dialogs::Icon::Information, QStringLiteral("Uh-oh..."));
        return AlreadyRunning;
    }
    step(2, "topmost");
    m_view.setTopmost(true);
    step(3, "centre");
    m_view.centreOnScreen();
    step(4, "practice colour");
    if (const std::optional<int> colour = PracticeColour::forDataFolder())
        m_view.setBackgroundColour(*colour);
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
            m_view.useCanadianLabels();
    } catch (const DbError &error) {
        showErrorReport(dialogs, error);
        return DatabaseError;
    }

    step(7, "caption");
    m_view.setCaption(session.userName + QStringLiteral(" @ Vendors"));
    step(8, "grid widths");
    m_view.rememberGridWidths();
    step(9, "menus by access level");
    applyAccessLevels();

    step(10, "staff location");
    session.staffLocation = QStringLiteral("Vendors");
    try {
        m_staff.writeLocation();
    } catch (const DbError &error) {
        showErrorReport(dialogs, error);
    }
    step(11, "arrow pointer");
    while (QGuiApplication::overrideCursor())
        QGuiApplication::restoreOverrideCursor();
    step(12, "show");
    m_view.showScreen();

    step(13, "open ap.mdb and gl.mdb");
    try {
        services.databases.open(QStringLiteral("ap.mdb"));
        services.databases.open(QStringLiteral("gl.mdb"));
        m_view.openAccountNames();
    } catch (const DbError &error) {
        dialogs.message(error.text(), Dialogs::Icon::Critical, QStringLiteral("Uh-oh..."));
        m_view.hideScreen();
        leaveStaffRecord();
        return DatabaseError;
    }
    step(14, "idle");
    QCoreApplication::processEvents();
    step(15, "lookup");
    m_view.setStarted(true);
    m_view.openLookup();
    return std::nullopt;
}

// A start-up that fails after the location was written puts the user back where closing would.
void Startup::leaveStaffRecord()
{
    m_session.staffLocation = QStringLiteral("A/P Master");
    try {
        m_staff.writeLocation();
    } catch (const DbError &error) {
        qCInfo(lcStartup).noquote() << "staff location not written back:" << error.text();
    }
}

void Startup::applyAccessLevels()
{
    const Session &session = m_session;
    if (session.userLevel < session.accessLevel[3])
        m_view.action(QStringLiteral("mnurecalc"))->setEnabled(false);
    if (session.userLevel < session.accessLevel[1])
        m_view.action(QStringLiteral("mnuchavennumber"))->setVisible(false);
    if (session.userLevel >= session.accessLevel[3])
        m_view.menu(QStringLiteral("eoy"))->menuAction()->setVisible(true);
    if (session.userLevel == 99)
        m_view.action(QStringLiteral("mnumergevendor"))->setEnabled(true);
}
