#pragma once

#include <QObject>
#include <QString>

#include <array>
#include <functional>

class Dialogs;
class ProgramRunner;
class QAction;
class QWidget;
class QGroupBox;
class QLineEdit;
class QPushButton;
class QRadioButton;
class RecordSource;
class StatusLine;
class VendorFieldBoxes;
struct ScreenState;

// The lookup panel: seven ways to find a vendor, each one statement that the vendor record
// source is bound to.
class VendorLookup : public QObject {
    Q_OBJECT

public:
    struct Widgets {
        QPushButton *cmdlookup = nullptr;
        QGroupBox *fralookup = nullptr;
        std::array<QRadioButton *, 7> Option1{};
        QLineEdit *lookupinput = nullptr;
        QAction *byname = nullptr; // checked: the panel opens on "Vendor Name"
        QWidget *over = nullptr;   // where the panel opens: over the lists, not the fields
    };

    // showFound: shows the vendor a lookup finds (the screen then browses it); true when it is
    // on the screen.
    VendorLookup(const Widgets &widgets, const VendorFieldBoxes &fields, RecordSource &vendors,
                 std::function<bool()> showFound, ScreenState &state, Dialogs &dialogs,
                 ProgramRunner &programs, StatusLine &status, QObject *parent = nullptr);

    // The statement a method builds; the value is the entry text after the apostrophe treatment.
    static QString statement(int method, const QString &value);
    // Doubles the first apostrophe only ("O'Br'ien" becomes "O''Br'ien").
    static QString doubleFirstApostrophe(const QString &text);
    // The statement as it is run: text values with every apostrophe of the typed entry doubled,
    // so that no entry can change the statement's structure.
    static QString safeStatement(int method, const QString &typed);

    void open();
    void go();
    // Shows one vendor as a lookup by number would, leaving the chosen method as it was.
    void showNumber(long long number);
    void cancelLookup();
    // The entry field's own events.
    void entryFocused();
    void entryLeft();
    void entryKey(int key);

signals:
    // The panel is about to open over the lists: their columns are fitted to the grids first.
    void opening();
    // A lookup has shown the vendor it found: the check list, when shown, is listed for it.
    void found();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    int chosenMethod() const;
    // The seven methods are one stop of the Tab key: true when the key was used up.
    bool moveAmongMethods(QObject *watched, int key);

    Widgets m_w;
    const VendorFieldBoxes &m_fields;
    RecordSource &m_vendors;
    std::function<bool()> m_showFound;
    ScreenState &m_state;
    Dialogs &m_dialogs;
    ProgramRunner &m_programs;
    StatusLine &m_status;
};
