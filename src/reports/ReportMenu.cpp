#include "reports/ReportMenu.h"

#include "common/Dialogs.h"
#include "common/Numbers.h"
#include "common/Processes.h"
#include "common/ProgramRunner.h"
#include "common/Prompts.h"
#include "common/Session.h"
#include "lists/CurrentVendor.h"
#include "reports/Form1099Run.h"
#include "reports/FormPrinter.h"
#include "reports/ReportRunner.h"

ReportMenu::ReportMenu(Services services, const CurrentVendor &vendor,
                       std::function<void()> notTopmost, PrinterFactory printers) :
    m_s(services),
    m_vendor(vendor), m_margins(services.session.sysUser),
    m_runner(std::make_unique<ReportRunner>(
        ReportRunner::Services{services.clipboard, services.processes, services.dialogs,
                               services.status},
        m_margins, std::move(notTopmost))),
    m_forms(std::make_unique<Form1099Run>(
        Form1099Run::Services{services.dialogs, services.databases, services.session,
                              services.status, services.clock},
        m_layout, m_kind, std::move(printers)))
{
}

ReportMenu::~ReportMenu() = default;

const QStringList &ReportMenu::entries()
{
    static const QStringList names = {
        "rptbasic", "rptbasica",      "rptmaster",      "rptmastera",     "rptmail",
        "rptmaila", "rptfilelabel",   "rptfilelabel67", "rpttopay",       "rptunpaid",
        "rptpaid",  "rptchecks",      "mnudaterange",   "mnuallinvoices", "pv1099",
        "rpt1099",  "rpt1099int",     "rpt1099div",     "rpt1099nec",     "mnueditprintspec",
        "prtsetup", "mnuprintmargins"};
    return names;
}

bool ReportMenu::run(const QString &entry)
{
    // The sysuser is known only once start-up has read the staff record.
    m_margins.setSysUser(m_s.session.sysUser);
    struct ListReport {
        const char *entry;
        const char *file;
        const char *sort;
    };
    static const ListReport lists[] = {
        {"rptbasic", "rap001.rpt", "+{vendors.vendnumber}"},
        {"rptbasica", "rap001.rpt", "+{vendors.vendname}"},
        {"rptmaster", "rap002.rpt", "+{vendors.vendnumber}"},
        {"rptmastera", "rap002.rpt", "+{vendors.vendname}"},
        {"rptmail", "rap007.rpt", "+{vendors.vendnumber}"},
        {"rptmaila", "rap007.rpt", "+{vendors.vendname}"},
        {"rptfilelabel", "rap007a.rpt", "+{vendors.vendnumber}"},
        {"rptfilelabel67", "rap007b.rpt", "+{vendors.vendnumber}"},
    };
    for (const ListReport &report : lists) {
        if (entry == QLatin1String(report.entry)) {
            listReport(report.file, report.sort);
            return true;
        }
    }
    const std::pair<const char *, std::function<void()>> commands[] = {
        {"rpttopay", [this] { toPay(); }},
        {"rptunpaid", [this] { unpaid(); }},
        {"rptpaid", [this] { paid(); }},
        {"rptchecks", [this] { checks(); }},
        {"mnuallinvoices", [this] { allInvoices(); }},
        {"pv1099", [this] { payments(); }},
        {"mnudaterange", [this] { dateRange(); }},
        {"rpt1099", [this] { m_forms->misc(); }},
        {"rpt1099div", [this] { m_forms->dividends(); }},
        {"rpt1099nec", [this] { m_forms->nonemployee(); }},
        {"rpt1099int", [this] { m_forms->interest(); }},
        {"mnueditprintspec",
         [this] { m_s.processes.start(QStringLiteral("fprint.exe"), Processes::Show::Normal); }},
        {"prtsetup", [this] { m_s.programs.runAndWait(QStringLiteral("prtctrl.exe")); }},
        {"mnuprintmargins", [this] { m_margins.adjust(m_s.dialogs); }},
    };
    for (const auto &[name, command] : commands) {
        if (entry == QLatin1String(name)) {
            command();
            return true;
        }
    }
    return false;
}

void ReportMenu::listReport(const char *file, const char *sortField)
{
    // The vendor lists cover the whole file, whichever vendor is on screen.
    m_request.reportFileName = QString::fromLatin1(file);
    m_request.sortFields[0] = QString::fromLatin1(sortField);
    m_runner->printReport(m_request);
}

void ReportMenu::toPay()
{
    m_request.reportFileName = QStringLiteral("rap006.rpt");
    m_request.selectionFormula.clear();
    m_runner->printReport(m_request);
}

long ReportMenu::vendorFor(const QString &title)
{
    const long number = static_cast<long>(m_vendor.number());
    if (number > 0)
        return number;
    m_s.dialogs.message(QStringLiteral("You must recall a vendor account first."),
                        Dialogs::Icon::Information, title);
    return 0;
}

bool ReportMenu::askDates(const QString *context)
{
    if (context)
        m_s.session.messageText = *context;
    Prompts::askDateRange(m_s.dialogs, m_s.clock, m_s.session);
    const QString answer = m_s.session.messageText;
    // A cancelled prompt reads as the dates 0 and 0.
    m_lastFrom = static_cast<long>(Numbers::leadingWhole(answer.left(8)));
    m_lastTo = static_cast<long>(Numbers::leadingWhole(answer.mid(8, 8)));
    return answer != QLatin1String("CANCEL");
}

void ReportMenu::unpaid()
{
    const long vendor = vendorFor(QStringLiteral("Vendor Open Invoices"));
    if (!vendor)
        return;
    m_request.reportFileName = QStringLiteral("rap003.rpt");
    m_request.selectionFormula = QStringLiteral("{invoices.vendnumber} = ") +
                                 QString::number(vendor) +
                                 QStringLiteral(" and {invoices.invstatus} >= 1 and "
                                                "{invoices.invstatus} <= 3");
    m_runner->printReport(m_request);
}

void ReportMenu::paid()
{
    const long vendor = vendorFor(QStringLiteral("Vendor Paid Invoices"));
    if (!vendor)
        return;
    m_request.reportFileName = QStringLiteral("rap004.rpt");
    // No blank after "=" here: the report engine reads it either way.
    QString formula = QStringLiteral("{invoices.vendnumber} =") + QString::number(vendor) +
                      QStringLiteral(" and {invoices.invstatus} = 4");
    const QString context = QStringLiteral("Paid Invoices");
    // Cancelling the dates means every date of the vendor.
    if (askDates(&context))
        formula += QStringLiteral(" and {invoices.invcheckdate} >= ") +
                   QString::number(m_lastFrom) +
                   QStringLiteral(" and {invoices.invcheckdate} <= ") + QString::number(m_lastTo);
    m_request.selectionFormula = formula;
    m_runner->printReport(m_request);
}

void ReportMenu::checks()
{
    const long vendor = vendorFor(QStringLiteral("Vendor Checks"));
    if (!vendor)
        return;
    m_request.reportFileName = QStringLiteral("rap005.rpt");
    QString formula = QStringLiteral("{checks.chkpayeenum} = ") + QString::number(vendor);
    const QString context = QStringLiteral("Checks Issued");
    if (askDates(&context))
        formula += QStringLiteral(" and {checks.chkdate} >= ") + QString::number(m_lastFrom) +
                   QStringLiteral(" and {checks.chkdate} <= ") + QString::number(m_lastTo);
    m_request.selectionFormula = formula;
    m_runner->printReport(m_request);
}

void ReportMenu::allInvoices()
{
    m_request.reportFileName = QStringLiteral("rap014.rpt");
    // The prompt shows whatever the message text holds; a cancel selects nothing.
    askDates(nullptr);
    m_request.selectionFormula =
        QStringLiteral("{invoices.invdate} >= ") + QString::number(m_lastFrom) +
        QStringLiteral(" and {invoices.invdate} <= ") + QString::number(m_lastTo);
    m_runner->printReport(m_request);
}

void ReportMenu::dateRange()
{
    if (!vendorFor(QStringLiteral("Vendor Invoices - Date Range")))
        return;
    m_oneVendorPayments = true;
    payments();
}

void ReportMenu::payments()
{
    const QString context = QStringLiteral("Vendor Payments");
    askDates(&context);
    const QString from = QString::number(m_lastFrom);
    const QString to = QString::number(m_lastTo);
    if (m_oneVendorPayments) {
        m_oneVendorPayments = false;
        m_request.reportFileName = QStringLiteral("rap003a.rpt");
        m_request.selectionFormula = QStringLiteral("{invoices.vendnumber} = ") +
                                     QString::number(m_vendor.number()) +
                                     QStringLiteral(" and {invoices.invdate} >= ") + from +
                                     QStringLiteral(" and {invoices.invdate} <= ") + to;
    } else {
        m_request.reportFileName = QStringLiteral("1099pv.rpt");
        m_request.selectionFormula = QStringLiteral("{invoices.invcheckdate} >= ") + from +
                                     QStringLiteral(" and {invoices.invcheckdate} <= ") + to;
    }
    m_runner->runReport(m_request);
    m_request.selectionFormula.clear();
}
