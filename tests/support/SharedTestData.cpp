#include "support/SharedTestData.h"

#include <QFile>

namespace SharedTestData {
namespace {
QStringList folders()
{
    QStringList found;
    const QString fromEnvironment = qEnvironmentVariable("APMASTER_TESTDATA");
    if (!fromEnvironment.isEmpty())
        found << fromEnvironment;
    found << QStringLiteral(APMASTER_SHARED_TESTDATA) << QStringLiteral("/work/shared/testdata");
    return found;
}
} // namespace

QString find(const QString &relative)
{
    for (const QString &folder : folders()) {
        const QString path = folder + QLatin1Char('/') + relative;
        if (QFile::exists(path))
            return path;
    }
    return {};
}

QString searched(const QString &relative)
{
    QStringList paths;
    for (const QString &folder : folders())
        paths << folder + QLatin1Char('/') + relative;
    return paths.join(QStringLiteral(", "));
}

} // namespace SharedTestData
