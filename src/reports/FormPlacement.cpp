#include "reports/FormPlacement.h"

#include "reports/Form1099Run.h"
#include "reports/FormLayout.h"

namespace FormPlacement {
namespace {

// The item slots above the layout's elements.
enum Slot : int {
    PayerName = 101,
    PayerAddress1 = 102,
    PayerAddress2 = 103,
    PayerId = 107,
    PayerPlace = 108,
    RecipientId = 121,
    RecipientName = 122,
    RecipientAddress1 = 123,
    RecipientPlace = 124,
    RecipientAddress2 = 125,
    Account = 126,
};

} // namespace

QString amountText(double amount)
{
    return QString::number(amount, 'f', 2);
}

int formsPerPage(int kind)
{
    return kind == Form1099Run::Interest || kind == Form1099Run::Nonemployee ? 3 : 2;
}

std::vector<Item> items(int kind, FormLayout &layout, int offset, int formOnPage, int type,
                        double amount)
{
    std::vector<Item> out;
    auto &text = layout.text;
    // An item at an element's position, moved down by the form's offset and by `down` twips.
    auto at = [&](int element, const QString &itemText, int down = 0) {
        out.push_back({element, layout.x[0] + layout.x[element],
                       layout.y[0] + layout.y[element] + offset + down, itemText});
    };
    if (kind == Form1099Run::Nonemployee) {
        text[1] = amountText(amount);
        text[9] = text[PayerId];
        text[10] = text[RecipientId];
        text[11] = text[RecipientName];
        text[12] = (text[RecipientAddress1] + QLatin1Char(' ') + text[RecipientAddress2]).trimmed();
        text[13] = text[RecipientPlace];
        text[14] = text[Account];
        for (int element = 1; element <= 14; ++element)
            at(element, text[element]);
        return out;
    }
    // The payer block, then the recipient items; 1099-INT has its own element numbers and no
    // second address line.
    const bool interest = kind == Form1099Run::Interest;
    const int payer = interest ? 8 : 19;
    at(payer, text[PayerName]);
    at(payer, text[PayerAddress1], 200);
    at(payer, text[PayerAddress2], 400);
    at(payer, text[PayerPlace], 600);
    at(payer + 1, text[PayerId]);
    at(payer + 2, text[RecipientId]);
    at(payer + 3, text[RecipientName]);
    at(payer + 4, text[RecipientAddress1]);
    if (!interest && !text[RecipientAddress2].isEmpty())
        at(payer + 4, text[RecipientAddress2], 180);
    at(payer + 5, text[RecipientPlace]);
    at(payer + 6, text[Account]);
    int amountElement = 1; // DIV and INT
    if (kind == Form1099Run::Misc)
        amountElement = type == 4 ? 14 : (formOnPage == 1 ? 3 : 7);
    at(amountElement, amountText(amount));
    return out;
}

} // namespace FormPlacement
