#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

class QClipboard;

// What the version window shows: what the module passes on its command line
// ("anne@apmaster 21.12.28a     SysUser: 3") and what a support call needs (the installed
// package, the libraries' versions, the data folder, its engine and the module's settings file).
class VersionInfo {
public:
    struct Passed {
        QString user;
        QString program;
        QString version;
        int sysUser = 0;
    };

    // The exit code of the program when the words are not of the module's form.
    static constexpr int wrongWords = 2;
    // The module's words, as the process receives them. Throws ProgramError (wrongWords) when
    // they are not of the module's form.
    static Passed parse(const QStringList &arguments);

    // Runs dpkg-query for the package's version; "" when it is not installed.
    using PackageQuery = std::function<QString()>;
    static QString installedPackageVersion();

    VersionInfo(Passed passed, QString dataFolder,
                PackageQuery packageQuery = &VersionInfo::installedPackageVersion);

    // One "Label: value" line per item, in a fixed order.
    QString text() const;
    void copyTo(QClipboard *clipboard) const;

    static constexpr const char *usageForm = "USER@PROGRAM VERSION SysUser: NUMBER";

private:
    QString engineLine() const;

    Passed m_passed;
    QString m_dataFolder;
    PackageQuery m_packageQuery;
};
