#include "yearend/RecipientCopies.h"

#include "common/OutputFile.h"
#include "yearend/PayerRecord.h"
#include "yearend/TaxIds.h"

#include <QFile>
#include <QFont>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

#include <initializer_list>

namespace RecipientCopies {

namespace {

// The payer's and recipient's boxes on the left of every 1099 and the year's box beside them
// (its caption the form's OMB number), then the form's own boxes.
std::vector<Box> leftBlockAnd(const char *ombCaption, std::initializer_list<Box> own)
{
    std::vector<Box> all{
        {{0.0, 0.0, 3.6, 1.0},
         "PAYER\u2019S name, street address, city or town, state or province, country, ZIP or "
         "foreign postal code, and telephone no.",
         Item::Payer},
        {{0.0, 1.0, 1.8, 0.4}, "PAYER\u2019S TIN", Item::PayerTin},
        {{1.8, 1.0, 1.8, 0.4}, "RECIPIENT\u2019S TIN", Item::RecipientTin},
        {{0.0, 1.4, 3.6, 0.5}, "RECIPIENT\u2019S name", Item::RecipientName},
        {{0.0, 1.9, 3.6, 0.4}, "Street address (including apt. no.)", Item::Street},
        {{0.0, 2.3, 3.6, 0.45},
         "City or town, state or province, country, and ZIP or foreign postal code",
         Item::CityLine},
        {{0.0, 2.75, 3.6, 0.4}, "Account number (see instructions)", Item::Account},
        {{3.6, 0.0, 1.6, 1.0}, ombCaption, Item::Year},
    };
    all.insert(all.end(), own);
    return all;
}

// Form 1099-NEC (Rev. January 2025), 7.3 by 3.75 inches, laid out as the published form: the
// payer's and recipient's boxes on the left, the numbered boxes in the middle, the title, the
// copy's name and its notice on the right.
const Layout nonemployee{
    TaxForm::Nonemployee,
    "1099-NEC",
    "Nonemployee Compensation",
    "(Rev. January 2025)",
    "1545-0116",
    "www.irs.gov/Form1099NEC",
    7.3,
    3.75,
    leftBlockAnd(
        "OMB No. 1545-0116",
        {
            {{3.6, 1.0, 1.6, 0.4}, "1 Nonemployee compensation", Item::Amount},
            {{3.6, 1.4, 1.6, 0.5},
             "2 Payer made direct sales totaling $5,000 or more of consumer products to recipient "
             "for resale",
             Item::None},
            {{3.6, 1.9, 1.6, 0.4}, "3 Excess golden parachute payments", Item::None},
            {{3.6, 2.3, 1.6, 0.45}, "4 Federal income tax withheld", Item::None},
            {{3.6, 2.75, 1.2, 0.4}, "5 State tax withheld", Item::None},
            {{4.8, 2.75, 1.25, 0.4}, "6 State/Payer\u2019s state no.", Item::None},
            {{6.05, 2.75, 1.25, 0.4}, "7 State income", Item::None},
        }),
};

// A numbered box of the forms below: its caption and what it holds.
struct Numbered {
    const char *caption;
    Item item = Item::None;
};

// The left block and the year's box as on the 1099-NEC above, then the numbered boxes in the order
// of the published forms: four down the middle column below the year, two beside the account
// number, the others in rows of four under the left block.
std::vector<Box> formBoxes(const char *ombCaption, std::initializer_list<Numbered> numbered)
{
    std::vector<Box> all = leftBlockAnd(ombCaption, {});
    const QRectF besideLeftBlock[] = {
        {3.6, 1.0, 1.6, 0.4},  {3.6, 1.4, 1.6, 0.5},  {3.6, 1.9, 1.6, 0.4},
        {3.6, 2.3, 1.6, 0.45}, {3.6, 2.75, 1.6, 0.4}, {5.2, 2.75, 2.1, 0.4},
    };
    const double rowLeft[] = {0.0, 1.8, 3.6, 5.45};
    const double rowWidth[] = {1.8, 1.8, 1.85, 1.85};
    int slot = 0;
    for (const Numbered &box : numbered) {
        QRectF inches;
        if (slot < 6) {
            inches = besideLeftBlock[slot];
        } else {
            const int inRows = slot - 6;
            inches = {rowLeft[inRows % 4], 3.15 + 0.45 * (inRows / 4), rowWidth[inRows % 4], 0.45};
        }
        all.push_back({inches, box.caption, box.item});
        ++slot;
    }
    return all;
}

// Form 1099-MISC (Rev. April 2025, box 14 reserved since excess golden parachute payments moved
// to the 1099-NEC). A vendor of 1099 type 1 has its amount in box 1 (rents), one of type 4 in
// box 3 (other income).
const Layout miscellaneous{
    TaxForm::Misc,
    "1099-MISC",
    "Miscellaneous Information",
    "(Rev. April 2025)",
    "1545-0115",
    "www.irs.gov/Form1099MISC",
    7.3,
    5.1,
    formBoxes("OMB No. 1545-0115",
              {
                  {"1 Rents", Item::AmountIfRents},
                  {"2 Royalties"},
                  {"3 Other income", Item::AmountIfOtherIncome},
                  {"4 Federal income tax withheld"},
                  {"5 Fishing boat proceeds"},
                  {"6 Medical and health care payments"},
                  {"7 Payer made direct sales totaling $5,000 or more of consumer products to "
                   "recipient for resale"},
                  {"8 Substitute payments in lieu of dividends or interest"},
                  {"9 Crop insurance proceeds"},
                  {"10 Gross proceeds paid to an attorney"},
                  {"11 Fish purchased for resale"},
                  {"12 Section 409A deferrals"},
                  {"13 FATCA filing requirement"},
                  {"14 Reserved for future use"},
                  {"15 Nonqualified deferred compensation"},
                  {"16 State tax withheld"},
                  {"17 State/Payer\u2019s state no."},
                  {"18 State income"},
              }),
};

// Form 1099-INT (Rev. January 2024); the amount in box 1.
const Layout interest{
    TaxForm::Interest,
    "1099-INT",
    "Interest Income",
    "(Rev. January 2024)",
    "1545-0112",
    "www.irs.gov/Form1099INT",
    7.3,
    5.1,
    formBoxes("OMB No. 1545-0112",
              {
                  {"1 Interest income", Item::Amount},
                  {"2 Early withdrawal penalty"},
                  {"3 Interest on U.S. Savings Bonds and Treasury obligations"},
                  {"4 Federal income tax withheld"},
                  {"5 Investment expenses"},
                  {"6 Foreign tax paid"},
                  {"7 Foreign country or U.S. possession"},
                  {"8 Tax-exempt interest"},
                  {"9 Specified private activity bond interest"},
                  {"10 Market discount"},
                  {"11 Bond premium"},
                  {"12 Bond premium on Treasury obligations"},
                  {"13 Bond premium on tax-exempt bond"},
                  {"14 Tax-exempt and tax credit bond CUSIP no."},
                  {"FATCA filing requirement"},
                  {"15 State"},
                  {"16 State identification no."},
                  {"17 State tax withheld"},
              }),
};

// Form 1099-DIV (Rev. January 2024), with a fourth row of boxes; the amount in box 1a.
const Layout dividends{
    TaxForm::Dividends,
    "1099-DIV",
    "Dividends and Distributions",
    "(Rev. January 2024)",
    "1545-0110",
    "www.irs.gov/Form1099DIV",
    7.3,
    5.55,
    formBoxes("OMB No. 1545-0110",
              {
                  {"1a Total ordinary dividends", Item::Amount},
                  {"1b Qualified dividends"},
                  {"2a Total capital gain distr."},
                  {"2b Unrecap. Sec. 1250 gain"},
                  {"2c Section 1202 gain"},
                  {"2d Collectibles (28%) gain"},
                  {"2e Section 897 ordinary dividends"},
                  {"2f Section 897 capital gain"},
                  {"3 Nondividend distributions"},
                  {"4 Federal income tax withheld"},
                  {"5 Section 199A dividends"},
                  {"6 Investment expenses"},
                  {"7 Foreign tax paid"},
                  {"8 Foreign country or U.S. possession"},
                  {"9 Cash liquidation distributions"},
                  {"10 Noncash liquidation distributions"},
                  {"11 FATCA filing requirement"},
                  {"12 Exempt-interest dividends"},
                  {"13 Specified private activity bond interest dividends"},
                  {"14 State"},
                  {"15 State identification no."},
                  {"16 State tax withheld"},
              }),
};

const char *const notice =
    "This is important tax information and is being furnished to the IRS. If you are required "
    "to file a return, a negligence penalty or other sanction may be imposed on you if this "
    "income is taxable and the IRS determines that it has not been reported.";

class Page {
public:
    Page(QPainter &painter, double dpi) : m_painter(painter), m_dpi(dpi) {}

    QRectF onPage(const QRectF &inches) const
    {
        return {(leftInches + inches.x()) * m_dpi, (topInches + inches.y()) * m_dpi,
                inches.width() * m_dpi, inches.height() * m_dpi};
    }
    void text(const QRectF &inches, const QString &text, double points, bool bold = false,
              int flags = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap)
    {
        QFont font(QStringLiteral("DejaVu Sans"));
        font.setPointSizeF(points);
        font.setBold(bold);
        m_painter.setFont(font);
        m_painter.drawText(onPage(inches), flags, text);
    }
    void frame(const QRectF &inches) { m_painter.drawRect(onPage(inches)); }

private:
    QPainter &m_painter;
    double m_dpi;
};

QString contents(Item item, const YearEndCheck::Result &result, const PayerRecord &payer,
                 const YearEndCheck::Recipient &r)
{
    switch (item) {
    case Item::None:
        return {};
    case Item::Payer: {
        QStringList lines{payer.name, payer.address1};
        if (!payer.address2.isEmpty())
            lines << payer.address2;
        lines << payer.city + QStringLiteral(", ") + payer.state + QLatin1Char(' ') + payer.zip;
        return lines.join(QLatin1Char('\n'));
    }
    case Item::PayerTin:
        return payer.federalId; // the payer's TIN is never truncated
    case Item::RecipientTin:
        return TaxIds::masked(r.taxId);
    case Item::RecipientName:
        return r.name;
    case Item::Street:
        return r.address2.isEmpty() ? r.address1 : r.address1 + QLatin1Char(' ') + r.address2;
    case Item::CityLine:
        return r.city + QStringLiteral(", ") + r.state.toUpper() + QLatin1Char(' ') + r.zip;
    case Item::Account:
        return QString::number(r.vendor);
    case Item::Amount:
        return QStringLiteral("$ ") + QString::number(r.amount, 'f', 2);
    case Item::AmountIfRents: // as the MISC run and the IRIS upload place it
        return r.type == 1 ? contents(Item::Amount, result, payer, r) : QString();
    case Item::AmountIfOtherIncome:
        return r.type == 4 ? contents(Item::Amount, result, payer, r) : QString();
    case Item::Year:
        return QStringLiteral("For calendar year %1").arg(result.year);
    }
    return {};
}

void drawForm(Page &page, const Layout &form, const YearEndCheck::Result &result,
              const PayerRecord &payer, const YearEndCheck::Recipient &r)
{
    page.frame({0, 0, form.widthInches, form.heightInches - 0.6});
    for (const Box &box : form.boxes) {
        page.frame(box.inches);
        const QRectF inner = box.inches.adjusted(0.04, 0.03, -0.04, -0.02);
        page.text(inner, QString::fromUtf8(box.caption), 5.5);
        const QString value = contents(box.item, result, payer, r);
        if (box.item == Item::Year) {
            page.text(
                inner.adjusted(0, 0.2, 0, 0),
                QStringLiteral("Form %1\n%2")
                    .arg(QString::fromLatin1(form.formName), QString::fromLatin1(form.revision)),
                8, true);
            page.text(inner.adjusted(0, 0.62, 0, 0), value, 7.5);
        } else if (!value.isEmpty()) {
            // Below a caption of one line, or of two in the wide payer box.
            const double down = box.item == Item::Payer ? 0.22 : 0.14;
            page.text(inner.adjusted(0.02, down, 0, 0), value, 9);
        }
    }
    // The right-hand column: the title, the copy and its notice.
    const double right = 5.2;
    const double width = form.widthInches - right;
    page.text({right + 0.06, 0.1, width - 0.1, 0.8}, QString::fromUtf8(form.title), 11, true);
    page.text({right + 0.06, 1.05, width - 0.1, 0.4}, QStringLiteral("Copy B\nFor Recipient"), 9,
              true);
    page.text({right + 0.06, 1.5, width - 0.1, 1.2}, QString::fromUtf8(notice), 5.5);
    page.text({0, form.heightInches - 0.55, form.widthInches, 0.2},
              QStringLiteral("Form %1 %2 (keep for your records)   %3   Department of the "
                             "Treasury - Internal Revenue Service")
                  .arg(QString::fromLatin1(form.formName), QString::fromLatin1(form.revision),
                       QString::fromLatin1(form.website)),
              6);
}

} // namespace

const Layout *layout(TaxForm form)
{
    switch (form) {
    case TaxForm::Nonemployee:
        return &nonemployee;
    case TaxForm::Misc:
        return &miscellaneous;
    case TaxForm::Interest:
        return &interest;
    case TaxForm::Dividends:
        return &dividends;
    }
    return nullptr;
}

bool write(const YearEndCheck::Result &result, const PayerRecord &payer, const QString &pdfPath,
           QString &why)
{
    const Layout *form = layout(result.form);
    if (!form) {
        why = QStringLiteral("There is no plain-paper Copy B for the %1 in this program.")
                  .arg(TaxForms::title(result.form));
        return false;
    }
    if (result.recipients.empty()) {
        why = QStringLiteral("No vendor gets the %1 for %2; no Copy B was written.")
                  .arg(TaxForms::title(result.form))
                  .arg(result.year);
        return false;
    }
    // Written beside the file named and given its name when complete; a database of the
    // company, a folder or a device is never replaced.
    OutputFile output(pdfPath, OutputFile::Kind::Pdf);
    if (!output.open(why))
        return false;
    output.device().close();
    {
        QPdfWriter pdf(output.workPath());
        pdf.setPageLayout(QPageLayout(QPageSize(QPageSize::Letter), QPageLayout::Portrait,
                                      QMarginsF(0, 0, 0, 0)));
        pdf.setResolution(600);
        pdf.setTitle(QStringLiteral("Form %1 Copy B, %2")
                         .arg(QString::fromLatin1(form->formName))
                         .arg(result.year));
        QPainter painter;
        if (!painter.begin(&pdf)) {
            why = QStringLiteral("%1 cannot be written.").arg(pdfPath);
            return false;
        }
        Page page(painter, pdf.resolution());
        bool first = true;
        for (const YearEndCheck::Recipient &r : result.recipients) {
            if (!first)
                pdf.newPage();
            first = false;
            drawForm(page, *form, result, payer, r);
        }
        painter.end();
    }
    return output.commit(why);
}

} // namespace RecipientCopies
