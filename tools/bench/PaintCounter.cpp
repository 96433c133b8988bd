#include "PaintCounter.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include <algorithm>

PaintCounter::PaintCounter()
{
    qApp->installEventFilter(this);
}

PaintCounter::~PaintCounter()
{
    qApp->removeEventFilter(this);
}

void PaintCounter::start()
{
    m_paints.clear();
}

bool PaintCounter::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint && watched->isWidgetType()) {
        Count &count = m_paints[watched];
        count.window = static_cast<const QWidget *>(watched)->window();
        ++count.paints;
    }
    return false;
}

int PaintCounter::inWindow(const QWidget *window) const
{
    int total = 0;
    for (const Count &count : m_paints)
        if (count.window == window)
            total += count.paints;
    return total;
}

int PaintCounter::mostOnOneIn(const QWidget *window) const
{
    int most = 0;
    for (const Count &count : m_paints)
        if (count.window == window)
            most = std::max(most, count.paints);
    return most;
}

int PaintCounter::on(const std::vector<const QWidget *> &widgets) const
{
    int total = 0;
    for (const QWidget *widget : widgets)
        total += m_paints.value(widget).paints;
    return total;
}

int PaintCounter::mostOnOneOf(const std::vector<const QWidget *> &widgets) const
{
    int most = 0;
    for (const QWidget *widget : widgets)
        most = std::max(most, m_paints.value(widget).paints);
    return most;
}
