#include "DemoLedger.h"

namespace Demo::Ledger {
namespace {
enum Type { Asset = 1, Liability = 2, NetAssets = 3, Revenue = 4, Expense = 5 };
const QString none; // a null statement description
} // namespace

const std::vector<Account> &chart()
{
    static const std::vector<Account> accounts = {
        {1000.000, "Cash - operating checking", "Cash", Asset, 0},
        {1010, "Cash - payroll checking", "Cash", Asset, 50},
        {1020, "Money market savings", "Cash", Asset, 0},
        {1030, "Petty cash", "", Asset, 0},
        {1100, "Dues receivable", "Accounts receivable", Asset, 0},
        {1110, "Sponsorships receivable", "Accounts receivable", Asset, 0},
        {1150, "Allowance for doubtful dues", none, Asset, 70},
        {1200, "Prepaid expenses", "Prepaid expenses", Asset, 0},
        {1210, "Prepaid insurance", "Prepaid expenses", Asset, 0},
        {1300, "Inventory - publications", "Inventory", Asset, 0},
        {1500, "Furniture and equipment", "Fixed assets", Asset, 70},
        {1510, "Accumulated depreciation", "Fixed assets", Asset, 70},
        {1600, "Security deposits", "", Asset, 0},
        {2000, "Accounts payable", "Accounts payable", Liability, 0},
        {2100, "Accrued payroll", "Accrued liabilities", Liability, 50},
        {2110, "Payroll taxes payable", "Accrued liabilities", Liability, 50},
        {2200, "Deferred dues revenue", "Deferred revenue", Liability, 0},
        {2210, "Deferred conference revenue", "Deferred revenue", Liability, 0},
        {2300, "Sales tax payable", none, Liability, 0},
        {2400, "Member loans payable", "Notes payable", Liability, 70},
        {3000, "Unrestricted net assets", "Net assets", NetAssets, 90},
        {3100, "Board-designated reserve", "Net assets", NetAssets, 90},
        {3200, "Temporarily restricted net assets", "Net assets", NetAssets, 90},
        {4000, "Membership dues", "Dues", Revenue, 0},
        {4010, "Initiation fees", "Dues", Revenue, 0},
        {4100, "Conference registrations", "Programs", Revenue, 0},
        {4110, "Workshop fees", "Programs", Revenue, 0},
        {4200, "Sponsorships", "", Revenue, 0},
        {4300, "Advertising revenue", "Publications", Revenue, 0},
        {4400, "Publication sales", "Publications", Revenue, 0},
        {4500, "Interest income", "Other revenue", Revenue, 0},
        {4900, "Miscellaneous revenue", none, Revenue, 0},
        {5000, "Salaries and wages", "Personnel", Expense, 50},
        {5010, "Payroll taxes", "Personnel", Expense, 50},
        {5020, "Employee benefits", "Personnel", Expense, 50},
        {5100, "Office supplies", "Office", Expense, 0},
        {5100.5, "Office supplies - board", "Office", Expense, 0},
        {5110, "Equipment rental", "Office", Expense, 0},
        {5200, "Dues and subscriptions", "", Expense, 0},
        {5300, "Printing and copying", "Communications", Expense, 0},
        {5310, "Postage and shipping", "Communications", Expense, 0},
        {5400, "Telephone", "Occupancy", Expense, 0},
        {5420, "Utilities", "Occupancy", Expense, 0},
        {5450, "Computer and software", none, Expense, 0},
        {5500, "Rent", "Occupancy", Expense, 0},
        {5600, "Meetings and events", "Programs", Expense, 0},
        {5600.1, "Meetings - spring conference", "Programs", Expense, 0},
        {5600.2, "Meetings - fall conference", "Programs", Expense, 0},
        {5610, "Travel", "Programs", Expense, 0},
        {5620, "Audio-visual", "", Expense, 0},
        {5630, "Awards and recognition", "Programs", Expense, 0},
        {5640, "Catering", "Programs", Expense, 0},
        {5710, "Repairs and maintenance", "Occupancy", Expense, 0},
        {5720, "Janitorial", "Occupancy", Expense, 0},
        {5730, "Grounds and snow removal", "Occupancy", Expense, 0},
        {5800, "Insurance", "Insurance", Expense, 0},
        {5910, "Legal fees", "Professional fees", Expense, 0},
        {5920, "Audit and accounting", "Professional fees", Expense, 0},
        {5930, "Consulting", "Professional fees", Expense, 0},
        {5940, "Contract services", "", Expense, 0},
        {5950, "Interest expense", "Financial", Expense, 0},
        {5960, "Patronage dividends", "Financial", Expense, 70},
        {5970, "Bank charges", "Financial", Expense, 0},
        {5980, "Depreciation", none, Expense, 70},
        {5990, "Miscellaneous expense", "", Expense, 0},
    };
    return accounts;
}

std::vector<double> expenseAccounts()
{
    std::vector<double> numbers;
    for (const Account &account : chart())
        if (account.type == Expense && account.level == 0)
            numbers.push_back(account.number);
    return numbers;
}

} // namespace Demo::Ledger
