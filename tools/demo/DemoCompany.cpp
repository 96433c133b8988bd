#include "DemoCompany.h"

#include "BulkFile.h"
#include "DemoCalendar.h"
#include "DemoError.h"
#include "DemoLayouts.h"
#include "DemoSuiteFiles.h"

#include <QDate>
#include <QDir>
#include <QElapsedTimer>

#include <algorithm>

namespace Demo {

Summary generate(const Options &options)
{
    QElapsedTimer timer;
    timer.start();
    if (options.folder.isEmpty())
        throw Error(QStringLiteral("No data folder given."));
    if (options.vendors < 0)
        throw Error(QStringLiteral("The number of vendors cannot be negative."));
    const int year = options.year > 0 ? options.year : QDate::currentDate().year();
    if (year < 2000 || year > 9998)
        throw Error(QStringLiteral("The year must lie between 2000 and 9998."));
    if (options.bigVendor >= 0 && options.vendors < 1)
        throw Error(QStringLiteral("A big vendor needs at least one vendor."));
    const int others = std::max(0, options.vendors - (options.bigVendor >= 0 ? 1 : 0));
    const int invoices = options.invoices >= 0
                             ? options.invoices
                             : std::max(0, options.bigVendor) + others * invoicesPerVendor;
    if (options.bigVendor > invoices)
        throw Error(QStringLiteral("The big vendor's %1 invoices are more than the %2 in all.")
                        .arg(options.bigVendor)
                        .arg(invoices));
    if (!QDir().mkpath(options.folder))
        throw Error(QStringLiteral("Could not create the folder %1.").arg(options.folder));
    const QDir folder(QDir(options.folder).absolutePath());
    for (const char *name :
         {"config.mdb", "user.mdb", "gl.mdb", "ar.mdb", "emp.mdb", "master.mdb", "ap.mdb"}) {
        const QString path = folder.absoluteFilePath(QString::fromLatin1(name));
        if (!BulkFile::canReplace(path))
            throw Error(
                QStringLiteral("%1 is not an SQLite database; nothing was written.").arg(path));
    }

    Summary summary;
    summary.folder = folder.absolutePath();
    summary.year = year;
    summary.files << QStringLiteral("config.mdb");
    writeConfig(folder);
    summary.files << QStringLiteral("user.mdb");
    summary.staff = writeStaff(folder);
    summary.files << QStringLiteral("gl.mdb");
    summary.accounts = writeLedger(folder);
    summary.files << QStringLiteral("ar.mdb");
    summary.arAccounts = writeArAccounts(folder);
    summary.files << QStringLiteral("emp.mdb");
    summary.employees = writeEmployees(folder);
    summary.files << QStringLiteral("master.mdb");
    summary.members = writeMembers(folder);
    summary.files << QStringLiteral("ap.mdb");
    const int busiest = options.bigVendor >= 0               ? options.bigVendor
                        : invoices >= busyVendorFromInvoices ? busyVendorInvoices
                                                             : -1;
    summary.ap = writeAp(folder, options.vendors, invoices, busiest, options.seed, Calendar(year));
    summary.files << Layouts::write(folder, year);
    summary.files << writeVendorHelp(folder);
    summary.files << writeStaffChoice(folder);
    summary.seconds = double(timer.elapsed()) / 1000.0;
    return summary;
}

QString describe(const Summary &s)
{
    const ApSummary &ap = s.ap;
    QString text;
    text += QStringLiteral("Demo company written to %1 (books to 31 December %2)\n")
                .arg(s.folder)
                .arg(s.year);
    text += QStringLiteral("  config.mdb   settings and company\n");
    text +=
        QStringLiteral("  user.mdb     %1 staff: %2\n").arg(s.staff).arg(staffNames().join(", "));
    text += QStringLiteral("  gl.mdb       %1 accounts\n").arg(s.accounts);
    text += QStringLiteral("  ar.mdb       %1 accounts\n").arg(s.arAccounts);
    text += QStringLiteral("  emp.mdb      %1 employees\n").arg(s.employees);
    text += QStringLiteral("  master.mdb   %1 members\n").arg(s.members);
    text += QStringLiteral("  ap.mdb       %1 vendors (numbers %2 to %3)\n")
                .arg(ap.vendors)
                .arg(ap.firstVendor)
                .arg(ap.lastVendor);
    text += QStringLiteral("               %1 invoices (%2 open, %3 paid, %4 on hold)\n")
                .arg(ap.invoices)
                .arg(ap.openInvoices)
                .arg(ap.paidInvoices)
                .arg(ap.heldInvoices);
    if (ap.checks > 0)
        text += QStringLiteral("               %1 checks (numbers %2 to %3)\n")
                    .arg(ap.checks)
                    .arg(ap.firstCheck)
                    .arg(ap.lastCheck);
    else
        text += QStringLiteral("               no checks\n");
    text += QStringLiteral("               %1 vendor notes, %2 vendors with user-defined data\n")
                .arg(ap.notes)
                .arg(ap.userDefined);
    text += QStringLiteral("  1099 layouts 1099misc.lof 1099int.lof 1099div.lof 1099nec.lof\n");
    text += QStringLiteral("  help text    vendor1.txt\n");
    if (ap.busiestVendor > 0)
        text += QStringLiteral("Vendor %1 has %2 invoices\n")
                    .arg(ap.busiestVendor)
                    .arg(ap.busiestInvoices);
    text += QStringLiteral("Done in %1 s\n").arg(s.seconds, 0, 'f', 1);
    return text;
}

} // namespace Demo
