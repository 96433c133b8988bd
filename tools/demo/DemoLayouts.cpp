#include "DemoLayouts.h"

#include "DemoError.h"
#include "DemoSuiteFiles.h"

#include "common/Numbers.h"

#include <QDir>
#include <QSaveFile>

namespace Demo {
namespace {

const QString none = QStringLiteral("");

// Payer and recipient blocks shared by the MISC and DIV forms (elements 19 to 25).
void addPartyBlocks(std::vector<LayoutElement> &e)
{
    e.push_back({"Payer's name and address", 0.2, 0.35});
    e.push_back({"Payer's TIN", 0.2, 1.55});
    e.push_back({"Recipient's TIN", 1.9, 1.55});
    e.push_back({"Recipient's name", 0.2, 1.95});
    e.push_back({"Street address", 0.2, 2.5});
    e.push_back({"City, state and ZIP", 0.2, 2.95});
    e.push_back({"Account number", 0.2, 3.4});
}

// Money boxes in two columns down the right half of the form, two to a row.
void addBoxes(std::vector<LayoutElement> &e, const QStringList &boxes)
{
    for (int i = 0; i < boxes.size(); ++i)
        e.push_back({boxes.at(i), i % 2 == 0 ? 3.85 : 5.3, 0.55 + 0.45 * (i / 2)});
}

Layout misc(const QString &caption)
{
    Layout l{"1099misc.lof", caption, 0.25, 0.3, 5.5, 0, {}};
    addBoxes(l.elements,
             {"Box 1 Rents", "Box 2 Royalties", "Box 3 Other income",
              "Box 4 Federal income tax withheld", "Box 5 Fishing boat proceeds",
              "Box 6 Medical and health care payments", "Box 7 Nonemployee compensation",
              "Box 8 Substitute payments", "Box 9 Direct sales", "Box 10 Crop insurance proceeds",
              "Box 11 Fish purchased for resale", "Box 12 Section 409A deferrals",
              "Box 13 Excess golden parachute payments",
              "Box 14 Gross proceeds paid to an attorney",
              "Box 15 Nonqualified deferred compensation", "Box 16 State tax withheld",
              "Box 17 State/Payer's state no.", "Box 18 State income"});
    addPartyBlocks(l.elements);
    return l;
}

Layout div(const QString &caption)
{
    Layout l{"1099div.lof", caption, 0.25, 0.3, 5.5, 0, {}};
    addBoxes(l.elements,
             {"Box 1a Total ordinary dividends", "Box 1b Qualified dividends",
              "Box 2a Total capital gain distr.", "Box 2b Unrecap. Sec. 1250 gain",
              "Box 2c Section 1202 gain", "Box 2d Collectibles (28%) gain",
              "Box 2e Section 897 ordinary dividends", "Box 2f Section 897 capital gain",
              "Box 3 Nondividend distributions", "Box 4 Federal income tax withheld",
              "Box 5 Section 199A dividends", "Box 6 Investment expenses", "Box 7 Foreign tax paid",
              "Box 8 Foreign country or U.S. possession", "Box 9 Cash liquidation distributions",
              "Box 10 Noncash liquidation distributions", "Box 12 Exempt-interest dividends",
              "Box 13 Private activity bond interest"});
    addPartyBlocks(l.elements);
    return l;
}

// Three forms to a page: everything within 3.6 inches of the form's top.
Layout interest(const QString &caption)
{
    Layout l{"1099int.lof", caption, 0.25, 0.3, 3.66, 0, {}};
    auto &e = l.elements;
    e.push_back({"Box 1 Interest income", 3.85, 0.45});
    e.push_back({"Box 2 Early withdrawal penalty", 3.85, 0.85});
    e.push_back({"Box 3 Interest on U.S. Savings Bonds", 5.3, 0.85});
    e.push_back({"Box 4 Federal income tax withheld", 3.85, 1.25});
    e.push_back({"Box 5 Investment expenses", 5.3, 1.25});
    e.push_back({"Box 6 Foreign tax paid", 3.85, 1.65});
    e.push_back({"Box 8 Tax-exempt interest", 3.85, 2.05});
    e.push_back({"Payer's name and address", 0.2, 0.3});
    e.push_back({"Payer's TIN", 0.2, 1.3});
    e.push_back({"Recipient's TIN", 1.9, 1.3});
    e.push_back({"Recipient's name", 0.2, 1.65});
    e.push_back({"Street address", 0.2, 2.1});
    e.push_back({"City, state and ZIP", 0.2, 2.5});
    e.push_back({"Account number", 0.2, 2.95});
    return l;
}

// The NEC run prints elements 2 to 8 with the layout's own texts, so they carry the payer's
// name, address and telephone (five lines), upper case like the rest of the form.
Layout nec(const QString &caption, const QStringList &payer)
{
    Layout l{"1099nec.lof", caption, 0.25, 0.25, 3.66, 0, {}};
    auto &e = l.elements;
    e.push_back({"Box 1 Nonemployee compensation", 3.85, 0.75});
    const double lineY[] = {0.3, 0.44, 0.58, 0.72, 0.86};
    for (int line = 0; line < 5; ++line)
        e.push_back({payer.value(line), 0.2, lineY[line]});
    e.push_back({none, 5.55, 1.2});  // box 2, direct sales: left blank
    e.push_back({none, 3.85, 1.65}); // box 4, federal income tax withheld: left blank
    e.push_back({"Payer's TIN", 0.2, 1.25});
    e.push_back({"Recipient's TIN", 1.9, 1.25});
    e.push_back({"Recipient's name", 0.2, 1.6});
    e.push_back({"Street address", 0.2, 2.1});
    e.push_back({"City, state and ZIP", 0.2, 2.5});
    e.push_back({"Account number", 0.2, 2.9});
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
