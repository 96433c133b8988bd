// prtctrl: the suite's printer set-up. The module's "Printer setup" runs it as "prtctrl.exe" and
// waits for it; it ends with exit code 0 whether the user saves or cancels, since the module
// takes any other code as a premature end.
#include "PrinterSetupWindow.h"

#include "common/ProgramError.h"

#include <QApplication>
#include <QPrinterInfo>

#include <cstdio>

namespace {

const char *usage =
    "Usage: prtctrl [--set WORD...]\n"
    "Chooses the printer, paper size and paper source of the suite's direct printing (the 1099\n"
    "runs) for the current desktop user.\n"
    "  --set WORD...  save the choice without the window; the words are printer=NAME (an\n"
    "                 installed printer), pdf=PATH (no printer: a PDF file, or a folder for the\n"
    "                 files), paper=Letter|Legal|A4,\n"
    "                 source=Auto|Upper|Lower|Middle|Manual|Tractor.\n"
    "                 The setting APMASTER_PRTCTRL_SET, when present, gives the words instead\n"
    "                 (for scripts and tests that start the program as the module does).\n"
    "Exit codes: 0 saved or cancelled; 2 the choice given with --set was refused.\n";

// The exit code when the choice given with --set was refused.
constexpr int refused = 2;

// Saves the choice the words give; throws ProgramError (refused) when it cannot be taken.
void setFromWords(const QStringList &words)
{
    PrinterChoice choice = PrinterChoice::load();
    QString why;
    if (choice.parse(words, why))
        why = choice.problem(QPrinterInfo::availablePrinterNames());
    if (why.isEmpty() && !choice.save())
        why = QStringLiteral("The printer set-up could not be saved.");
    if (!why.isEmpty())
        throw ProgramError(why + QStringLiteral(" Nothing was changed."), refused);
    std::printf("prtctrl: saved %s, paper %s, source %s\n",
                qPrintable(choice.pdfTarget.isEmpty()
                               ? (choice.printer.isEmpty() ? QStringLiteral("the default printer")
                                                           : choice.printer)
                               : QStringLiteral("PDF ") + choice.pdfTarget),
                qPrintable(choice.paper), qPrintable(choice.source));
}

} // namespace

int main(int argc, char *argv[])
{
    QStringList words;
    bool set = false;
    for (int i = 1; i < argc; ++i) {
        const QString arg = QString::fromLocal8Bit(argv[i]);
        if (arg == QLatin1String("--help") || arg == QLatin1String("-h")) {
            std::fputs(usage, stdout);
            return 0;
        }
        if (arg == QLatin1String("--version")) {
            std::printf("prtctrl %s\n", APMASTER_VERSION);
            return 0;
        }
        if (arg == QLatin1String("--set"))
            set = true;
        else
            words << arg;
    }
    const QString fromSetting = qEnvironmentVariable("APMASTER_PRTCTRL_SET");
    if (!set && !fromSetting.isEmpty()) {
        set = true;
        words = fromSetting.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    }
    if (set) {
        // Without the window the program needs no screen.
        if (qEnvironmentVariableIsEmpty("DISPLAY") &&
            qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
            qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        QGuiApplication app(argc, argv);
        try {
            setFromWords(words);
        } catch (const ProgramError &error) {
            std::fprintf(stderr, "prtctrl: %s\n", qPrintable(error.text()));
            return error.exitCode();
        }
        return 0;
    }
    if (!words.isEmpty()) {
        std::fputs(usage, stderr);
        return 2;
    }
    QApplication app(argc, argv);
    PrinterSetupWindow window(PrinterChoice::load(), QPrinterInfo::availablePrinterNames());
    window.exec();
    return 0;
}
