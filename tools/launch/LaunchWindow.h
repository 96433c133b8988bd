#pragma once

#include "StaffList.h"

#include <QProcess>
#include <QWidget>

#include <functional>

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QSettings;

// What the sign-in window is handed: where it remembers the folder, who is logged in, which
// program is the module, and how the user picks a folder.
struct LaunchServices {
    QSettings *settings = nullptr;
    QString loginName;
    QString modulePath;
    // Asks for a data folder, starting at the given one; an empty answer means cancelled.
    std::function<QString(QWidget *parent, const QString &start)> chooseFolder;
};

// The sign-in window: the company's data folder, who signs in, and the start of the module in
// that folder with the argument built from the staff row. It stays out of sight while the
// module runs and comes back when the module ends without starting.
class LaunchWindow : public QWidget {
    Q_OBJECT
public:
    explicit LaunchWindow(LaunchServices services, QWidget *parent = nullptr);

    // The settings key of the remembered data folder.
    static QString folderKey() { return QStringLiteral("dataFolder"); }

signals:
    // The module ran and ended normally; nothing is left to do.
    void finished();

private:
    void browse();
    void openFolder(const QString &folder);
    void showStaff(const QString &folder);
    void signIn();
    void moduleEnded(int exitCode, QProcess::ExitStatus status);
    void moduleFailed(QProcess::ProcessError error);
    void tell(const QString &text);

    LaunchServices m_services;
    QString m_folder;
    std::vector<StaffMember> m_staff;
    QLineEdit *m_folderEdit;
    QPushButton *m_browse;
    QListWidget *m_staffList;
    QLabel *m_status;
    QPushButton *m_signIn;
    QProcess m_module;
};
