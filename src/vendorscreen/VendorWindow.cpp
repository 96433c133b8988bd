#include "vendorscreen/VendorWindow.h"

#include "app/Closing.h"
#include "common/Services.h"
#include "common/Session.h"
#include "app/StaffRecords.h"
#include "common/Colours.h"
#include "common/ProgramRunner.h"
#include "data/RecordSource.h"
#include "keysend/KeySender.h"
#include "lists/InvoiceLists.h"
#include "lists/OpenInvoiceTotals.h"
#include "lists/SplitDetail.h"
#include "lists/VendorNotes.h"
#include "vendorscreen/FieldEntry.h"
#include "vendorscreen/ScreenModes.h"
#include "vendorscreen/VendorDisplay.h"
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
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QTableView>

#include <algorithm>

VendorWindow::VendorWindow(Session &session, Services &services) :
    m_session(session), m_services(services)
{
    setObjectName(QStringLiteral("vendor"));
    setWindowTitle(QStringLiteral("A/P Master"));
    m_programs = std::make_unique<ProgramRunner>(services.processes, services.dialogs,
                                                 services.clock, services.clipboard, session);
    m_staff = std::make_unique<StaffRecords>(services.databases, services.dialogs, session);
    m_datavendor = std::make_unique<RecordSource>(services.databases, QStringLiteral("datavendor"));
    m_datavendor->setUpdateTable(QStringLiteral("vendors"), QStringLiteral("vendnumber"));
    m_datainvoice =
        std::make_unique<RecordSource>(services.databases, QStringLiteral("datainvoice"));
    m_datainvoice->setUpdateTable(QStringLiteral("invoices"), QStringLiteral("vendnumber"));
    m_datachecks = std::make_unique<RecordSource>(services.databases, QStringLiteral("datachecks"));
    m_datachecks->setUpdateTable(QStringLiteral("checks"), QStringLiteral("chknum"));

    m_glaccounts = std::make_unique<RecordSource>(services.databases, QStringLiteral("glaccounts"));

    buildMenus();
    auto *central = new QWidget(this);
    central->setObjectName(QStringLiteral("central"));
    VendorLayout::arrange(central, buildButtonStrip(), buildVendorFrame(), buildListArea(),
                          m_c.helpwindow = new QLineEdit(central));
    m_c.helpwindow->setObjectName(QStringLiteral("helpwindow"));
    m_c.helpwindow->setReadOnly(true);
    m_c.helpwindow->setFocusPolicy(Qt::NoFocus);
    buildLookupPanel(central);
    buildSplitPanel(central);
    setCentralWidget(central);
    resize(VendorLayout::windowSize);
    m_lists = std::make_unique<InvoiceLists>(*this);
    m_split = std::make_unique<SplitDetail>(*this);
    m_totals = std::make_unique<OpenInvoiceTotals>(*this);
    m_modes = std::make_unique<ScreenModes>(*this);
    m_display = std::make_unique<VendorDisplay>(*this);
    m_lookup = std::make_unique<VendorLookup>(*this);
    m_notes = std::make_unique<VendorNotes>(*this);
    m_saver = std::make_unique<VendorSaver>(*this);
    m_modes->applyButtons(ScreenModes::Mode::Lookup); // the designed state: nothing recalled
    m_keys = std::make_unique<KeySender>();
    m_fieldEntry = new FieldEntry(*this, [this](const QString &keys) { m_keys->sendKeys(keys); });
    wire();
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
        m_c.label1[i] = new QLabel(VendorLayout::fieldCaption(i), m_c.fravendor);
        m_c.label1[i]->setObjectName(QStringLiteral("label1_%1").arg(i));
        m_c.Text1[i] = new QLineEdit(m_c.fravendor);
        m_c.Text1[i]->setObjectName(QStringLiteral("Text1_%1").arg(i));
        m_c.Text1[i]->setProperty("index", i);
        m_c.Text1[i]->setAutoFillBackground(true);
        m_c.label1[i]->setBuddy(m_c.Text1[i]);
    }
    VendorLayout::arrangeFields(m_c.fravendor, m_c.label1, m_c.Text1);
    // A locked vendor is read, not edited: its text stays as dark as when it can be typed in.
    QPalette readable = m_c.fravendor->palette();
    for (QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText})
        readable.setColor(QPalette::Disabled, role, readable.color(QPalette::Active, role));
    m_c.fravendor->setPalette(readable);
    m_c.fravendor->setEnabled(false);
    for (int i = 13; i <= 16; ++i)
        m_c.Text1[i]->setEnabled(
            false); // figures the system keeps; unlocked by Add or a senior Modify
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
    m_c.gridcaption = new QLabel(area);
    m_c.gridcaption->setObjectName(QStringLiteral("gridcaption"));
    m_c.grid1 = new QTableView(area);
    m_c.grid1->setObjectName(QStringLiteral("grid1"));
    m_c.grid2 = new QTableView(area);
    m_c.grid2->setObjectName(QStringLiteral("grid2"));
    for (QTableView *grid : {m_c.grid1, m_c.grid2}) {
        grid->setSelectionBehavior(QAbstractItemView::SelectRows);
        grid->setSelectionMode(QAbstractItemView::SingleSelection);
        grid->verticalHeader()->setDefaultSectionSize(20);
        grid->hide();
    }
    m_c.notes = new QPlainTextEdit(area);
    m_c.notes->setObjectName(QStringLiteral("notes"));
    m_c.notes->setEnabled(false);
    m_c.notes->hide();
    VendorLayout::arrangeLists(area, made, m_c.optsort, m_c.gridcaption,
                               {m_c.grid1, m_c.grid2, m_c.notes});
    return area;
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

void VendorWindow::wire()
{
    connect(m_c.cmdexit, &QPushButton::clicked, this, &QWidget::close);
    connect(action(QStringLiteral("exit")), &QAction::triggered, this, &QWidget::close);
    connect(m_c.cmdlookup, &QPushButton::clicked, this, &VendorWindow::openLookup);
    connect(m_c.cmdadd, &QPushButton::clicked, this, [this] { m_modes->add(); });
    connect(m_c.cmdmodify, &QPushButton::clicked, this, [this] { m_modes->modify(); });
    connect(m_c.cmdcancel, &QPushButton::clicked, this, [this] { m_modes->cancel(); });
    connect(m_c.cmdnext, &QPushButton::clicked, this, [this] { m_modes->next(); });
    connect(m_c.cmdprevious, &QPushButton::clicked, this, [this] { m_modes->previous(); });
    connect(m_c.cmddelete, &QPushButton::clicked, this, [this] { m_modes->remove(); });
    connect(m_c.cmdsave, &QPushButton::clicked, this, [this] { m_saver->save(); });
    connect(m_c.cmdgo, &QPushButton::clicked, this, [this] { m_lookup->go(); });
    connect(m_c.cmdcancellookup, &QPushButton::clicked, this, [this] { m_lookup->cancelLookup(); });
    connect(m_c.lookupinput, &QLineEdit::returnPressed, m_c.cmdgo, &QPushButton::click);
    connect(m_c.cmdnotes, &QPushButton::clicked, this, [this] { m_notes->show(); });
    m_c.lookupinput->installEventFilter(this);
    for (QRadioButton *option : m_c.Option1)
        option->installEventFilter(this);
    m_c.notes->installEventFilter(this);
    connect(m_c.cmdhelp, &QPushButton::clicked, this, &VendorWindow::help);
    connect(m_c.cmdunpaid, &QPushButton::clicked, this, [this] { m_lists->showUnpaid(); });
    connect(m_c.cmdpaid, &QPushButton::clicked, this, [this] { m_lists->showPaid(); });
    connect(m_c.cmdchecks, &QPushButton::clicked, this, [this] { m_lists->showChecks(); });
    connect(m_c.grid1->horizontalHeader(), &QHeaderView::sectionClicked, this,
            [this](int column) { m_lists->resortInvoices(column); });
    connect(m_c.grid2->horizontalHeader(), &QHeaderView::sectionClicked, this,
            [this](int column) { m_lists->resortChecks(column); });
    connect(m_c.cmdsplit, &QPushButton::clicked, this, [this] { m_split->toggle(); });
    connect(m_c.grid1, &QTableView::doubleClicked, this,
            [this](const QModelIndex &index) { m_split->rowActivated(index.row()); });
    connect(action(QStringLiteral("mnuversion")), &QAction::triggered, this,
            &VendorWindow::showVersion);
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

void VendorWindow::closeUserFields()
{
    // The user-defined information window is not part of this screen yet; nothing to unload.
}

void VendorWindow::help()
{
    m_c.cmdhelp->setEnabled(false);
    m_programs->help([this] { setTopmost(false); });
    m_c.cmdhelp->setEnabled(true);
}

void VendorWindow::showVersion()
{
    m_programs->runAndWait(m_programs->versionCommand(
        QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName()));
}

void VendorWindow::setTopmost(bool on)
{
    const bool visible = isVisible();
    setWindowFlag(Qt::WindowStaysOnTopHint, on);
    if (visible)
        show();
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
    const QRect area = screen->geometry();
    move(area.left() + (area.width() - width()) / 2, area.top() + (area.height() - height()) / 2);
}

void VendorWindow::setBackgroundColour(int bgr)
{
    m_background = bgr;
    for (QWidget *w : {static_cast<QWidget *>(this), static_cast<QWidget *>(m_c.Picture1)}) {
        QPalette p = w->palette();
        p.setColor(QPalette::Window, Colours::fromBgr(bgr));
        w->setPalette(p);
        w->setAutoFillBackground(true);
    }
}

int VendorWindow::backgroundColour() const
{
    return m_background >= 0 ? m_background : Colours::toBgr(palette().color(QPalette::Window));
}

void VendorWindow::useCanadianLabels()
{
    m_canadian = true;
    m_c.label1[5]->setText(tr("Province"));
    m_c.label1[6]->setText(tr("Code"));
}

void VendorWindow::rememberGridWidths()
{
    m_grid1Width = VendorLayout::grid1DesignWidth;
    m_grid2Width = VendorLayout::grid2DesignWidth;
    m_grid1Columns = VendorLayout::grid1DesignColumns;
    m_grid2Columns = VendorLayout::grid2DesignColumns;
}

QString VendorWindow::gridCaption() const
{
    return m_c.gridcaption->text();
}

void VendorWindow::setGridCaption(const QString &caption)
{
    m_c.gridcaption->setText(caption);
}

void VendorWindow::setStatus(const QString &text)
{
    m_c.helpwindow->setText(text);
    m_c.helpwindow->repaint();
}

QString VendorWindow::status() const
{
    return m_c.helpwindow->text();
}

void VendorWindow::blankFields()
{
    for (QLineEdit *field : m_c.Text1)
        field->setText(QString());
    // One repaint of the frame shows every emptied field at once, at a twenty-fourth of the cost.
    m_c.fravendor->repaint();
}

void VendorWindow::openLookup()
{
    m_lookup->open();
}

bool VendorWindow::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    // The seven methods are one stop of the Tab key, as a group of options is on every desktop:
    // Shift+Tab from the entry reaches the chosen method, Tab from a method the entry.
    if (type == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        const bool isOption =
            std::find(m_c.Option1.begin(), m_c.Option1.end(), watched) != m_c.Option1.end();
        if (watched == m_c.lookupinput && key == Qt::Key_Backtab) {
            for (QRadioButton *option : m_c.Option1)
                if (option->isChecked())
                    option->setFocus(Qt::BacktabFocusReason);
            return true;
        }
        if (isOption && key == Qt::Key_Tab) {
            m_c.lookupinput->setFocus(Qt::TabFocusReason);
            return true;
        }
    }
    if (watched == m_c.lookupinput) {
        if (type == QEvent::FocusIn &&
            static_cast<QFocusEvent *>(event)->reason() != Qt::ActiveWindowFocusReason)
            m_lookup->entryFocused();
        else if (type == QEvent::FocusOut)
            m_lookup->entryLeft();
        else if (type == QEvent::KeyPress)
            m_lookup->entryKey(static_cast<QKeyEvent *>(event)->key());
    } else if (watched == m_c.notes) {
        if (type == QEvent::FocusIn)
            m_notes->focused();
        else if (type == QEvent::FocusOut)
            m_notes->left();
        else if (type == QEvent::KeyPress && !static_cast<QKeyEvent *>(event)->text().isEmpty())
            m_notes->keyTyped();
    }
    return QMainWindow::eventFilter(watched, event);
}

void VendorWindow::closeEvent(QCloseEvent *event)
{
    // A save that waits for another user keeps the window until it is done.
    if (m_state.saving) {
        event->ignore();
        return;
    }
    emit closing();
    Closing::run(*this);
    event->accept();
}
