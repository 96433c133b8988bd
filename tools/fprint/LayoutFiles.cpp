#include "LayoutFiles.h"

#include "FormPage.h"
#include "LayoutDocument.h"
#include "reports/PrinterFormPrinter.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace {
// A layout is a few kilobytes; anything far larger is not one.
constexpr qint64 largestLayout = 1 << 20;
} // namespace

QString LayoutFiles::systemFolder()
{
    const QString setting = qEnvironmentVariable("APMASTER_SYSTEM_LAYOUTS");
    if (!setting.isEmpty())
        return setting;
    const QDir programs(QCoreApplication::applicationDirPath());
    for (const QString &candidate : {programs.filePath(QStringLiteral("../share/apmaster/layouts")),
                                     QStringLiteral(FPRINT_SOURCE_LAYOUTS)}) {
        if (QFileInfo(candidate + QStringLiteral("/1099nec.lof")).isFile())
            return QFileInfo(candidate).canonicalFilePath();
    }
    return programs.filePath(QStringLiteral("../share/apmaster/layouts"));
}

LayoutFiles::LayoutFiles(const QString &dataFolder, const QString &systemFolder) :
    m_data(dataFolder), m_system(systemFolder)
{
}

QString LayoutFiles::path(const QString &fileName) const
{
    return QDir(m_data).absoluteFilePath(fileName);
}

QString LayoutFiles::systemPath(const QString &fileName) const
{
    return QDir(m_system).absoluteFilePath(fileName);
}

bool LayoutFiles::exists(const QString &fileName) const
{
    return QFileInfo::exists(path(fileName));
}

bool LayoutFiles::readPath(const QString &path, LayoutDocument &document, QString &why)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        why = QStringLiteral("%1 cannot be read: %2.").arg(path, file.errorString());
        return false;
    }
    if (file.size() > largestLayout) {
        why = QStringLiteral("%1 is no layout file: it is far too large.").arg(path);
        return false;
    }
    QString problem;
    if (!document.read(file.readAll(), problem)) {
        why = QStringLiteral("%1 cannot be used: %2.").arg(path, problem);
        return false;
    }
    return true;
}

bool LayoutFiles::read(const QString &fileName, LayoutDocument &document, QString &why) const
{
    return readPath(path(fileName), document, why);
}

bool LayoutFiles::readSystem(const QString &fileName, LayoutDocument &document, QString &why) const
{
    if (!QFileInfo::exists(systemPath(fileName))) {
        why = QStringLiteral("The system copy %1 is not installed.").arg(systemPath(fileName));
        return false;
    }
    return readPath(systemPath(fileName), document, why);
}

bool LayoutFiles::save(const QString &fileName, const LayoutDocument &document, QString &why) const
{
    QSaveFile file(path(fileName));
    const QByteArray bytes = document.bytes();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        why = QStringLiteral("%1 could not be saved: %2. The file was left as it was.")
                  .arg(path(fileName), file.errorString());
        return false;
    }
    return true;
}

bool LayoutFiles::createFromSystem(const QString &fileName, QString &why) const
{
    LayoutDocument system;
    return readSystem(fileName, system, why) && save(fileName, system, why);
}

bool LayoutFiles::printTestPage(const FormPage &page, const QString &formName, QString &done,
                                QString &why)
{
    PrinterFormPrinter printer(formName + QStringLiteral(" test page"));
    if (!printer.begin()) {
        why = printer.why() + QStringLiteral(" Nothing was printed.");
        return false;
    }
    for (const FormPlacement::Item &item : page.items())
        printer.print(item.xTwips, item.yTwips, item.text);
    if (!printer.finish()) {
        why = printer.why() + QStringLiteral(" Nothing was printed.");
        return false;
    }
    done = printer.pdfFile().isEmpty()
               ? QStringLiteral("The test page was sent to the printer.")
               : QStringLiteral("The test page was written to %1.").arg(printer.pdfFile());
    return true;
}
