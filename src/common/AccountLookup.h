#pragma once

#include <QString>
#include <QVariant>

#include <optional>

// A row of the chart of accounts, as the account check reads it.
struct GlAccount {
    QString name;
    QVariant statementDescription; // null when the row has none
    int type = 0;
    int level = 0;
};

// Finds accounts in the chart of accounts; the data layer gives the real one.
class AccountLookup {
public:
    virtual ~AccountLookup() = default;
    // The account of that number as it is written into the statement ("5000", "5000.5").
    virtual std::optional<GlAccount> glAccount(const QString &number) = 0;
};
