#pragma once

#include "common/AccountLookup.h"

class Databases;

// The chart of accounts in gl.mdb, opened for one look-up at a time.
class ChartOfAccounts : public AccountLookup {
public:
    explicit ChartOfAccounts(Databases &dbs) : m_dbs(dbs) {}
    std::optional<GlAccount> glAccount(const QString &number) override;

private:
    Databases &m_dbs;
};
