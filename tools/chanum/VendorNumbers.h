#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

#include <vector>

class Databases;

// What one vendor number holds in the vendor file: its record, and the rows that refer to it.
struct VendorFigures {
    qlonglong number = 0;
    bool exists = false; // a vendor record with this number
    QString name;
    int invoices = 0;
    double invoiceTotal = 0;     // sum of invamount
    double invoicePaidTotal = 0; // sum of invcheckamount
    int checks = 0;
    double checkTotal = 0; // sum of chkamount
    int notes = 0;         // rows of vendnotes
    int userValues = 0;    // rows of miscdata
    double balance = 0;    // vendbalcurrent
    double ytd = 0;        // vendytd
    double balance60 = 0;
    double balance90 = 0;
    // Whether any row at all carries the number (the vendor record or a row referring to it).
    bool inUse() const { return exists || invoices + checks + notes + userValues > 0; }
};

// The rows of the vendor file that carry a vendor number, and the two jobs that move them. The
// jobs run inside the caller's write transaction of ap.mdb, which decides about the commit.
class VendorNumbers {
public:
    // A table of ap.mdb and its column that holds a vendor number (the vendor record aside).
    struct Reference {
        const char *table;
        const char *column;
    };
    static const std::vector<Reference> &references();

    explicit VendorNumbers(Databases &dbs) : m_dbs(dbs) {}

    VendorFigures figures(qlonglong number);
    // Holds the vendor record against other users' edits until the transaction ends, on an
    // engine that locks rows (on the SQLite files the transaction holds the whole file).
    void lock(qlonglong number);

    // Every row of `from` carries `to` afterwards.
    void change(qlonglong from, qlonglong to);

    // What a merge did to the user-defined values: those of the target kept over the merged
    // vendor's, one line each.
    struct MergeResult {
        QStringList conflicts;
    };
    // The history of `from` goes to `into`; the notes are appended under a dated line; the
    // totals of `into` are recalculated over `year`; `from` is deleted.
    MergeResult merge(qlonglong from, qlonglong into, const QDate &today, int year);

    // The line that separates the merged vendor's notes from the target's.
    static QString notesSeparator(qlonglong from, const QString &name, const QDate &today);

private:
    void moveNotes(qlonglong from, qlonglong into, const QString &fromName, const QDate &today);
    QStringList moveUserValues(qlonglong from, qlonglong into);
    void exec(const QString &statement, const QVariantList &values = {});

    Databases &m_dbs;
};
