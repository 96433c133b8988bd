#include "NumberJob.h"

#include "VendorNumbers.h"

#include "common/Clock.h"
#include "common/Dialogs.h"
#include "common/ProgramRunner.h"
#include "common/Session.h"
#include "data/Databases.h"

#include <QEventLoop>
#include <QLocale>
#include <QTimer>

namespace {

const QString ap = QStringLiteral("ap.mdb");
constexpr qlonglong largestNumber = 2147483647; // vendor numbers are 32-bit

QString money(double amount)
{
    return QLocale::system().toString(amount, 'f', 2);
}

QString describe(const VendorFigures &f)
{
    return QStringLiteral("Vendor %1 %2\n"
                          "  %3 invoices totalling %4 (paid %5)\n"
                          "  %6 checks totalling %7\n"
                          "  notes: %8, user-defined values: %9\n"
                          "  balance %10, YTD %11")
        .arg(QString::number(f.number), f.name, QString::number(f.invoices), money(f.invoiceTotal),
             money(f.invoicePaidTotal), QString::number(f.checks), money(f.checkTotal),
             f.notes > 0 ? QStringLiteral("yes") : QStringLiteral("none"),
             f.userValues > 0 ? QStringLiteral("yes") : QStringLiteral("none"))
        .arg(money(f.balance), money(f.ytd));
}

// Thrown inside the transaction when the vendors are no longer as they were when asked.
struct ChangedMeanwhile {
    QString text;
};

} // namespace

void NumberJob::refuse(const QString &text)
{
    m_s.dialogs.message(text, Dialogs::Icon::Critical, title());
}

bool NumberJob::userMayRun(const JobArgument &job)
{
    try {
        const QVariant known = m_s.databases.scalar(
            QStringLiteral("user.mdb"), QStringLiteral("select count(*) from staff where "
                                                       "upper(username) = '") +
                                            job.userName.toUpper() + QLatin1Char('\''));
        if (known.toInt() == 0) {
            refuse(QStringLiteral("The user %1 is not on the staff list of this company.")
                       .arg(job.userName));
            return false;
        }
        const QVariant needed = m_s.databases.scalar(QStringLiteral("config.mdb"),
                                                     QStringLiteral("select apaccess1 from ap"));
        if (needed.isNull()) {
            refuse(QStringLiteral("The module's settings (table ap of config.mdb) give no level "
                                  "for changing vendor numbers. See system administrator."));
            return false;
        }
        if (job.level < needed.toInt()) {
            refuse(QStringLiteral("Access denied. See system administrator.\nChanging and merging "
                                  "vendor numbers needs level %1; %2 has level %3.")
                       .arg(needed.toInt())
                       .arg(job.userName)
                       .arg(job.level));
            return false;
        }
    } catch (const DbError &error) {
        refuse(QStringLiteral("The company's files cannot be read: %1").arg(error.text()));
        return false;
    }
    return true;
}

qlonglong NumberJob::askNumber(const QString &prompt)
{
    const QString text = m_s.dialogs.input(prompt, title()).trimmed();
    if (text.isEmpty())
        return 0;
    bool ok = false;
    const qlonglong number = text.toLongLong(&ok);
    for (const QChar c : text)
        ok = ok && c.isDigit() && c.unicode() < 128;
    if (!ok || number < 1 || number > largestNumber) {
        refuse(QStringLiteral("\"%1\" is not a vendor number: a vendor number is a whole number "
                              "from 1 to %2.")
                   .arg(text.left(40))
                   .arg(largestNumber));
        return -1;
    }
    return number;
}

void NumberJob::pause()
{
    QEventLoop pause;
    QTimer::singleShot(pauseMsecs, &pause, &QEventLoop::quit);
    pause.exec(QEventLoop::ExcludeUserInputEvents);
}

bool NumberJob::transact(const JobArgument &job, qlonglong from, qlonglong to,
                         QStringList &conflicts)
{
    const bool merging = job.job == JobArgument::Job::Merge;
    VendorNumbers vendors(m_s.databases);
    for (int tries = 1;; ++tries) {
        try {
            WriteTransaction tx(m_s.databases, ap, Databases::Commit::Durable, tryWaitMsecs);
            vendors.lock(from);
            if (merging)
                vendors.lock(to);
            // Another user may have changed the vendors since they were shown.
            const VendorFigures source = vendors.figures(from);
            const VendorFigures target = vendors.figures(to);
            if (!source.exists)
                throw ChangedMeanwhile{
                    QStringLiteral("Vendor %1 was deleted meanwhile.").arg(from)};
            if (merging && !target.exists)
                throw ChangedMeanwhile{QStringLiteral("Vendor %1 was deleted meanwhile.").arg(to)};
            if (!merging && target.inUse())
                throw ChangedMeanwhile{
                    QStringLiteral("Vendor number %1 was taken meanwhile.").arg(to)};
            if (merging)
                conflicts =
                    vendors.merge(from, to, m_s.clock.today(), m_s.clock.currentYear()).conflicts;
            else
                vendors.change(from, to);
            if (m_s.beforeCommit)
                m_s.beforeCommit();
            tx.commit();
            if (m_s.status)
                m_s.status(QString());
            return true;
        } catch (const ChangedMeanwhile &changed) {
            refuse(changed.text + QStringLiteral("\nNothing was changed."));
            return false;
        } catch (const DbError &error) {
            if (error.code() == DbError::RecordLocked && tries < retryBudget - 1) {
                if (m_s.status)
                    m_s.status(QStringLiteral("Another user is writing to the vendor file; "
                                              "waiting (try %1 of %2).")
                                   .arg(tries)
                                   .arg(retryBudget - 1));
                pause();
                continue;
            }
            if (m_s.status)
                m_s.status(QString());
            if (error.code() == DbError::RecordLocked)
                refuse(QStringLiteral("Vendor %1 or %2 is being saved by another user, and the "
                                      "vendor file stayed busy through %3 tries.\nNothing was "
                                      "changed. Try again when the other user has saved.")
                           .arg(from)
                           .arg(to)
                           .arg(retryBudget - 1));
            else
                refuse(QStringLiteral("The vendor file could not be changed (code %1): %2\n"
                                      "Nothing was changed.")
                           .arg(error.code())
                           .arg(error.text()));
            return false;
        }
    }
}

int NumberJob::run(const QString &argument, const QString &clipboardText)
{
    QString error;
    const std::optional<JobArgument> job = JobArgument::parse(argument, error);
    if (!job) {
        refuse(error);
        return 1;
    }
    if (!job->sameUser(clipboardText)) {
        refuse(QStringLiteral("The clipboard does not hold the user name %1 that the vendor "
                              "screen leaves there when it starts this program.\nStart it from "
                              "the vendor screen's Utilities menu.")
                   .arg(job->userName));
        return 1;
    }
    if (!userMayRun(*job))
        return 1;
    const bool merging = job->job == JobArgument::Job::Merge;
    const qlonglong from = askNumber(merging ? QStringLiteral("Vendor number to merge (it is "
                                                              "deleted afterwards):")
                                             : QStringLiteral("Vendor number to change:"));
    if (from <= 0)
        return from == 0 ? 0 : 1;
    const qlonglong to =
        askNumber(merging ? QStringLiteral("Merge vendor %1 into vendor number:").arg(from)
                          : QStringLiteral("New number for vendor %1:").arg(from));
    if (to <= 0)
        return to == 0 ? 0 : 1;
    if (from == to) {
        refuse(merging ? QStringLiteral("A vendor cannot be merged into itself (%1). Nothing was "
                                        "changed.")
                             .arg(from)
                       : QStringLiteral("Vendor %1 already has that number. Nothing was changed.")
                             .arg(from));
        return 1;
    }
    VendorFigures source, target;
    try {
        VendorNumbers vendors(m_s.databases);
        source = vendors.figures(from);
        target = vendors.figures(to);
    } catch (const DbError &e) {
        refuse(QStringLiteral("The vendor file cannot be read: %1").arg(e.text()));
        return 1;
    }
    if (!source.exists) {
        refuse(QStringLiteral("There is no vendor %1. Nothing was changed.").arg(from));
        return 1;
    }
    if (merging && !target.exists) {
        refuse(QStringLiteral("There is no vendor %1 to merge into. Nothing was changed.").arg(to));
        return 1;
    }
    if (!merging && target.inUse()) {
        refuse((target.exists ? QStringLiteral("Vendor number %1 is already in use (%2).")
                                    .arg(to)
                                    .arg(target.name)
                              : QStringLiteral("Vendor number %1 is already in use by rows of a "
                                               "vendor that no longer exists.")
                                    .arg(to)) +
               QStringLiteral("\nNothing was changed."));
        return 1;
    }
    const int year = m_s.clock.currentYear();
    const QString question =
        merging ? describe(source) + QStringLiteral("\n\n") + describe(target) +
                      QStringLiteral("\n\nVendor %1's invoices, checks, notes and user-defined "
                                     "values go to vendor %2, whose balance and YTD total are "
                                     "then recalculated from its invoices of %3; vendor %1 is "
                                     "deleted.\n\nMerge vendor %1 into vendor %2?")
                          .arg(from)
                          .arg(to)
                          .arg(year)
                : describe(source) +
                      QStringLiteral("\n\nEvery row of vendor %1 gets the number %2.\n\nChange "
                                     "vendor number %1 to %2?")
                          .arg(from)
                          .arg(to);
    if (m_s.dialogs.yesNo(question, title()) != Dialogs::Yes)
        return 0;
    QStringList conflicts;
    if (!transact(*job, from, to, conflicts))
        return 1;

    const VendorFigures after = VendorNumbers(m_s.databases).figures(to);
    QString done;
    if (merging) {
        done = QStringLiteral("Vendor %1 was merged into vendor %2 and deleted.\n\n")
                   .arg(from)
                   .arg(to) +
               describe(after);
        if (!conflicts.isEmpty())
            done += QStringLiteral("\n\nUser-defined values both vendors had; vendor %1's "
                                   "were kept:\n")
                        .arg(to) +
                    conflicts.join(QLatin1Char('\n'));
        m_s.session.messageText =
            QStringLiteral("Merged vendor %1 into vendor %2").arg(from).arg(to);
    } else {
        done =
            QStringLiteral("Vendor %1 is now vendor %2.\n\n").arg(from).arg(to) + describe(after);
        m_s.session.messageText =
            QStringLiteral("Changed vendor number %1 to %2").arg(from).arg(to);
    }
    m_s.session.userName = job->userName;
    m_s.session.staffLocation = QStringLiteral("Vendor numbers");
    m_s.log.writeAdminLog();
    m_s.dialogs.message(done, Dialogs::Icon::Information, title());
    return 0;
}
