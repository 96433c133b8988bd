#include "common/DataFiles.h"

#include <QDir>
#include <QFileInfo>

namespace DataFiles {

QString pathOf(const QString &fileName)
{
    const QDir dir = QDir::current();
    if (QFileInfo::exists(dir.absoluteFilePath(fileName)))
        return dir.absoluteFilePath(fileName);
    const QStringList entries = dir.entryList(QDir::Files | QDir::Hidden);
    for (const QString &entry : entries)
        if (entry.compare(fileName, Qt::CaseInsensitive) == 0)
            return dir.absoluteFilePath(entry);
    return dir.absoluteFilePath(fileName);
}

} // namespace DataFiles
