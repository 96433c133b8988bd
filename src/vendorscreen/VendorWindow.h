#pragma once

#include "vendorscreen/ScreenState.h"

#include <QMainWindow>

#include <array>
#include <memory>
#include <vector>

class QAction;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QMenu;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QTableView;
class QFrame;

class FieldEntry;
class InvoiceLists;
class KeySender;
class ScreenModes;
class VendorDisplay;
class VendorLookup;
class VendorNotes;
class VendorSaver;
class OpenInvoiceTotals;
class RecordSource;
class SplitDetail;
class ProgramRunner;
class StaffRecords;
struct Services;
struct Session;

// The vendor screen: it owns its widgets and wires them to the behaviour of each area.
class VendorWindow : public QMainWindow {
    Q_OBJECT

public:
    static constexpr int fieldCount = 24;
    static constexpr int invoiceColumns = 11;
    static constexpr int checkColumns = 9;

    // The window's controls, named as the module names them.
    struct Controls {
        QFrame *Picture1 = nullptr;
        QPushButton *cmdadd = nullptr, *cmdmodify = nullptr, *cmdsave = nullptr,
                    *cmddelete = nullptr, *cmdcancel = nullptr, *cmdlookup = nullptr,
                    *cmdprevious = nullptr, *cmdnext = nullptr, *cmdudf = nullptr,
                    *cmdhelp = nullptr, *cmdexit = nullptr;
        QGroupBox *fravendor = nullptr;
        std::array<QLabel *, fieldCount> label1{};
        std::array<QLineEdit *, fieldCount> Text1{};
        QGroupBox *fralookup = nullptr;
        std::array<QRadioButton *, 7> Option1{};
        QLineEdit *lookupinput = nullptr;
        QPushButton *cmdgo = nullptr, *cmdcancellookup = nullptr;
        QPushButton *cmdunpaid = nullptr, *cmdpaid = nullptr, *cmdchecks = nullptr,
                    *cmdnotes = nullptr, *cmdsplit = nullptr;
        std::array<QRadioButton *, 2> optsort{};
        QLabel *gridcaption = nullptr;
        QTableView *grid1 = nullptr, *grid2 = nullptr;
        QPlainTextEdit *notes = nullptr;
        QGroupBox *frasplit = nullptr;
        QListWidget *List1 = nullptr, *List2 = nullptr, *List3 = nullptr;
        QLineEdit *helpwindow = nullptr;
    };

    VendorWindow(Session &session, Services &services);
    ~VendorWindow() override;

    const Controls &controls() const { return m_c; }
    // A menu entry by its name ("mnurecalc", "rpt1099"); nullptr when there is none.
    QAction *action(const QString &name) const;
    QMenu *menu(const QString &name) const;

    Session &session() { return m_session; }
    ScreenState &state() { return m_state; }
    InvoiceLists &lists() { return *m_lists; }
    SplitDetail &split() { return *m_split; }
    OpenInvoiceTotals &totals() { return *m_totals; }
    ScreenModes &modes() { return *m_modes; }
    VendorDisplay &display() { return *m_display; }
    VendorLookup &lookup() { return *m_lookup; }
    VendorNotes &notes() { return *m_notes; }
    VendorSaver &saver() { return *m_saver; }
    KeySender &keys() { return *m_keys; }
    Services &services() { return m_services; }
    ProgramRunner &programs() { return *m_programs; }
    StaffRecords &staff() { return *m_staff; }
    RecordSource &datavendor() { return *m_datavendor; }
    RecordSource &datainvoice() { return *m_datainvoice; }
    RecordSource &datachecks() { return *m_datachecks; }
    // The read-only snapshot of account numbers and names opened at start-up.
    RecordSource &glaccounts() { return *m_glaccounts; }
    void openAccountNames();
    void closeAccountNames();

    // True from the end of start-up until the closing steps have run.
    bool started() const { return m_started; }
    void setStarted(bool on) { m_started = on; }
    // Unloads the user-defined information window when it is open.
    void closeUserFields();

    // Window-level values kept by start-up.
    void setTopmost(bool on);
    bool isTopmost() const;
    void centreOnScreen();
    void setBackgroundColour(int bgr);
    int backgroundColour() const;
    void useCanadianLabels();
    bool canadianAddresses() const { return m_canadian; }
    void setCanadianAddresses(bool on) { m_canadian = on; }
    void rememberGridWidths();
    int grid1DesignWidth() const { return m_grid1Width; }
    const std::array<int, invoiceColumns> &grid1DesignColumns() const { return m_grid1Columns; }
    int grid2DesignWidth() const { return m_grid2Width; }
    const std::array<int, checkColumns> &grid2DesignColumns() const { return m_grid2Columns; }

    QString gridCaption() const;
    void setGridCaption(const QString &caption);
    void setStatus(const QString &text);
    QString status() const;

    // The actions of the buttons, as a click would run them.
    void openLookup();
    void blankFields();

signals:
    void closing();

protected:
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void buildMenus();
    QWidget *buildButtonStrip();
    QWidget *buildVendorFrame();
    QWidget *buildListArea();
    void buildLookupPanel(QWidget *parent);
    void buildSplitPanel(QWidget *parent);
    QAction *addEntry(QMenu *menu, const QString &name, const QString &text);
    void wire();
    void help();
    void showVersion();

    Session &m_session;
    Services &m_services;
    Controls m_c;
    ScreenState m_state;
    std::unique_ptr<InvoiceLists> m_lists;
    std::unique_ptr<SplitDetail> m_split;
    std::unique_ptr<OpenInvoiceTotals> m_totals;
    std::unique_ptr<ScreenModes> m_modes;
    std::unique_ptr<VendorDisplay> m_display;
    std::unique_ptr<VendorLookup> m_lookup;
    std::unique_ptr<VendorNotes> m_notes;
    std::unique_ptr<VendorSaver> m_saver;
    std::unique_ptr<KeySender> m_keys;
    FieldEntry *m_fieldEntry = nullptr;
    std::vector<QAction *> m_actions;
    std::vector<QMenu *> m_menus;
    std::unique_ptr<ProgramRunner> m_programs;
    std::unique_ptr<StaffRecords> m_staff;
    std::unique_ptr<RecordSource> m_datavendor, m_datainvoice, m_datachecks, m_glaccounts;
    bool m_started = false;
    bool m_canadian = false;
    int m_background = -1;
    int m_grid1Width = 0;
    int m_grid2Width = 0;
    std::array<int, invoiceColumns> m_grid1Columns{};
    std::array<int, checkColumns> m_grid2Columns{};
};
