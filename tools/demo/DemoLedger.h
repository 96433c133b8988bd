#pragma once

#include <QString>

#include <vector>

namespace Demo {

// One account of the organisation's chart of accounts (gl.mdb, table gl0).
struct Account {
    double number; // 1000.000, 5100.5
    QString name;
    QString statementDesc; // null when the account has none; "" when it was left blank
    int type;              // 1 asset, 2 liability, 3 net assets, 4 revenue, 5 expense
    int level;             // lowest staff level that may post to it
};

namespace Ledger {
// The chart of a membership organisation, in account-number order.
const std::vector<Account> &chart();
// The expense accounts an invoice may be distributed over.
std::vector<double> expenseAccounts();
} // namespace Ledger

} // namespace Demo
