#include "PdfPages.h"

#include <QIODevice>

#include <charconv>
#include <cmath>
#include <utility>

namespace {

// Objects written first, at fixed numbers; the pages follow from firstFreeObject on.
constexpr int catalogObject = 1, pagesObject = 2, regularObject = 3, boldObject = 4,
              resourcesObject = 5, infoObject = 6, pageCountObject = 7, firstFreeObject = 8;

// Advance widths of codes 32 to 255 in thousandths of the size: Helvetica's, which Liberation
// Sans shares glyph for glyph. Codes the encoding leaves free are 0 (never written).
// clang-format off
constexpr short regularWidths[224] = {
    278, 278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333, 278, 278,
    556, 556, 556, 556, 556, 556, 556, 556, 556, 556, 278, 278, 584, 584, 584, 556,
    1015, 667, 667, 722, 722, 667, 611, 778, 722, 278, 500, 667, 556, 833, 722, 778,
    667, 778, 722, 667, 611, 722, 667, 944, 667, 667, 611, 278, 278, 278, 469, 556,
    333, 556, 556, 500, 556, 556, 278, 556, 556, 222, 222, 500, 222, 833, 556, 556,
    556, 556, 333, 500, 278, 556, 500, 722, 500, 500, 500, 334, 260, 334, 584, 0,
    556, 0, 222, 556, 333, 1000, 556, 556, 333, 1000, 667, 333, 1000, 0, 611, 0,
    0, 222, 222, 333, 333, 350, 556, 1000, 333, 1000, 500, 333, 944, 0, 500, 667,
    278, 333, 556, 556, 556, 556, 260, 556, 333, 737, 370, 556, 584, 333, 737, 552,
    400, 549, 333, 333, 333, 576, 537, 333, 333, 333, 365, 556, 834, 834, 834, 611,
    667, 667, 667, 667, 667, 667, 1000, 722, 667, 667, 667, 667, 278, 278, 278, 278,
    722, 722, 778, 778, 778, 778, 778, 584, 778, 722, 722, 722, 722, 667, 667, 611,
    556, 556, 556, 556, 556, 556, 889, 500, 556, 556, 556, 556, 278, 278, 278, 278,
    556, 556, 556, 556, 556, 556, 556, 549, 611, 556, 556, 556, 556, 500, 556, 500};
constexpr short boldWidths[224] = {
    278, 333, 474, 556, 556, 889, 722, 238, 333, 333, 389, 584, 278, 333, 278, 278,
    556, 556, 556, 556, 556, 556, 556, 556, 556, 556, 333, 333, 584, 584, 584, 611,
    975, 722, 722, 722, 722, 667, 611, 778, 722, 278, 556, 722, 611, 833, 722, 778,
    667, 778, 722, 667, 611, 722, 667, 944, 667, 667, 611, 333, 278, 333, 584, 556,
    333, 556, 611, 556, 611, 556, 333, 611, 611, 278, 278, 556, 278, 889, 611, 611,
    611, 611, 389, 556, 333, 611, 556, 778, 556, 556, 500, 389, 280, 389, 584, 0,
    556, 0, 278, 556, 500, 1000, 556, 556, 333, 1000, 667, 333, 1000, 0, 611, 0,
    0, 278, 278, 500, 500, 350, 556, 1000, 333, 1000, 556, 333, 944, 0, 500, 667,
    278, 333, 556, 556, 556, 556, 280, 556, 333, 737, 370, 556, 584, 333, 737, 552,
    400, 549, 333, 333, 333, 576, 556, 333, 333, 333, 365, 556, 834, 834, 834, 611,
    722, 722, 722, 722, 722, 722, 1000, 722, 667, 667, 667, 667, 278, 278, 278, 278,
    722, 722, 778, 778, 778, 778, 778, 584, 778, 722, 722, 722, 722, 667, 667, 611,
    556, 556, 556, 556, 556, 556, 889, 556, 556, 556, 556, 556, 278, 278, 278, 278,
    611, 611, 611, 611, 611, 611, 611, 549, 611, 611, 611, 611, 611, 556, 611, 556};
// clang-format on

// The characters of codes 128 to 159, which differ from Latin-1 (0: none).
constexpr char16_t windowsHigh[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

constexpr unsigned char ellipsis = 0x85;

const short *widthsOf(TextStyle style)
{
    return style == TextStyle::Body ? regularWidths : boldWidths;
}

QByteArray literal(const QByteArray &encoded)
{
    QByteArray out;
    out.reserve(encoded.size() + 2);
    out += '(';
    for (char c : encoded) {
        if (c == '(' || c == ')' || c == '\\')
            out += '\\';
        out += c;
    }
    out += ')';
    return out;
}

// A text for the document's information: plain when it is ASCII, else UTF-16 with its mark.
QByteArray infoText(const QString &s)
{
    bool ascii = true;
    for (QChar c : s)
        ascii = ascii && c.unicode() >= 32 && c.unicode() < 127;
    if (ascii)
        return literal(s.toLatin1());
    QByteArray hex = "<FEFF";
    for (QChar c : s)
        hex += QByteArray::number(c.unicode() | 0x10000, 16).mid(1).toUpper();
    return hex + '>';
}

} // namespace

unsigned char PdfPages::winAnsi(QChar c)
{
    const char16_t u = c.unicode();
    if (u >= 32 && u < 127)
        return static_cast<unsigned char>(u);
    if (u >= 0xA0 && u <= 0xFF)
        return static_cast<unsigned char>(u);
    if (u < 32)
        return ' '; // a tab or line break inside a field
    for (int i = 0; i < 32; ++i)
        if (windowsHigh[i] == u)
            return static_cast<unsigned char>(0x80 + i);
    return '?';
}

double PdfPages::width(TextStyle style, QStringView s)
{
    const short *widths = widthsOf(style);
    long thousandths = 0;
    for (QChar c : s)
        thousandths += widths[winAnsi(c) - 32];
    return thousandths * pointSize(style) / 1000.0;
}

PdfPages::PdfPages(QIODevice &out, QSizeF pageSize, const QString &title) :
    m_out(out), m_size(pageSize), m_title(title), m_offsets(firstFreeObject - 1, 0)
{
    // The comment's high bytes tell transfer programs that the file is binary.
    write("%PDF-1.4\n%\xE2\xE3\xCF\xD3\n");
    const char *faces[] = {"Helvetica", "Helvetica-Bold"};
    for (int i = 0; i < 2; ++i) {
        m_offsets[size_t(regularObject + i - 1)] = m_written;
        write(QByteArray::number(regularObject + i) +
              " 0 obj\n<< /Type /Font /Subtype /Type1 /BaseFont /" + faces[i] +
              " /Encoding /WinAnsiEncoding >>\nendobj\n");
    }
    m_offsets[resourcesObject - 1] = m_written;
    write(QByteArray::number(resourcesObject) + " 0 obj\n<< /Font << /F1 " +
          QByteArray::number(regularObject) + " 0 R /F2 " + QByteArray::number(boldObject) +
          " 0 R >> /XObject << /N " + QByteArray::number(pageCountObject) + " 0 R >> >>\nendobj\n");
    m_content.reserve(64 * 1024);
}

int PdfPages::beginObject()
{
    m_offsets.push_back(m_written);
    const int object = int(m_offsets.size());
    write(QByteArray::number(object) + " 0 obj\n");
    return object;
}

void PdfPages::write(QByteArrayView bytes)
{
    if (m_failed)
        return;
    if (m_out.write(bytes.data(), bytes.size()) != bytes.size())
        m_failed = true;
    m_written += bytes.size();
}

void PdfPages::number(double value)
{
    char digits[32];
    const auto end =
        std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, 2).ptr;
    m_content.append(digits, end - digits);
}

void PdfPages::hundredths(long long value)
{
    // 12.5 for 1250, 72 for 7200: no zeros the reader does not need.
    char digits[32];
    char *at = digits + sizeof digits;
    const bool negative = value < 0;
    unsigned long long n = static_cast<unsigned long long>(negative ? -value : value);
    const int cents = int(n % 100);
    n /= 100;
    if (cents != 0) {
        if (cents % 10 != 0)
            *--at = char('0' + cents % 10);
        *--at = char('0' + cents / 10);
        *--at = '.';
    }
    do {
        *--at = char('0' + n % 10);
        n /= 10;
    } while (n != 0);
    if (negative)
        *--at = '-';
    m_content.append(at, digits + sizeof digits - at);
}

void PdfPages::textMode(bool on)
{
    if (on == m_inText)
        return;
    m_content += on ? "BT\n" : "ET\n";
    m_inText = on;
    m_font = -1;
    // BT starts the text line at the page's corner.
    m_lineX = 0;
    m_lineY = 0;
}

void PdfPages::beginPage()
{
    if (m_inPage)
        endPage();
    m_inPage = true;
    m_content.clear();
    m_content += "0.5 w\n";
}

void PdfPages::endPage()
{
    if (!m_inPage)
        return;
    textMode(false);
    m_inPage = false;
    const int contents = beginObject();
    // The fastest compression still makes the file three times smaller; qCompress puts the
    // length in front of the zlib stream.
    const QByteArray packed = qCompress(m_content, 1);
    const QByteArrayView stream = QByteArrayView(packed).sliced(4);
    write("<< /Length " + QByteArray::number(stream.size()) + " /Filter /FlateDecode >>\nstream\n");
    write(stream);
    write("\nendstream\nendobj\n");
    const int page = beginObject();
    m_pages.push_back(page);
    write("<< /Type /Page /Parent " + QByteArray::number(pagesObject) + " 0 R /Resources " +
          QByteArray::number(resourcesObject) + " 0 R /Contents " + QByteArray::number(contents) +
          " 0 R >>\nendobj\n");
}

void PdfPages::text(TextStyle style, double x, double baseline, double room, Qt::Alignment align,
                    const QString &s)
{
    if (s.isEmpty() || !m_inPage)
        return;
    const short *widths = widthsOf(style);
    const double size = pointSize(style);
    m_encoded.resize(s.size());
    long thousandths = 0;
    for (qsizetype i = 0; i < s.size(); ++i) {
        const unsigned char code = winAnsi(s[i]);
        m_encoded[i] = char(code);
        thousandths += widths[code - 32];
    }
    double total = thousandths * size / 1000.0;
    if (total > room) {
        // Cut at the last character that leaves room for the ellipsis.
        const long limit = long(room * 1000.0 / size);
        long used = widths[ellipsis - 32];
        qsizetype keep = 0;
        while (keep < m_encoded.size() &&
               used + widths[static_cast<unsigned char>(m_encoded[keep]) - 32] <= limit)
            used += widths[static_cast<unsigned char>(m_encoded[keep++]) - 32];
        m_encoded.resize(keep);
        m_encoded += char(ellipsis);
        total = used * size / 1000.0;
    }
    const double left = align & Qt::AlignRight     ? x + room - total
                        : align & Qt::AlignHCenter ? x + (room - total) / 2
                                                   : x;
    textMode(true);
    const int font = style == TextStyle::Body ? 1 : 2;
    if (font != m_font || style == TextStyle::Title) {
        m_content += font == 1 ? "/F1 " : "/F2 ";
        number(size);
        m_content += " Tf\n";
        m_font = style == TextStyle::Title ? -1 : font;
    }
    // Each text placed from the one before it (Td): a row's cells differ in x only, and the
    // shorter operators leave less to compress, which is most of the writing's time.
    const long long atX = std::llround(left * 100);
    const long long atY = std::llround((m_size.height() - baseline) * 100);
    hundredths(atX - m_lineX);
    m_content += ' ';
    hundredths(atY - m_lineY);
    m_lineX = atX;
    m_lineY = atY;
    char run[512];
    qsizetype used = 0;
    const auto flush = [&] {
        m_content.append(run, used);
        used = 0;
    };
    run[used++] = ' ';
    run[used++] = 'T';
    run[used++] = 'd';
    run[used++] = ' ';
    run[used++] = '(';
    for (char c : std::as_const(m_encoded)) {
        if (used > qsizetype(sizeof run) - 8)
            flush();
        if (c == '(' || c == ')' || c == '\\')
            run[used++] = '\\';
        run[used++] = c;
    }
    for (char c : QByteArrayView(") Tj\n"))
        run[used++] = c;
    flush();
}

void PdfPages::line(QPointF from, QPointF to)
{
    if (!m_inPage)
        return;
    textMode(false);
    number(from.x());
    m_content += ' ';
    number(m_size.height() - from.y());
    m_content += " m ";
    number(to.x());
    m_content += ' ';
    number(m_size.height() - to.y());
    m_content += " l S\n";
}

void PdfPages::pageCount(double x, double baseline)
{
    if (!m_inPage)
        return;
    textMode(false);
    m_content += "q 1 0 0 1 ";
    number(x);
    m_content += ' ';
    number(m_size.height() - baseline);
    m_content += " cm /N Do Q\n";
}

bool PdfPages::finish()
{
    endPage();
    // The count the pages point at, now that it is known.
    const QByteArray count = "BT /F1 " + QByteArray::number(pointSize(TextStyle::Body)) +
                             " Tf 0 0 Td (" + QByteArray::number(qsizetype(m_pages.size())) +
                             ") Tj ET";
    m_offsets[pageCountObject - 1] = m_written;
    write(QByteArray::number(pageCountObject) +
          " 0 obj\n<< /Type /XObject /Subtype /Form /BBox [0 -4 100 12] /Resources << /Font << "
          "/F1 " +
          QByteArray::number(regularObject) + " 0 R >> >> /Length " +
          QByteArray::number(count.size()) + " >>\nstream\n" + count + "\nendstream\nendobj\n");
    m_offsets[catalogObject - 1] = m_written;
    write(QByteArray::number(catalogObject) + " 0 obj\n<< /Type /Catalog /Pages " +
          QByteArray::number(pagesObject) + " 0 R >>\nendobj\n");
    m_offsets[pagesObject - 1] = m_written;
    QByteArray kids;
    kids.reserve(qsizetype(m_pages.size()) * 10);
    for (int page : m_pages)
        kids += QByteArray::number(page) + " 0 R ";
    write(QByteArray::number(pagesObject) + " 0 obj\n<< /Type /Pages /Count " +
          QByteArray::number(qsizetype(m_pages.size())) + " /MediaBox [0 0 " +
          QByteArray::number(m_size.width()) + ' ' + QByteArray::number(m_size.height()) +
          "] /Kids [ " + kids + "] >>\nendobj\n");
    m_offsets[infoObject - 1] = m_written;
    write(QByteArray::number(infoObject) + " 0 obj\n<< /Title " + infoText(m_title) +
          " /Creator (cryprint) /Producer (cryprint) >>\nendobj\n");
    const qint64 xref = m_written;
    QByteArray table = "xref\n0 " + QByteArray::number(qsizetype(m_offsets.size()) + 1) +
                       "\n0000000000 65535 f \n";
    for (qint64 offset : m_offsets)
        table += QByteArray::number(offset).rightJustified(10, '0') + " 00000 n \n";
    write(table);
    write("trailer\n<< /Size " + QByteArray::number(qsizetype(m_offsets.size()) + 1) + " /Root " +
          QByteArray::number(catalogObject) + " 0 R /Info " + QByteArray::number(infoObject) +
          " 0 R >>\nstartxref\n" + QByteArray::number(xref) + "\n%%EOF\n");
    return !m_failed;
}
