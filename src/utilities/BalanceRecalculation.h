#pragma once

#include <QString>

class Clock;
class Databases;
class Dialogs;
class PassProgress;
class StatusLine;
struct Session;

// Rebuilds every vendor's current balance and YTD total from its invoices over a date range the
// user gives: a first pass zeroes both for every vendor, a second computes them again. Each
// batch of vendors (a few milliseconds of writing) is its own transaction. The two sums differ on
// purpose: the balance adds the invoice amounts dated in the range (paid ones too), the YTD total
// the check amounts paid in the range.
class BalanceRecalculation {
public:
    struct Services {
        Dialogs &dialogs;
        const Clock &clock;
        Databases &databases;
        Session &session;
        StatusLine &status;
        PassProgress &progress;
    };
    explicit BalanceRecalculation(Services services) : m_s(services) {}

    // The earliest date a range may start or end on.
    static constexpr long firstDate = 19990100;

    // Asks for the range and, once more, whether to go ahead; true when the totals were rebuilt.
    bool run();
    static QString question(long from, long to);
    // The passes alone, for a range already asked for.
    void recalculate(long from, long to);
    // The statement that writes one vendor's two totals over the range; it takes the vendor
    // number three times. The vendor-number utility's merge uses it too.
    static QString totalsStatement(long from, long to);

private:
    Services m_s;
};
