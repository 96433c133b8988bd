#include "vendorscreen/PassIndicator.h"

#include <QCoreApplication>
#include <QCursor>
#include <QEvent>
#include <QGuiApplication>
#include <QProgressBar>
#include <QWidget>

namespace {
// How often the window is painted during a pass: often enough to look alive, seldom enough
// that painting costs the pass nothing to speak of.
constexpr qint64 paintEveryMsecs = 100;
} // namespace

PassIndicator::PassIndicator(QWidget *window, QProgressBar *bar) : m_window(window), m_bar(bar)
{
    m_bar->setFormat(QStringLiteral("%v of %m"));
    m_bar->hide();
}

void PassIndicator::begin(int total)
{
    m_running = true;
    QCoreApplication::instance()->installEventFilter(this);
    QGuiApplication::setOverrideCursor(Qt::BusyCursor);
    m_bar->setRange(0, total);
    m_bar->setValue(0);
    m_bar->show();
    m_painted.start();
    QCoreApplication::processEvents();
}

void PassIndicator::advance(int done)
{
    // The bar repaints itself at once whenever its text changes: only now and then, then.
    if (m_painted.elapsed() < paintEveryMsecs)
        return;
    m_painted.restart();
    m_bar->setValue(done);
    QCoreApplication::processEvents();
}

void PassIndicator::end()
{
    m_bar->hide();
    QGuiApplication::restoreOverrideCursor();
    QCoreApplication::instance()->removeEventFilter(this);
    m_running = false;
}

bool PassIndicator::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
        return true; // held off until the pass is over
    default:
        return QObject::eventFilter(watched, event);
    }
}
