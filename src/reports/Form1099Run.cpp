#include "reports/Form1099Run.h"

#include "common/Clock.h"
#include "common/Dialogs.h"
#include "common/Numbers.h"
#include "common/Session.h"
#include "common/StatusLine.h"
#include "data/Databases.h"
#include "reports/FormLayout.h"
#include "reports/FormPlacement.h"
#include "reports/FormPrinter.h"
#include "yearend/TaxThresholds.h"
#include "yearend/YearEndSettings.h"

#include <QCoreApplication>
#include <QSqlQuery>
#include <QSqlRecord>

// What differs from one form to another.
struct Form1099Run::Form {
    int kind;
    const char *allCount;
    const char *thresholdCount;
    const char *layoutFile;
    const char *title; // followed by the layout's caption when captioned
    bool captioned;
    const char *selection; // followed by the threshold and the vendor-number range
    int perPage;
    const char *jobName;
    const char *completion;
};

namespace {

const QString configFile = QStringLiteral("config.mdb");
const QString apFile = QStringLiteral("ap.mdb");
constexpr long long highestVendor = 99999;

// The item slots above the layout's elements.
enum Slot : int {
    PayerName = 101,
    PayerAddress1 = 102,
    PayerAddress2 = 103,
    PayerCity = 104,
    PayerState = 105,
    PayerZip = 106,
    PayerId = 107,
    PayerPlace = 108,
    RecipientId = 121,
    RecipientName = 122,
    RecipientAddress1 = 123,
    RecipientPlace = 124,
    RecipientAddress2 = 125,
    Account = 126,
};

QString trimmed(const QSqlRecord &row, const char *column)
{
    return row.value(QString::fromLatin1(column)).toString().trimmed();
}

QString cityLine(const QString &city, const QString &state, const QString &zip)
{
    return city + QStringLiteral("   ") + state + QStringLiteral("   ") + zip;
}

} // namespace

const Form1099Run::Form &Form1099Run::formOf(int kind)
{
    static const Form misc{
        Misc,
        "SELECT Count(*) FROM vendors WHERE vendytd > 0 and (vend1099type = 1 or vend1099type = 4)",
        "SELECT Count(*) FROM vendors WHERE vendytd >= 600 and (vend1099type = 1 or "
        "vend1099type = 4)",
        "1099misc.lof",
        "Federal 1099-MISC Selection - ",
        true,
        "select vendnumber, vend1099type from vendors where (vend1099type = 1 or vend1099type = "
        "4) and vendytd >= ",
        2,
        "1099-MISC forms",
        "1099 printing complete"};
    static const Form dividends{
        Dividends,
        "SELECT Count(*) FROM vendors WHERE vendytd > 0 and vend1099type = 3",
        "SELECT Count(*) FROM vendors WHERE vendytd > 600 and vend1099type = 3",
        "1099div.lof",
        "Federal 1099-DIV Selection - ",
        true,
        "select vendnumber from vendors where vend1099type = 3 and vendytd >= ",
        2,
        "1099-DIV forms",
        "1099 printing complete"};
    static const Form nonemployee{
        Nonemployee,
        "SELECT Count(*) FROM vendors WHERE vendytd > 0 and vend1099type = 5",
        "SELECT Count(*) FROM vendors WHERE vendytd > 600 and vend1099type = 5",
        "1099nec.lof",
        "Federal 1099-NEC Selection ",
        false,
        "select vendnumber from vendors where vend1099type = 5 and vendytd >= ",
        3,
        "1099-NEC forms",
        "1099 printing complete"};
    static const Form interest{
        Interest,
        "SELECT Count(*) FROM vendors WHERE vendytd > 0 and vend1099type = 2",
        "SELECT Count(*) FROM vendors WHERE vendytd >= 600 and vend1099type = 2",
        "1099int.lof",
        "Federal 1099-INT Selection - ",
        true,
        "select vendnumber from vendors where vend1099type = 2 and vendytd >= ",
        3,
        "1099-INT forms",
        "1099-INT printing complete"};
    switch (kind) {
    case Dividends:
        return dividends;
    case Nonemployee:
        return nonemployee;
    case Interest:
        return interest;
    default:
        return misc;
    }
}

void Form1099Run::misc()
{
    // A run cancelled at a vendor-number input keeps its kind: an NEC run stays NEC.
    if (m_kind != Nonemployee)
        m_kind = m_s.session.messageText == QLatin1String("1099div.lof") ? Dividends : Misc;
    run(formOf(m_kind));
}

void Form1099Run::dividends()
{
    m_s.session.messageText = QStringLiteral("1099div.lof");
    misc();
}

void Form1099Run::nonemployee()
{
    m_kind = Nonemployee;
    misc();
}

void Form1099Run::interest()
{
    m_kind = Interest;
    run(formOf(Interest));
}

int Form1099Run::count(const QString &statement)
{
    return m_s.databases.scalar(apFile, statement).toInt();
}

int Form1099Run::yesNo(const QString &text, const QString &title)
{
    m_lastTitle = title;
    m_s.session.lastYesNo = m_s.dialogs.yesNo(text, title);
    return m_s.session.lastYesNo;
}

bool Form1099Run::askVendorNumber(const QString &prompt, const QString &title, long long &number)
{
    m_lastTitle = title;
    const QString answer = m_s.dialogs.input(prompt, title).trimmed();
    if (answer.isEmpty())
        return false;
    const double value = Numbers::leading(answer);
    if (value < 1)
        return false;
    if (value > highestVendor) {
        m_s.dialogs.message(QStringLiteral("Vendor numbers go up to 99999; there is no vendor ") +
                                answer + QStringLiteral(". Nothing was printed."),
                            Dialogs::Icon::Information, title);
        return false;
    }
    number = static_cast<long long>(value);
    return true;
}

// The questions before a run; false when the user ends it.
bool Form1099Run::choose(const Form &form, QString &threshold, long long &from, long long &to)
{
    const QString title =
        QString::fromLatin1(form.title) + (form.captioned ? m_layout.text[0] : QString());
    double amount = 600;
    bool legal = false;
    if (!questionThreshold(form, amount, legal))
        return false;
    const QString amountText = QString::number(amount, 'f', 0);
    QString overCount = QString::fromLatin1(form.thresholdCount);
    if (legal) // the law's "or more", the same comparison as the printing's
        overCount = QString::fromLatin1(form.allCount)
                        .replace(QStringLiteral("vendytd > 0"),
                                 QStringLiteral("vendytd >= ") + amountText);
    const int all = count(QString::fromLatin1(form.allCount));
    const int over = count(overCount);
    const bool only600 =
        yesNo(QStringLiteral("By default, the system will print 1099's for all vendors whose YTD\n"
                             "balance is greater than zero. (%1 vendors). Would you like to print\n"
                             "1099's for only vendors who are %3 or more instead? (%2 vendors).")
                  .arg(all)
                  .arg(over)
                  .arg(TaxThresholds::dollars(amount)),
              title) == Dialogs::Yes;
    threshold = only600 ? amountText : QStringLiteral("0.01");
    from = 1;
    to = highestVendor;
    if (yesNo(QStringLiteral("Click YES to RESTART from a specific vendor number."),
              QStringLiteral("Restart printing?")) == Dialogs::Yes) {
        if (!askVendorNumber(QStringLiteral("Type the vendor number to restart from and click "
                                            "OK\n\nClick CANCEL to cancel printing."),
                             QStringLiteral("Restart at Vendor #"), from))
            return false;
    } else if (yesNo(QStringLiteral("Click YES to print a 1099 for a single vendor. Click NO to "
                                    "print all vendors."),
                     QStringLiteral("Print 1099 for a single vendor?")) == Dialogs::Yes) {
        if (!askVendorNumber(QStringLiteral("Type the vendor number to print and click OK\nClick "
                                            "CANCEL to cancel printing."),
                             QStringLiteral("Vendor #"), from))
            return false;
        to = from;
    }
    if (yesNo(QStringLiteral("Click YES to print the 1099's; click NO to cancel printing."),
              m_lastTitle) == Dialogs::No) {
        m_s.session.messageText.clear();
        m_kind = Idle;
        return false;
    }
    return true;
}

bool Form1099Run::questionThreshold(const Form &form, double &amount, bool &legal)
{
    const YearEndSettings settings = YearEndSettings::ofDataFolder();
    if (!settings.error.isEmpty()) {
        m_s.dialogs.message(settings.error + QStringLiteral("\nNothing was printed."),
                            Dialogs::Icon::Critical, QStringLiteral("Uh-oh..."));
        return false;
    }
    legal = settings.legalThreshold;
    if (legal)
        amount = TaxThresholds::legal(static_cast<TaxForm>(form.kind),
                                      settings.runYear(m_s.clock.currentYear()), settings.indexed);
    return true;
}

void Form1099Run::run(const Form &form)
{
    // Printing with a layout that could not be read would waste the pre-printed forms.
    if (m_layout.load(QString::fromLatin1(form.layoutFile), m_s.dialogs) !=
        FormLayout::Outcome::Loaded)
        return;
    QString threshold;
    long long from = 0;
    long long to = 0;
    if (!choose(form, threshold, from, to))
        return;
    loadPayer();
    printForms(form, QString::fromLatin1(form.selection) + threshold +
                         QStringLiteral(" and vendnumber between ") + QString::number(from) +
                         QStringLiteral(" and ") + QString::number(to) +
                         QStringLiteral(" order by vendnumber"));
}

void Form1099Run::loadPayer()
{
    const ScopedDatabase config(m_s.databases, configFile);
    QSqlQuery q = m_s.databases.select(configFile, QStringLiteral("select * from company"));
    const QSqlRecord row = q.next() ? q.record() : QSqlRecord();
    q.finish();
    auto upper = [&row](const char *column) { return trimmed(row, column).toUpper(); };
    auto &text = m_layout.text;
    text[PayerName] = upper("compname");
    text[PayerAddress1] = upper("compaddr1");
    text[PayerAddress2] = upper("compaddr2");
    text[PayerCity] = upper("compcity");
    text[PayerState] = upper("compstate");
    text[PayerZip] = upper("compzip");
    text[PayerId] = upper("compfederalid");
    text[PayerPlace] = cityLine(text[PayerCity], text[PayerState], text[PayerZip]);
}

double Form1099Run::loadVendor(long long number)
{
    m_s.session.messageText = QString::number(number);
    QSqlQuery q =
        m_s.databases.select(apFile, QStringLiteral("select * from vendors where vendnumber = ") +
                                         QString::number(number));
    const QSqlRecord row = q.next() ? q.record() : QSqlRecord();
    q.finish();
    // Painted with the next round of events: a repaint per form would halve the run's speed.
    m_s.status.set(row.value(QStringLiteral("vendname")).toString());
    auto &text = m_layout.text;
    text[RecipientId] = trimmed(row, "vendtaxid").remove(QLatin1Char('-'));
    text[RecipientName] = trimmed(row, "vendname").toUpper();
    text[RecipientAddress1] = trimmed(row, "vendaddr1").toUpper();
    text[RecipientPlace] =
        cityLine(trimmed(row, "vendcity"), trimmed(row, "vendstate"), trimmed(row, "vendzip"))
            .toUpper();
    text[RecipientAddress2] = trimmed(row, "vendaddr2").toUpper();
    text[Account] = QString::number(number);
    m_s.status.set(text[RecipientName]);
    return row.value(QStringLiteral("vendytd")).toDouble();
}

void Form1099Run::printForms(const Form &form, const QString &statement)
{
    const std::unique_ptr<FormPrinter> printer = m_printers(QString::fromLatin1(form.jobName));
    if (!printer->begin()) {
        m_s.dialogs.message(printer->why() + QStringLiteral(" Nothing was printed."),
                            Dialogs::Icon::Critical, QStringLiteral("Uh-oh..."));
        return;
    }
    QSqlQuery vendors = m_s.databases.select(apFile, statement);
    int onPage = 0;
    int printed = 0;
    while (vendors.next()) {
        if (++onPage > form.perPage) {
            printer->newPage();
            onPage = 1;
        }
        const long long number = vendors.value(0).toLongLong();
        const int type = form.kind == Misc ? vendors.value(1).toInt() : form.kind;
        const double amount = loadVendor(number);
        place(form, *printer, (onPage - 1) * m_layout.formSpacingTwips, onPage, type, amount);
        // The window stays painted; painting it after every form would cost a third of the run.
        if (++printed % 16 == 0)
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
    vendors.finish();
    const bool out = printer->finish();
    m_kind = Idle;
    m_s.status.show(QString::fromLatin1(form.completion));
    if (!out)
        m_s.dialogs.message(printer->why() + QStringLiteral(" Nothing was printed."),
                            Dialogs::Icon::Critical, QStringLiteral("Uh-oh..."));
    else if (!printer->pdfFile().isEmpty())
        m_s.dialogs.message(QStringLiteral("The forms were written to ") + printer->pdfFile() +
                                QLatin1Char('.'),
                            Dialogs::Icon::Information, QString::fromLatin1(form.jobName));
}

void Form1099Run::place(const Form &form, FormPrinter &printer, int offset, int formOnPage,
                        int type, double amount)
{
    for (const FormPlacement::Item &item :
         FormPlacement::items(form.kind, m_layout, offset, formOnPage, type, amount))
        printer.print(item.xTwips, item.yTwips, item.text);
}
