#pragma once

#include <QString>

#include <optional>

// The job the vendor screen hands over: "CVN" (change a vendor number) or "MVN" (merge two
// vendors), the user's level as two digits and the user name, with no separators
// ("MVN05JSMITH"). The same user name is on the clipboard, put there by the screen.
struct JobArgument {
    enum class Job { Change, Merge };
    Job job = Job::Change;
    int level = 0;
    QString userName;

    // The longest user name taken; a longer argument is not one the vendor screen builds.
    static constexpr int maxUserName = 30;

    // The job, or nothing with the reason in `error`.
    static std::optional<JobArgument> parse(const QString &argument, QString &error);
    // Whether the clipboard's text names the same user (the screen leaves it untrimmed there).
    bool sameUser(const QString &clipboardText) const;
};
