#pragma once

#include <QString>

#include <functional>

class Clipboard;
class Processes;
struct Session;

// Renumbering a vendor and merging two vendors are the suite's vendor-number utility's work
// (chanum.exe); the screen starts it with a job argument shaped like the launcher's ("CVN05JSMITH":
// job code, two-digit level, user name) and the user name on the clipboard.
class VendorNumberUtility {
public:
    struct Services {
        Clipboard &clipboard;
        Processes &processes;
        Session &session;
    };
    // cancelScreen ends what the vendor screen is doing, as its Cancel button does; reloadStaff
    // reads the user's staff record again (the level comes from there).
    VendorNumberUtility(Services services, std::function<void()> cancelScreen,
                        std::function<void()> reloadStaff) :
        m_s(services),
        m_cancelScreen(std::move(cancelScreen)), m_reloadStaff(std::move(reloadStaff))
    {
    }

    void changeNumber() { start(QStringLiteral("CVN")); }
    void merge() { start(QStringLiteral("MVN")); }

    // The job argument for a job code, level and user name.
    static QString jobArgument(const QString &code, int level, const QString &userName);

private:
    void start(const QString &code);

    Services m_s;
    std::function<void()> m_cancelScreen;
    std::function<void()> m_reloadStaff;
};
