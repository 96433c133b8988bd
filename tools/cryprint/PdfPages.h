#pragma once

#include "PagePainter.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QSizeF>
#include <QString>
#include <QStringView>

#include <vector>

class QIODevice;

// A PDF file written page by page as the report is laid out: each page's content goes to the
// device when the page ends, so only the current page and the pages' file offsets are held.
// The text is set in the standard Helvetica faces with the Windows Latin-1 encoding, which
// every PDF reader has, so no font is embedded; a character outside that set is shown as "?".
class PdfPages : public PagePainter {
public:
    PdfPages(QIODevice &out, QSizeF pageSize, const QString &title);

    void beginPage() override;
    void endPage() override;
    void text(TextStyle style, double x, double baseline, double room, Qt::Alignment align,
              const QString &s) override;
    void line(QPointF from, QPointF to) override;
    // A form object that every page draws and that is written with the count at the end.
    void pageCount(double x, double baseline) override;
    // Writes the page tree, the cross-reference table and the trailer. False when the device
    // failed at any point.
    bool finish();
    int pageCount() const { return int(m_pages.size()); }

    // The width in points of a text in a face, as the reader will set it.
    static double width(TextStyle style, QStringView s);
    // A character's code in the Windows Latin-1 encoding, '?' where it has none.
    static unsigned char winAnsi(QChar c);

private:
    int beginObject();
    void write(QByteArrayView bytes);
    void number(double value);
    // A number of points given in hundredths, as short as it can be written.
    void hundredths(long long value);
    void textMode(bool on);

    QIODevice &m_out;
    QSizeF m_size;
    QString m_title;
    qint64 m_written = 0;
    bool m_failed = false;
    std::vector<qint64> m_offsets; // of object n at n - 1
    std::vector<int> m_pages;      // the page objects
    QByteArray m_content;          // the current page's operators
    QByteArray m_encoded;          // one text in the encoding
    bool m_inPage = false, m_inText = false;
    long long m_lineX = 0, m_lineY = 0; // where the text line starts, in hundredths of a point
    int m_font = -1;
};
