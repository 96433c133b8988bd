#include "PageView.h"

#include "PreviewPages.h"
#include "ScreenPages.h"

#include <QElapsedTimer>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <climits>

namespace {

// The page shown, painted from its recording at the view's zoom.
class PageCanvas : public QWidget {
public:
    PageCanvas(const PreviewPages &pages, const int &current, const double &scale,
               QWidget *parent) :
        QWidget(parent),
        m_pages(pages), m_current(current), m_scale(scale)
    {
        setAttribute(Qt::WA_OpaquePaintEvent);
    }

protected:
    void paintEvent(QPaintEvent *event) override
    {
        QPainter painter(this);
        painter.fillRect(event->rect(), Qt::white);
        painter.setPen(Qt::black); // not the palette's: the page is paper
        painter.scale(m_scale, m_scale);
        ScreenPages screen(painter);
        m_pages.replay(m_current, screen);
    }

private:
    const PreviewPages &m_pages;
    const int &m_current;
    const double &m_scale;
};

constexpr double zoomStep = 1.25;

} // namespace

PageView::PageView(PreviewPages &pages, QSizeF pagePoints, QWidget *parent) :
    QScrollArea(parent), m_pages(pages), m_pagePoints(pagePoints)
{
    setAlignment(Qt::AlignCenter);
    setBackgroundRole(QPalette::Dark);
    m_scale = pixelsPerPoint();
    m_canvas = new PageCanvas(m_pages, m_current, m_scale, this);
    setWidget(m_canvas);
    m_idle.setSingleShot(true);
    m_idle.setInterval(0);
    connect(&m_idle, &QTimer::timeout, this, &PageView::layOutAhead);
    applyZoom(1.0);
    setCurrentPage(1);
}

double PageView::pixelsPerPoint() const
{
    return logicalDpiX() / 72.0;
}

int PageView::pageCount() const
{
    return m_pages.count();
}

bool PageView::isComplete() const
{
    return m_pages.isComplete();
}

void PageView::setCurrentPage(int page)
{
    page = std::max(1, page);
    if (!m_pages.layOutTo(page)) {
        // Past the end: the last page, kept around from then on.
        page = std::max(1, m_pages.count());
        m_pages.layOutTo(page);
    }
    m_current = page;
    m_canvas->update();
    verticalScrollBar()->setValue(0);
    emit changed();
    if (!m_pages.isComplete())
        m_idle.start();
}

void PageView::showLastPage()
{
    setCurrentPage(INT_MAX);
}

void PageView::setLookAhead(int pages)
{
    m_lookAhead = pages;
    m_pages.setPagesAhead(pages);
}

void PageView::layOutAhead()
{
    // Short slices, so that keys and repaints are answered between them.
    QElapsedTimer slice;
    slice.start();
    const int before = m_pages.count();
    while (m_pages.count() < m_current + m_lookAhead && slice.elapsed() < 20 &&
           m_pages.layOutSome(50, false)) {
    }
    if (m_pages.count() != before || m_pages.isComplete())
        emit changed();
    if (!m_pages.isComplete() && m_pages.count() < m_current + m_lookAhead && slice.elapsed() >= 20)
        m_idle.start();
}

void PageView::applyZoom(double zoom)
{
    m_zoom = std::clamp(zoom, 0.1, 10.0);
    m_scale = m_zoom * pixelsPerPoint();
    m_canvas->resize((m_pagePoints * m_scale).toSize());
    m_canvas->update();
    emit changed();
}

void PageView::setZoomFactor(double zoom)
{
    m_fit = Fit::None;
    applyZoom(zoom);
}

void PageView::zoomIn()
{
    setZoomFactor(m_zoom * zoomStep);
}

void PageView::zoomOut()
{
    setZoomFactor(m_zoom / zoomStep);
}

void PageView::fitToWidth()
{
    m_fit = Fit::Width;
    refit();
}

void PageView::fitInView()
{
    m_fit = Fit::Page;
    refit();
}

void PageView::refit()
{
    const QSize room = maximumViewportSize() - QSize(verticalScrollBar()->sizeHint().width(), 0);
    const QSizeF page = m_pagePoints * pixelsPerPoint();
    const double width = room.width() / page.width();
    if (m_fit == Fit::Width)
        applyZoom(width);
    else if (m_fit == Fit::Page)
        applyZoom(std::min(width, maximumViewportSize().height() / page.height()));
}

void PageView::resizeEvent(QResizeEvent *event)
{
    QScrollArea::resizeEvent(event);
    if (m_fit != Fit::None)
        refit();
}
