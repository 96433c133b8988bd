#include "vendorscreen/VendorFields.h"

#include <QCoreApplication>

namespace VendorFields {

const std::array<VendorFieldInfo, vendorFieldCount> &all()
{
    using F = VendorField;
    using K = VendorFieldInfo::Kind;
    using S = VendorFieldInfo::Shown;
    const char *const addressPrompt =
        QT_TRANSLATE_NOOP("VendorFields", "Address 1, Address 2 and City are limited to 30 "
                                          "characters each");
    static const std::array<VendorFieldInfo, vendorFieldCount> fields{{
        {F::Number, QT_TRANSLATE_NOOP("VendorFields", "Vendor #"), "vendnumber", K::Whole,
         S::FirstColumn,
         QT_TRANSLATE_NOOP("VendorFields", "Vendor numbers must be between 0 - 99999"), false,
         false},
        {F::Name, QT_TRANSLATE_NOOP("VendorFields", "Name"), "vendname", K::Text, S::AsStored,
         QT_TRANSLATE_NOOP("VendorFields", "Vendor name is limited to 30 characters"), false,
         false},
        {F::Address1, QT_TRANSLATE_NOOP("VendorFields", "Address 1"), "vendaddr1", K::Text,
         S::AsStored, addressPrompt, false, false},
        {F::Address2, QT_TRANSLATE_NOOP("VendorFields", "Address 2"), "vendaddr2", K::Text,
         S::AsStored, addressPrompt, false, false},
        {F::City, QT_TRANSLATE_NOOP("VendorFields", "City"), "vendcity", K::Text, S::AsStored,
         addressPrompt, false, false},
        {F::State, QT_TRANSLATE_NOOP("VendorFields", "State"), "vendstate", K::Text, S::AsStored,
         QT_TRANSLATE_NOOP("VendorFields", "Type the 2-character abbreviation for the state"),
         false, false},
        {F::Zip, QT_TRANSLATE_NOOP("VendorFields", "Zip"), "vendzip", K::Text, S::AsStored,
         QT_TRANSLATE_NOOP("VendorFields", "Type the ZIP code in XXXXX-XXXX format"), false, false},
        {F::Phone, QT_TRANSLATE_NOOP("VendorFields", "Telephone"), "vendphone", K::Text,
         S::AsStored,
         QT_TRANSLATE_NOOP("VendorFields", "Type the telephone number in XXX-XXX-XXXX format"),
         false, false},
        {F::Fax, QT_TRANSLATE_NOOP("VendorFields", "Fax"), "vendfax", K::Text, S::AsStored,
         QT_TRANSLATE_NOOP("VendorFields", "Type the fax telephone number in XXX-XXX-XXXX format"),
         false, false},
        {F::Contact, QT_TRANSLATE_NOOP("VendorFields", "Contact-1"), "vendcontact", K::Text,
         S::AsStored,
         QT_TRANSLATE_NOOP("VendorFields",
                           "Type the name of the person who is your contact at this company"),
         false, false},
        {F::TaxId, QT_TRANSLATE_NOOP("VendorFields", "Tax ID"), "vendtaxid", K::Text, S::AsStored,
         QT_TRANSLATE_NOOP("VendorFields", "Type the federal tax ID#"), false, false},
        {F::Form1099, QT_TRANSLATE_NOOP("VendorFields", "1099 Type"), "vend1099type", K::Whole,
         S::AsStored,
         QT_TRANSLATE_NOOP("VendorFields", "Available types:  0=None   1=1099-MISC   "
                                           "2=1099-INT   3=1099-DIV   5-1099-NEC"),
         false, true},
        {F::GlAccount, QT_TRANSLATE_NOOP("VendorFields", "G/L Acct"), "vendglacct", K::Number,
         S::AsStored,
         QT_TRANSLATE_NOOP("VendorFields", "Type the G/L account to which payments made to "
                                           "this company are posted"),
         false, true},
        {F::YtdPurchases, QT_TRANSLATE_NOOP("VendorFields", "YTD Purchases"), "vendytd", K::Money,
         S::AsMoney,
         QT_TRANSLATE_NOOP("VendorFields", "Type the year-to-date purchases you have made with "
                                           "this company (no dollar signs, please)"),
         true, true},
        {F::CurrentUnpaid, QT_TRANSLATE_NOOP("VendorFields", "Current unpaid $:"), "vendbalcurrent",
         K::Money, S::OpenTotal,
         QT_TRANSLATE_NOOP("VendorFields",
                           "Type the current outstanding balance with this company"),
         true, true},
        {F::YearOrders, QT_TRANSLATE_NOOP("VendorFields", "YTD Orders"), "vendbal60", K::Money,
         S::YearTotal,
         QT_TRANSLATE_NOOP("VendorFields", "Type the 60-day outstanding balance with this company"),
         true, true},
        {F::Over90, QT_TRANSLATE_NOOP("VendorFields", "90+ day balance"), "vendbal90", K::Money,
         S::AsStored,
         QT_TRANSLATE_NOOP("VendorFields",
                           "Type the 90+ day outstanding balance with this company"),
         true, true},
        {F::Terms, QT_TRANSLATE_NOOP("VendorFields", "Terms"), "vendterms", K::Text, S::AsStored,
         QT_TRANSLATE_NOOP("VendorFields", "Type the terms you have with this company"), false,
         false},
        {F::OurAccount, QT_TRANSLATE_NOOP("VendorFields", "Our account #"), "vendacct", K::Text,
         S::AsStored,
         QT_TRANSLATE_NOOP("VendorFields",
                           "Type the account number assigned to you by this vendor"),
         false, false},
        {F::Email, QT_TRANSLATE_NOOP("VendorFields", "Email-1"), "email", K::Text, S::AsStored,
         nullptr, false, false},
        {F::CellOther, QT_TRANSLATE_NOOP("VendorFields", "Cell/other-1"), "cell_other", K::Text,
         S::AsStored, nullptr, false, false},
        {F::Contact2, QT_TRANSLATE_NOOP("VendorFields", "Contact-2"), "vcontact2name", K::Text,
         S::AsStored, nullptr, false, false},
        {F::Email2, QT_TRANSLATE_NOOP("VendorFields", "Email-2"), "vcontact2email", K::Text,
         S::AsStored, nullptr, false, false},
        {F::CellOther2, QT_TRANSLATE_NOOP("VendorFields", "Cell/other-2"), "vcontact2phone",
         K::Text, S::AsStored, nullptr, false, false},
    }};
    return fields;
}

const VendorFieldInfo &info(VendorField field)
{
    return all()[static_cast<size_t>(indexOf(field))];
}

QString caption(VendorField field)
{
    return QCoreApplication::translate("VendorFields", info(field).caption);
}

QString prompt(VendorField field)
{
    const char *text = info(field).prompt;
    return text ? QCoreApplication::translate("VendorFields", text) : QString();
}

} // namespace VendorFields
