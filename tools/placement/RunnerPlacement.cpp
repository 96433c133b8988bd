#include "RunnerPlacement.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

// The installed program sits beside the generator and the import; in a build tree it is in
// tools/<name> beside their folders.
QString findProgram(const QDir &programs, const QString &name)
{
    for (const QString &candidate :
         {programs.filePath(name), programs.filePath(QStringLiteral("../%1/%1").arg(name))}) {
        const QFileInfo info(candidate);
        if (info.isFile() && info.isExecutable())
            return info.canonicalFilePath();
    }
    return {};
}

QString findDefinitions(const QDir &programs)
{
    for (const QString &candidate : {programs.filePath(QStringLiteral("../share/apmaster/reports")),
                                     QStringLiteral(CRYPRINT_DEFINITIONS)}) {
        if (QFileInfo(candidate + QStringLiteral("/rap001.rpt")).isFile())
            return QFileInfo(candidate).canonicalFilePath();
    }
    return {};
}

// A link made by an earlier run is always replaced; a file of the folder's own only when asked.
bool replaceable(const QString &path, Existing existing)
{
    const QFileInfo info(path);
    return existing == Existing::Replace || info.isSymLink() || !info.exists();
}

} // namespace

QString placeReportRunner(const QString &folder, const QString &programFolder, Existing existing)
{
    const QDir data(folder);
    const QDir programs(programFolder);
    QString text;
    const QString runner = findProgram(programs, QStringLiteral("cryprint"));
    const QString link = data.filePath(QStringLiteral("cryprint.exe"));
    if (runner.isEmpty()) {
        text += QStringLiteral("  reports      the report runner cryprint was not found\n");
    } else if (!replaceable(link, existing)) {
        text += QStringLiteral("  reports      cryprint.exe of the folder kept\n");
    } else {
        QFile::remove(link);
        if (QFile::link(runner, link))
            text += QStringLiteral("  reports      cryprint.exe -> %1\n").arg(runner);
        else
            text += QStringLiteral("  reports      cryprint.exe could not be linked\n");
    }
    const QString definitions = findDefinitions(programs);
    if (definitions.isEmpty())
        return text + QStringLiteral("               no report definitions were found\n");
    const QDir from(definitions);
    int copied = 0;
    for (const QString &name : from.entryList({QStringLiteral("*.rpt")}, QDir::Files)) {
        const QString to = data.filePath(name);
        if (!replaceable(to, existing))
            continue;
        QFile::remove(to);
        copied += QFile::copy(from.filePath(name), to) ? 1 : 0;
    }
    return text + QStringLiteral("               %1 report definitions from %2\n")
                      .arg(copied)
                      .arg(definitions);
}

namespace {

// Links <name>.exe in the data folder to the program; `label` and `what` word the summary line.
QString placeSuiteProgram(const QString &folder, const QString &programFolder, const QString &name,
                          const QString &label, const QString &what, Existing existing)
{
    const QString program = findProgram(QDir(programFolder), name);
    const QString lead = QStringLiteral("  %1").arg(label, -13);
    if (program.isEmpty())
        return lead + QStringLiteral("the %1 %2 was not found\n").arg(what, name);
    const QString exe = name + QStringLiteral(".exe");
    const QString link = QDir(folder).filePath(exe);
    if (!replaceable(link, existing))
        return lead + QStringLiteral("%1 of the folder kept\n").arg(exe);
    QFile::remove(link);
    if (!QFile::link(program, link))
        return lead + QStringLiteral("%1 could not be linked\n").arg(exe);
    return lead + QStringLiteral("%1 -> %2\n").arg(exe, program);
}

} // namespace

QString placeNumberUtility(const QString &folder, const QString &programFolder, Existing existing)
{
    return placeSuiteProgram(folder, programFolder, QStringLiteral("chanum"),
                             QStringLiteral("numbers"), QStringLiteral("vendor-number utility"),
                             existing);
}

QString placeVersionWindow(const QString &folder, const QString &programFolder, Existing existing)
{
    return placeSuiteProgram(folder, programFolder, QStringLiteral("vinfo32"),
                             QStringLiteral("version"), QStringLiteral("version window"), existing);
}

QString placePrinterSetup(const QString &folder, const QString &programFolder, Existing existing)
{
    return placeSuiteProgram(folder, programFolder, QStringLiteral("prtctrl"),
                             QStringLiteral("printer"), QStringLiteral("printer set-up"), existing);
}

QString placeLayoutAdjuster(const QString &folder, const QString &programFolder, Existing existing)
{
    return placeSuiteProgram(folder, programFolder, QStringLiteral("fprint"),
                             QStringLiteral("1099 layouts"), QStringLiteral("layout adjuster"),
                             existing);
}

namespace {

// The installed file in share/apmaster beside the programs' bin folder, else the build's one.
QString findHelpFile(const QDir &programs, const QString &name, const QString &built)
{
    for (const QString &candidate :
         {programs.filePath(QStringLiteral("../share/apmaster/") + name), built}) {
        if (QFileInfo(candidate).isFile())
            return QFileInfo(candidate).canonicalFilePath();
    }
    return {};
}

} // namespace

QString placeHelp(const QString &folder, const QString &programFolder, Existing existing)
{
    const QDir data(folder);
    const QDir programs(programFolder);
    QString text =
        placeSuiteProgram(folder, programFolder, QStringLiteral("vlmohelp"), QStringLiteral("help"),
                          QStringLiteral("help viewer"), existing) +
        placeSuiteProgram(folder, programFolder, QStringLiteral("vlmedit"),
                          QStringLiteral("editor"), QStringLiteral("text editor"), existing);
    const QString lead = QStringLiteral("               ");
    const QString manualName = QStringLiteral("manual-ACCTPAY.pdf");
    const QString manual = findHelpFile(programs, manualName, QStringLiteral(APMASTER_MANUAL_PDF));
    const QString manualLink = data.filePath(manualName);
    if (manual.isEmpty()) {
        text += lead + QStringLiteral("the manual %1 was not found\n").arg(manualName);
    } else if (!replaceable(manualLink, existing)) {
        text += lead + QStringLiteral("%1 of the folder kept\n").arg(manualName);
    } else {
        QFile::remove(manualLink);
        text += lead + (QFile::link(manual, manualLink)
                            ? QStringLiteral("%1 -> %2\n").arg(manualName, manual)
                            : QStringLiteral("%1 could not be linked\n").arg(manualName));
    }
    const QString helpName = QStringLiteral("vendor1.txt");
    const QString help = findHelpFile(programs, helpName, QStringLiteral(APMASTER_HELP_TEXT));
    const QString helpCopy = data.filePath(helpName);
    if (help.isEmpty()) {
        text += lead + QStringLiteral("the help text %1 was not found\n").arg(helpName);
    } else if (QFileInfo::exists(helpCopy) && !replaceable(helpCopy, existing)) {
        text += lead + QStringLiteral("%1 of the folder kept\n").arg(helpName);
    } else {
        QFile::remove(helpCopy);
        // A copy the office may write to, whatever the installed file's mode.
        const bool copied =
            QFile::copy(help, helpCopy) &&
            QFile::setPermissions(helpCopy, QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                                QFileDevice::ReadGroup | QFileDevice::WriteGroup |
                                                QFileDevice::ReadOther);
        text += lead + (copied ? QStringLiteral("%1 from %2\n").arg(helpName, help)
                               : QStringLiteral("%1 could not be copied\n").arg(helpName));
    }
    return text;
}

QString placePickers(const QString &folder, const QString &programFolder, Existing existing)
{
    const QString vendors =
        placeSuiteProgram(folder, programFolder, QStringLiteral("venlookp"),
                          QStringLiteral("pickers"), QStringLiteral("vendor picker"), existing);
    // The second line goes under the first, without a label of its own.
    return vendors + placeSuiteProgram(folder, programFolder, QStringLiteral("gllookup"), QString(),
                                       QStringLiteral("G/L account picker"), existing);
}

QString placeSuite(const QString &folder, const QString &programFolder, Existing existing)
{
    return placeReportRunner(folder, programFolder, existing) +
           placeNumberUtility(folder, programFolder, existing) +
           placeVersionWindow(folder, programFolder, existing) +
           placePrinterSetup(folder, programFolder, existing) +
           placeLayoutAdjuster(folder, programFolder, existing) +
           placeHelp(folder, programFolder, existing) +
           placePickers(folder, programFolder, existing);
}
