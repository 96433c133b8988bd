#include "ScreenPages.h"

#include <QGlyphRun>
#include <QPagedPaintDevice>
#include <QPainter>

void ScreenPages::Glyphs::load(const QFont &f)
{
    font = QRawFont::fromFont(f);
    const QChar dots(0x2026);
    int one = 1;
    font.glyphIndexesForChars(&dots, 1, &ellipsis, &one);
    QPointF advance;
    font.advancesForGlyphIndexes(&ellipsis, &advance, 1);
    ellipsisAdvance = advance.x();
}

ScreenPages::ScreenPages(QPainter &painter, QPagedPaintDevice *device) :
    m_painter(painter), m_device(device)
{
    QFont body(QStringLiteral("DejaVu Sans"));
    body.setPixelSize(int(pointSize(TextStyle::Body)));
    QFont bold = body;
    bold.setBold(true);
    QFont title = bold;
    title.setPixelSize(int(pointSize(TextStyle::Title)));
    m_faces[size_t(TextStyle::Body)].load(body);
    m_faces[size_t(TextStyle::Bold)].load(bold);
    m_faces[size_t(TextStyle::Title)].load(title);
}

void ScreenPages::beginPage()
{
    if (m_device && m_pages > 0)
        m_device->newPage();
    ++m_pages;
}

// The glyphs come straight from the font's character map, with no text layout: the report's
// texts are plain runs of letters, the layout engine costs more than the rest of the page
// together, and its ligatures ("fi" as one glyph) would hide the words from PDF readers.
void ScreenPages::text(TextStyle style, double x, double baseline, double room, Qt::Alignment align,
                       const QString &s)
{
    if (s.isEmpty())
        return;
    Glyphs &g = m_faces[size_t(style)];
    g.indexes.resize(s.size());
    int count = int(s.size());
    if (!g.font.glyphIndexesForChars(s.constData(), count, g.indexes.data(), &count))
        return;
    g.indexes.resize(count);
    g.advances.resize(count);
    g.font.advancesForGlyphIndexes(g.indexes.data(), g.advances.data(), count);
    double total = 0;
    for (const QPointF &a : g.advances)
        total += a.x();
    if (total > room) {
        // Cut at the last glyph that leaves room for the ellipsis.
        double used = g.ellipsisAdvance;
        int keep = 0;
        while (keep < count && used + g.advances[keep].x() <= room)
            used += g.advances[keep++].x();
        g.indexes.resize(keep);
        g.indexes.push_back(g.ellipsis);
        g.advances.resize(keep);
        g.advances.push_back(QPointF(g.ellipsisAdvance, 0));
        count = keep + 1;
        total = used;
    }
    g.positions.resize(count);
    double at = 0;
    for (int i = 0; i < count; ++i) {
        g.positions[i] = QPointF(at, 0);
        at += g.advances[i].x();
    }
    QGlyphRun glyphs;
    glyphs.setRawFont(g.font);
    glyphs.setGlyphIndexes(g.indexes);
    glyphs.setPositions(g.positions);
    const double left = align & Qt::AlignRight     ? x + room - total
                        : align & Qt::AlignHCenter ? x + (room - total) / 2
                                                   : x;
    m_painter.drawGlyphRun(QPointF(left, baseline), glyphs);
}

void ScreenPages::line(QPointF from, QPointF to)
{
    m_painter.drawLine(from, to);
}
