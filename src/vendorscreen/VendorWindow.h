#pragma once

#include "common/HandlerGuard.h"
#include "common/StatusLine.h"
#include "vendorscreen/ScreenState.h"
#include "vendorscreen/StartupView.h"
#include "vendorscreen/VendorFieldBoxes.h"

#include <QMainWindow>
#include <QPointer>

#include <array>
#include <functional>
#include <memory>
#include <vector>

class QAction;
class QFrame;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QMenu;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QRadioButton;
class QTableView;

class AccountLookup;
class CurrentVendor;
class FieldEntry;
class InvoiceLists;
class KeySender;
class OpenInvoiceTotals;
class BalanceRecalculation;
class PassIndicator;
class ProgramRunner;
class VendorNumberUtility;
class YearEndCheckWindow;
class YearEndZero;
class RecordSource;
class ReportMenu;
class ScreenModes;
class SplitDetail;
class VendorDisplay;
class VendorLookup;
class VendorNotes;
class VendorSaver;
class UnsavedEdit;
class UserFieldsWindow;
struct Services;
struct Session;

// The vendor screen: it owns its widgets, hands each area the widgets, values and services it
// uses, and wires what the areas report to what the other areas do.
class VendorWindow : public QMainWindow, public StartupView {
    Q_OBJECT

public:
    static constexpr int fieldCount = vendorFieldCount;

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
        QWidget *listpane = nullptr; // under the list buttons: the caption and the lists
        QLabel *gridcaption = nullptr;
        QTableView *grid1 = nullptr, *grid2 = nullptr;
        QPlainTextEdit *notes = nullptr;
        QGroupBox *frasplit = nullptr;
        QListWidget *List1 = nullptr, *List2 = nullptr, *List3 = nullptr;
        QLineEdit *helpwindow = nullptr;
        QProgressBar *passprogress = nullptr; // shown while a pass goes over the vendor file
    };

    VendorWindow(Session &session, Services &services, ProgramRunner &programs);
    ~VendorWindow() override;

    const Controls &controls() const { return m_c; }
    const VendorFieldBoxes &fields() const { return *m_fields; }

    // The areas, for the program's assembly and for tests that drive one directly.
    ScreenState &state() { return m_state; }
    CurrentVendor &current() { return *m_current; }
    InvoiceLists &lists() { return *m_lists; }
    SplitDetail &split() { return *m_split; }
    OpenInvoiceTotals &totals() { return *m_totals; }
    ScreenModes &modes() { return *m_modes; }
    VendorDisplay &display() { return *m_display; }
    VendorLookup &lookup() { return *m_lookup; }
    VendorNotes &notes() { return *m_notes; }
    VendorSaver &saver() { return *m_saver; }
    UnsavedEdit &unsavedEdit() { return *m_unsaved; }
    ReportMenu &reports() { return *m_reports; }
    RecordSource &datavendor() { return *m_datavendor; }
    RecordSource &datainvoice() { return *m_datainvoice; }
    RecordSource &datachecks() { return *m_datachecks; }
    // The read-only snapshot of account numbers and names opened at start-up.
    RecordSource &glaccounts() { return *m_glaccounts; }

    // What start-up and closing do to the window.
    void setTopmost(bool on) override;
    bool isTopmost() const override;
    void centreOnScreen() override;
    void setBackgroundColour(int bgr) override;
    int backgroundColour() const;
    void useCanadianLabels() override;
    bool canadianAddresses() const { return m_canadian; }
    void setCaption(const QString &caption) override { setWindowTitle(caption); }
    void rememberGridWidths() override;
    QAction *action(const QString &name) const override;
    QMenu *menu(const QString &name) const override;
    void showScreen() override { show(); }
    void hideScreen() override { hide(); }
    void openAccountNames() override;
    void closeAccountNames() override;
    void releaseRecordSources() override;
    void closeUserFields() override;
    // The user-defined information window of the vendor shown (cmdudf); nullptr when closed.
    UserFieldsWindow *userFields() const;
    void openLookup() override;
    bool started() const override { return m_started; }
    void setStarted(bool on) override { m_started = on; }

    // Reads the user's staff record again (the vendor-number utility hands on the level).
    void setStaffReload(std::function<void()> reload) { m_reloadStaff = std::move(reload); }
    PassIndicator &pass() { return *m_pass; }

    QString gridCaption() const;
    void setStatus(const QString &text) { m_status.show(text); }
    QString status() const { return m_status.text(); }

signals:
    // The window is closing: the closing steps run now, before it goes.
    void closing();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void buildMenus();
    QWidget *buildButtonStrip();
    QWidget *buildVendorFrame();
    QWidget *buildListArea();
    QWidget *buildStatusRow();
    void buildLookupPanel(QWidget *parent);
    void buildSplitPanel(QWidget *parent);
    void buildAreas(Session &session, Services &services);
    QAction *addEntry(QMenu *menu, const QString &name, const QString &text);
    void wire();
    // Every button and menu entry runs behind the guard: nothing it throws ends the program.
    template <typename Sender, typename Signal>
    void onSignal(Sender *sender, Signal signal, std::function<void()> handler);
    void help();
    void showVersion();
    void openUserFields();
    // What the user asked for goes on unless a changed vendor on the screen keeps it: the user
    // is asked first. afterSave: the action also goes on once the vendor was saved.
    void unlessKept(bool afterSave, const std::function<void()> &action);
    // A pass over the vendor file; the vendor on the screen is shown again with its new values.
    void runPass(const std::function<bool()> &pass);
    void nameForScreenReaders();
    void orderFocus();
    void openYearEndCheck();
    void showCheckedVendor(long long number);

    Controls m_c;
    StatusLine m_status{nullptr};
    HandlerGuard m_guard;
    ProgramRunner &m_programs;
    ScreenState m_state;
    std::unique_ptr<VendorFieldBoxes> m_fields;
    std::unique_ptr<CurrentVendor> m_current;
    std::unique_ptr<RecordSource> m_datavendor, m_datainvoice, m_datachecks, m_glaccounts;
    std::unique_ptr<AccountLookup> m_accounts;
    std::unique_ptr<KeySender> m_keys;
    std::unique_ptr<OpenInvoiceTotals> m_totals;
    std::unique_ptr<InvoiceLists> m_lists;
    std::unique_ptr<SplitDetail> m_split;
    // Destroyed before the widgets they filter events of.
    std::unique_ptr<VendorNotes> m_notes;
    std::unique_ptr<VendorDisplay> m_display;
    std::unique_ptr<ScreenModes> m_modes;
    std::unique_ptr<VendorLookup> m_lookup;
    std::unique_ptr<VendorSaver> m_saver;
    std::unique_ptr<UnsavedEdit> m_unsaved;
    std::unique_ptr<FieldEntry> m_fieldEntry;
    std::unique_ptr<ReportMenu> m_reports;
    std::unique_ptr<PassIndicator> m_pass;
    std::unique_ptr<YearEndZero> m_yearEndZero;
    std::unique_ptr<BalanceRecalculation> m_recalculation;
    std::unique_ptr<VendorNumberUtility> m_numberUtility;
    std::function<void()> m_reloadStaff;
    Session &m_session;
    Services &m_services;
    QPointer<UserFieldsWindow> m_userFields;
    QPointer<YearEndCheckWindow> m_yearEndCheck;
    std::vector<QAction *> m_actions;
    std::vector<QMenu *> m_menus;
    bool m_started = false;
    bool m_canadian = false;
    int m_background = -1;
};
