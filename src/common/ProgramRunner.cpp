#include "common/ProgramRunner.h"
#include "common/DataFiles.h"

#include "common/Session.h"
#include "common/Clipboard.h"
#include "common/Clock.h"
#include "common/Dialogs.h"
#include "common/Processes.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QTextStream>

int ProgramRunner::runAndWait(const QString &commandLine)
{
    const int exitCode = m_processes.runAndWait(commandLine);
    QCoreApplication::processEvents();
    if (exitCode != 0) {
        m_dialogs.message(
            QStringLiteral("WARNING - PREMATURE USER TERMINATION OF BACKUP PROCEDURE"),
            Dialogs::Icon::Critical, QStringLiteral("CAUTION"));
        m_session.staffLocation = QStringLiteral("Backup/Restore");
        writeAdminLog();
        return 0;
    }
    QCoreApplication::processEvents();
    return exitCode;
}

void ProgramRunner::writeAdminLog()
{
    const QString fileName = m_session.staffLocation == QLatin1String("Backup/Restore")
                                 ? QStringLiteral("lastbkup.dat")
                                 : QStringLiteral("admlog.ini");
    QFile file(DataFiles::pathOf(fileName));
    if (file.open(QIODevice::Append | QIODevice::Text)) {
        const QDateTime now = m_clock.now();
        const QLocale locale = QLocale::system();
        QTextStream out(&file);
        out << locale.toString(now.date(), QLocale::ShortFormat) << '-'
            << locale.toString(now.time(), QLocale::ShortFormat) << '-' << m_session.userName << '-'
            << m_session.staffLocation << '-' << m_session.messageText << '\n';
    }
    file.close();
    QCoreApplication::processEvents();
}

void ProgramRunner::help(const std::function<void()> &notTopmost)
{
    const QString editorCommand = QStringLiteral("vlmedit.exe vendor1.txt");
    if (!QFileInfo::exists(DataFiles::pathOf(QStringLiteral("vlmohelp.exe")))) {
        m_processes.start(editorCommand, Processes::Show::Normal);
        return;
    }
    m_clipboard.clear();
    if (notTopmost)
        notTopmost();
    m_processes.start(QStringLiteral("vlmohelp.exe manual-ACCTPAY.pdf"), Processes::Show::Maximised,
                      m_helpSettleMsecs);
    // The window learns from the desktop's events that the viewer took the clipboard; until
    // they are handled it would read its own cleared clipboard.
    QCoreApplication::processEvents();
    if (m_clipboard.text() == QLatin1String("NOHELP"))
        m_processes.start(editorCommand, Processes::Show::Normal);
}

QString ProgramRunner::versionCommand(const QString &programName) const
{
    return QStringLiteral("vinfo32.exe ") + m_session.userName + QLatin1Char('@') + programName +
           QLatin1Char(' ') + QString::fromLatin1(Session::version) +
           QStringLiteral("     SysUser: ") + QString::number(m_session.sysUser);
}
