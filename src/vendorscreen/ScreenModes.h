#pragma once

#include <QObject>

#include <functional>

class Dialogs;
class InvoiceLists;
class QPlainTextEdit;
class QPushButton;
class QTableView;
class QWidget;
class RecordSource;
class VendorDisplay;
class VendorFieldBoxes;
class VendorNotes;
class StatusLine;
struct ScreenState;
struct Session;

// The vendor screen's modes and the buttons along the top: Add, Modify, Cancel, Next,
// Previous and Delete, with the access checks and the wrong-mode messages.
class ScreenModes : public QObject {
    Q_OBJECT

public:
    enum class Mode { Lookup, Browse, AddVendor, Modify };

    struct Widgets {
        QPushButton *cmdadd = nullptr, *cmdmodify = nullptr, *cmdsave = nullptr,
                    *cmddelete = nullptr, *cmdcancel = nullptr, *cmdlookup = nullptr,
                    *cmdprevious = nullptr, *cmdnext = nullptr;
        QWidget *fralookup = nullptr;
        QWidget *frasplit = nullptr;
        QTableView *grid1 = nullptr;
        QPlainTextEdit *notes = nullptr;
    };
    // The three bound record sources of the screen; Cancel lets go of them.
    struct Sources {
        RecordSource &vendor;
        RecordSource &invoices;
        RecordSource &checks;
    };
    // The areas a mode change reaches.
    struct Areas {
        VendorDisplay &display;
        InvoiceLists &lists;
        VendorNotes &notes;
    };

    ScreenModes(const Widgets &widgets, const VendorFieldBoxes &fields, Sources sources,
                Areas areas, ScreenState &state, Session &session, Dialogs &dialogs,
                StatusLine &status, QObject *parent = nullptr);

    // The buttons' enabled state for a mode, all in one place; a button the mode leaves
    // "as before" keeps its state.
    void applyButtons(Mode mode);

    void add();
    void modify();
    void cancel();
    void next();
    void previous();
    void remove();

    // Another vendor is on the screen (a move or a lookup hit): an edit of the vendor left ends
    // there, and the notes box, when it is shown, shows the note of the vendor now shown.
    void vendorShown();
    // A pass has rewritten the vendor file: the stored vendor on the screen is read and shown
    // again, with its note when the notes box is shown. An edit in progress starts afresh.
    void showAgain();
    // In Add or Modify mode, a field differs from what it held when the mode began, or a key
    // was typed in the notes box.
    bool hasUnsavedEdit() const;

signals:
    // Cancel has put the screen back in lookup mode: the lookup panel is to open.
    void lookupRequested();
    // The mode is about to change: the user-defined information window must close.
    void userFieldsClosing();

private:
    // Runs a button's work with the button disabled, so that a second click meanwhile is
    // ignored; a database failure gets the shared error report.
    void whileDisabled(QPushButton *button, const std::function<void()> &work);
    bool mayEdit();
    void move(bool forward);
    void reloadNotesIfShown();

    Widgets m_w;
    const VendorFieldBoxes &m_fields;
    Sources m_sources;
    Areas m_areas;
    ScreenState &m_state;
    Session &m_session;
    Dialogs &m_dialogs;
    StatusLine &m_status;
    bool m_applied = false;
};
