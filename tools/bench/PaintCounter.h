#pragma once

#include <QHash>
#include <QObject>

#include <vector>

class QWidget;

// Counts the paint events the application's widgets receive between start() and the questions
// asked after it, by widget and by the window it sits in: how many a window got in all, and the
// most one widget of the window got (two for a field: painted blank, then painted filled).
class PaintCounter : public QObject {
public:
    PaintCounter();
    ~PaintCounter() override;
    PaintCounter(const PaintCounter &) = delete;
    PaintCounter &operator=(const PaintCounter &) = delete;

    void start();
    // Paint events of the widgets of `window` (itself included).
    int inWindow(const QWidget *window) const;
    // The most paint events one widget of `window` received.
    int mostOnOneIn(const QWidget *window) const;
    // Paint events of the given widgets, in all and the most one of them received.
    int on(const std::vector<const QWidget *> &widgets) const;
    int mostOnOneOf(const std::vector<const QWidget *> &widgets) const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Count {
        const QWidget *window = nullptr; // compared, never used: the widget may be gone
        int paints = 0;
    };
    QHash<const QObject *, Count> m_paints;
};
