#include "LayoutPageView.h"

#include "reports/PrinterFormPrinter.h"

#include <QFontMetricsF>
#include <QMouseEvent>
#include <QPainter>

#include <cmath>

namespace {
double hundredths(double inches)
{
    return std::round(inches * 100.0) / 100.0;
}
} // namespace

LayoutPageView::LayoutPageView(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("page"));
    setMouseTracking(false);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize LayoutPageView::sizeHint() const
{
    return {static_cast<int>(m_paper.width() * m_scale) + 2 * margin,
            static_cast<int>(m_paper.height() * m_scale) + 2 * margin};
}

void LayoutPageView::setPage(QSizeF paperInches, int forms, double spacingInches,
                             std::vector<Mark> marks, std::vector<FormPlacement::Item> items)
{
    m_paper = paperInches;
    m_forms = forms;
    m_spacing = spacingInches;
    m_marks = std::move(marks);
    m_items = std::move(items);
    setFixedSize(sizeHint());
    update();
}

void LayoutPageView::setScan(const QImage &scan)
{
    m_scan = scan;
    update();
}

void LayoutPageView::choose(const QList<int> &elements)
{
    m_chosen = elements;
    update();
}

QPointF LayoutPageView::toPixels(double xInches, double yInches) const
{
    return {margin + xInches * m_scale, margin + yInches * m_scale};
}

QPoint LayoutPageView::markAt(int element) const
{
    for (const Mark &m : m_marks)
        if (m.element == element)
            return toPixels(m.xInches, m.yInches).toPoint();
    return {-1, -1};
}

int LayoutPageView::spacingLineY() const
{
    return static_cast<int>(std::lround(toPixels(0, m_spacing).y()));
}

void LayoutPageView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Mid));
    const QRectF paper(toPixels(0, 0),
                       QSizeF(m_paper.width() * m_scale, m_paper.height() * m_scale));
    painter.fillRect(paper, Qt::white);
    if (!m_scan.isNull())
        painter.drawImage(paper, m_scan);
    painter.setPen(QPen(Qt::darkGray, 1, Qt::DashLine));
    for (int form = 1; form < m_forms; ++form) {
        const double y = toPixels(0, form * m_spacing).y();
        painter.drawLine(QPointF(paper.left(), y), QPointF(paper.right(), y));
    }
    // The sample text at the printer's size: 10 points are 10/72 of an inch.
    QFont font = PrinterFormPrinter::formFont();
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(10.0 / 72.0 * m_scale))));
    painter.setFont(font);
    const double ascent = QFontMetricsF(font).ascent();
    for (const FormPlacement::Item &item : m_items) {
        painter.setPen(m_chosen.contains(item.element) ? QColor(200, 0, 0) : QColor(Qt::black));
        const QPointF at = toPixels(item.xTwips / 1440.0, item.yTwips / 1440.0);
        painter.drawText(at + QPointF(0, ascent), item.text);
    }
    QFont small = font;
    small.setPixelSize(std::max(1, static_cast<int>(std::lround(7.0 / 72.0 * m_scale))));
    painter.setFont(small);
    for (const Mark &m : m_marks) {
        const QPointF at = toPixels(m.xInches, m.yInches);
        const QColor colour = m_chosen.contains(m.element) ? QColor(200, 0, 0) : QColor(0, 90, 200);
        painter.setPen(colour);
        painter.setBrush(colour);
        painter.drawEllipse(at, 2.5, 2.5);
        painter.drawText(
            at + QPointF(-4 - QFontMetricsF(small).horizontalAdvance(QString::number(m.element)),
                         QFontMetricsF(small).ascent() / 2),
            QString::number(m.element));
    }
}

int LayoutPageView::elementAt(QPoint at) const
{
    for (const Mark &m : m_marks)
        if ((toPixels(m.xInches, m.yInches) - QPointF(at)).manhattanLength() <= 6)
            return m.element;
    // The sample texts of the first form.
    const QFontMetricsF metrics(font());
    const double height = 10.0 / 72.0 * m_scale;
    for (const FormPlacement::Item &item : m_items) {
        const QPointF corner = toPixels(item.xTwips / 1440.0, item.yTwips / 1440.0);
        const QRectF box(corner, QSizeF(std::max(12.0, item.text.size() * height * 0.6), height));
        if (item.yTwips < m_spacing * 1440 && box.contains(at))
            return item.element;
    }
    return -1;
}

void LayoutPageView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_dragStart = event->position().toPoint();
    const int element = elementAt(m_dragStart);
    if (element > 0) {
        m_drag = Drag::Element;
        if (!m_chosen.contains(element)) {
            choose({element});
            emit elementChosen(element);
        }
        m_startMarks = m_marks;
    } else if (m_forms > 1 && std::abs(m_dragStart.y() - spacingLineY()) <= 3) {
        m_drag = Drag::Spacing;
        m_startSpacing = m_spacing;
    }
}

void LayoutPageView::mouseMoveEvent(QMouseEvent *event)
{
    if (m_drag == Drag::None)
        return;
    const QPointF moved = event->position() - QPointF(m_dragStart);
    if (m_drag == Drag::Spacing) {
        m_spacing = hundredths(m_startSpacing + moved.y() / m_scale);
        update();
        return;
    }
    const double across = hundredths(moved.x() / m_scale);
    const double down = hundredths(moved.y() / m_scale);
    for (size_t i = 0; i < m_marks.size(); ++i)
        if (m_chosen.contains(m_marks[i].element)) {
            m_marks[i].xInches = m_startMarks[i].xInches + across;
            m_marks[i].yInches = m_startMarks[i].yInches + down;
        }
    update();
}

void LayoutPageView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || m_drag == Drag::None)
        return;
    const Drag drag = m_drag;
    m_drag = Drag::None;
    const QPointF moved = event->position() - QPointF(m_dragStart);
    if (moved.manhattanLength() < 1)
        return;
    if (drag == Drag::Spacing)
        emit spacingDragged(hundredths(m_startSpacing + moved.y() / m_scale));
    else
        emit elementsDragged(m_chosen, hundredths(moved.x() / m_scale),
                             hundredths(moved.y() / m_scale));
}
