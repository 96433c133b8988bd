#pragma once

#include <QString>
#include <QStringList>

#include <vector>

class QDir;

namespace Demo {

// One element of a 1099 form layout: its text and its position in inches.
struct LayoutElement {
    QString text;
    double x;
    double y;
};

// A 1099 layout file: the header (element 0: caption, origin, form spacing and the extra value)
// and the elements after it.
struct Layout {
    QString fileName;
    QString caption;
    double x, y, spacing, extra;
    std::vector<LayoutElement> elements; // elements 1, 2, ...
};

namespace Layouts {
// The layouts of the four forms for the tax year.
std::vector<Layout> all(int year);
// The system copies the package ships, from which a company's layouts are made: the same
// positions, no tax year, and the payer's lines of the NEC form to be filled in.
std::vector<Layout> system();
// The file's text: one record a line, the header's five values and three for each element.
QString text(const Layout &layout);
// Writes the four layout files; returns their names.
QStringList write(const QDir &folder, int year);
} // namespace Layouts

// The short help text of the vendor screen, vendor1.txt.
QString writeVendorHelp(const QDir &folder);

// stafflist.dat, which lets whoever starts the sign-in launcher choose a name from the staff
// list: the demo company is shared by people who are not on its staff.
QString writeStaffChoice(const QDir &folder);

} // namespace Demo
