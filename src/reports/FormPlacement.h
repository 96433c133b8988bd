#pragma once

#include <QString>

#include <vector>

class FormLayout;

// Where the 1099 runs put each printed item of one form: the layout's elements, the origin of
// element 0 and the form's offset down the page. The runs print these items; the layout adjuster
// draws and test-prints the same ones, so that what it shows is what the next run prints.
namespace FormPlacement {

struct Item {
    int element; // the layout element whose position the item takes
    int xTwips;  // from the page's top left corner
    int yTwips;
    QString text;
};

// The items of one form of that kind (1 MISC, 2 INT, 3 DIV, 5 NEC) at the offset (twips down the
// page), the form's place on its page (1, 2, ...), the vendor's 1099 type and its amount. The
// payer and recipient items come from the layout's item slots; for 1099-NEC the element texts 1
// and 9 to 14 are replaced by them first, as the run does.
std::vector<Item> items(int kind, FormLayout &layout, int offset, int formOnPage, int type,
                        double amount);

// Forms printed on one page: two for MISC and DIV, three for INT and NEC.
int formsPerPage(int kind);

// The amount as the forms print it: two decimals, no thousands separator.
QString amountText(double amount);

} // namespace FormPlacement
