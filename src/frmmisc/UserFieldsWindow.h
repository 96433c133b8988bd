#pragma once

#include "common/HandlerGuard.h"
#include "frmmisc/UserFieldsCall.h"
#include "reports/PrintMargins.h"

#include <QStringList>
#include <QWidget>

#include <array>
#include <functional>
#include <memory>

class Clipboard;
class Databases;
class Dialogs;
class Processes;
class ProgramRunner;
class QAction;
class QLabel;
class QLineEdit;
class QMenu;
class QMenuBar;
class QPushButton;
class QScrollArea;
class ReportRunner;
class StatusLine;
struct Session;

// The user-defined information window: the thirty field descriptions shared by one kind of
// account, beside each the recalled account's value and a box for the field's position on the
// report. Descriptions are renamed by a double click on their label (or F2 in the row), values
// typed, both saved with a check that no other user changed them since they were read, and the
// fields printed through the report runner.
//
// The caller makes the window and calls open() with the calling code ("VEN1042"). The window is a
// top-level window of its owner and deletes itself when it closes; closed() tells the owner.
class UserFieldsWindow : public QWidget {
    Q_OBJECT

public:
    static constexpr int fieldCount = 30;
    static constexpr int descriptionLimit = 20;
    static constexpr int valueLimit = 50;

    // What the window uses, and nothing more.
    struct Services {
        Dialogs &dialogs;
        Databases &databases;
        Session &session;
        Clipboard &clipboard;
        Processes &processes;
        StatusLine &status;      // the owner's status line (the report runner's)
        ProgramRunner &programs; // the help
        std::function<void(const QString &keys)> sendKeys;
        std::function<void()> notTopmost; // takes the owner out of the always-on-top state
    };

    struct Controls {
        std::array<QLabel *, fieldCount> lbldescrip{};
        std::array<QLineEdit *, fieldCount> txtinfo{};
        std::array<QLineEdit *, fieldCount> txtsort{};
        QLabel *lblreminder = nullptr;
        QPushButton *cmdsave = nullptr, *cmdprint = nullptr, *cmdselect = nullptr,
                    *cmdhelp = nullptr, *cmdexit = nullptr;
        QMenuBar *menubar = nullptr;
        QMenu *mnufile = nullptr;
        QAction *mnusingle = nullptr, *mnuall = nullptr;
    };

    UserFieldsWindow(Services services, QWidget *owner);
    ~UserFieldsWindow() override;

    // Reads the calling code, sets the caption and fills the window; shows it and returns true,
    // or, when the kind's database cannot hold user-defined fields, says so, closes and returns
    // false.
    bool open(const QString &callingCode);

    const Controls &controls() const { return m_c; }
    const UserFieldsCall &call() const { return m_call; }
    // The texts read when the account was recalled, which the save compares against.
    QString descriptionTag(int field) const { return m_descriptionTags.value(field); }
    QString valueTag(int field) const { return m_valueTags.value(field); }
    bool allAccountsMode() const { return m_allAccounts; }
    // The file of the last report's record (empty before the first report).
    QString reportRecordPath() const { return m_recordPath; }

    // What the controls do; tests may call them directly.
    void renameDescription(int field);
    // True when the descriptions and the values were written.
    bool save();
    // Typed values or renamed descriptions not saved yet.
    bool hasUnsavedChanges() const;
    // Exit: a window with unsaved changes asks whether to save them first; false: it stays.
    bool mayClose();
    void print();
    void selectDescribed();
    void setAllAccountsMode(bool all);

signals:
    // The window has closed (it is deleted afterwards).
    void closed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void build();
    QWidget *buildRows();
    void wire();
    // Runs a handler behind the guard; the engine's refusals are answered here.
    void guarded(const std::function<void()> &work);
    // Reads the descriptions and the account's values into the window and the tags. False when
    // the database file is missing (the message is shown).
    bool populate();
    // Reads one record with the record helpers; false when the database file is missing.
    bool load(const QString &query);
    // The 30 texts of the last loaded record's columns stem1..stem30 (all must be there).
    QStringList loadedTexts(const QString &stem) const;
    void setLoadedTexts(const QString &stem, const QStringList &texts);
    bool othersChanged(const QStringList &stored, const QStringList &tags) const;
    bool askOverwrite();
    void cannotContinue();
    void showReminder();
    // Names the row's boxes for screen readers by its description.
    void nameRow(int field);
    QStringList descriptions() const;
    QStringList values() const;
    void finish();

    Services m_s;
    Controls m_c;
    QScrollArea *m_rows = nullptr;
    HandlerGuard m_guard;
    UserFieldsCall m_call;
    PrintMargins m_margins;
    std::unique_ptr<ReportRunner> m_runner;
    QStringList m_descriptionTags;
    QStringList m_valueTags;
    bool m_allAccounts = false;
    bool m_finished = false;
    QString m_recordPath;
};
