#include "JobArgument.h"

namespace {

bool isTwoDigits(const QString &text)
{
    return text.size() == 2 && text.at(0).isDigit() && text.at(1).isDigit() &&
           text.at(0).unicode() < 128 && text.at(1).unicode() < 128;
}

// A user name is the name a user signs in with: no quotes (it goes into the staff lookup and the
// administrator's log) and nothing unprintable.
bool isUserName(const QString &name)
{
    for (const QChar c : name) {
        if (c == QLatin1Char('\'') || c == QLatin1Char('"') || c == QLatin1Char('`') ||
            c == QChar(0x2018) || c == QChar(0x2019) || c == QChar(0x201C) || c == QChar(0x201D) ||
            !c.isPrint())
            return false;
    }
    return true;
}

} // namespace

std::optional<JobArgument> JobArgument::parse(const QString &argument, QString &error)
{
    const QString shape = QStringLiteral(
        "This program is started from the vendor screen of A/P Master (Utilities menu), with a "
        "job argument such as CVN05JSMITH: CVN or MVN, the user's level as two digits, the user "
        "name.");
    if (argument.size() > 5 + maxUserName) {
        error = QStringLiteral("The job argument is %1 characters long; it can be at most %2.\n\n")
                    .arg(argument.size())
                    .arg(5 + maxUserName) +
                shape;
        return std::nullopt;
    }
    const QString code = argument.left(3);
    JobArgument job;
    if (code == QLatin1String("CVN"))
        job.job = Job::Change;
    else if (code == QLatin1String("MVN"))
        job.job = Job::Merge;
    else {
        error = QStringLiteral("The job argument \"%1\" does not start with CVN or MVN.\n\n")
                    .arg(argument) +
                shape;
        return std::nullopt;
    }
    const QString level = argument.mid(3, 2);
    if (!isTwoDigits(level)) {
        error = QStringLiteral("The job argument \"%1\" has no two-digit user level after %2.\n\n")
                    .arg(argument, code) +
                shape;
        return std::nullopt;
    }
    job.level = level.toInt();
    job.userName = argument.mid(5).trimmed();
    if (job.userName.isEmpty()) {
        error = QStringLiteral("The job argument \"%1\" names no user.\n\n").arg(argument) + shape;
        return std::nullopt;
    }
    if (!isUserName(job.userName)) {
        error = QStringLiteral("The user name \"%1\" holds a quote or a character that cannot be "
                               "printed; no user has such a name.")
                    .arg(job.userName);
        return std::nullopt;
    }
    return job;
}

bool JobArgument::sameUser(const QString &clipboardText) const
{
    return clipboardText.trimmed().compare(userName, Qt::CaseInsensitive) == 0;
}
