#pragma once

#include "PagePainter.h"

#include <QFont>
#include <QList>
#include <QPointF>
#include <QRawFont>

#include <array>

class QPainter;
class QPagedPaintDevice;

// Report pages drawn with a QPainter already set to points: on a printer (a new sheet for
// each page after the first) or on the screen (one page at a time, no device).
class ScreenPages : public PagePainter {
public:
    explicit ScreenPages(QPainter &painter, QPagedPaintDevice *device = nullptr);

    void beginPage() override;
    void endPage() override {}
    void text(TextStyle style, double x, double baseline, double room, Qt::Alignment align,
              const QString &s) override;
    void line(QPointF from, QPointF to) override;

private:
    // A face as glyphs, and room for one line of them.
    struct Glyphs {
        QRawFont font;
        quint32 ellipsis = 0;
        double ellipsisAdvance = 0;
        QList<quint32> indexes;
        QList<QPointF> advances, positions;
        void load(const QFont &f);
    };

    QPainter &m_painter;
    QPagedPaintDevice *m_device;
    std::array<Glyphs, 3> m_faces; // by TextStyle
    int m_pages = 0;
};
