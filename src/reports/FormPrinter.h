#pragma once

#include <QString>

// Where printed forms go: text placed by position on pages, a page at a time.
class FormPrinter {
public:
    virtual ~FormPrinter() = default;
    // Starts the job; false (with why()) when it cannot be started.
    virtual bool begin() = 0;
    // Prints the text with its top left corner at that position, in twips from the page's top
    // left corner.
    virtual void print(int xTwips, int yTwips, const QString &text) = 0;
    virtual void newPage() = 0;
    // Ends the job; the pages are out, or false (with why()) when they could not be put out.
    virtual bool finish() = 0;
    // A PDF file's path when the job goes to one, else empty.
    virtual QString pdfFile() const = 0;
    virtual QString why() const = 0;
};
