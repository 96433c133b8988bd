#include "RunnerRequest.h"

#include <QRegularExpression>
#include <QSet>
#include <QStringList>

namespace {

const QString marker = QStringLiteral("Crystal");

bool readTwips(const QString &value, int &twips)
{
    static const QRegularExpression digits(QStringLiteral("^-?[0-9]{1,9}$"));
    if (!digits.match(value).hasMatch())
        return false;
    twips = value.toInt();
    return true;
}

// The index of "Name(n)" keys: -1 when the key is not of that form or n is out of range.
int indexOf(const QString &key, const QString &name, int count)
{
    static const QRegularExpression indexed(QStringLiteral("^([A-Za-z]+)\\(([0-9])\\)$"));
    const auto m = indexed.match(key);
    if (!m.hasMatch() || m.captured(1).compare(name, Qt::CaseInsensitive) != 0)
        return -1;
    const int n = m.captured(2).toInt();
    return n < count ? n : -1;
}

} // namespace

bool RunnerRequest::toFile() const
{
    return destination.compare(QLatin1String("File"), Qt::CaseInsensitive) == 0;
}

std::optional<RunnerRequest> RunnerRequest::parse(const QString &text, QString &error)
{
    if (text.isEmpty()) {
        error = QStringLiteral("The report request is empty: there is no report to run.");
        return std::nullopt;
    }
    const QStringList lines = text.split(QLatin1Char('\n'));
    RunnerRequest request;
    QSet<QString> seen;
    for (int i = 0; i < lines.size(); ++i) {
        QString line = lines[i];
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
        const int number = i + 1;
        // A last line feed after the final "~" is harmless.
        if (line.isEmpty() && i == lines.size() - 1 && i > 0)
            break;
        if (!line.endsWith(QLatin1Char('~'))) {
            error = QStringLiteral("Line %1 of the report request does not end with \"~\": %2")
                        .arg(number)
                        .arg(line.left(60));
            return std::nullopt;
        }
        line.chop(1);
        if (i == 0) {
            if (line != marker) {
                error = QStringLiteral("This is not a report request: the first line must be "
                                       "\"Crystal~\", not \"%1~\".")
                            .arg(line.left(60));
                return std::nullopt;
            }
            continue;
        }
        const int equals = line.indexOf(QLatin1Char('='));
        if (equals <= 0) {
            error = QStringLiteral("Line %1 of the report request is not of the form "
                                   "Key=value: %2")
                        .arg(number)
                        .arg(line.left(60));
            return std::nullopt;
        }
        const QString key = line.left(equals);
        const QString value = line.mid(equals + 1);
        const QString folded = key.toLower();
        if (seen.contains(folded)) {
            error = QStringLiteral("The key %1 appears twice in the report request (line %2).")
                        .arg(key)
                        .arg(number);
            return std::nullopt;
        }
        seen.insert(folded);
        auto is = [&](const char *name) { return folded == QString::fromLatin1(name).toLower(); };
        int n = -1;
        if (is("ReportFileName")) {
            request.reportFileName = value;
        } else if (is("WindowTitle")) {
            request.windowTitle = value;
        } else if (is("MarginTop") || is("MarginLeft")) {
            int &margin = is("MarginTop") ? request.marginTop : request.marginLeft;
            if (!readTwips(value, margin)) {
                error = QStringLiteral("%1 must be a whole number of twips, not \"%2\" "
                                       "(line %3).")
                            .arg(key, value)
                            .arg(number);
                return std::nullopt;
            }
        } else if (is("SelectionFormula")) {
            request.selectionFormula = value;
        } else if ((n = indexOf(key, QStringLiteral("DataFiles"), 6)) >= 0) {
            request.dataFiles[size_t(n)] = value;
        } else if ((n = indexOf(key, QStringLiteral("SortFields"), 4)) >= 0) {
            request.sortFields[size_t(n)] = value;
        } else if (is("Destination")) {
            request.destination = value;
        } else if (is("PrintFileName")) {
            request.printFileName = value;
        } else if (is("PrintFileType")) {
            request.printFileType = value;
        } else {
            error = QStringLiteral("The report request has an unknown key \"%1\" (line %2).")
                        .arg(key)
                        .arg(number);
            return std::nullopt;
        }
    }
    if (request.reportFileName.trimmed().isEmpty()) {
        error = QStringLiteral("The report request names no report file (ReportFileName=).");
        return std::nullopt;
    }
    if (!request.destination.isEmpty() && !request.toFile() &&
        request.destination.compare(QLatin1String("Window"), Qt::CaseInsensitive) != 0) {
        error = QStringLiteral("Destination must be File or Window, not \"%1\".")
                    .arg(request.destination);
        return std::nullopt;
    }
    if (request.toFile()) {
        if (request.printFileName.isEmpty()) {
            error = QStringLiteral("Destination=File needs a PrintFileName.");
            return std::nullopt;
        }
        const QString type = request.printFileType.toUpper();
        if (type != QLatin1String("PDF") && type != QLatin1String("CSV")) {
            error = QStringLiteral("PrintFileType must be PDF or CSV, not \"%1\".")
                        .arg(request.printFileType);
            return std::nullopt;
        }
    }
    return request;
}
