#pragma once

#include <QString>
#include <QWidget>

#include <functional>

class QLabel;
class QPlainTextEdit;
class QPushButton;

// A window for reading and editing one plain-text file. Save writes a work file beside it and
// puts it in the file's place only when it was written whole, so a full disk or a cut-off write
// never leaves half a file.
class EditorWindow : public QWidget {
    Q_OBJECT
public:
    enum class Answer { Save, Discard, Cancel };
    // How the window asks and tells: a question with three answers, and a message.
    struct Questions {
        std::function<Answer(const QString &text)> unsavedChanges;
        std::function<void(const QString &text)> problem;
    };

    EditorWindow(const QString &path, Questions questions, QWidget *parent = nullptr);

    // Reads the file; a file that is not there yet opens empty. False (with a message) when it
    // cannot be read or is not text.
    // Reads the file into the window; a missing file starts empty, or with the text of
    // installedCopy when that file exists (the installed help text, say).
    bool load(const QString &installedCopy = QString());
    // Writes the text through the work file; false (with a message, the text kept) when it
    // cannot.
    bool save();
    bool isModified() const;
    QPlainTextEdit *text() const { return m_text; }
    QPushButton *saveButton() const { return m_save; }
    QPushButton *closeButton() const { return m_close; }
    QLabel *status() const { return m_status; }

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void updateTitle();
    bool readInto(const QString &path); // the text of the file, or false after saying why

    QString m_path;
    Questions m_questions;
    QPlainTextEdit *m_text;
    QPushButton *m_save;
    QPushButton *m_close;
    QLabel *m_status;
};
