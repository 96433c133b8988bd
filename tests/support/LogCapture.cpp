#include "support/LogCapture.h"

#include <QLoggingCategory>
#include <QMutex>

#include <utility>
#include <vector>

namespace {
QMutex s_mutex;
std::vector<std::pair<QString, QString>> s_lines;
QtMessageHandler s_previous = nullptr;

void capture(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    {
        QMutexLocker lock(&s_mutex);
        s_lines.emplace_back(QString::fromLatin1(context.category ? context.category : ""),
                             message);
    }
    if (type >= QtWarningMsg && s_previous)
        s_previous(type, context, message);
}
} // namespace

LogCapture::LogCapture()
{
    QLoggingCategory::setFilterRules(QStringLiteral("vendor.*=true"));
    QMutexLocker lock(&s_mutex);
    s_lines.clear();
    s_previous = qInstallMessageHandler(capture);
}

LogCapture::~LogCapture()
{
    qInstallMessageHandler(s_previous);
}

QStringList LogCapture::lines(const QString &category) const
{
    QMutexLocker lock(&s_mutex);
    QStringList out;
    for (const auto &[cat, line] : s_lines)
        if (cat == category)
            out << line;
    return out;
}
