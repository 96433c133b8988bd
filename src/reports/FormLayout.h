#pragma once

#include <QString>

#include <array>

class Dialogs;

// The positions of the printed items of one 1099 form, read from its layout file ("1099nec.lof"):
// record 0 holds a caption, the origin, the spacing between forms and one more number; every
// later record an element's text and position. Positions are read in inches and kept in twips
// (1440 to the inch). Elements are overwritten, never cleared: after a longer file, a shorter one
// keeps the longer one's tail.
class FormLayout {
public:
    static constexpr int elementLimit = 100;
    // Text slots above the elements that a print run fills (payer and recipient items).
    static constexpr int slotCount = 201;

    enum class Outcome {
        Loaded,
        Missing,   // no such file: the previous layout stays
        TooLong,   // more than 100 records: those read stay loaded
        Malformed, // a value that is no number, an open quote, a cut-off record: nothing changes
    };

    // Reads the file of that name in the data folder; every outcome but Loaded is shown.
    Outcome load(const QString &fileName, Dialogs &dialogs);
    // The same from a text, for a file already read (the file name only names it in messages).
    Outcome loadText(const QString &fileName, const QString &text, Dialogs &dialogs);

    std::array<QString, slotCount> text{};
    std::array<int, elementLimit + 1> x{}; // twips
    std::array<int, elementLimit + 1> y{};
    std::array<float, elementLimit + 1> xInches{};
    std::array<float, elementLimit + 1> yInches{};
    float formSpacing = 0;
    int formSpacingTwips = 0;
    double extra = 0;
    int lastIndex = -1;

    // Inches as read, in single precision, to whole twips truncated toward zero (2.5 is 3600).
    static int toTwips(float inches);
};
