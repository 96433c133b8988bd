#pragma once

#include <QObject>

#include <functional>

class CurrentVendor;
class Dialogs;
class QPlainTextEdit;
class QPushButton;
class QTableView;
class QWidget;
class RecordSource;
class VendorFieldBoxes;
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
    // How the vendor a move reaches is shown; each answers true when the vendor is on the
    // screen.
    struct Display {
        // Shows the vendor the vendor source stands on.
        std::function<bool()> showCurrent;
        // Shows that vendor again as the database holds it now.
        std::function<bool()> showAgain;
    };
    // current: the vendor on the screen.
    ScreenModes(const Widgets &widgets, const VendorFieldBoxes &fields, Sources sources,
                Display display, const CurrentVendor &current, ScreenState &state, Session &session,
                Dialogs &dialogs, StatusLine &status, QObject *parent = nullptr);

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
    // there, and the screen browses the vendor shown.
    void vendorShown();
    // A pass has rewritten the vendor file: the stored vendor on the screen is read and shown
    // again (the lists and the note follow the vendor read again). An edit in progress starts
    // afresh.
    void showAgain();
    // In Add or Modify mode, a field differs from what it held when the mode began, or a key
    // was typed in the notes box (notesTyped).
    bool hasUnsavedEdit(bool notesTyped) const;

signals:
    // Cancel has put the screen back in lookup mode: the lookup panel is to open.
    void lookupRequested();
    // The mode is about to change: the user-defined information window must close.
    void userFieldsClosing();
    // Next or Previous has shown another vendor: the open list is listed again for it.
    void moved();
    // Cancel has let go of the vendor: nothing of its note is kept.
    void screenCleared();

private:
    // Runs a button's work with the button disabled, so that a second click meanwhile is
    // ignored; a database failure gets the shared error report.
    void whileDisabled(QPushButton *button, const std::function<void()> &work);
    bool mayEdit();
    void move(bool forward);

    Widgets m_w;
    const VendorFieldBoxes &m_fields;
    Sources m_sources;
    Display m_display;
    const CurrentVendor &m_current;
    ScreenState &m_state;
    Session &m_session;
    Dialogs &m_dialogs;
    StatusLine &m_status;
    bool m_applied = false;
};
