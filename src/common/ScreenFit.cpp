#include "common/ScreenFit.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QSettings>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace {

QRect availableArea(const QWidget *window)
{
    const QScreen *screen = window->screen();
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (!screen)
        return QRect();
    QRect area = screen->availableGeometry();
    // At a fractional scaling (150%: 1366 / 1.5 = 910.67) the last device-independent pixel
    // stands for part of a device pixel only, and a window reaching into it sticks out of the
    // screen by one device pixel: leave it out.
    const qreal ratio = screen->devicePixelRatio();
    if (ratio != std::floor(ratio))
        area.adjust(0, 0, -1, -1);
    return area;
}

// What the desktop adds around the window (title bar, borders); nothing where it adds none.
QMargins frameMargins(const QWidget *window)
{
    const QRect frame = window->frameGeometry();
    const QRect inner = window->geometry();
    return {inner.left() - frame.left(), inner.top() - frame.top(), frame.right() - inner.right(),
            frame.bottom() - inner.bottom()};
}

QSize minimumFrame(const QWidget *window, const QMargins &margins)
{
    const QSize least = window->minimumSize().expandedTo(window->minimumSizeHint());
    return least.grownBy(margins);
}

void setFrame(QWidget *window, const QRect &frame, const QMargins &margins)
{
    const QSize inner = frame.size().shrunkBy(margins);
    if (inner != window->size())
        window->resize(inner);
    if (frame.topLeft() != window->frameGeometry().topLeft())
        window->move(frame.topLeft());
}

// Fits its window again after each show and each change of size.
class KeepOnScreen : public QObject {
public:
    explicit KeepOnScreen(QWidget *window) : QObject(window), m_window(window)
    {
        window->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched == m_window && !m_fitting &&
            (event->type() == QEvent::Show ||
             (event->type() == QEvent::Resize && m_window->isVisible()))) {
            m_fitting = true;
            ScreenFit::fit(m_window);
            m_fitting = false;
        }
        return false;
    }

private:
    QWidget *m_window;
    bool m_fitting = false;
};

QSettings windowSettings()
{
    return QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Velmora"),
                     QStringLiteral("apmaster"));
}

} // namespace

namespace ScreenFit {

QRect within(const QRect &frame, const QRect &area, const QSize &minimum)
{
    if (area.isEmpty())
        return frame;
    const QSize size = frame.size().boundedTo(area.size()).expandedTo(minimum);
    const int x = std::max(area.left(), std::min(frame.left(), area.right() + 1 - size.width()));
    const int y = std::max(area.top(), std::min(frame.top(), area.bottom() + 1 - size.height()));
    return {QPoint(x, y), size};
}

void fit(QWidget *window)
{
    const QMargins margins = frameMargins(window);
    const QRect frame = window->frameGeometry();
    setFrame(window, within(frame, availableArea(window), minimumFrame(window, margins)), margins);
}

void keepOnScreen(QWidget *window)
{
    new KeepOnScreen(window);
}

void place(QWidget *window, const QRect &wanted)
{
    const QMargins margins = frameMargins(window);
    setFrame(window, within(wanted, availableArea(window), minimumFrame(window, margins)), margins);
}

void restore(QWidget *window, const QString &key, const QSize &fallback)
{
    // Kept as the frame's place and the window's own size: restoring these does not creep by
    // the height of the title bar each time, as a saved geometry can on X11.
    const QRect saved = windowSettings().value(key).toRect();
    if (saved.isEmpty()) {
        const QRect area = availableArea(window);
        QRect wanted(QPoint(), fallback.grownBy(frameMargins(window)));
        wanted.moveCenter(area.center());
        place(window, wanted);
        return;
    }
    window->resize(saved.size());
    window->move(saved.topLeft());
    fit(window);
}

void remember(const QWidget *window, const QString &key)
{
    QSettings settings = windowSettings();
    settings.setValue(key, QRect(window->pos(), window->size()));
}

} // namespace ScreenFit
