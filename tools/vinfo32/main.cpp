// vinfo32: the suite's version window. The module starts it in the company's data folder as
// "vinfo32.exe anne@apmaster 21.12.28a     SysUser: 3" and waits until it is closed.
#include "VersionInfo.h"
#include "VersionWindow.h"

#include "common/ProgramError.h"

#include <QApplication>
#include <QDir>
#include <QMessageBox>

#include <cstdio>

namespace {

const char *usage =
    "Usage: vinfo32 [--print] USER@PROGRAM VERSION SysUser: NUMBER\n"
    "Shows what the module passes and the versions a support call needs (the package, Qt,\n"
    "SQLite, the PostgreSQL client library, the data folder of the current folder, its engine\n"
    "and the module's settings file); Copy puts the text on the clipboard.\n"
    "  --print    write the text to standard output instead of showing the window\n";

} // namespace

int main(int argc, char *argv[])
{
    QStringList words;
    bool print = false;
    for (int i = 1; i < argc; ++i) {
        const QString arg = QString::fromLocal8Bit(argv[i]);
        if (arg == QLatin1String("--version")) {
            std::puts("vinfo32 " APMASTER_VERSION);
            return 0;
        }
        if (arg == QLatin1String("--help")) {
            std::fputs(usage, stdout);
            return 0;
        }
        if (arg == QLatin1String("--print"))
            print = true;
        else
            words << arg;
    }
    VersionInfo::Passed passed;
    try {
        passed = VersionInfo::parse(words);
    } catch (const ProgramError &error) {
        std::fprintf(stderr, "vinfo32: %s\n", qPrintable(error.text()));
        if (!print) {
            QApplication app(argc, argv);
            QMessageBox::critical(nullptr, QStringLiteral("Velmora Office"), error.text());
        }
        return error.exitCode();
    }
    if (print) {
        // No window is made: the text needs no display.
        QCoreApplication app(argc, argv);
        const VersionInfo info(passed, QDir::currentPath());
        std::fputs(info.text().toLocal8Bit().constData(), stdout);
        return 0;
    }
    QApplication app(argc, argv);
    const VersionInfo info(passed, QDir::currentPath());
    VersionWindow window(info);
    window.show();
    return app.exec();
}
