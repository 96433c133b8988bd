#include "vendorscreen/VendorWindow.h"

#include "common/Colours.h"
#include "common/Dialogs.h"
#include "common/Numbers.h"
#include "common/ProgramRunner.h"
#include "common/ScreenFit.h"
#include "common/Services.h"
#include "common/Session.h"
#include "data/ChartOfAccounts.h"
#include "data/RecordSource.h"
#include "frmmisc/UserFieldsWindow.h"
#include "keysend/KeySender.h"
#include "lists/CurrentVendor.h"
#include "lists/InvoiceLists.h"
#include "lists/ListWidgets.h"
#include "lists/OpenInvoiceTotals.h"
#include "lists/SplitDetail.h"
#include "lists/VendorNotes.h"
#include "reports/PrinterFormPrinter.h"
#include "reports/ReportMenu.h"
#include "utilities/BalanceRecalculation.h"
#include "utilities/VendorNumberUtility.h"
#include "utilities/YearEndCheckWindow.h"
#include "utilities/YearEndZero.h"
#include "vendorscreen/FieldEntry.h"
#include "vendorscreen/Form1099Type.h"
#include "vendorscreen/PassIndicator.h"
#include "vendorscreen/ScreenModes.h"
#include "vendorscreen/UnsavedEdit.h"
#include "vendorscreen/VendorDisplay.h"
#include "vendorscreen/VendorFields.h"
#include "vendorscreen/VendorLayout.h"
#include "vendorscreen/VendorLookup.h"
#include "vendorscreen/VendorSaver.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QFileInfo>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QTableView>

#include <algorithm>

VendorWindow::VendorWindow(Session &session, Services &services, ProgramRunner &programs) :
    m_guard(services.dialogs, [&session] { return session.userName; }), m_programs(programs),
    m_session(session), m_services(services)
{
    setObjectName(QStringLiteral("vendor"));
    setWindowTitle(QStringLiteral("A/P Master"));
    auto source = [&services](const char *name, const char *table, const char *key) {
        auto made = std::make_unique<RecordSource>(services.databases, QString::fromLatin1(name));
        if (table)
            made->setUpdateTable(QString::fromLatin1(table), QString::fromLatin1(key));
        return made;
    };
    m_datavendor = source("datavendor", "vendors", "vendnumber");
    m_datainvoice = source("datainvoice", "invoices", "vendnumber");
    m_datachecks = source("datachecks", "checks", "chknum");
    m_glaccounts = source("glaccounts", nullptr, nullptr);

    buildMenus();
    auto *central = new QWidget(this);
    central->setObjectName(QStringLiteral("central"));
    VendorLayout::arrange(central, buildButtonStrip(), buildVendorFrame(), buildListArea(),
                          buildStatusRow());
    m_c.helpwindow->setObjectName(QStringLiteral("helpwindow"));
    m_c.helpwindow->setReadOnly(true);
    m_c.helpwindow->setFocusPolicy(Qt::NoFocus);
    m_status = StatusLine(m_c.helpwindow);
    buildLookupPanel(central);
    // On a small screen or at a large scaling the screen scrolls inside a window that fits.
    auto *scroller = new QScrollArea(this);
    scroller->setObjectName(QStringLiteral("centralscroller"));
    scroller->setFrameShape(QFrame::NoFrame);
    scroller->setWidgetResizable(true);
    scroller->setWidget(central);
    setCentralWidget(scroller);
    resize(VendorLayout::windowSize);
    ScreenFit::keepOnScreen(this);
    nameForScreenReaders();
    orderFocus();
    buildAreas(session, services);
    wire();
}

void VendorWindow::buildAreas(Session &session, Services &services)
{
    // The vendor on the screen holds the number the vendor-number field shows, however it came
    // there: shown, typed or blanked.
    m_current = std::make_unique<CurrentVendor>();
    connect(m_fields->box(VendorField::Number), &QLineEdit::textChanged, m_current.get(),
            &CurrentVendor::setNumberText);
    const CurrentVendor &current = *m_current;
    const ListWidgets listWidgets{.cmdunpaid = m_c.cmdunpaid,
                                  .cmdpaid = m_c.cmdpaid,
                                  .cmdchecks = m_c.cmdchecks,
                                  .cmdnotes = m_c.cmdnotes,
                                  .cmdsplit = m_c.cmdsplit,
                                  .oldToNew = m_c.optsort[0],
                                  .gridcaption = m_c.gridcaption,
                                  .grid1 = m_c.grid1,
                                  .grid2 = m_c.grid2,
                                  .notes = m_c.notes,
                                  .frasplit = m_c.frasplit};
    Dialogs &dialogs = services.dialogs;
    // No area holds another: where one needs an answer from another at once, it is handed a
    // function that asks it, made here.
    m_totals =
        std::make_unique<OpenInvoiceTotals>(current, services.databases, services.clock, m_status);
    auto computeTotals = [this] { m_totals->compute(); };
    m_lists = std::make_unique<InvoiceLists>(
        listWidgets, current, InvoiceLists::Sources{*m_datainvoice, *m_datachecks}, computeTotals,
        services.databases, services.clock, dialogs, m_status);
    m_split = std::make_unique<SplitDetail>(
        listWidgets, current, SplitDetail::Panel{m_c.frasplit, m_c.List1, m_c.List3, m_c.List2},
        [this]() -> RecordSource & { return m_lists->cursor(); }, *m_glaccounts, dialogs);
    m_notes = std::make_unique<VendorNotes>(listWidgets, current, services.databases);
    m_display = std::make_unique<VendorDisplay>(
        *m_fields, *m_datavendor,
        VendorDisplay::Totals{computeTotals, [this] { return m_totals->openTotal(); },
                              [this] { return m_totals->yearTotal(); }},
        *m_current, dialogs);
    m_modes = std::make_unique<ScreenModes>(
        ScreenModes::Widgets{m_c.cmdadd, m_c.cmdmodify, m_c.cmdsave, m_c.cmddelete, m_c.cmdcancel,
                             m_c.cmdlookup, m_c.cmdprevious, m_c.cmdnext, m_c.fralookup,
                             m_c.frasplit, m_c.grid1, m_c.notes},
        *m_fields, ScreenModes::Sources{*m_datavendor, *m_datainvoice, *m_datachecks},
        ScreenModes::Display{[this] { return m_display->showCurrent(); },
                             [this] { return m_display->showAgain(); }},
        current, m_state, session, dialogs, m_status);
    m_lookup = std::make_unique<VendorLookup>(
        VendorLookup::Widgets{m_c.cmdlookup, m_c.fralookup, m_c.Option1, m_c.lookupinput,
                              action(QStringLiteral("byname")), m_c.listpane},
        *m_fields, *m_datavendor, [this] { return m_display->showCurrent(); }, m_state, dialogs,
        m_programs, m_status);
    m_saver = std::make_unique<VendorSaver>(
        m_c.cmdsave, *m_fields, *m_datavendor, current,
        VendorSaver::Asks{computeTotals,
                          [this] {
                              return VendorSaver::NoteShown{
                                  .typed = m_notes->changed(),
                                  .recalledVendor = m_notes->recalledVendor(),
                                  .recalled = m_notes->recalled().toString(),
                                  .text = m_notes->text()};
                          }},
        m_state, session, services.databases, dialogs, m_status);
    m_unsaved = std::make_unique<UnsavedEdit>(
        [this] { return m_modes->hasUnsavedEdit(m_notes->changed()); }, dialogs,
        [this] { return m_saver->save(); });
    m_modes->applyButtons(ScreenModes::Mode::Lookup); // the designed state: nothing recalled
    m_keys = std::make_unique<KeySender>();
    m_accounts = std::make_unique<ChartOfAccounts>(services.databases);
    m_yearEndZero = std::make_unique<YearEndZero>(
        YearEndZero::Services{dialogs, services.databases, session, m_status, *m_pass});
    m_recalculation = std::make_unique<BalanceRecalculation>(BalanceRecalculation::Services{
        dialogs, services.clock, services.databases, session, m_status, *m_pass});
    m_numberUtility = std::make_unique<VendorNumberUtility>(
        VendorNumberUtility::Services{services.clipboard, services.processes, session},
        [this] { m_modes->cancel(); },
        [this] {
            if (m_reloadStaff)
                m_reloadStaff();
        });
    m_reports = std::make_unique<ReportMenu>(
        ReportMenu::Services{dialogs, services.clock, services.clipboard, services.processes,
                             m_programs, services.databases, session, m_status},
        current, [this] { setTopmost(false); },
        [](const QString &job) { return std::make_unique<PrinterFormPrinter>(job); });
    m_fieldEntry = std::make_unique<FieldEntry>(
        *m_fields, *m_datavendor, current, m_state, session, dialogs, *m_accounts, m_programs,
        m_status, [this](const QString &keys) { m_keys->sendKeys(keys); });
}

VendorWindow::~VendorWindow() = default;

QAction *VendorWindow::addEntry(QMenu *menu, const QString &name, const QString &text)
{
    QAction *entry = menu->addAction(text);
    entry->setObjectName(name);
    m_actions.push_back(entry);
    return entry;
}

QAction *VendorWindow::action(const QString &name) const
{
    for (QAction *a : m_actions)
        if (a->objectName() == name)
            return a;
    return nullptr;
}

QMenu *VendorWindow::menu(const QString &name) const
{
    for (QMenu *m : m_menus)
        if (m->objectName() == name)
            return m;
    return nullptr;
}

void VendorWindow::buildMenus()
{
    auto newMenu = [this](const QString &name, const QString &title) {
        QMenu *m = menuBar()->addMenu(title);
        m->setObjectName(name);
        m_menus.push_back(m);
        return m;
    };
    QMenu *file = newMenu(QStringLiteral("mnufile"), tr("&File"));
    addEntry(file, QStringLiteral("exit"), tr("E&xit"));

    QMenu *lookup = newMenu(QStringLiteral("mnulookup"), tr("Lookup &by"));
    QAction *bynumber = addEntry(lookup, QStringLiteral("bynumber"), tr("Lookup by vendor number"));
    QAction *byname = addEntry(lookup, QStringLiteral("byname"), tr("Lookup by vendor name"));
    bynumber->setCheckable(true);
    byname->setCheckable(true);
    bynumber->setChecked(true);

    QMenu *reports = newMenu(QStringLiteral("mnureports"), tr("&Reports"));
    const std::pair<const char *, const char *> vendorLists[] = {
        {"rptbasic", "Vendor list by &number"},
        {"rptbasica", "Vendor list by n&ame"},
        {"rptmaster", "Vendor master file by number"},
        {"rptmastera", "Vendor master file by name"},
        {"rptmail", "Mailing labels by number"},
        {"rptmaila", "Mailing labels by name"},
        {"rptfilelabel", "File folder labels"},
        {"rptfilelabel67", "File folder labels (6/7 across)"},
        {"rpttopay", "Invoices to &pay"},
    };
    for (const auto &[name, text] : vendorLists)
        addEntry(reports, QString::fromLatin1(name), tr(text));
    reports->addSeparator();
    addEntry(reports, QStringLiteral("rptunpaid"), tr("This vendor's &open invoices"));
    addEntry(reports, QStringLiteral("rptpaid"), tr("This vendor's pai&d invoices..."));
    addEntry(reports, QStringLiteral("rptchecks"), tr("This vendor's &checks..."));
    addEntry(reports, QStringLiteral("mnudaterange"),
             tr("This vendor's invoices by date range..."));
    addEntry(reports, QStringLiteral("mnuallinvoices"), tr("All invoices by date range..."));
    addEntry(reports, QStringLiteral("pv1099"), tr("Vendor payments by date range..."));
    reports->addSeparator();
    QMenu *forms = reports->addMenu(tr("&1099 forms"));
    forms->setObjectName(QStringLiteral("mnu1099"));
    m_menus.push_back(forms);
    addEntry(forms, QStringLiteral("rpt1099"), tr("Print 1099-&MISC forms..."));
    addEntry(forms, QStringLiteral("rpt1099int"), tr("Print 1099-&INT forms..."));
    addEntry(forms, QStringLiteral("rpt1099div"), tr("Print 1099-&DIV forms..."));
    addEntry(forms, QStringLiteral("rpt1099nec"), tr("Print 1099-&NEC forms..."));
    forms->addSeparator();
    addEntry(forms, QStringLiteral("mnueditprintspec"), tr("&Adjust 1099 forms printing..."));
    reports->addSeparator();
    addEntry(reports, QStringLiteral("prtsetup"), tr("Printer &setup..."));
    addEntry(reports, QStringLiteral("mnuprintmargins"), tr("Printer &margins..."));

    QMenu *utilities = newMenu(QStringLiteral("mnuutilities"), tr("U&tilities"));
    addEntry(utilities, QStringLiteral("mnurecalc"), tr("&Recalculate vendor balances..."));
    addEntry(utilities, QStringLiteral("mnuchavennumber"), tr("&Change a vendor number..."));
    QAction *merge =
        addEntry(utilities, QStringLiteral("mnumergevendor"), tr("&Merge two vendors..."));
    merge->setEnabled(false); // only a level-99 user may merge
    utilities->addSeparator();
    addEntry(utilities, QStringLiteral("mnuversion"), tr("&Version information"));

    QMenu *eoy = newMenu(QStringLiteral("eoy"), tr("&Year-end"));
    addEntry(eoy, QStringLiteral("eoyzero"), tr("&Zero YTD totals..."));
    addEntry(eoy, QStringLiteral("eoy1099check"), tr("&1099 year-end check..."));
    eoy->menuAction()->setVisible(false); // shown to users at the recalculation level
}

QWidget *VendorWindow::buildButtonStrip()
{
    m_c.Picture1 = new QFrame;
    m_c.Picture1->setObjectName(QStringLiteral("Picture1"));
    m_c.Picture1->setAutoFillBackground(true);
    const std::pair<QPushButton **, std::pair<const char *, const char *>> buttons[] = {
        {&m_c.cmdadd, {"cmdadd", "&Add"}},
        {&m_c.cmdmodify, {"cmdmodify", "&Modify"}},
        {&m_c.cmdsave, {"cmdsave", "&Save"}},
        {&m_c.cmddelete, {"cmddelete", "&Delete"}},
        {&m_c.cmdcancel, {"cmdcancel", "&Cancel"}},
        {&m_c.cmdlookup, {"cmdlookup", "&Lookup"}},
        {&m_c.cmdprevious, {"cmdprevious", "&Previous"}},
        {&m_c.cmdnext, {"cmdnext", "&Next"}},
        {&m_c.cmdudf, {"cmdudf", "&User fields"}},
        {&m_c.cmdhelp, {"cmdhelp", "&Help"}},
        {&m_c.cmdexit, {"cmdexit", "E&xit"}},
    };
    std::vector<QPushButton *> made;
    for (const auto &[slot, names] : buttons) {
        *slot = new QPushButton(tr(names.second), m_c.Picture1);
        (*slot)->setObjectName(QString::fromLatin1(names.first));
        (*slot)->setFocusPolicy(Qt::TabFocus);
        made.push_back(*slot);
    }
    VendorLayout::arrangeButtons(m_c.Picture1, made);
    return m_c.Picture1;
}

QWidget *VendorWindow::buildVendorFrame()
{
    m_c.fravendor = new QGroupBox(tr("Vendor"));
    m_c.fravendor->setObjectName(QStringLiteral("fravendor"));
    for (int i = 0; i < fieldCount; ++i) {
        m_c.label1[i] =
            new QLabel(VendorFields::caption(static_cast<VendorField>(i)), m_c.fravendor);
        m_c.label1[i]->setObjectName(QStringLiteral("label1_%1").arg(i));
        m_c.Text1[i] = new QLineEdit(m_c.fravendor);
        m_c.Text1[i]->setObjectName(QStringLiteral("Text1_%1").arg(i));
        m_c.Text1[i]->setAutoFillBackground(true);
        m_c.label1[i]->setBuddy(m_c.Text1[i]);
    }
    VendorLayout::arrangeFields(m_c.fravendor, m_c.label1, m_c.Text1);
    new Form1099Type(m_c.Text1[indexOf(VendorField::Form1099)]); // the kind's name beside it
    // A locked vendor is read, not edited: its text stays as dark as when it can be typed in.
    QPalette readable = m_c.fravendor->palette();
    for (QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText})
        readable.setColor(QPalette::Disabled, role, readable.color(QPalette::Active, role));
    m_c.fravendor->setPalette(readable);
    m_c.fravendor->setEnabled(false);
    m_fields = std::make_unique<VendorFieldBoxes>(m_c.fravendor, m_c.label1, m_c.Text1);
    m_fields->setKeptFiguresEnabled(false); // unlocked by Add or a senior Modify
    return m_c.fravendor;
}

QWidget *VendorWindow::buildListArea()
{
    auto *area = new QWidget;
    area->setObjectName(QStringLiteral("listarea"));
    const std::pair<QPushButton **, std::pair<const char *, const char *>> buttons[] = {
        {&m_c.cmdunpaid, {"cmdunpaid", "Unpa&id invoices"}},
        {&m_c.cmdpaid, {"cmdpaid", "Paid in&voices"}},
        {&m_c.cmdchecks, {"cmdchecks", "Chec&ks"}},
        {&m_c.cmdnotes, {"cmdnotes", "N&otes"}},
        {&m_c.cmdsplit, {"cmdsplit", "Show Split Detail"}},
    };
    std::vector<QPushButton *> made;
    for (const auto &[slot, names] : buttons) {
        *slot = new QPushButton(tr(names.second), area);
        (*slot)->setObjectName(QString::fromLatin1(names.first));
        (*slot)->setFocusPolicy(Qt::TabFocus);
        made.push_back(*slot);
    }
    m_c.optsort[0] = new QRadioButton(tr("Old to new"), area);
    m_c.optsort[1] = new QRadioButton(tr("New to old"), area);
    for (int i = 0; i < 2; ++i)
        m_c.optsort[i]->setObjectName(QStringLiteral("optsort_%1").arg(i));
    m_c.optsort[1]->setChecked(true); // newest first, as a bookkeeper usually looks
    // The caption and what it names: a list, the notes, and the split panel over them.
    m_c.listpane = new QWidget(area);
    m_c.listpane->setObjectName(QStringLiteral("listpane"));
    m_c.gridcaption = new QLabel(m_c.listpane);
    m_c.gridcaption->setObjectName(QStringLiteral("gridcaption"));
    m_c.grid1 = new QTableView(m_c.listpane);
    m_c.grid1->setObjectName(QStringLiteral("grid1"));
    m_c.grid2 = new QTableView(m_c.listpane);
    m_c.grid2->setObjectName(QStringLiteral("grid2"));
    for (QTableView *grid : {m_c.grid1, m_c.grid2}) {
        grid->setSelectionBehavior(QAbstractItemView::SelectRows);
        grid->setSelectionMode(QAbstractItemView::SingleSelection);
        grid->verticalHeader()->setDefaultSectionSize(20);
        grid->hide();
    }
    m_c.notes = new QPlainTextEdit(m_c.listpane);
    m_c.notes->setObjectName(QStringLiteral("notes"));
    m_c.notes->setEnabled(false);
    // Notes that cannot be edited in this mode are still read: as dark as editable ones.
    QPalette readable = m_c.notes->palette();
    readable.setColor(QPalette::Disabled, QPalette::Text,
                      readable.color(QPalette::Active, QPalette::Text));
    m_c.notes->setPalette(readable);
    m_c.notes->hide();
    VendorLayout::arrangeListPane(m_c.listpane, m_c.gridcaption, {m_c.grid1, m_c.grid2, m_c.notes});
    VendorLayout::arrangeLists(area, made, m_c.optsort, m_c.listpane);
    buildSplitPanel(m_c.listpane);
    return area;
}

QWidget *VendorWindow::buildStatusRow()
{
    auto *row = new QWidget;
    m_c.helpwindow = new QLineEdit(row);
    m_c.passprogress = new QProgressBar(row);
    m_c.passprogress->setObjectName(QStringLiteral("passprogress"));
    VendorLayout::arrangeStatusRow(row, m_c.helpwindow, m_c.passprogress);
    m_pass = std::make_unique<PassIndicator>(this, m_c.passprogress);
    return row;
}

void VendorWindow::buildLookupPanel(QWidget *parent)
{
    m_c.fralookup = new QGroupBox(tr("Lookup by..."), parent);
    m_c.fralookup->setObjectName(QStringLiteral("fralookup"));
    m_c.fralookup->setAutoFillBackground(true);
    const char *captions[] = {"Vendor #", "Vendor Name", "Contact",   "Invoice #",
                              "Check #",  "Product",     "G/L Number"};
    for (int i = 0; i < 7; ++i) {
        m_c.Option1[i] = new QRadioButton(tr(captions[i]), m_c.fralookup);
        m_c.Option1[i]->setObjectName(QStringLiteral("Option1_%1").arg(i));
    }
    m_c.lookupinput = new QLineEdit(m_c.fralookup);
    m_c.lookupinput->setObjectName(QStringLiteral("lookupinput"));
    m_c.lookupinput->setAutoFillBackground(true);
    m_c.cmdgo = new QPushButton(tr("&Go"), m_c.fralookup);
    m_c.cmdgo->setObjectName(QStringLiteral("cmdgo"));
    m_c.cmdcancellookup = new QPushButton(tr("Cancel"), m_c.fralookup);
    m_c.cmdcancellookup->setObjectName(QStringLiteral("cmdcancellookup"));
    VendorLayout::arrangeLookup(m_c.fralookup, m_c.Option1, m_c.lookupinput, m_c.cmdgo,
                                m_c.cmdcancellookup);
    m_c.fralookup->hide();
}

void VendorWindow::buildSplitPanel(QWidget *parent)
{
    m_c.frasplit = new QGroupBox(tr("Split distribution"), parent);
    m_c.frasplit->setObjectName(QStringLiteral("frasplit"));
    m_c.frasplit->setAutoFillBackground(true);
    m_c.List1 = new QListWidget(m_c.frasplit);
    m_c.List1->setObjectName(QStringLiteral("List1"));
    m_c.List3 = new QListWidget(m_c.frasplit);
    m_c.List3->setObjectName(QStringLiteral("List3"));
    m_c.List2 = new QListWidget(m_c.frasplit);
    m_c.List2->setObjectName(QStringLiteral("List2"));
    VendorLayout::arrangeSplit(m_c.frasplit, m_c.List1, m_c.List3, m_c.List2);
    m_c.frasplit->hide();
}

template <typename Sender, typename Signal>
void VendorWindow::onSignal(Sender *sender, Signal signal, std::function<void()> handler)
{
    connect(sender, signal, this, [this, handler = std::move(handler)] { m_guard.run(handler); });
}

void VendorWindow::wire()
{
    auto click = [this](QPushButton *button, std::function<void()> handler) {
        onSignal(button, &QPushButton::clicked, std::move(handler));
    };
    auto trigger = [this](const char *name, std::function<void()> handler) {
        onSignal(action(QString::fromLatin1(name)), &QAction::triggered, std::move(handler));
    };
    click(m_c.cmdexit, [this] { close(); });
    trigger("exit", [this] { close(); });
    // A save ends in the lookup, as Cancel does: what those buttons asked for is done then.
    click(m_c.cmdlookup, [this] { unlessKept(false, [this] { openLookup(); }); });
    click(m_c.cmdadd, [this] { m_modes->add(); });
    click(m_c.cmdmodify, [this] { m_modes->modify(); });
    click(m_c.cmdcancel, [this] { unlessKept(false, [this] { m_modes->cancel(); }); });
    click(m_c.cmdnext, [this] { unlessKept(false, [this] { m_modes->next(); }); });
    click(m_c.cmdprevious, [this] { unlessKept(false, [this] { m_modes->previous(); }); });
    click(m_c.cmddelete, [this] { m_modes->remove(); });
    click(m_c.cmdsave, [this] { m_saver->save(); });
    click(m_c.cmdgo, [this] { m_lookup->go(); });
    click(m_c.cmdcancellookup, [this] { m_lookup->cancelLookup(); });
    connect(m_c.lookupinput, &QLineEdit::returnPressed, m_c.cmdgo, &QPushButton::click);
    click(m_c.cmdnotes, [this] { m_notes->show(m_state.editing()); });
    click(m_c.cmdhelp, [this] { help(); });
    click(m_c.cmdudf, [this] { openUserFields(); });
    click(m_c.cmdunpaid, [this] { m_lists->showUnpaid(); });
    click(m_c.cmdpaid, [this] { m_lists->showPaid(); });
    click(m_c.cmdchecks, [this] { m_lists->showChecks(); });
    click(m_c.cmdsplit, [this] { m_split->toggle(); });
    connect(m_c.grid1->horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int column) {
        m_guard.run([this, column] { m_lists->resortInvoices(column); });
    });
    connect(m_c.grid2->horizontalHeader(), &QHeaderView::sectionClicked, this,
            [this](int column) { m_guard.run([this, column] { m_lists->resortChecks(column); }); });
    connect(m_c.grid1, &QTableView::doubleClicked, this, [this](const QModelIndex &index) {
        m_guard.run([this, row = index.row()] { m_split->rowActivated(row); });
    });
    trigger("mnuversion", [this] { showVersion(); });
    trigger("eoyzero", [this] { runPass([this] { return m_yearEndZero->run(); }); });
    trigger("eoy1099check", [this] { openYearEndCheck(); });
    trigger("mnurecalc", [this] { runPass([this] { return m_recalculation->run(); }); });
    trigger("mnuchavennumber",
            [this] { unlessKept(true, [this] { m_numberUtility->changeNumber(); }); });
    trigger("mnumergevendor", [this] { unlessKept(true, [this] { m_numberUtility->merge(); }); });
    for (const QString &entry : ReportMenu::entries())
        trigger(qPrintable(entry), [this, entry] { m_reports->run(entry); });

    // What the areas report, and who acts on it.
    connect(m_modes.get(), &ScreenModes::lookupRequested, this, &VendorWindow::openLookup);
    connect(m_modes.get(), &ScreenModes::userFieldsClosing, this, &VendorWindow::closeUserFields);
    connect(m_display.get(), &VendorDisplay::noRecord, m_modes.get(), &ScreenModes::cancel);
    connect(m_saver.get(), &VendorSaver::finished, m_modes.get(), &ScreenModes::cancel);
    connect(m_modes.get(), &ScreenModes::screenCleared, m_notes.get(), &VendorNotes::forget);
    connect(m_lookup.get(), &VendorLookup::opening, this, [this] { m_lists->fitColumns(); });

    // The areas follow the vendor on the screen. Each runs behind the guard, as a handler
    // does: nothing thrown goes back through the display that reported the vendor.
    auto follow = [this](auto signal, std::function<void()> handler) {
        connect(m_current.get(), signal, this,
                [this, handler = std::move(handler)] { m_guard.run(handler); });
    };
    // Another vendor is shown: it is browsed, and its note follows when the box is shown.
    follow(&CurrentVendor::changed, [this] {
        m_modes->vendorShown();
        m_notes->reloadIfShown(m_state.editing());
    });
    // The same vendor read again: the open list and the note show what the database holds.
    follow(&CurrentVendor::reread, [this] {
        m_lists->refreshOpenList();
        m_notes->reloadIfShown(m_state.editing());
    });
    // A move lists the open list again for the vendor reached; a lookup hit, the check list.
    connect(m_modes.get(), &ScreenModes::moved, this,
            [this] { m_guard.run([this] { m_lists->refreshOpenList(); }); });
    connect(m_lookup.get(), &VendorLookup::found, this,
            [this] { m_guard.run([this] { m_lists->refreshChecksIfShown(); }); });

    QAction *bynumber = action(QStringLiteral("bynumber"));
    QAction *byname = action(QStringLiteral("byname"));
    connect(bynumber, &QAction::triggered, this, [bynumber, byname] {
        bynumber->setChecked(true);
        byname->setChecked(false);
    });
    connect(byname, &QAction::triggered, this, [bynumber, byname] {
        byname->setChecked(true);
        bynumber->setChecked(false);
    });
}

void VendorWindow::unlessKept(bool afterSave, const std::function<void()> &action)
{
    const UnsavedEdit::Outcome outcome = m_unsaved->ask();
    if (outcome == UnsavedEdit::Outcome::GoOn ||
        (afterSave && outcome == UnsavedEdit::Outcome::Saved))
        action();
}

void VendorWindow::runPass(const std::function<bool()> &pass)
{
    unlessKept(true, [this, &pass] {
        if (pass())
            m_modes->showAgain();
    });
}

void VendorWindow::openAccountNames()
{
    m_glaccounts->setDatabaseName(QStringLiteral("gl.mdb"));
    m_glaccounts->setRecordSource(QStringLiteral("select glacctnum , glacctname from gl0"));
    m_glaccounts->refresh();
}

void VendorWindow::closeAccountNames()
{
    m_glaccounts->setDatabaseName(QString());
    m_glaccounts->setRecordSource(QString());
    m_glaccounts->refresh();
}

void VendorWindow::releaseRecordSources()
{
    for (RecordSource *source : {m_datavendor.get(), m_datachecks.get(), m_datainvoice.get()}) {
        source->setRecordSource(QString());
        source->setDatabaseName(QString());
        source->refresh();
    }
    m_lists->releaseCursor();
}

void VendorWindow::openUserFields()
{
    // Only a vendor number of 1 or more has user-defined fields.
    if (!m_current->isSet())
        return;
    if (m_userFields) {
        m_userFields->raise();
        m_userFields->activateWindow();
        return;
    }
    // A user at the editing level calls the window as "DOR", any other as "VEN".
    const bool editor = m_session.userLevel >= m_session.accessLevel[1];
    const QString call =
        QLatin1String(editor ? "DOR" : "VEN") + QString::number(m_current->number());
    m_c.cmdudf->setEnabled(false);
    auto *window = new UserFieldsWindow(
        UserFieldsWindow::Services{m_services.dialogs, m_services.databases, m_session,
                                   m_services.clipboard, m_services.processes, m_status, m_programs,
                                   [this](const QString &keys) { m_keys->sendKeys(keys); },
                                   [this] { setTopmost(false); }},
        this);
    m_userFields = window;
    connect(window, &UserFieldsWindow::closed, this, [this] {
        m_userFields = nullptr; // deleted later; a closed window is not raised again
        m_c.cmdudf->setEnabled(true);
    });
    window->open(call);
}

UserFieldsWindow *VendorWindow::userFields() const
{
    return m_userFields.data();
}

void VendorWindow::closeUserFields()
{
    if (m_userFields)
        m_userFields->close();
}

void VendorWindow::help()
{
    m_c.cmdhelp->setEnabled(false);
    m_programs.help([this] { setTopmost(false); });
    m_c.cmdhelp->setEnabled(true);
}

void VendorWindow::showVersion()
{
    m_programs.runAndWait(m_programs.versionCommand(
        QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName()));
}

void VendorWindow::setTopmost(bool on)
{
    const bool visible = isVisible();
    setWindowFlag(Qt::WindowStaysOnTopHint, on);
    if (!visible)
        return;
    const bool userFieldsActive = m_userFields && m_userFields->isActiveWindow();
    show();
    // The user fields window follows: above the main window, and no longer above the window of
    // another program (the report preview) that is to come in front. Showing the main window
    // again put it in front; the user fields window goes back above it, keeping the keyboard.
    if (m_userFields && m_userFields->isVisible()) {
        m_userFields->setWindowFlag(Qt::WindowStaysOnTopHint, on);
        m_userFields->show();
        m_userFields->raise();
        if (userFieldsActive)
            m_userFields->activateWindow();
    }
}

bool VendorWindow::isTopmost() const
{
    return windowFlags().testFlag(Qt::WindowStaysOnTopHint);
}

void VendorWindow::centreOnScreen()
{
    const QScreen *screen = this->screen();
    if (!screen)
        return;
    // Centred on the whole screen where that place lies on the free part of it; else as close
    // to it as the window fits, made smaller when the screen is (the screen then scrolls).
    const QRect area = screen->geometry();
    const QSize size = frameGeometry().size();
    ScreenFit::place(this, QRect(QPoint(area.left() + (area.width() - size.width()) / 2,
                                        area.top() + (area.height() - size.height()) / 2),
                                 size));
}

void VendorWindow::nameForScreenReaders()
{
    // Fields and options are named by their captions and buttons by their texts; the lists,
    // the notes and the status line by what the screen shows beside them.
    m_c.grid1->setAccessibleName(tr("Invoices"));
    m_c.grid2->setAccessibleName(tr("Checks"));
    m_c.notes->setAccessibleName(tr("Notes"));
    m_c.helpwindow->setAccessibleName(tr("Status"));
    m_c.passprogress->setAccessibleName(tr("Progress of the pass"));
    m_c.lookupinput->setAccessibleName(tr("Look up"));
    m_c.List1->setAccessibleName(tr("Account"));
    m_c.List3->setAccessibleName(tr("Name"));
    m_c.List2->setAccessibleName(tr("Amount"));
}

void VendorWindow::orderFocus()
{
    // Tab walks the screen as it is read: the buttons from left to right, the vendor fields in
    // index order, the list buttons and sort options, the lookup panel over the lists, then the
    // lists themselves and the split panel over them.
    std::vector<QWidget *> order{m_c.cmdadd,    m_c.cmdmodify, m_c.cmdsave,     m_c.cmddelete,
                                 m_c.cmdcancel, m_c.cmdlookup, m_c.cmdprevious, m_c.cmdnext,
                                 m_c.cmdudf,    m_c.cmdhelp,   m_c.cmdexit};
    order.insert(order.end(), m_c.Text1.begin(), m_c.Text1.end());
    order.insert(order.end(), {m_c.cmdunpaid, m_c.cmdpaid, m_c.cmdchecks, m_c.cmdnotes,
                               m_c.cmdsplit, m_c.optsort[0], m_c.optsort[1]});
    order.insert(order.end(), m_c.Option1.begin(), m_c.Option1.end());
    order.insert(order.end(), {m_c.lookupinput, m_c.cmdgo, m_c.cmdcancellookup, m_c.grid1,
                               m_c.grid2, m_c.notes, m_c.List1, m_c.List3, m_c.List2});
    for (size_t i = 1; i < order.size(); ++i)
        QWidget::setTabOrder(order[i - 1], order[i]);
}

void VendorWindow::setBackgroundColour(int bgr)
{
    m_background = bgr;
    const QColor background = Colours::fromBgr(bgr);
    // The captions keep the practice's background and take the text colour that reads on it
    // (white on blue, black on yellow), also while the vendor frame is locked.
    const QColor text = Colours::textOn(background);
    for (QWidget *w : {static_cast<QWidget *>(this), static_cast<QWidget *>(m_c.Picture1),
                       static_cast<QWidget *>(m_c.fravendor)}) {
        QPalette p = w->palette();
        if (w != m_c.fravendor) {
            p.setColor(QPalette::Window, background);
            w->setAutoFillBackground(true);
        }
        for (QPalette::ColorGroup group :
             {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
            p.setColor(group, QPalette::WindowText, text);
        w->setPalette(p);
    }
    // The menu bar's entries sit on the same background.
    QPalette bar = menuBar()->palette();
    for (QPalette::ColorRole role : {QPalette::Window, QPalette::Button})
        bar.setColor(role, background);
    for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::ButtonText})
        bar.setColor(role, text);
    menuBar()->setPalette(bar);
}

int VendorWindow::backgroundColour() const
{
    return m_background >= 0 ? m_background : Colours::toBgr(palette().color(QPalette::Window));
}

void VendorWindow::useCanadianLabels()
{
    m_canadian = true;
    m_fields->label(VendorField::State)->setText(tr("Province"));
    m_fields->label(VendorField::Zip)->setText(tr("Code"));
}

void VendorWindow::rememberGridWidths()
{
    m_lists->rememberDesignWidths();
}

QString VendorWindow::gridCaption() const
{
    return m_c.gridcaption->text();
}

void VendorWindow::openLookup()
{
    m_lookup->open();
}

void VendorWindow::closeEvent(QCloseEvent *event)
{
    // A save that waits for another user, and a pass over the vendor file, keep the window until
    // they are done.
    if (m_state.saving || m_pass->running()) {
        event->ignore();
        return;
    }
    const UnsavedEdit::Outcome outcome = m_unsaved->ask();
    if (outcome == UnsavedEdit::Outcome::Stay) {
        event->ignore();
        return;
    }
    emit closing();
    event->accept();
}

void VendorWindow::openYearEndCheck()
{
    if (!m_yearEndCheck) {
        m_yearEndCheck = new YearEndCheckWindow(YearEndCheckWindow::Services{m_services.databases,
                                                                             m_services.dialogs,
                                                                             m_services.clock},
                                                this);
        connect(m_yearEndCheck, &YearEndCheckWindow::vendorChosen, this, [this](long long number) {
            m_guard.run([this, number] { showCheckedVendor(number); });
        });
        ScreenFit::keepOnScreen(m_yearEndCheck);
    }
    // Above the main window when that one stays on top, so that it is never hidden behind it.
    if (windowFlags().testFlag(Qt::WindowStaysOnTopHint))
        m_yearEndCheck->setWindowFlag(Qt::WindowStaysOnTopHint);
    m_yearEndCheck->show();
    m_yearEndCheck->raise();
    m_yearEndCheck->activateWindow();
}

// A row of the year-end check leads to its vendor, unless a vendor is being edited here.
void VendorWindow::showCheckedVendor(long long number)
{
    if (m_state.editing()) {
        m_services.dialogs.message(tr("Save or cancel the vendor being edited first."),
                                   Dialogs::Icon::Information, tr("1099 year-end check"));
        return;
    }
    m_lookup->showNumber(number);
    raise();
    activateWindow();
}
