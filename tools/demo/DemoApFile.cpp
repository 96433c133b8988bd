#include "DemoApFile.h"

#include "BulkFile.h"
#include "DemoCalendar.h"
#include "DemoInvoices.h"
#include "DemoLedger.h"
#include "DemoRandom.h"
#include "DemoVendors.h"
#include "DemoWords.h"

#include <QDir>

#include <algorithm>

namespace Demo {
namespace {

constexpr int firstCheckNumber = 1001;
constexpr int rowsPerTransaction = 100000;
constexpr int splitLines = 10;
constexpr std::size_t noInvoice = std::size_t(-1);

const QString apFile = QStringLiteral("ap.mdb");

// What the later steps need to know of a vendor once its row is written.
struct VendorKey {
    int number;
    QString name;
    double glAccount;
    int trade;
};

struct CheckRow {
    int position = 0; // of the vendor
    int run = 0;
    int count = 0; // invoices paid
    std::size_t first = noInvoice;
    qint64 cents = 0;
};

QVariant money(qint64 cents)
{
    return double(cents) / 100.0;
}

QStringList vendorColumns()
{
    return {"vendnumber",    "vendname",       "vendaddr1",      "vendaddr2", "vendcity",
            "vendstate",     "vendzip",        "vendphone",      "vendfax",   "vendcontact",
            "vcontact2name", "vcontact2phone", "vcontact2email", "email",     "cell_other",
            "vendacct",      "vendterms",      "vendglacct",     "vendtaxid", "vend1099type",
            "vendytd",       "vendbalcurrent", "vendbal60",      "vendbal90", "pnet"};
}

QStringList invoiceColumns()
{
    QStringList columns = {"vendnumber",     "invnumber",    "invdate",       "invduedate",
                           "invglperiod",    "invproduct",   "invamount",     "invstatus",
                           "invchecknumber", "invcheckdate", "invcheckamount"};
    for (int i = 1; i <= splitLines; ++i)
        columns << QStringLiteral("splitgl%1").arg(i);
    for (int i = 1; i <= splitLines; ++i)
        columns << QStringLiteral("splitamt%1").arg(i);
    return columns;
}

QStringList numberedColumns(const QString &key, const QString &stem)
{
    QStringList columns = {key};
    for (int i = 1; i <= 30; ++i)
        columns << stem + QString::number(i);
    return columns;
}

void insertVendor(Insert &row, const Vendor &v, const InvoicePlan &plan)
{
    const qint64 ytd = v.ytdTarget >= 0 ? v.ytdTarget : plan.ytdCents;
    const qint64 current = v.currentTarget >= 0 ? v.currentTarget : plan.currentCents;
    row << v.number << v.name << v.addr1 << textOrNull(v.addr2) << v.city << v.state << v.zip
        << v.phone << textOrNull(v.fax) << v.contact << textOrNull(v.contact2Name)
        << textOrNull(v.contact2Phone) << textOrNull(v.contact2Email) << textOrNull(v.email)
        << textOrNull(v.cellOther) << v.account << v.terms << v.glAccount << v.taxId << v.form1099
        << money(ytd) << money(current) << money(plan.bal60Cents) << money(plan.bal90Cents)
        << QStringLiteral("");
    row.exec();
}

QString usDate(const Calendar &calendar, int day)
{
    const int date = calendar.dateOf(day);
    return QStringLiteral("%1/%2/%3")
        .arg(date / 100 % 100, 2, 10, QLatin1Char('0'))
        .arg(date % 100, 2, 10, QLatin1Char('0'))
        .arg(date / 10000);
}

// A third of the vendors have notes: a few lines, some dated.
QString notesFor(const Vendor &v, const Calendar &calendar, Random &r)
{
    const QStringList &lines = Words::noteLines();
    QStringList chosen;
    const int count = r.between(1, 4);
    std::vector<int> days;
    for (int i = 0; i < count; ++i)
        days.push_back(r.between(calendar.firstDay(), calendar.lastDay()));
    std::sort(days.begin(), days.end());
    std::vector<int> used;
    for (int i = 0; i < count; ++i) {
        const int which = r.below(int(lines.size()));
        if (std::find(used.begin(), used.end(), which) != used.end())
            continue;
        used.push_back(which);
        QString line = lines.at(which);
        const QString person = v.contact.section(QLatin1Char(' '), 0, 0);
        line.replace(QStringLiteral("%1"), usDate(calendar, days[std::size_t(i)]));
        line.replace(QStringLiteral("%2"),
                     person.isEmpty() ? QStringLiteral("the office") : person);
        chosen << line;
    }
    return chosen.join(QLatin1Char('\n'));
}

QStringList miscValues(const Vendor &v, const Calendar &calendar, Random &r)
{
    const QString yes = QStringLiteral("Yes");
    const QString no = QStringLiteral("No");
    QStringList values = {
        (r.chance(0.5) ? QStringLiteral("06/30/%1") : QStringLiteral("12/31/%1"))
            .arg(calendar.year() + 1),
        v.taxId.isEmpty() ? no : yes,
        r.chance(0.3) ? yes : no,
        r.chance(0.4) ? QStringLiteral("12/31/%1").arg(calendar.year() + r.between(0, 2)) : "",
        r.chance(0.15) ? yes : no,
        r.pick({"Mon/Wed/Fri", "Tue/Thu", "Daily", "On request", ""}),
        v.contact,
        r.chance(0.3) ? QStringLiteral("%1%").arg(r.between(2, 10)) : ""};
    while (values.size() < 30)
        values << QStringLiteral("");
    return values;
}

void writeMiscInfo(const BulkFile &file)
{
    QSqlQuery(file.database())
        .exec(QStringLiteral("delete from miscinfo")); // the row a new file starts with
    Insert row(file, QStringLiteral("miscinfo"), numberedColumns("miscid", "miscdesc"));
    const QStringList descriptions = {"Insurance expiry", "W-9 on file",    "Preferred vendor",
                                      "Contract ends",    "Minority-owned", "Delivery days",
                                      "Sales rep",        "Discount %"};
    row << 1;
    for (int i = 0; i < 30; ++i)
        row << (i < descriptions.size() ? descriptions.at(i) : QStringLiteral(""));
    row.exec();
}

std::vector<int> runsOf(const InvoicePlan &plan)
{
    std::vector<int> runs;
    for (const PlannedInvoice &inv : plan.invoices)
        if (inv.paid())
            runs.push_back(inv.run);
    std::sort(runs.begin(), runs.end());
    runs.erase(std::unique(runs.begin(), runs.end()), runs.end());
    return runs;
}

} // namespace

ApSummary writeAp(const QDir &folder, int vendorCount, int invoiceCount, int busiestCount,
                  std::uint64_t seed, const Calendar &calendar)
{
    ApSummary summary;
    Random numbering = Random::stream(seed, 1);
    const std::vector<int> numbers = Vendors::numbers(vendorCount, numbering);
    std::vector<bool> needsOne(static_cast<std::size_t>(vendorCount));
    for (int i = 0; i < vendorCount; ++i)
        needsOne[std::size_t(i)] = Vendors::hasTargets(i, vendorCount);
    Random sharing = Random::stream(seed, 2);
    const std::vector<int> counts = Invoices::counts(invoiceCount, busiestCount, needsOne, sharing);

    BulkFile file(folder, apFile);
    for (const char *table : {"vendors", "invoices", "checks", "vendnotes", "miscdata"})
        file.dropIndexes(QString::fromLatin1(table));

    // Vendors, with their notes and user-defined values; the invoices are planned on the way
    // because the vendor's totals come from them.
    std::vector<InvoicePlan> plans(static_cast<std::size_t>(vendorCount));
    std::vector<VendorKey> keys;
    keys.reserve(std::size_t(vendorCount));
    const int nullNotesPosition = std::min(2, vendorCount - 1);
    file.begin();
    {
        Insert vendorRow(file, QStringLiteral("vendors"), vendorColumns());
        Insert noteRow(file, QStringLiteral("vendnotes"), {"vendnumber", "notes"});
        Insert miscRow(file, QStringLiteral("miscdata"), numberedColumns("acctid", "miscvalue"));
        for (int i = 0; i < vendorCount; ++i) {
            const Vendor v = Vendors::make(i, numbers[std::size_t(i)], vendorCount, seed);
            plans[std::size_t(i)] = Invoices::plan(v, i, counts[std::size_t(i)], calendar, seed);
            insertVendor(vendorRow, v, plans[std::size_t(i)]);
            keys.push_back({v.number, v.name, v.glAccount, v.trade});

            Random extra = Random::stream(seed, (std::uint64_t(4) << 40) + std::uint64_t(i));
            if (i == nullNotesPosition) {
                noteRow << v.number << QVariant();
                noteRow.exec();
                ++summary.notes;
            } else if (extra.below(3) == 0) {
                noteRow << v.number << notesFor(v, calendar, extra);
                noteRow.exec();
                ++summary.notes;
            }
            if (extra.chance(0.2)) {
                miscRow << v.number;
                for (const QString &value : miscValues(v, calendar, extra))
                    miscRow << value;
                miscRow.exec();
                ++summary.userDefined;
            }
        }
        writeMiscInfo(file);
    }
    file.commit();

    // Checks are numbered by check run, and within a run by vendor number.
    std::vector<int> runStart(std::size_t(calendar.runCount()) + 1, 0);
    for (const InvoicePlan &plan : plans)
        for (const int run : runsOf(plan))
            ++runStart[std::size_t(run) + 1];
    for (std::size_t run = 1; run < runStart.size(); ++run)
        runStart[run] += runStart[run - 1];
    std::vector<int> cursor(std::size_t(calendar.runCount()), 0);
    std::vector<CheckRow> checks(std::size_t(runStart.back()));

    const std::vector<double> expenseAccounts = Ledger::expenseAccounts();
    file.begin();
    {
        Insert invoiceRow(file, QStringLiteral("invoices"), invoiceColumns());
        int rows = 0;
        for (int i = 0; i < vendorCount; ++i) {
            const InvoicePlan &plan = plans[std::size_t(i)];
            const VendorKey &key = keys[std::size_t(i)];
            const Trade &trade = Words::trades()[std::size_t(key.trade)];
            std::vector<std::pair<int, int>> checkOfRun; // (run, check number), by run
            for (const int run : runsOf(plan)) {
                const int number =
                    firstCheckNumber + runStart[std::size_t(run)] + cursor[std::size_t(run)]++;
                checkOfRun.emplace_back(run, number);
                CheckRow &check = checks[std::size_t(number - firstCheckNumber)];
                check.position = i;
                check.run = run;
            }
            Random details = Random::stream(seed, (std::uint64_t(3) << 40) + std::uint64_t(i));
            for (std::size_t j = 0; j < plan.invoices.size(); ++j) {
                const PlannedInvoice &inv = plan.invoices[j];
                int checkNumber = 0;
                int checkDate = 0;
                if (inv.paid()) {
                    checkNumber = std::lower_bound(checkOfRun.begin(), checkOfRun.end(),
                                                   std::make_pair(inv.run, 0))
                                      ->second;
                    checkDate = calendar.dateOf(calendar.runDay(inv.run));
                    CheckRow &check = checks[std::size_t(checkNumber - firstCheckNumber)];
                    ++check.count;
                    check.cents += inv.cents;
                    if (check.first == noInvoice)
                        check.first = j;
                    ++summary.paidInvoices;
                } else if (inv.open()) {
                    ++summary.openInvoices;
                } else {
                    ++summary.heldInvoices;
                }
                const int date = calendar.dateOf(inv.day);
                invoiceRow << key.number << Invoices::invoiceNumber(plan, inv, calendar) << date
                           << calendar.dateOf(inv.day + 30) << date / 100 % 100
                           << details.pick(trade.products) << money(inv.cents) << inv.status
                           << checkNumber << checkDate << money(inv.paid() ? inv.cents : 0);

                std::vector<double> accounts = {key.glAccount};
                std::vector<qint64> amounts = {inv.cents};
                if (details.chance(0.2) && inv.cents >= 5) {
                    const int lines = details.between(2, 5);
                    amounts = Invoices::split(inv.cents, lines, details);
                    while (int(accounts.size()) < lines) {
                        const double other = expenseAccounts[std::size_t(
                            details.below(int(expenseAccounts.size())))];
                        if (std::find(accounts.begin(), accounts.end(), other) == accounts.end())
                            accounts.push_back(other);
                    }
                }
                for (std::size_t line = 0; line < splitLines; ++line)
                    invoiceRow << (line < accounts.size() ? accounts[line] : 0.0);
                for (std::size_t line = 0; line < splitLines; ++line)
                    invoiceRow << money(line < amounts.size() ? amounts[line] : 0);
                invoiceRow.exec();
                if (++rows % rowsPerTransaction == 0) {
                    file.commit();
                    file.begin();
                }
            }
            summary.invoices += qint64(plan.invoices.size());
        }
    }
    file.commit();

    file.begin();
    {
        Insert checkRow(file, QStringLiteral("checks"),
                        {"chkpayeenum", "chkpayeename", "chknum", "chkdate", "chkamount", "chkref",
                         "chkstatus"});
        for (std::size_t n = 0; n < checks.size(); ++n) {
            const CheckRow &check = checks[n];
            const InvoicePlan &plan = plans[std::size_t(check.position)];
            const VendorKey &key = keys[std::size_t(check.position)];
            const int day = calendar.runDay(check.run);
            const QString reference =
                check.count == 1
                    ? Invoices::invoiceNumber(plan, plan.invoices[check.first], calendar)
                    : QStringLiteral("%1 invoices").arg(check.count);
            checkRow << key.number << key.name << int(n) + firstCheckNumber << calendar.dateOf(day)
                     << money(check.cents) << reference << (day <= calendar.lastDay() - 30 ? 2 : 1);
            checkRow.exec();
        }
    }
    file.commit();

    for (const char *table : {"vendors", "invoices", "checks", "vendnotes", "miscdata"})
        file.createIndexes(QString::fromLatin1(table));
    file.finish();

    summary.vendors = vendorCount;
    summary.firstVendor = numbers.empty() ? 0 : numbers.front();
    summary.lastVendor = numbers.empty() ? 0 : numbers.back();
    summary.checks = int(checks.size());
    summary.firstCheck = checks.empty() ? 0 : firstCheckNumber;
    summary.lastCheck = checks.empty() ? 0 : firstCheckNumber + int(checks.size()) - 1;
    if (busiestCount >= 0 && vendorCount > 0) {
        summary.busiestVendor = numbers.front();
        summary.busiestInvoices = counts.front();
    }
    return summary;
}

} // namespace Demo
