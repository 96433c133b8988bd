#pragma once

#include <QString>

#include <functional>
#include <memory>

class Clock;
class Databases;
class Dialogs;
class FormLayout;
class FormPrinter;
class StatusLine;
struct Session;

// The year-end 1099 print runs: the vendors that qualify are counted, the user chooses the
// threshold, a restart point or a single vendor, and each vendor's form is printed onto the
// pre-printed federal form at the positions of the form's layout file.
class Form1099Run {
public:
    // The run's form kind as the screen keeps it (0 when idle).
    enum Kind { Idle = 0, Misc = 1, Interest = 2, Dividends = 3, Nonemployee = 5 };
    using PrinterFactory = std::function<std::unique_ptr<FormPrinter>(const QString &jobName)>;

    struct Services {
        Dialogs &dialogs;
        Databases &databases;
        Session &session; // the shared message text and the last Yes/No answer
        StatusLine &status;
        const Clock &clock; // the tax year of a run when the legal threshold is used
    };

    // layout is kept between runs (a shorter layout leaves a longer one's elements in place);
    // kind is the screen's form kind, which outlives a run that was cancelled at an input.
    Form1099Run(Services services, FormLayout &layout, int &kind, PrinterFactory printers) :
        m_s(services), m_layout(layout), m_kind(kind), m_printers(std::move(printers))
    {
    }

    void misc();        // the 1099-MISC command
    void dividends();   // the 1099-DIV command: "1099div.lof" in the message text, then the run
    void nonemployee(); // the 1099-NEC command
    void interest();    // the 1099-INT command, a run of its own shape

    // The payer items (slots 101 to 108) from the company record, trimmed and in capitals.
    void loadPayer();
    // One vendor's items (slots 121 to 126) and amount.
    double loadVendor(long long number);

    struct Form;

private:
    static const Form &formOf(int kind);
    void run(const Form &form);
    bool choose(const Form &form, QString &threshold, long long &from, long long &to);
    // The threshold of the $600 question: 600, or the tax year's legal threshold for the form
    // when the data folder's 1099 settings ask for it; false (after a message) when the settings
    // file cannot be used.
    bool questionThreshold(const Form &form, double &amount, bool &legal);
    // The vendor number typed into an input box; nothing when the run is to end.
    bool askVendorNumber(const QString &prompt, const QString &title, long long &number);
    int yesNo(const QString &text, const QString &title);
    void printForms(const Form &form, const QString &statement);
    void place(const Form &form, FormPrinter &printer, int offset, int formOnPage, int type,
               double amount);
    int count(const QString &statement);

    Services m_s;
    FormLayout &m_layout;
    int &m_kind;
    PrinterFactory m_printers;
    QString m_lastTitle;
};
