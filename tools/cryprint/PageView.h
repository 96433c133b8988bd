#pragma once

#include <QScrollArea>
#include <QSizeF>
#include <QTimer>

class PreviewPages;

// One page of a report on the screen at a zoom, with the next pages laid out while the
// window is idle, a few hundred ahead of the page shown at most (a long report is laid out
// to its end only when its last page is asked for).
class PageView : public QScrollArea {
    Q_OBJECT
public:
    PageView(PreviewPages &pages, QSizeF pagePoints, QWidget *parent = nullptr);

    int currentPage() const { return m_current; }
    // Shows page n, laying out the pages before it first; a page past the end shows the last.
    void setCurrentPage(int page);
    void showLastPage();
    // The pages laid out so far, and whether they are all the report's.
    int pageCount() const;
    bool isComplete() const;
    // How many pages beyond the one shown are laid out while the window is idle (and kept).
    void setLookAhead(int pages);

    // 1.0 shows the page at its printed size.
    double zoomFactor() const { return m_zoom; }
    void setZoomFactor(double zoom);
    void zoomIn();
    void zoomOut();
    void fitToWidth();
    void fitInView();

signals:
    // The page shown, the number of pages or the zoom changed.
    void changed();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    enum class Fit { None, Width, Page };
    void applyZoom(double zoom);
    void refit();
    void layOutAhead();
    double pixelsPerPoint() const;

    PreviewPages &m_pages;
    QSizeF m_pagePoints;
    QWidget *m_canvas;
    QTimer m_idle;
    int m_current = 0;
    int m_lookAhead = 200;
    double m_zoom = 1.0;
    double m_scale = 1.0; // pixels a point at the zoom
    Fit m_fit = Fit::None;
};
