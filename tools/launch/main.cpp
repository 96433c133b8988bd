#include "LaunchWindow.h"
#include "SignIn.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

#include <cstring>
#include <memory>

namespace {

// The module installed beside the launcher, else the one on the search path.
QString defaultModule()
{
    const QString beside = QDir(QCoreApplication::applicationDirPath()).filePath("apmaster");
    if (QFileInfo(beside).isExecutable())
        return beside;
    const QString found = QStandardPaths::findExecutable(QStringLiteral("apmaster"));
    return found.isEmpty() ? beside : found;
}

bool asksForHelpOrVersion(int argc, char *argv[])
{
    for (int i = 1; i < argc; ++i) {
        for (const char *option : {"-h", "--help", "--help-all", "-v", "--version"}) {
            if (std::strcmp(argv[i], option) == 0)
                return true;
        }
    }
    return false;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication::setOrganizationName(QStringLiteral("Velmora"));
    QCoreApplication::setApplicationName(QStringLiteral("apmaster-launch"));
    QCoreApplication::setApplicationVersion(QStringLiteral(APMASTER_VERSION));
    // --help and --version answer without a display, as on a terminal over ssh.
    std::unique_ptr<QCoreApplication> app(asksForHelpOrVersion(argc, argv)
                                              ? new QCoreApplication(argc, argv)
                                              : new QApplication(argc, argv));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Signs in to A/P Master: asks for the company's data folder, signs in the staff user "
        "whose name is the desktop login name (or the one chosen from the staff list, where "
        "the company allows it) and starts the module in that folder."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOption({QStringLiteral("module"),
                      QStringLiteral("The module program to start (apmaster beside the "
                                     "launcher, else on the search path)."),
                      QStringLiteral("PATH")});
    parser.process(*app);
    QGuiApplication::setDesktopFileName(QStringLiteral("com.velmora.apmaster"));

    QSettings settings;
    LaunchServices services;
    services.settings = &settings;
    services.loginName = SignIn::desktopLoginName();
    services.modulePath = parser.isSet("module") ? parser.value("module") : defaultModule();
    services.chooseFolder = [](QWidget *parent, const QString &start) {
        return QFileDialog::getExistingDirectory(parent, QObject::tr("Company data folder"), start);
    };
    LaunchWindow window(services);
    QObject::connect(&window, &LaunchWindow::finished, app.get(), &QCoreApplication::quit);
    window.show();
    return QCoreApplication::exec();
}
