// One copy of the module in a process of its own, driven line by line from standard input, for
// tests that need several users' copies on one data folder. It is the real window on the real
// files; only the dialogs are the scripted fake, and each one shown is printed.
//
//   apmaster-copy DATA_FOLDER LOCK_FOLDER|- ARGUMENT
//
// Commands: "show N" (look up vendor number N), "modify", "set I TEXT" (field I), "notes TEXT"
// (opens the notes and types TEXT over them), "save", "timed-save" (a save that prints how long
// it took, in milliseconds, and on the files how long it waited for the vendor file's write
// lock, in microseconds), "cancel", "help" (the Help button),
// "unpaid" (the unpaid list; prints its row count), "get I", "menu NAME" (runs the menu entry
// NAME), "wait FILE" (keeps the window and the clipboard answering until FILE is in the data
// folder, for up to 30 s), "yes" and "no" (the answer to the next Yes/No question), "input TEXT"
// (the answer to the next input box), "quit". Every command's answer ends with the line "done";
// a dialog prints "dialog|TITLE|TEXT" (line feeds as "\n"). The copy prints "started" or
// "refused CODE".
#include "app/SingleInstance.h"
#include "support/Module.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSqlDriver>
#include <QTableView>
#include <QTest>

#include <sqlite3.h>

#include <chrono>
#include <cstdio>
#include <iostream>
#include <string>
#include <utility>

#include "lists/InvoiceLists.h"
#include "lists/RecordSourceModel.h"

namespace {

void say(const QString &line)
{
    std::cout << line.toStdString() << std::endl;
}

// How long a connection to a file waited for the file's write lock: the time its statements
// opening a write transaction took, as the engine reports their start and end.
class LockWaits {
public:
    // False when the connection is not to a file.
    bool watch(QSqlDatabase db)
    {
        const QVariant handle = db.driver()->handle();
        if (qstrcmp(handle.typeName(), "sqlite3*") != 0)
            return false;
        sqlite3_trace_v2(*static_cast<sqlite3 *const *>(handle.data()),
                         SQLITE_TRACE_STMT | SQLITE_TRACE_PROFILE, &LockWaits::traced, this);
        return true;
    }
    // The waits since the last call, in microseconds.
    qint64 takeUsecs() { return std::exchange(m_usecs, 0); }

private:
    static int traced(unsigned event, void *self, void *statement, void *)
    {
        auto *w = static_cast<LockWaits *>(self);
        const char *sql = sqlite3_sql(static_cast<sqlite3_stmt *>(statement));
        if (!sql || qstrnicmp(sql, "begin immediate", 15) != 0)
            return 0;
        const auto now = std::chrono::steady_clock::now();
        if (event == SQLITE_TRACE_STMT)
            w->m_since = now;
        else
            w->m_usecs +=
                std::chrono::duration_cast<std::chrono::microseconds>(now - w->m_since).count();
        return 0;
    }

    std::chrono::steady_clock::time_point m_since;
    qint64 m_usecs = 0;
};

class Driver {
public:
    // The waits outlive the module, whose connections report to them to the end.
    Driver(Module &module, LockWaits &waits) : m(module), m_waits(waits) {}

    void run(const QString &line)
    {
        const QString command = line.section(QLatin1Char(' '), 0, 0);
        const QString rest = line.section(QLatin1Char(' '), 1);
        const auto &c = m.window->controls();
        if (command == QLatin1String("show")) {
            c.cmdlookup->click();
            c.Option1[0]->setChecked(true);
            c.lookupinput->setText(rest);
            c.cmdgo->click();
        } else if (command == QLatin1String("modify")) {
            c.cmdmodify->click();
        } else if (command == QLatin1String("set")) {
            const int index = rest.section(QLatin1Char(' '), 0, 0).toInt();
            c.Text1[index]->setText(rest.section(QLatin1Char(' '), 1));
        } else if (command == QLatin1String("notes")) {
            c.cmdnotes->click();
            c.notes->setFocus();
            c.notes->selectAll();
            QTest::keyClicks(c.notes, rest);
        } else if (command == QLatin1String("save")) {
            c.cmdsave->click();
            say(c.fralookup->isVisible() ? QStringLiteral("mode lookup")
                                         : QStringLiteral("mode edit"));
        } else if (command == QLatin1String("timed-save")) {
            const bool onFile = m_waits.watch(m.databases.open(QStringLiteral("ap.mdb")));
            m_waits.takeUsecs();
            QElapsedTimer took;
            took.start();
            c.cmdsave->click();
            say(QStringLiteral("took %1").arg(took.elapsed()));
            if (onFile)
                say(QStringLiteral("waited %1").arg(m_waits.takeUsecs()));
            say(c.fralookup->isVisible() ? QStringLiteral("mode lookup")
                                         : QStringLiteral("mode edit"));
        } else if (command == QLatin1String("cancel")) {
            c.cmdcancel->click();
        } else if (command == QLatin1String("help")) {
            c.cmdhelp->click();
        } else if (command == QLatin1String("menu")) {
            if (QAction *entry = m.window->action(rest))
                entry->trigger();
            else
                say(QStringLiteral("no menu entry ") + rest);
        } else if (command == QLatin1String("yes") || command == QLatin1String("no")) {
            m.dialogs.yesNoAnswers.push_back(command == QLatin1String("yes") ? Dialogs::Yes
                                                                             : Dialogs::No);
        } else if (command == QLatin1String("input")) {
            m.dialogs.inputAnswers.push_back(rest);
        } else if (command == QLatin1String("wait")) {
            const bool there = QTest::qWaitFor([&] { return QFile::exists(rest); }, 30000);
            say(there ? QStringLiteral("found") : QStringLiteral("not found"));
        } else if (command == QLatin1String("unpaid")) {
            c.cmdunpaid->click();
            m.window->lists().invoiceModel().fetchMore({});
            say(QStringLiteral("rows %1").arg(c.grid1->model()->rowCount()));
        } else if (command == QLatin1String("get")) {
            say(QStringLiteral("value ") + c.Text1[rest.toInt()]->text());
        }
        QCoreApplication::processEvents();
        printDialogs();
        say(QStringLiteral("done"));
    }

    void printDialogs()
    {
        for (; m_printed < m.dialogs.shown.size(); ++m_printed) {
            const FakeDialogs::Shown &d = m.dialogs.shown[m_printed];
            QString text = d.text;
            text.replace(QLatin1Char('\r'), QStringLiteral("\\r"));
            text.replace(QLatin1Char('\n'), QStringLiteral("\\n"));
            say(QStringLiteral("dialog|") + d.title + QLatin1Char('|') + text);
        }
    }

private:
    Module &m;
    size_t m_printed = 0;
    LockWaits &m_waits;
};

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    if (argc != 4) {
        std::fprintf(stderr, "usage: apmaster-copy DATA_FOLDER LOCK_FOLDER|- ARGUMENT\n");
        return 64;
    }
    QDir::setCurrent(QString::fromLocal8Bit(argv[1]));
    const QString locks = QString::fromLocal8Bit(argv[2]);
    LockWaits waits;
    Module module(locks == QLatin1String("-") ? SingleInstance::defaultFolder() : locks);
    Driver driver(module, waits);
    if (const std::optional<int> refused = module.start(QString::fromLocal8Bit(argv[3]))) {
        driver.printDialogs();
        say(QStringLiteral("refused %1").arg(*refused));
        return *refused;
    }
    say(QStringLiteral("started"));
    std::string line;
    while (std::getline(std::cin, line)) {
        const QString command = QString::fromStdString(line).trimmed();
        if (command == QLatin1String("quit"))
            break;
        driver.run(command);
    }
    module.window->close();
    QCoreApplication::processEvents();
    driver.printDialogs();
    say(QStringLiteral("closed"));
    return 0;
}
