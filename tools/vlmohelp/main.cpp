// vlmohelp: the suite's help viewer. The module's Help button starts it in the company's data
// folder as "vlmohelp.exe manual-ACCTPAY.pdf" without waiting. It hands the manual to the
// desktop's PDF viewer; when it cannot (no manual, no viewer, a viewer that refuses the file) it
// leaves "NOHELP" on the clipboard, and the module opens the plain-text help in the text editor.
#include "ManualViewer.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>
#include <QTimer>

#include <cstdio>

namespace {

const char *usage =
    "Usage: vlmohelp MANUAL.pdf\n"
    "Opens the manual (from the current folder, else the installed copy) in the desktop's PDF\n"
    "viewer. When it cannot, it says why on standard error, puts NOHELP on the clipboard and\n"
    "keeps it there until another program takes the clipboard (at most 10 seconds).\n"
    "  APMASTER_PDF_VIEWER   the viewer program (and its first words) instead of xdg-open\n";

// The time the viewer has to refuse the file; the module looks at the clipboard a little later.
constexpr int viewerCheckMsecs = 1000;
// How long NOHELP is kept on offer: on X11 and Wayland the clipboard's text lives in the
// program that put it there, so the viewer stays until the module has read it.
constexpr int keepNoHelpMsecs = 10000;

int noHelp(QGuiApplication &app, const QString &problem)
{
    std::fprintf(stderr, "vlmohelp: %s\n", qPrintable(problem));
    QClipboard *clipboard = QGuiApplication::clipboard();
    clipboard->setText(QStringLiteral("NOHELP"));
    // A platform without a shared clipboard (offscreen) has nobody to keep it for.
    if (QGuiApplication::platformName() == QLatin1String("offscreen"))
        return 1;
    QObject::connect(clipboard, &QClipboard::changed, &app, [&app](QClipboard::Mode mode) {
        if (mode == QClipboard::Clipboard)
            app.exit(1);
    });
    QTimer::singleShot(keepNoHelpMsecs, &app, [&app] { app.exit(1); });
    return app.exec();
}

} // namespace

int main(int argc, char *argv[])
{
    QStringList words;
    for (int i = 1; i < argc; ++i) {
        const QString arg = QString::fromLocal8Bit(argv[i]);
        if (arg == QLatin1String("--version")) {
            std::puts("vlmohelp " APMASTER_VERSION);
            return 0;
        }
        if (arg == QLatin1String("--help")) {
            std::fputs(usage, stdout);
            return 0;
        }
        words << arg;
    }
    QGuiApplication app(argc, argv);
    if (words.size() != 1)
        return noHelp(app, QStringLiteral("expects the manual's file name, e.g. "
                                          "\"vlmohelp manual-ACCTPAY.pdf\""));
    const QString manual = ManualViewer::find(words.first(), QDir::currentPath(),
                                              QCoreApplication::applicationDirPath());
    if (manual.isEmpty())
        return noHelp(app, QStringLiteral("the manual %1 is neither in %2 nor installed")
                               .arg(words.first(), QDir::currentPath()));
    const ManualViewer::Outcome outcome =
        ManualViewer::open(manual, ManualViewer::viewerCommand(), viewerCheckMsecs);
    if (!outcome.opened)
        return noHelp(app, outcome.problem);
    return 0;
}
