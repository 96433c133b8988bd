#pragma once

#include <QDialog>

class QPushButton;
class VersionInfo;

// The window: the text, "Copy" (to the clipboard) and "Close"; Escape closes it too.
class VersionWindow : public QDialog {
public:
    explicit VersionWindow(const VersionInfo &info, QWidget *parent = nullptr);

    QPushButton *copyButton() const { return m_copy; }
    QPushButton *closeButton() const { return m_close; }

private:
    QPushButton *m_copy;
    QPushButton *m_close;
};
