#pragma once

#include "reports/FormLayout.h"
#include "reports/PrintMargins.h"
#include "reports/ReportRequest.h"

#include <QString>

#include <functional>
#include <memory>

class Clipboard;
class Clock;
class CurrentVendor;
class Databases;
class Dialogs;
class Form1099Run;
class FormPrinter;
class Processes;
class ProgramRunner;
class ReportRunner;
class StatusLine;
struct Session;

// The commands of the Reports menu: each vendor report fills the pending request and hands it
// to the report runner; the 1099 commands print the forms; the rest start the suite's layout
// adjuster and printer set-up, or ask for the printer margins.
class ReportMenu {
public:
    struct Services {
        Dialogs &dialogs;
        const Clock &clock;
        Clipboard &clipboard;
        Processes &processes;
        ProgramRunner &programs;
        Databases &databases;
        Session &session;
        StatusLine &status;
    };
    using PrinterFactory = std::function<std::unique_ptr<FormPrinter>(const QString &jobName)>;

    // vendor: the vendor on the screen, whose reports the vendor commands print. notTopmost takes
    // the main window out of the always-on-top state before the runner starts.
    ReportMenu(Services services, const CurrentVendor &vendor, std::function<void()> notTopmost,
               PrinterFactory printers);
    ~ReportMenu();
    ReportMenu(const ReportMenu &) = delete;
    ReportMenu &operator=(const ReportMenu &) = delete;

    // A command by its menu entry's name ("rptbasic", "rpt1099nec", "prtsetup"); false when the
    // name is not one of this menu's.
    bool run(const QString &entry);
    static const QStringList &entries();

    // What the screen keeps between commands.
    const ReportRequest &request() const { return m_request; }
    int form1099Kind() const { return m_kind; }
    long lastFrom() const { return m_lastFrom; }
    long lastTo() const { return m_lastTo; }
    const FormLayout &layout() const { return m_layout; }
    PrintMargins &margins() { return m_margins; }
    Form1099Run &forms() { return *m_forms; }

private:
    void listReport(const char *file, const char *sortField);
    void toPay();
    void unpaid();
    void paid();
    void checks();
    void allInvoices();
    void payments();
    void dateRange();
    // The vendor shown, or 0 with the message titled as the command.
    long vendorFor(const QString &title);
    // Asks for a date range with the context word; false when the user cancelled. The dates
    // are kept as the last report dates (0 and 0 after a cancel).
    bool askDates(const QString *context);

    Services m_s;
    const CurrentVendor &m_vendor;
    ReportRequest m_request;
    PrintMargins m_margins;
    std::unique_ptr<ReportRunner> m_runner;
    FormLayout m_layout;
    int m_kind = 0;
    std::unique_ptr<Form1099Run> m_forms;
    bool m_oneVendorPayments = false; // the one-shot flag of the date-range command
    long m_lastFrom = 0;
    long m_lastTo = 0;
};
