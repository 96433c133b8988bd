#include "app/ModuleAssembly.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("apmaster"));

    ModuleAssembly module;
    // What the launcher hands over: the module's code, the user's level in two digits and the
    // user's name, as one word.
    const QString argument = QApplication::arguments().mid(1).join(QLatin1Char(' '));
    if (const std::optional<int> refused = module.start(argument))
        return *refused;
    return QApplication::exec();
}
