#include "common/HandlerGuard.h"

#include "common/Dialogs.h"
#include "common/NumberedError.h"

#include <QLoggingCategory>

#include <exception>

Q_LOGGING_CATEGORY(lcHandler, "vendor.handler", QtWarningMsg)

void HandlerGuard::unexpectedReport(Dialogs &dialogs, const QString &userName, int code, int step)
{
    dialogs.message(QStringLiteral("Code ") + QString::number(code) + QStringLiteral(" near ") +
                        QString::number(step) +
                        QStringLiteral("Unexpected problem... Call Velmora Data."),
                    Dialogs::Icon::Information, userName + QStringLiteral(" @ Apmaster"));
}

void HandlerGuard::run(const std::function<void()> &handler) const
{
    // The report names no step: the handler did not expect to fail anywhere. What went wrong is
    // logged, so that it is not lost.
    try {
        handler();
    } catch (const NumberedError &error) {
        qCWarning(lcHandler).noquote() << "handler failed:" << error.code() << error.text();
        unexpectedReport(m_dialogs, m_userName(), error.code(), 0);
    } catch (const std::exception &error) {
        qCWarning(lcHandler).noquote() << "handler failed:" << error.what();
        unexpectedReport(m_dialogs, m_userName(), 0, 0);
    }
}
