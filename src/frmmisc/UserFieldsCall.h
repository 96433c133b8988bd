#pragma once

#include <QString>

// Which accounts' user-defined fields the window shows, read from the calling code the caller
// opens the window with: three letters naming the kind of account, then the
// account number ("VEN1042", "DOR1042", "ABC2207", "EDT~15").
struct UserFieldsCall {
    enum class Kind { None = 0, Employee = 1, Member = 2, Vendor = 3 };

    Kind kind = Kind::None;
    QString code; // the three letters as given ("VEN")
    long long account = 0;

    bool isValid() const { return kind != Kind::None; }
    // The kind's number: 1 employee, 2 member, 3 vendor (0 for a code of no kind).
    int kindNumber() const { return static_cast<int>(kind); }
    // The database file of the kind: "ap.mdb", "master.mdb" or "emp.mdb".
    QString databaseFile() const;
    // The report layout of the kind: "miscinfo1v.rpt", "miscinfo1m.rpt" or "miscinfo1e.rpt".
    QString reportLayout() const;
    // The account number as written into captions and statements.
    QString accountText() const { return QString::number(account); }

    // "VEN" and "DOR" are vendors, "ABC" and "DEF" members, "EDT" employees; the number follows
    // the letters directly, or after a "~". Anything else gives a call of no kind.
    static UserFieldsCall parse(const QString &callingCode);
};
