#pragma once

#include <QPointF>
#include <QString>
#include <qnamespace.h>

// The three faces a report page uses.
enum class TextStyle { Body, Bold, Title };

// Where a report's pages go: a PDF file written as it goes, a printer or the screen, or a
// recording for the preview. Coordinates are points (1/72 inch) from the page's top left.
class PagePainter {
public:
    virtual ~PagePainter() = default;

    virtual void beginPage() = 0;
    virtual void endPage() = 0;
    // One line of text standing on its baseline within room points from x, aligned left,
    // right or centred in that room, cut with an ellipsis where it does not fit.
    virtual void text(TextStyle style, double x, double baseline, double room, Qt::Alignment align,
                      const QString &s) = 0;
    virtual void line(QPointF from, QPointF to) = 0;
    // The number of pages of the whole report, its left edge at x, in the body face: known
    // only when the last page is laid out, so each kind of page that shows it puts it in its
    // own way (a page drawn from recorded pages gets it as text).
    virtual void pageCount(double x, double baseline)
    {
        Q_UNUSED(x)
        Q_UNUSED(baseline)
    }
};

// The size of a face in points.
inline double pointSize(TextStyle style)
{
    return style == TextStyle::Title ? 13.0 : 8.0;
}
