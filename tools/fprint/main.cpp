// fprint: the suite's 1099 layout adjuster. The module's "Adjust 1099 forms printing" starts it as
// "fprint.exe" in the company's data folder without waiting for it. It edits the layout files
// the 1099 runs print from (1099misc.lof, 1099int.lof, 1099div.lof, 1099nec.lof).
#include "AdjusterWindow.h"
#include "FormPage.h"
#include "LayoutDocument.h"
#include "LayoutFiles.h"
#include "common/QtDialogs.h"
#include "reports/PrinterChoice.h"

#include <QApplication>
#include <QDir>

#include <cstdio>

namespace {

const char *usage =
    "Usage: fprint [FILE]\n"
    "       fprint --check FILE | --set FILE [WORD...] | --test-page FILE | --from-system FILE\n"
    "Adjusts where the 1099 runs print on the pre-printed forms. FILE is one of the layout files\n"
    "of the current folder (the company's data folder): 1099misc.lof, 1099int.lof, 1099div.lof,\n"
    "1099nec.lof. A missing file is made from the installed system copy. Without a command the\n"
    "window opens on FILE (1099misc.lof when none is named).\n"
    "  --check FILE        read the file and say whether every element lands on the paper\n"
    "  --set FILE WORD...  change and save without the window: N=X,Y puts element N at X and Y\n"
    "                      inches, spacing=S makes the form spacing S inches; with no words the\n"
    "                      file is saved as it is\n"
    "  --test-page FILE    print a test page of sample forms on the printer of the printer set-up\n"
    "                      (or into the PDF file it or the setting APMASTER_PRINT_PDF names)\n"
    "  --from-system FILE  replace the file with the system copy\n"
    "The setting APMASTER_SYSTEM_LAYOUTS names the folder of the system copies instead of the\n"
    "installed one.\n"
    "Exit codes: 0 done; 2 refused (a message on the error output; nothing was changed).\n";

int refuse(const QString &why)
{
    std::fprintf(stderr, "fprint: %s\nNothing was changed.\n", qPrintable(why));
    return 2;
}

// "11=1.25,2" or "spacing=3.66" applied to the document; false with why set.
bool apply(const QString &word, LayoutDocument &document, QString &why)
{
    const QString key = word.section(QLatin1Char('='), 0, 0);
    const QString value = word.section(QLatin1Char('='), 1);
    double x = 0;
    double y = 0;
    if (key == QLatin1String("spacing")) {
        if (!LayoutDocument::parseInches(value, x) || x <= 0) {
            why = QStringLiteral("\"%1\" is not a form spacing: a number of inches more than 0, "
                                 "like 3.66.")
                      .arg(word);
            return false;
        }
        document.setSpacing(x);
        return true;
    }
    bool numbered = false;
    const int element = key.toInt(&numbered);
    if (!numbered || !word.contains(QLatin1Char('='))) {
        why = QStringLiteral("\"%1\" is neither N=X,Y nor spacing=S.").arg(word);
        return false;
    }
    if (element < 0 || element >= document.count()) {
        why = QStringLiteral("The layout has no element %1; its elements are 0 to %2.")
                  .arg(element)
                  .arg(document.count() - 1);
        return false;
    }
    const QStringList xy = value.split(QLatin1Char(','));
    if (xy.size() != 2 || !LayoutDocument::parseInches(xy[0], x) ||
        !LayoutDocument::parseInches(xy[1], y)) {
        why = QStringLiteral("\"%1\" does not give X and Y as numbers of inches, like 11=1.25,2.")
                  .arg(word);
        return false;
    }
    document.setX(element, x);
    document.setY(element, y);
    return true;
}

int command(const QString &name, const QString &fileName, const QStringList &words)
{
    if (LayoutDocument::kindOf(fileName) == 0 || fileName != fileName.toLower())
        return refuse(QStringLiteral("\"%1\" is not one of the layout files %2.")
                          .arg(fileName, LayoutDocument::fileNames().join(QStringLiteral(", "))));
    const LayoutFiles files(QDir::currentPath(), LayoutFiles::systemFolder());
    QString why;
    if (name == QLatin1String("--from-system")) {
        LayoutDocument system;
        if (!files.readSystem(fileName, system, why) || !files.save(fileName, system, why))
            return refuse(why);
        std::printf("fprint: %s made from the system copy %s\n", qPrintable(fileName),
                    qPrintable(files.systemPath(fileName)));
        return 0;
    }
    if (!files.exists(fileName)) {
        if (!files.createFromSystem(fileName, why))
            return refuse(QStringLiteral("%1 is missing and could not be made from the system "
                                         "copy: %2")
                              .arg(fileName, why));
        std::printf("fprint: %s was missing; made from the system copy %s\n", qPrintable(fileName),
                    qPrintable(files.systemPath(fileName)));
    }
    LayoutDocument document;
    if (!files.read(fileName, document, why))
        return refuse(why);
    const int kind = LayoutDocument::kindOf(fileName);
    const QSizeF paper = FormPage::paperInches(PrinterChoice::load().paper);
    if (name == QLatin1String("--set")) {
        LayoutDocument after = document;
        for (const QString &word : words)
            if (!apply(word, after, why))
                return refuse(why);
        const QString problem = FormPage(after, kind, paper).problem();
        if (!problem.isEmpty())
            return refuse(fileName + QStringLiteral(" prints off the paper:\n") + problem);
        if (!files.save(fileName, after, why))
            return refuse(why);
        std::printf("fprint: %s saved\n", qPrintable(files.path(fileName)));
        return 0;
    }
    const FormPage page(document, kind, paper);
    const QString problem = page.problem();
    if (!problem.isEmpty())
        return refuse(fileName + QStringLiteral(" prints off the paper:\n") + problem);
    if (name == QLatin1String("--check")) {
        std::printf("fprint: %s has %d elements; every one lands on the paper.\n",
                    qPrintable(fileName), document.count() - 1);
        return 0;
    }
    QString done;
    if (!LayoutFiles::printTestPage(page, LayoutDocument::formName(fileName), done, why)) {
        std::fprintf(stderr, "fprint: %s\n", qPrintable(why));
        return 2;
    }
    std::printf("fprint: %s\n", qPrintable(done));
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    QStringList args;
    for (int i = 1; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);
    if (args.contains(QLatin1String("--help")) || args.contains(QLatin1String("-h"))) {
        std::fputs(usage, stdout);
        return 0;
    }
    if (args.contains(QLatin1String("--version"))) {
        std::printf("fprint %s\n", APMASTER_VERSION);
        return 0;
    }
    const QStringList commands = {QStringLiteral("--check"), QStringLiteral("--set"),
                                  QStringLiteral("--test-page"), QStringLiteral("--from-system")};
    if (!args.isEmpty() && commands.contains(args.first())) {
        if (args.size() < 2 || (args.first() != QLatin1String("--set") && args.size() > 2)) {
            std::fputs(usage, stderr);
            return 2;
        }
        // Without the window the program needs no screen.
        if (qEnvironmentVariableIsEmpty("DISPLAY") &&
            qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
            qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        QGuiApplication app(argc, argv);
        return command(args[0], args[1], args.mid(2));
    }
    if (args.size() > 1 || (args.size() == 1 && args[0].startsWith(QLatin1Char('-')))) {
        std::fputs(usage, stderr);
        return 2;
    }
    const QString fileName = args.isEmpty() ? LayoutDocument::fileNames().first() : args[0];
    if (LayoutDocument::kindOf(fileName) == 0 || fileName != fileName.toLower()) {
        std::fprintf(stderr, "fprint: \"%s\" is not one of the layout files %s.\n",
                     qPrintable(fileName),
                     qPrintable(LayoutDocument::fileNames().join(QStringLiteral(", "))));
        return 2;
    }
    QApplication app(argc, argv);
    QtDialogs dialogs;
    AdjusterWindow window(dialogs, LayoutFiles(QDir::currentPath(), LayoutFiles::systemFolder()),
                          FormPage::paperInches(PrinterChoice::load().paper), fileName);
    dialogs.setParent(&window);
    window.show();
    return app.exec();
}
