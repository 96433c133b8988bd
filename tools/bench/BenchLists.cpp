// Times the invoice and check lists of the real vendor window on a company's data folder, for
// the vendor with the most invoices: each list's first rows, a re-sort, the split panel, and
// reaching the last row of the unpaid list by Ctrl+End and by the scroll bar:
//   apmaster-bench-lists [--runs N] [--user NAME] [--make] [--screenshot FILE] DIR
// DIR becomes the current folder, as it is for the module. --make first writes a small company
// there (see BenchCompany.h).

#include "BenchCompany.h"
#include "ScriptedDialogs.h"
#include "StepTimer.h"

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
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSqlQuery>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cstdio>

namespace {

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
    QCoreApplication::setApplicationVersion(QStringLiteral(APMASTER_VERSION));
    parser.addHelpOption();
    parser.addVersionOption();
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
        StepTimer timer(runs);
        QElapsedTimer started;
        started.start();
        if (const std::optional<int> refused = module.start(QStringLiteral("VDR99") + user)) {
            std::fprintf(stderr, "Start-up refused (%d).\n", *refused);
            return 1;
        }
        StepTimer::single("start-up", static_cast<double>(started.nsecsElapsed()) / 1e6);
        StepTimer::memory("after start-up");

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
        StepTimer::note(QStringLiteral("engine: %1, vendor %2 with %3 invoices")
                            .arg(databases.dialect().name())
                            .arg(vendor)
                            .arg(invoices));

        const VendorWindow::Controls &c = window.controls();
        c.fralookup->hide();
        c.Text1[0]->setText(QString::number(vendor));
        InvoiceLists &lists = window.lists();
        QTableView *grid = c.grid1;
        const auto nothing = [] {};

        timer.step(
            "unpaid list, first rows", nothing, [&] { c.cmdunpaid->click(); }, grid->viewport());
        StepTimer::note(QStringLiteral("rows in the grid: %1").arg(grid->model()->rowCount()));
        timer.step(
            "paid list, first rows", nothing, [&] { c.cmdpaid->click(); }, grid->viewport());
        timer.step(
            "checks list, first rows", nothing, [&] { c.cmdchecks->click(); }, c.grid2->viewport());
        timer.step(
            "re-sort unpaid by amount", [&] { c.cmdunpaid->click(); },
            [&] { clickHeader(grid, 3); }, grid->viewport());
        timer.step(
            "open the split panel",
            [&] {
                lists.showUnpaid();
                grid->selectRow(std::min(3, grid->model()->rowCount() - 1));
            },
            [&] { c.cmdsplit->click(); }, c.frasplit);

        // The last row of the longer invoice list, by the keyboard and by the scroll bar.
        const auto count = [&](const char *filter) {
            return databases
                .scalar(QStringLiteral("ap.mdb"),
                        QStringLiteral("select count(*) from invoices where vendnumber = %1 and %2")
                            .arg(vendor)
                            .arg(QLatin1String(filter)))
                .toLongLong();
        };
        const long long unpaidRows = count("invstatus > 0 and invstatus <= 3");
        const long long paidRows = count("invchecknumber > 0");
        const bool paidLonger = paidRows > unpaidRows;
        // From the top: a list shown again keeps its place, and would read its last rows there.
        const auto showLongList = [&] {
            grid->scrollToTop();
            if (paidLonger)
                lists.showPaid();
            else
                lists.showUnpaid();
        };
        const QString longList = QStringLiteral("the %1 list (%2 rows)")
                                     .arg(paidLonger ? "paid" : "unpaid")
                                     .arg(std::max(paidRows, unpaidRows));
        const auto atTop = [&] {
            showLongList();
            grid->setFocus();
            grid->setCurrentIndex(grid->model()->index(0, 0));
        };
        const auto onLastRow = [&] {
            QAbstractItemModel *model = grid->model();
            return !model->canFetchMore({}) && grid->currentIndex().row() == model->rowCount() - 1;
        };
        const auto lastRowShown = [&] {
            QAbstractItemModel *model = grid->model();
            const int last = model->rowCount() - 1;
            return !model->canFetchMore({}) && last >= 0 &&
                   grid->visualRect(model->index(last, 0)).bottom() <= grid->viewport()->height();
        };
        const auto ctrlEnd = [&] { QTest::keyClick(grid, Qt::Key_End, Qt::ControlModifier); };
        timer.step(qPrintable(QStringLiteral("Ctrl+End in ") + longList), atTop, ctrlEnd,
                   grid->viewport());
        StepTimer::memory("before reaching the list's end");
        atTop();
        QElapsedTimer toEnd;
        toEnd.start();
        int presses = 0;
        while (!onLastRow() && presses < 2000) {
            ctrlEnd();
            QCoreApplication::processEvents();
            ++presses;
        }
        grid->viewport()->repaint();
        StepTimer::single("reach the last row with Ctrl+End",
                          static_cast<double>(toEnd.nsecsElapsed()) / 1e6,
                          QStringLiteral("(%1 presses%2; %3 rows)")
                              .arg(presses)
                              .arg(onLastRow() ? "" : ", not reached")
                              .arg(grid->model()->rowCount()));
        StepTimer::memory("after Ctrl+End to the list's end");
        QScrollBar *bar = grid->verticalScrollBar();
        timer.step(
            "scroll bar dragged to the bottom", showLongList,
            [&] { bar->setValue(bar->maximum()); }, grid->viewport());
        StepTimer::note(lastRowShown() ? QStringLiteral("the last row is shown")
                                       : QStringLiteral("the last row is not shown yet"));
        StepTimer::memory("at the end");
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
