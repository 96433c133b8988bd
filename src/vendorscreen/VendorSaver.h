#pragma once

#include <QString>

class VendorWindow;

// The Save button: writes the vendor fields over the current vendor or as a new one, with the
// check that nobody else changed the vendor since it was shown, and writes the notes.
class VendorSaver {
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

    explicit VendorSaver(VendorWindow &window) : m_window(window) {}

    void save();
    // The digits-and-separators form of a telephone number kept for the suite's other modules
    // (empty unless the module's setting asks for it, which it never does here).
    static QString pnetFrom(const QString &phone, const QString &setting);

private:
    enum class Outcome { Written, GoOn, Stop };
    Outcome writeVendor(bool withNotes, bool &notesKept);
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

    VendorWindow &m_window;
};
