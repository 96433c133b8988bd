#include "PickerProgram.h"

#include "PickerCache.h"
#include "PickerModel.h"

#include "common/PickedAnswer.h"
#include "data/DbError.h"
#include "keysend/KeySender.h"

#include <QApplication>
#include <QDir>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace {

// The keys of a scripted run, "" when a user types them.
QString scriptedKeys()
{
    return qEnvironmentVariable("APMASTER_PICKER_KEYS");
}

// A scripted run has nobody to close a message box: the text goes to the error output only.
void refuse(const QString &title, const QString &text)
{
    std::fprintf(stderr, "%s\n", qPrintable(text));
    if (scriptedKeys().isEmpty())
        QMessageBox::critical(nullptr, title, text);
}

} // namespace

int runPicker(int argc, char *argv[], const PickerProgram &program)
{
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--version") == 0) {
            std::printf("%s %s\n", program.name, APMASTER_VERSION);
            return 0;
        }
        if (std::strcmp(argv[i], "--help") == 0) {
            std::fputs(program.usage, stdout);
            return 0;
        }
    }
    QApplication app(argc, argv);
    // The list is kept in an index file of the user's between runs and brought up to date
    // with the company; without a cache folder it is a scratch file, gone when the program ends.
    const QString dataFolder = QDir::currentPath();
    const QString cache = PickerCache::folder(dataFolder);
    QTemporaryDir scratch;
    if (cache.isEmpty() && !scratch.isValid()) {
        refuse(program.texts.title,
               QStringLiteral("No scratch folder could be made: %1").arg(scratch.errorString()));
        return 2;
    }
    const QString picker = QString::fromLatin1(program.name);
    const auto fill = [&](PickerIndex &index) { program.load(index, dataFolder); };
    std::unique_ptr<PickerIndex> index;
    try {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        if (cache.isEmpty()) {
            index = std::make_unique<PickerIndex>(scratch.filePath(QStringLiteral("list.db")),
                                                  program.columns);
            fill(*index);
            index->finish();
        } else {
            index = PickerCache::open(PickerCache::fileFor(cache, picker, dataFolder),
                                      program.columns, PickerCache::identity(picker, dataFolder),
                                      fill);
        }
        QApplication::restoreOverrideCursor();
    } catch (const DbError &error) {
        QApplication::restoreOverrideCursor();
        refuse(program.texts.title, program.cannotRead.arg(error.text()));
        return 2;
    }
    PickerModel model(*index);
    PickerWindow window(model, program.texts);
    if (program.stillThere)
        window.setPickCheck(
            [&](const QString &number) {
                try {
                    return program.stillThere(dataFolder, number);
                } catch (const DbError &) {
                    // Nothing to tell from here: the module looks the number up itself.
                    return true;
                }
            },
            program.goneNote);
    KeySender keys;
    const QString scripted = scriptedKeys();
    if (!scripted.isEmpty())
        QTimer::singleShot(0, &window, [&] {
            window.activateWindow();
            keys.sendKeys(scripted);
        });
    window.setWindowFlag(Qt::WindowStaysOnTopHint); // over the module, which is on top too
    if (window.exec() != QDialog::Accepted || window.picked().isEmpty())
        return 0;
    if (!PickedAnswer::leave(getppid(), picker, window.picked())) {
        refuse(program.texts.title,
               QStringLiteral("The picked number %1 could not be handed back (%2).")
                   .arg(window.picked(), PickedAnswer::pathFor(getppid())));
        return 2;
    }
    return 0;
}
