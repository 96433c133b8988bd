#include "DemoLayouts.h"

#include "DemoError.h"
#include "DemoSuiteFiles.h"

#include "common/Numbers.h"

#include <QDir>
#include <QSaveFile>

namespace Demo {
namespace {

const QString none = QStringLiteral("");

// The positions follow the box arrangement of the current federal forms (1099-MISC Rev. April
// 2025, 1099-INT and 1099-DIV Rev. January 2024, 1099-NEC Rev. January 2025), the same
// arrangement the recipients' copies are drawn in: the payer's and recipient's boxes on the left
// 3.6 inches of the form, the numbered boxes in the middle column and in rows under the left
// block. Each item stands 0.1 inch inside its box and 0.2 inch below its top, under the box's
// caption. Positions count from the form's top left corner (element 0).

// The payer and recipient blocks (elements 19 to 25 of MISC and DIV, 8 to 14 of INT).
void addPartyBlocks(std::vector<LayoutElement> &e)
{
    e.push_back({"Payer's name and address", 0.1, 0.3});
    e.push_back({"Payer's TIN", 0.1, 1.2});
    e.push_back({"Recipient's TIN", 1.9, 1.2});
    e.push_back({"Recipient's name", 0.1, 1.6});
    e.push_back({"Street address", 0.1, 2.1});
    e.push_back({"City, state and ZIP", 0.1, 2.5});
    e.push_back({"Account number", 0.1, 2.95});
}

// The run prints a type 1 vendor's amount at element 3 on the first form of a page and at
// element 7 on the second, a type 4 vendor's at element 14: these elements stand in box 1 (rents)
// and box 3 (other income), where the recipients' copies and the IRIS upload report them.
Layout misc(const QString &caption)
{
    Layout l{"1099misc.lof", caption, 0.25, 0.3, 5.5, 0, {}};
    l.elements = {
        {"Box 1 Rents", 3.7, 1.2},
        {"Box 2 Royalties", 3.7, 1.6},
        {"Type 1 amount, first form: box 1 Rents", 3.7, 1.2},
        {"Box 4 Federal income tax withheld", 3.7, 2.5},
        {"Box 5 Fishing boat proceeds", 3.7, 2.95},
        {"Box 6 Medical and health care payments", 5.3, 2.95},
        {"Type 1 amount, second form: box 1 Rents", 3.7, 1.2},
        {"Box 8 Substitute payments", 1.9, 3.35},
        {"Box 9 Crop insurance proceeds", 3.7, 3.35},
        {"Box 10 Gross proceeds paid to an attorney", 5.55, 3.35},
        {"Box 11 Fish purchased for resale", 0.1, 3.8},
        {"Box 12 Section 409A deferrals", 1.9, 3.8},
        {"Box 13 FATCA filing requirement", 3.7, 3.8},
        {"Type 4 amount: box 3 Other income", 3.7, 2.1},
        {"Box 15 Nonqualified deferred compensation", 0.1, 4.25},
        {"Box 16 State tax withheld", 1.9, 4.25},
        {"Box 17 State/Payer's state no.", 3.7, 4.25},
        {"Box 18 State income", 5.55, 4.25},
    };
    addPartyBlocks(l.elements);
    return l;
}

Layout div(const QString &caption)
{
    Layout l{"1099div.lof", caption, 0.25, 0.3, 5.5, 0, {}};
    l.elements = {
        {"Box 1a Total ordinary dividends", 3.7, 1.2},
        {"Box 1b Qualified dividends", 3.7, 1.6},
        {"Box 2a Total capital gain distr.", 3.7, 2.1},
        {"Box 2b Unrecap. Sec. 1250 gain", 3.7, 2.5},
        {"Box 2c Section 1202 gain", 3.7, 2.95},
        {"Box 2d Collectibles (28%) gain", 5.3, 2.95},
        {"Box 2e Section 897 ordinary dividends", 0.1, 3.35},
        {"Box 2f Section 897 capital gain", 1.9, 3.35},
        {"Box 3 Nondividend distributions", 3.7, 3.35},
        {"Box 4 Federal income tax withheld", 5.55, 3.35},
        {"Box 5 Section 199A dividends", 0.1, 3.8},
        {"Box 6 Investment expenses", 1.9, 3.8},
        {"Box 7 Foreign tax paid", 3.7, 3.8},
        {"Box 8 Foreign country or U.S. possession", 5.55, 3.8},
        {"Box 9 Cash liquidation distributions", 0.1, 4.25},
        {"Box 10 Noncash liquidation distributions", 1.9, 4.25},
        {"Box 12 Exempt-interest dividends", 5.55, 4.25},
        {"Box 13 Private activity bond interest", 0.1, 4.7},
    };
    addPartyBlocks(l.elements);
    return l;
}

// Three forms to a page, as the run prints them: everything within 3.6 inches of the form's top.
Layout interest(const QString &caption)
{
    Layout l{"1099int.lof", caption, 0.25, 0.3, 3.66, 0, {}};
    l.elements = {
        {"Box 1 Interest income", 3.7, 1.2},
        {"Box 2 Early withdrawal penalty", 3.7, 1.6},
        {"Box 3 Interest on U.S. Savings Bonds", 3.7, 2.1},
        {"Box 4 Federal income tax withheld", 3.7, 2.5},
        {"Box 5 Investment expenses", 3.7, 2.95},
        {"Box 6 Foreign tax paid", 5.3, 2.95},
        {"Box 8 Tax-exempt interest", 1.9, 3.35},
    };
    addPartyBlocks(l.elements);
    return l;
}

// The NEC run prints elements 2 to 8 with the layout's own texts, so they carry the payer's
// name, address and telephone (five lines), upper case like the rest of the form.
Layout nec(const QString &caption, const QStringList &payer)
{
    Layout l{"1099nec.lof", caption, 0.25, 0.25, 3.66, 0, {}};
    auto &e = l.elements;
    e.push_back({"Box 1 Nonemployee compensation", 3.7, 1.2});
    const double lineY[] = {0.3, 0.44, 0.58, 0.72, 0.86};
    for (int line = 0; line < 5; ++line)
        e.push_back({payer.value(line), 0.1, lineY[line]});
    e.push_back({none, 3.7, 1.6}); // box 2, direct sales: left blank
    e.push_back({none, 3.7, 2.5}); // box 4, federal income tax withheld: left blank
    e.push_back({"Payer's TIN", 0.1, 1.2});
    e.push_back({"Recipient's TIN", 1.9, 1.2});
    e.push_back({"Recipient's name", 0.1, 1.6});
    e.push_back({"Street address", 0.1, 2.1});
    e.push_back({"City, state and ZIP", 0.1, 2.5});
    e.push_back({"Account number", 0.1, 2.95});
    return l;
}

QString quoted(const QString &text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

void writeText(const QString &path, const QString &text)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0 || !file.commit())
        throw Error(QStringLiteral("Could not write %1: %2").arg(path, file.errorString()));
}

} // namespace

namespace Layouts {

std::vector<Layout> all(int year)
{
    const Company &c = organisation();
    const QStringList payer = {c.name.toUpper(), c.addr1.toUpper(), c.addr2.toUpper(),
                               (c.city + "   " + c.state + "   " + c.zip).toUpper(), c.phone};
    const auto caption = [year](const char *form) {
        return QStringLiteral("%1 %2").arg(year).arg(QLatin1String(form));
    };
    return {misc(caption("MISC")), interest(caption("INT")), div(caption("DIV")),
            nec(caption("NEC"), payer)};
}

std::vector<Layout> system()
{
    const QStringList payer = {"PAYER'S NAME", "PAYER'S STREET ADDRESS", "", "CITY   STATE   ZIP",
                               "TELEPHONE"};
    return {misc("SYSTEM MISC"), interest("SYSTEM INT"), div("SYSTEM DIV"),
            nec("SYSTEM NEC", payer)};
}

QString text(const Layout &layout)
{
    const QChar comma = QLatin1Char(',');
    QString out = quoted(layout.caption) + comma + Numbers::plain(layout.x) + comma +
                  Numbers::plain(layout.y) + comma + Numbers::plain(layout.spacing) + comma +
                  Numbers::plain(layout.extra) + QLatin1Char('\n');
    for (const LayoutElement &e : layout.elements)
        out += quoted(e.text) + comma + Numbers::plain(e.x) + comma + Numbers::plain(e.y) +
               QLatin1Char('\n');
    return out;
}

QStringList write(const QDir &folder, int year)
{
    QStringList names;
    for (const Layout &layout : all(year)) {
        writeText(folder.absoluteFilePath(layout.fileName), text(layout));
        names << layout.fileName;
    }
    return names;
}

} // namespace Layouts

QString writeVendorHelp(const QDir &folder)
{
    const QString name = QStringLiteral("vendor1.txt");
    writeText(
        folder.absoluteFilePath(name),
        QStringLiteral(
            "A/P MASTER - VENDORS\n"
            "\n"
            "Lookup: type a vendor number, a name, a contact or a G/L account and click Go.\n"
            "Add: click Add, fill in the fields and click Save. Number and name are required.\n"
            "Modify: recall the vendor, click Modify, change the fields and click Save.\n"
            "Delete: recall the vendor and click Delete.\n"
            "\n"
            "Enter moves to the next field. In the City, State and ZIP fields the function keys\n"
            "F1 and F6 to F12 type the texts set up for them; in the telephone and fax fields\n"
            "they type an area code or exchange in front of the number.\n"
            "F5 in the vendor number field opens the vendor list; in the G/L account field it\n"
            "opens the chart of accounts.\n"
            "\n"
            "Below the vendor: unpaid invoices, paid invoices, checks and notes. Double-click an\n"
            "invoice to see how it was split over G/L accounts.\n"
            "\n"
            "1099 types: 0 none, 1 1099-MISC, 2 1099-INT, 3 1099-DIV, 5 1099-NEC.\n"));
    return name;
}

QString writeStaffChoice(const QDir &folder)
{
    const QString name = QStringLiteral("stafflist.dat");
    writeText(folder.absoluteFilePath(name),
              QStringLiteral("While this file is here, the A/P Master sign-in launcher lets the "
                             "user choose any name of the staff list.\n"));
    return name;
}

} // namespace Demo
