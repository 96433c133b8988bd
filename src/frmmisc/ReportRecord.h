#pragma once

#include "frmmisc/UserFieldsCall.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

class Databases;

// The temporary record a report of user-defined fields is printed from: a small SQLite file,
// written afresh for every report, with one table `miscreport` of one row per account:
//
//   acctid      the account number
//   fieldcount  how many fields the report prints (the columns used below)
//   lname, fname, fullname1, addr1a, addr1b, city1, state1, zip1, phone1a,
//   fullname2, addr2a, addr2b, city2, state2, zip2, phone2a
//               the account's name, addresses and telephones for the report's headings
//               (members and employees; empty for vendors, whose report reads `vendors`)
//   miscdesc1 ... miscdesc30, miscvalue1 ... miscvalue30
//               the chosen fields' descriptions and values, in report order from column 1
//
// Its path is handed to the report runner as the sixth data file.
class ReportRecord {
public:
    // The heading columns, by the member table's names.
    static const QStringList &headingColumns();
    // The employee table's column for each heading column.
    static const QHash<QString, QString> &employeeColumns();
    // The table's name.
    static QString table() { return QStringLiteral("miscreport"); }
    // Where the record goes: the user's local work folder when it is there, otherwise the
    // user's cache folder (fallbackFolder); the file is named after the user.
    static QString pathFor(const QString &localDrive, const QString &userName);
    // "velmora" in the user's cache folder (~/.cache/velmora).
    static QString fallbackFolder();

    struct Account {
        long long acctid = 0;
        QHash<QString, QString> heading; // by heading column
        QStringList values;              // the 30 values of the account
    };

    // call: whose fields; chosen: the fields to print, in report order; descriptions: the 30
    // descriptions as the window shows them.
    ReportRecord(const UserFieldsCall &call, std::vector<int> chosen, QStringList descriptions) :
        m_call(call), m_chosen(std::move(chosen)), m_descriptions(std::move(descriptions))
    {
    }

    // Gathers the rows: the recalled account alone (its values as the window shows them), or
    // every account with stored values (the recalled one again as shown), with the heading
    // fields of members and employees. Engine failures are thrown as DbError.
    std::vector<Account> gather(Databases &dbs, const QStringList &shownValues,
                                bool allAccounts) const;
    // Writes the file afresh (the table made again) with the rows. Throws DbError.
    void write(const QString &path, const std::vector<Account> &accounts) const;

private:
    void addHeadings(Databases &dbs, std::vector<Account> &accounts) const;

    UserFieldsCall m_call;
    std::vector<int> m_chosen;
    QStringList m_descriptions;
};
