#include "common/PickedAnswer.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>

namespace PickedAnswer {

QString pathFor(qint64 modulePid)
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return QDir(folder).filePath(QStringLiteral("apmaster-picked-%1").arg(modulePid));
}

bool leave(qint64 modulePid, const QString &picker, const QString &number)
{
    // Written whole or not at all, so that the module never reads half an answer.
    QSaveFile file(pathFor(modulePid));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
        return false;
    file.write((picker + QLatin1Char('\n') + number + QLatin1Char('\n')).toUtf8());
    return file.commit();
}

void clear()
{
    QFile::remove(pathFor(QCoreApplication::applicationPid()));
}

QString take(const QString &picker)
{
    QFile file(pathFor(QCoreApplication::applicationPid()));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    const QStringList lines = QString::fromUtf8(file.read(4096)).split(QLatin1Char('\n'));
    file.remove();
    if (lines.size() < 2 || lines.at(0) != picker)
        return {};
    return lines.at(1).trimmed();
}

} // namespace PickedAnswer
