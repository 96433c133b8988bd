#pragma once

#include <QString>
#include <QStringList>

#include <vector>

// The words of a PDF file with their boxes, as pdftotext -bbox (poppler-utils) reads them, in
// points (1/72 inch, 20 twips) from the page's top left corner.
struct PdfWord {
    int page = 0; // from 0
    double xMin = 0, yMin = 0, xMax = 0, yMax = 0;
    QString text;
};

class PdfWords {
public:
    explicit PdfWords(const QString &pdfFile);

    bool ok() const { return m_ok; }
    QString error() const { return m_error; }
    int pages() const { return m_pages; }
    const std::vector<PdfWord> &words() const { return m_words; }
    // The words of one page, in reading order, joined by blanks.
    QString pageText(int page) const;
    // The first word on the page whose text is `text` and that starts within `tolerance` points
    // of (x, y); nullptr when there is none.
    const PdfWord *at(int page, const QString &text, double x, double y,
                      double tolerance = 1.0) const;
    // Every word on the page with that text.
    std::vector<const PdfWord *> find(int page, const QString &text) const;

private:
    bool m_ok = false;
    QString m_error;
    int m_pages = 0;
    std::vector<PdfWord> m_words;
};
