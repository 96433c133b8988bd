#pragma once

#include "PagePainter.h"

#include <QByteArray>

#include <functional>
#include <map>

// The pages of a report kept for the screen as the layout makes them: each page a compact
// list of its texts and lines, played back onto a painter whenever the page is shown. Only the
// pages of a window that the caller moves are kept (a long report would otherwise hold every
// page it laid out); a page outside it is laid out again when it is wanted.
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

    // The number of pages laid out so far (the highest page ended), kept or not.
    int complete() const { return m_laidOut; }
    // Whether page n is kept and ended, so that it can be replayed.
    bool has(int page) const;
    // Whether page n is kept or being recorded.
    bool holds(int page) const { return m_kept.count(page) > 0; }
    // The pages kept.
    int kept() const { return int(m_kept.size()); }
    // The page the layout is on (the last one begun), 0 before the first.
    int current() const { return m_current; }
    // Keeps only pages first to last (inclusive): the others are dropped, and a page begun
    // outside them is not recorded.
    void keep(int first, int last);
    // A layout going on from an earlier one's mark: page n is taken as open (but not recorded),
    // so that its end and the next page's beginning follow.
    void continueAfter(int page);
    // Called with a page's number as it begins (before anything is drawn on it).
    void onPageBegun(std::function<void(int page)> begun) { m_begun = std::move(begun); }
    // Draws page n (from 1) on a painter; nothing when it is not kept.
    void replay(int page, PagePainter &onto) const;

private:
    template <typename T> void put(T value);

    std::map<int, QByteArray> m_kept;
    QByteArray *m_recording = nullptr; // the open page's, when it is kept
    std::function<void(int)> m_begun;
    int m_current = 0;
    int m_laidOut = 0;
    int m_first = 1, m_last = 1 << 30;
    bool m_open = false;
    bool m_allLaidOut = false;
};
