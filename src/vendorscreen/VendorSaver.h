#pragma once

#include <QObject>
#include <QString>

#include <functional>

class CurrentVendor;
class Databases;
class Dialogs;
class QPushButton;
class RecordSource;
class StatusLine;
class VendorFieldBoxes;
struct ScreenState;
struct Session;

// The Save button: writes the vendor fields over the current vendor or as a new one, with the
// check that nobody else changed the vendor since it was shown, and writes the notes.
class VendorSaver : public QObject {
    Q_OBJECT

public:
    // The numbered steps the error reports name.
    enum Step {
        OpenForEdit = 860,
        StartNew = 861,
        WriteRecord = 862,
        CheckOthers = 863,
        PutFields = 864,
        Notes = 870
    };
    static constexpr int retryBudget = 21;
    // One try at the write lock waits this long for another user, then the save waits a little
    // with the window painted and tries again, up to the retry budget.
    static constexpr int tryWaitMsecs = 150;
    static constexpr int pauseMsecs = 100;

    // The notes box as a save reads it.
    struct NoteShown {
        bool typed = false;            // a key was typed in the box since the vendor was shown
        long long recalledVendor = -1; // whose note the box read last (-1: none)
        QString recalled;              // that note as it was read
        QString text;                  // the box's text now
    };
    // What a save asks of the other areas, answered at the moment it asks.
    struct Asks {
        // Computes the vendor's open-invoice totals, which the save writes with the vendor.
        std::function<void()> computeTotals;
        std::function<NoteShown()> note;
    };

    // current: the vendor on the screen, whose row the multi-user check compares against.
    VendorSaver(QPushButton *cmdsave, const VendorFieldBoxes &fields, RecordSource &vendors,
                const CurrentVendor &current, Asks asks, ScreenState &state, const Session &session,
                Databases &dbs, Dialogs &dialogs, StatusLine &status, QObject *parent = nullptr);

    // True when the save ended as Cancel ends (finished was emitted); false when it stopped
    // with the vendor still on the screen.
    bool save();
    // The digits-and-separators form of a telephone number kept for the suite's other modules
    // (empty unless the module's setting asks for it, which it never does here).
    static QString pnetFrom(const QString &phone, const QString &setting);

signals:
    // The save has ended as Cancel ends: the screen goes back to the lookup.
    void finished();

private:
    enum class Outcome { Written, GoOn, Stop };
    Outcome writeVendor(bool withNotes, bool &notesKept);
    bool form1099TypeIsKnown();
    bool numbersAreNumbers();
    void putFields();
    // Writes the notes unless another user changed them since they were recalled; false then.
    bool writeNotes();
    void writeNotesAlone();
    void waitBeforeRetry();
    void writeReport(int code, int step);
    void changeReport();
    void notesReport();
    void unexpectedReport(int code, int step);

    QPushButton *m_cmdsave;
    const VendorFieldBoxes &m_fields;
    RecordSource &m_vendors;
    const CurrentVendor &m_current;
    Asks m_asks;
    ScreenState &m_state;
    const Session &m_session;
    Databases &m_dbs;
    Dialogs &m_dialogs;
    StatusLine &m_status;
};
