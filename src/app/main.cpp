#include "app/ModuleAssembly.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("apmaster"));

    ModuleAssembly module;
    // The launcher passes one argument: module code, two-digit level and user name.
    const QString argument = QApplication::arguments().mid(1).join(QLatin1Char(' '));
    if (const std::optional<int> refused = module.start(argument))
        return *refused;
    return QApplication::exec();
}
