#include "DemoInvoices.h"

#include "DemoCalendar.h"
#include "DemoRandom.h"
#include "DemoVendors.h"
#include "DemoWords.h"

#include <algorithm>
#include <cmath>

namespace Demo::Invoices {
namespace {

constexpr int currentAge = 60; // open invoices younger than this are current
constexpr int oldAge = 90;     // and from this age on they are 90+

int openStatus(Random &r)
{
    const int roll = r.below(10);
    return roll < 7 ? 1 : roll < 9 ? 2 : 3;
}

qint64 amountFor(const Trade &trade, Random &r)
{
    const double u = r.unit();
    const double dollars = trade.minAmount + (trade.maxAmount - trade.minAmount) * u * u;
    return qint64(dollars) * 100 + r.below(100);
}

void sortByDay(std::vector<PlannedInvoice> &invoices)
{
    std::stable_sort(
        invoices.begin(), invoices.end(),
        [](const PlannedInvoice &a, const PlannedInvoice &b) { return a.day < b.day; });
}

// Decides whether and when the invoice was paid: at the first check run after the vendor's
// usual delay, unless that falls after the end of the books; a few stay open or are set aside.
void settle(PlannedInvoice &invoice, int delay, const Calendar &calendar, bool lastYearOnly,
            Random &r)
{
    invoice.run = calendar.runOnOrAfter(invoice.day + delay);
    const int roll = r.below(1000);
    if (invoice.run < 0) {
        invoice.status = openStatus(r);
    } else if (roll < 15) {
        invoice.run = -1;
        invoice.status = 0; // on hold: neither open nor paid
    } else if (roll < 45) {
        invoice.run = -1;
        invoice.status = openStatus(r); // disputed, still open
    } else {
        invoice.status = roll < 80 ? 5 : 4;
        if (lastYearOnly && calendar.runDay(invoice.run) >= calendar.firstDayOfYear()) {
            invoice.run = -1;
            invoice.status = openStatus(r);
        }
    }
}

// Gives the invoices at `which` amounts that add up to `target` exactly. Should there be more
// invoices than cents, the extra ones are put on hold.
void spread(InvoicePlan &plan, std::vector<std::size_t> which, qint64 target, Random &r)
{
    if (qint64(which.size()) > target) {
        for (std::size_t i = std::size_t(target); i < which.size(); ++i) {
            plan.invoices[which[i]].run = -1;
            plan.invoices[which[i]].status = 0;
        }
        which.resize(std::size_t(target));
    }
    const std::vector<qint64> parts = split(target, int(which.size()), r);
    for (std::size_t i = 0; i < which.size(); ++i)
        plan.invoices[which[i]].cents = parts[i];
}

std::vector<std::size_t> paidThisYear(const InvoicePlan &plan, const Calendar &calendar)
{
    std::vector<std::size_t> which;
    for (std::size_t i = 0; i < plan.invoices.size(); ++i) {
        const PlannedInvoice &inv = plan.invoices[i];
        if (inv.paid() && calendar.runDay(inv.run) >= calendar.firstDayOfYear())
            which.push_back(i);
    }
    return which;
}

std::vector<std::size_t> openCurrent(const InvoicePlan &plan, const Calendar &calendar)
{
    std::vector<std::size_t> which;
    for (std::size_t i = 0; i < plan.invoices.size(); ++i) {
        const PlannedInvoice &inv = plan.invoices[i];
        if (inv.open() && calendar.lastDay() - inv.day < currentAge)
            which.push_back(i);
    }
    return which;
}

void meetYtd(InvoicePlan &plan, qint64 target, int delay, const Calendar &calendar, Random &r)
{
    if (target <= 0 || plan.invoices.empty())
        return;
    std::vector<std::size_t> which = paidThisYear(plan, calendar);
    if (which.empty()) {
        PlannedInvoice &first = plan.invoices.front();
        first.day = calendar.firstDayOfYear() + r.between(4, 170);
        first.run = calendar.runOnOrAfter(first.day + delay);
        first.status = 4;
        sortByDay(plan.invoices);
        which = paidThisYear(plan, calendar);
    }
    spread(plan, which, target, r);
}

void meetCurrent(InvoicePlan &plan, qint64 target, const Calendar &calendar, Random &r)
{
    if (target <= 0 || plan.invoices.empty())
        return;
    std::vector<std::size_t> which = openCurrent(plan, calendar);
    if (which.empty()) {
        PlannedInvoice &last = plan.invoices.back();
        last.day = calendar.lastDay() - r.between(5, 40);
        last.run = -1;
        last.status = 1;
        sortByDay(plan.invoices);
        which = openCurrent(plan, calendar);
    }
    spread(plan, which, target, r);
}

void total(InvoicePlan &plan, const Calendar &calendar)
{
    for (const PlannedInvoice &inv : plan.invoices) {
        if (inv.paid() && calendar.runDay(inv.run) >= calendar.firstDayOfYear())
            plan.ytdCents += inv.cents;
        if (!inv.open())
            continue;
        const int age = calendar.lastDay() - inv.day;
        (age < currentAge ? plan.currentCents
         : age < oldAge   ? plan.bal60Cents
                          : plan.bal90Cents) += inv.cents;
    }
}

void chooseNumbering(InvoicePlan &plan, Random &r, int &start)
{
    static const QString letters = QStringLiteral("ABCDEFGHJKLMNPRSTW");
    const int roll = r.below(100);
    if (roll < 40) {
        plan.numberStyle = 0; // INV-10023; the shared range gives duplicates across vendors
        start = 10000 + 10 * r.below(100);
    } else if (roll < 65) {
        plan.numberStyle = 1; // 4711
        start = r.between(1000, 9000);
    } else if (roll < 75) {
        plan.numberStyle = 2; // A4471
        plan.numberPrefix = letters.at(r.below(int(letters.size())));
        start = r.between(1000, 9000);
    } else if (roll < 85) {
        plan.numberStyle = 3; // 2025-0153
        start = r.between(1, 300);
    } else {
        plan.numberStyle = 4; // SI004821
        plan.numberPrefix = QString(letters.at(r.below(int(letters.size())))) +
                            letters.at(r.below(int(letters.size())));
        start = r.between(1000, 90000);
    }
}

} // namespace

std::vector<qint64> split(qint64 cents, int parts, Random &random)
{
    std::vector<qint64> result;
    if (parts <= 0)
        return result;
    std::vector<double> weights;
    double sum = 0;
    for (int i = 0; i < parts; ++i) {
        weights.push_back(0.5 + random.unit());
        sum += weights.back();
    }
    const qint64 spare = cents - parts; // every part gets at least one cent
    qint64 given = 0;
    for (int i = 0; i < parts; ++i) {
        const qint64 part = 1 + qint64(std::floor(double(spare) * weights[std::size_t(i)] / sum));
        result.push_back(part);
        given += part;
    }
    result.back() += cents - given;
    return result;
}

std::vector<int> counts(int total, int firstCount, const std::vector<bool> &needsOne,
                        Random &random)
{
    const int n = int(needsOne.size());
    std::vector<int> result(std::size_t(n), 0);
    if (n == 0 || total <= 0)
        return result;
    int rest = total;
    int from = 0;
    if (firstCount >= 0) {
        result[0] = std::min(firstCount, total);
        rest -= result[0];
        from = 1;
        if (n == 1) {
            result[0] += rest;
            return result;
        }
    }
    for (int i = from; i < n && rest > 0; ++i) {
        if (needsOne[std::size_t(i)]) {
            ++result[std::size_t(i)];
            --rest;
        }
    }
    std::vector<double> weights(std::size_t(n), 0.0);
    double sum = 0;
    for (int i = from; i < n; ++i) {
        double &w = weights[std::size_t(i)];
        if (needsOne[std::size_t(i)])
            w = 0.6 + random.unit();
        else
            w = random.chance(0.05) ? 0.0 : 0.2 + 1.6 * random.unit(); // some have none
        sum += w;
    }
    if (sum <= 0) {
        std::fill(weights.begin() + from, weights.end(), 1.0);
        sum = n - from;
    }
    int given = 0;
    for (int i = from; i < n; ++i) {
        const int share = int(std::floor(double(rest) * weights[std::size_t(i)] / sum));
        result[std::size_t(i)] += share;
        given += share;
    }
    for (int i = from; given < rest; i = i + 1 < n ? i + 1 : from) {
        if (weights[std::size_t(i)] > 0) {
            ++result[std::size_t(i)];
            ++given;
        }
    }
    return result;
}

InvoicePlan plan(const Vendor &vendor, int position, int count, const Calendar &calendar,
                 std::uint64_t seed)
{
    Random r = Random::stream(seed, (std::uint64_t(2) << 40) + std::uint64_t(position));
    const Trade &trade = Words::trades()[std::size_t(vendor.trade)];
    InvoicePlan plan;
    int sequence = 0;
    chooseNumbering(plan, r, sequence);

    // A vendor with a YTD target had a few invoices this year at most (none for a target of
    // 0); the rest are from last year, paid last year.
    const bool lastYearOnly = vendor.ytdTarget == 0;
    const bool anyDay = vendor.ytdTarget < 0;
    const int thisYear = vendor.ytdTarget > 0 ? r.between(1, 3) : 0;
    const int lastYearEnd = Calendar::dayOf(calendar.year() - 1, 11, 1);
    const int habit = r.between(7, 35); // how long the organisation takes to pay this vendor
    plan.invoices.resize(std::size_t(std::max(count, 0)));
    for (std::size_t i = 0; i < plan.invoices.size(); ++i) {
        if (anyDay)
            plan.invoices[i].day = r.between(calendar.firstDay(), calendar.lastDay());
        else if (int(i) < thisYear)
            plan.invoices[i].day = r.between(calendar.firstDayOfYear() + 9, lastYearEnd + 365);
        else
            plan.invoices[i].day = r.between(calendar.firstDay(), lastYearEnd);
    }
    sortByDay(plan.invoices);
    for (PlannedInvoice &inv : plan.invoices) {
        inv.cents = amountFor(trade, r);
        settle(inv, habit + r.between(0, 14), calendar, lastYearOnly, r);
    }
    meetYtd(plan, vendor.ytdTarget, habit, calendar, r);
    meetCurrent(plan, vendor.currentTarget, calendar, r);
    for (PlannedInvoice &inv : plan.invoices) {
        inv.sequence = sequence;
        sequence += r.between(1, 3);
    }
    total(plan, calendar);
    return plan;
}

QString invoiceNumber(const InvoicePlan &plan, const PlannedInvoice &invoice,
                      const Calendar &calendar)
{
    const QString number = QString::number(invoice.sequence);
    switch (plan.numberStyle) {
    case 0:
        return QStringLiteral("INV-") + number;
    case 1:
        return number;
    case 2:
        return plan.numberPrefix + number;
    case 3:
        return QString::number(calendar.dateOf(invoice.day) / 10000) + QLatin1Char('-') +
               number.rightJustified(4, QLatin1Char('0'));
    default:
        return plan.numberPrefix + number.rightJustified(6, QLatin1Char('0'));
    }
}

} // namespace Demo::Invoices
