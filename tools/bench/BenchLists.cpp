// Times the invoice and check lists of the real vendor window on a company's data folder:
//   apmaster-bench-lists [--runs N] [--user NAME] [--make] [--screenshot FILE] DIR
// DIR becomes the current folder, as it is for the module. --make first writes a small company
// there (see BenchCompany.h).

#include "BenchCompany.h"
#include "ScriptedDialogs.h"

#include "app/ModuleAssembly.h"
#include "data/Databases.h"
#include "data/DbError.h"
#include "data/RecordSource.h"
#include "lists/InvoiceLists.h"
#include "vendorscreen/VendorWindow.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QSqlQuery>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

struct Figure {
    double median = 0;
    double low = 0;
    double high = 0;
};

// Runs `prepare` (not timed), then times `work` up to the moment its rows are painted.
Figure measure(int runs, const std::function<void()> &prepare, const std::function<void()> &work,
               QWidget *painted)
{
    std::vector<double> msecs;
    for (int i = 0; i < runs; ++i) {
        prepare();
        QCoreApplication::processEvents();
        QElapsedTimer timer;
        timer.start();
        work();
        QCoreApplication::processEvents();
        painted->repaint();
        msecs.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(msecs.begin(), msecs.end());
    return {msecs[msecs.size() / 2], msecs.front(), msecs.back()};
}

void report(const char *what, const Figure &f, int runs)
{
    std::printf("%-28s %8.2f ms  (median of %d; %.2f to %.2f)\n", what, f.median, runs, f.low,
                f.high);
}

QString firstUser(Databases &dbs)
{
    return dbs
        .scalar(QStringLiteral("user.mdb"),
                QStringLiteral("select username from staff order by aplevel desc"))
        .toString();
}

void clickHeader(QTableView *grid, int section)
{
    QHeaderView *header = grid->horizontalHeader();
    const int x = header->sectionViewportPosition(section) + header->sectionSize(section) / 2;
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, QPoint(x, header->height() / 2));
}

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Times the vendor window's invoice and check lists on a data folder."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("DIR"), QStringLiteral("The data folder."));
    parser.addOption({QStringLiteral("runs"), QStringLiteral("Runs of each step (7)."),
                      QStringLiteral("N"), QStringLiteral("7")});
    parser.addOption({QStringLiteral("user"),
                      QStringLiteral("Staff user to start as (the one with the highest level)."),
                      QStringLiteral("NAME")});
    parser.addOption({QStringLiteral("make"),
                      QStringLiteral("First write a company with a 20,000-invoice vendor.")});
    parser.addOption({QStringLiteral("screenshot"),
                      QStringLiteral("At the end, save the window with the unpaid list and the "
                                     "split panel open as a PNG file."),
                      QStringLiteral("FILE")});
    parser.process(app);
    if (parser.positionalArguments().size() != 1) {
        std::fprintf(stderr, "%s", qPrintable(parser.helpText()));
        return 2;
    }
    const QString folder = parser.positionalArguments().constFirst();
    // Relative to where the program was started, not to the data folder.
    QString screenshot = parser.value(QStringLiteral("screenshot"));
    if (!screenshot.isEmpty())
        screenshot = QDir::current().absoluteFilePath(screenshot);
    if (parser.isSet(QStringLiteral("make")))
        QDir().mkpath(folder);
    if (!QDir::setCurrent(folder)) {
        std::fprintf(stderr, "No data folder %s.\n", qPrintable(folder));
        return 2;
    }
    const int runs = std::max(1, parser.value(QStringLiteral("runs")).toInt());

    try {
        if (parser.isSet(QStringLiteral("make")))
            BenchCompany::make(20000);

        ScriptedDialogs dialogs;
        const QTemporaryDir lockFolder;
        ModuleAssembly module({.dialogs = &dialogs, .lockFolder = lockFolder.path()});
        VendorWindow &window = module.window();
        Databases &databases = module.databases();

        QString user = parser.value(QStringLiteral("user"));
        if (user.isEmpty())
            user = firstUser(databases);
        QElapsedTimer started;
        started.start();
        if (const std::optional<int> refused = module.start(QStringLiteral("VDR99") + user)) {
            std::fprintf(stderr, "Start-up refused (%d).\n", *refused);
            return 1;
        }
        std::printf("start-up                     %8.2f ms\n",
                    static_cast<double>(started.nsecsElapsed()) / 1e6);

        QSqlQuery most = databases.select(QStringLiteral("ap.mdb"),
                                          QStringLiteral("select vendnumber, count(*) as n from "
                                                         "invoices group by vendnumber "
                                                         "order by n desc limit 1"));
        if (!most.next()) {
            std::fprintf(stderr, "The folder has no invoices.\n");
            return 1;
        }
        const qlonglong vendor = most.value(0).toLongLong();
        const qlonglong invoices = most.value(1).toLongLong();
        most.finish();
        std::printf("vendor %lld with %lld invoices\n", vendor, invoices);

        const VendorWindow::Controls &c = window.controls();
        c.fralookup->hide();
        c.Text1[0]->setText(QString::number(vendor));
        InvoiceLists &lists = window.lists();
        const auto nothing = [] {};

        report("unpaid list, first rows",
               measure(
                   runs, nothing, [&] { c.cmdunpaid->click(); }, c.grid1->viewport()),
               runs);
        std::printf("  rows read: %d of the list, %d in the grid\n",
                    window.datainvoice().fetchedCount(), c.grid1->model()->rowCount());
        report("paid list, first rows",
               measure(
                   runs, nothing, [&] { c.cmdpaid->click(); }, c.grid1->viewport()),
               runs);
        report("checks list, first rows",
               measure(
                   runs, nothing, [&] { c.cmdchecks->click(); }, c.grid2->viewport()),
               runs);
        report("re-sort unpaid by amount",
               measure(
                   runs, [&] { c.cmdunpaid->click(); }, [&] { clickHeader(c.grid1, 3); },
                   c.grid1->viewport()),
               runs);
        report("open the split panel",
               measure(
                   runs,
                   [&] {
                       lists.showUnpaid();
                       c.grid1->selectRow(std::min(3, c.grid1->model()->rowCount() - 1));
                   },
                   [&] { c.cmdsplit->click(); }, c.frasplit),
               runs);
        if (!screenshot.isEmpty()) {
            lists.showUnpaid();
            c.grid1->selectRow(std::min(3, c.grid1->model()->rowCount() - 1));
            c.cmdsplit->click();
            QCoreApplication::processEvents();
            if (!window.grab().save(screenshot))
                std::fprintf(stderr, "Could not write %s.\n", qPrintable(screenshot));
        }
        window.close();
        if (!dialogs.messages.isEmpty())
            return 1;
    } catch (const DbError &error) {
        std::fprintf(stderr, "Database error %d: %s\n", error.code(), qPrintable(error.text()));
        return 1;
    }
    return 0;
}
