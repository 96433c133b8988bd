#pragma once

#include <QString>

// The system clipboard (clear, set text, read text).
class Clipboard {
public:
    virtual ~Clipboard() = default;
    virtual void clear() = 0;
    virtual void setText(const QString &text) = 0;
    virtual QString text() const = 0;
};

// The real clipboard of the desktop session (X11, Wayland or the offscreen platform's own).
class SystemClipboard : public Clipboard {
public:
    void clear() override;
    void setText(const QString &text) override;
    QString text() const override;
};
