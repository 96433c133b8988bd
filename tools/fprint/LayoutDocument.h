#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

class FormLayout;

// One 1099 layout file as the adjuster edits it: element 0 (the caption, the origin, the form
// spacing and the extra number) and the elements after it, each with its text and its position in
// inches. The values are read as the module reads them. A value keeps the characters it was
// written with until it is changed, and a file nothing was changed in is written back byte for
// byte; a changed file is written one record a line, texts in double quotes.
class LayoutDocument {
public:
    struct Number {
        QString written; // as in the file ("0.30"), or as the adjuster writes a changed value
        double value = 0;
    };
    struct Element {
        QString text;
        Number x;
        Number y;
    };

    // The layout files of the four forms, in the order the adjuster offers them.
    static QStringList fileNames();
    // The form's kind as the 1099 runs number it (1 MISC, 2 INT, 3 DIV, 5 NEC); 0 for another name.
    static int kindOf(const QString &fileName);
    // "1099-NEC" for "1099nec.lof".
    static QString formName(const QString &fileName);

    // Reads the file's bytes; false with why set (for the user) when the module could not print
    // from them: a value that is no number, an open quote, a cut-off record, no records, or more
    // than the module's 100.
    bool read(const QByteArray &bytes, QString &why);
    // The file's bytes: those read when nothing changed.
    QByteArray bytes() const;

    bool changed() const { return m_changed; }
    int count() const { return static_cast<int>(m_elements.size()); } // element 0 included
    const Element &element(int index) const { return m_elements.at(static_cast<size_t>(index)); }
    const Number &spacing() const { return m_spacing; }
    const Number &extra() const { return m_extra; }

    // Changes only what differs, so that an unchanged value keeps its characters.
    void setX(int index, double inches);
    void setY(int index, double inches);
    void setSpacing(double inches);
    void setText(int index, const QString &text);

    // Why the text cannot stand in a layout file (a double quote, a line break, a character the
    // file's one-byte encoding cannot hold), or empty.
    static QString textProblem(const QString &text);
    // Inches typed by the user ("1.25", " 2 "); false when it is not such a number.
    static bool parseInches(const QString &typed, double &inches);
    // How a changed value is written: up to six decimals, no trailing zeros ("1.5", "2").
    static QString written(double inches);

    // The layout as the module loads it from bytes().
    void loadInto(FormLayout &layout) const;

private:
    void set(Number &number, double inches);

    QByteArray m_read;
    QString m_lineEnd = QStringLiteral("\n");
    std::vector<Element> m_elements;
    Number m_spacing;
    Number m_extra;
    bool m_changed = false;
};
