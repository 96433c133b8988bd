// vlmedit: the suite's plain-text editor. The module's Help starts it in the company's data folder
// as "vlmedit.exe vendor1.txt" when the manual cannot be shown.
#include "EditorWindow.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QMessageBox>

#include <cstdio>

namespace {

const char *usage = "Usage: vlmedit FILE\n"
                    "Opens a plain-text file (e.g. the module's help text vendor1.txt) for\n"
                    "reading and editing; Save writes it through a work file beside it.\n";

} // namespace

int main(int argc, char *argv[])
{
    QStringList words;
    for (int i = 1; i < argc; ++i) {
        const QString arg = QString::fromLocal8Bit(argv[i]);
        if (arg == QLatin1String("--version")) {
            std::puts("vlmedit " APMASTER_VERSION);
            return 0;
        }
        if (arg == QLatin1String("--help")) {
            std::fputs(usage, stdout);
            return 0;
        }
        words << arg;
    }
    QApplication app(argc, argv);
    const QString title = QStringLiteral("Velmora Office");
    if (words.size() != 1) {
        std::fputs(usage, stderr);
        QMessageBox::critical(nullptr, title,
                              QStringLiteral("The text editor expects one file name."));
        return 2;
    }
    EditorWindow window(
        words.first(),
        {.unsavedChanges =
             [&title](const QString &text) {
                 switch (QMessageBox::question(QApplication::activeWindow(), title, text,
                                               QMessageBox::Save | QMessageBox::Discard |
                                                   QMessageBox::Cancel)) {
                 case QMessageBox::Save:
                     return EditorWindow::Answer::Save;
                 case QMessageBox::Discard:
                     return EditorWindow::Answer::Discard;
                 default:
                     return EditorWindow::Answer::Cancel;
                 }
             },
         .problem =
             [&title](const QString &text) {
                 QMessageBox::warning(QApplication::activeWindow(), title, text);
             }});
    // The installed copy of a text of the suite (share/apmaster beside the programs' bin folder),
    // shown when the company's folder has none of its own.
    const QString installed =
        QDir(QCoreApplication::applicationDirPath())
            .filePath(QStringLiteral("../share/apmaster/") + QFileInfo(words.first()).fileName());
    if (!window.load(installed))
        return 1;
    window.show();
    return app.exec();
}
