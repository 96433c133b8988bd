#pragma once

#include "PagePainter.h"

#include <QByteArray>

#include <vector>

// The pages of a report kept for the screen as the layout makes them: each page a compact
// list of its texts and lines, played back onto a painter whenever the page is shown.
class RecordedPages : public PagePainter {
public:
    void beginPage() override;
    void endPage() override;
    void text(TextStyle style, double x, double baseline, double room, Qt::Alignment align,
              const QString &s) override;
    void line(QPointF from, QPointF to) override;
    void pageCount(double x, double baseline) override;
    // Every page is laid out: the count replays as the number of pages, until then as "...".
    void setAllLaidOut() { m_allLaidOut = true; }

    // The pages ended so far.
    int complete() const { return int(m_pages.size()) - (m_open ? 1 : 0); }
    // Draws page n (from 1) on a painter; nothing when it is not complete.
    void replay(int page, PagePainter &onto) const;

private:
    template <typename T> void put(T value);

    std::vector<QByteArray> m_pages;
    bool m_open = false;
    bool m_allLaidOut = false;
};
