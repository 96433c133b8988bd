#include "utilities/VendorNumberUtility.h"

#include "common/Clipboard.h"
#include "common/Processes.h"
#include "common/Session.h"

#include <QCoreApplication>
#include <QCursor>
#include <QGuiApplication>

#include <exception>

QString VendorNumberUtility::jobArgument(const QString &code, int level, const QString &userName)
{
    return code + QStringLiteral("%1").arg(level, 2, 10, QLatin1Char('0')) + userName.trimmed();
}

void VendorNumberUtility::start(const QString &code)
{
    if (m_cancelScreen)
        m_cancelScreen();
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    // The utility is another program: nothing that goes wrong in starting it stops the screen.
    try {
        m_s.session.jobArgument = code;
        if (m_reloadStaff)
            m_reloadStaff();
        m_s.session.jobArgument = jobArgument(code, m_s.session.userLevel, m_s.session.userName);
        m_s.clipboard.clear();
        m_s.clipboard.setText(m_s.session.userName);
        m_s.processes.start(QStringLiteral("chanum.exe ") + m_s.session.jobArgument,
                            Processes::Show::Normal);
        QCoreApplication::processEvents();
    } catch (const std::exception &) {
    }
    QGuiApplication::restoreOverrideCursor();
}
