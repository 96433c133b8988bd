#include "RunnerRequest.h"

#include "ReportFailure.h"

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

// A line without its line feed's carriage return and its closing "~".
QString withoutTilde(QString line, int number)
{
    if (line.endsWith(QLatin1Char('\r')))
        line.chop(1);
    if (!line.endsWith(QLatin1Char('~')))
        ReportFailure::raise(
            QStringLiteral("Line %1 of the report request does not end with \"~\": %2")
                .arg(number)
                .arg(line.left(60)));
    line.chop(1);
    return line;
}

void checkMarker(const QString &first)
{
    if (first != marker)
        ReportFailure::raise(QStringLiteral("This is not a report request: the first line must "
                                            "be \"Crystal~\", not \"%1~\".")
                                 .arg(first.left(60)));
}

// "Key=value" split at the first "=".
std::pair<QString, QString> keyAndValue(const QString &line, int number)
{
    const int equals = int(line.indexOf(QLatin1Char('=')));
    if (equals <= 0)
        ReportFailure::raise(QStringLiteral("Line %1 of the report request is not of the form "
                                            "Key=value: %2")
                                 .arg(number)
                                 .arg(line.left(60)));
    return {line.left(equals), line.mid(equals + 1)};
}

} // namespace

bool RunnerRequest::toFile() const
{
    return destination.compare(QLatin1String("File"), Qt::CaseInsensitive) == 0;
}

RunnerRequest RunnerRequest::parse(const QString &text)
{
    if (text.isEmpty())
        ReportFailure::raise(
            QStringLiteral("The report request is empty: there is no report to run."));
    const QStringList lines = text.split(QLatin1Char('\n'));
    RunnerRequest request;
    QSet<QString> seen;
    for (int i = 0; i < lines.size(); ++i) {
        const int number = i + 1;
        // A last line feed after the final "~" is harmless.
        if (i > 0 && i == lines.size() - 1 &&
            (lines[i].isEmpty() || lines[i] == QLatin1String("\r")))
            break;
        const QString line = withoutTilde(lines[i], number);
        if (i == 0) {
            checkMarker(line);
            continue;
        }
        const auto [key, value] = keyAndValue(line, number);
        const QString folded = key.toLower();
        if (seen.contains(folded))
            ReportFailure::raise(
                QStringLiteral("The key %1 appears twice in the report request (line %2).")
                    .arg(key)
                    .arg(number));
        seen.insert(folded);
        request.take(key, value, number);
    }
    request.checkWhole();
    return request;
}

void RunnerRequest::take(const QString &key, const QString &value, int number)
{
    const QString folded = key.toLower();
    auto is = [&](const char *name) { return folded == QString::fromLatin1(name).toLower(); };
    int n = -1;
    if (is("ReportFileName")) {
        reportFileName = value;
    } else if (is("WindowTitle")) {
        windowTitle = value;
    } else if (is("MarginTop") || is("MarginLeft")) {
        if (!readTwips(value, is("MarginTop") ? marginTop : marginLeft))
            ReportFailure::raise(
                QStringLiteral("%1 must be a whole number of twips, not \"%2\" (line %3).")
                    .arg(key, value)
                    .arg(number));
    } else if (is("SelectionFormula")) {
        selectionFormula = value;
    } else if ((n = indexOf(key, QStringLiteral("DataFiles"), 6)) >= 0) {
        dataFiles[size_t(n)] = value;
    } else if ((n = indexOf(key, QStringLiteral("SortFields"), 4)) >= 0) {
        sortFields[size_t(n)] = value;
    } else if (is("Destination")) {
        destination = value;
    } else if (is("PrintFileName")) {
        printFileName = value;
    } else if (is("PrintFileType")) {
        printFileType = value;
    } else {
        ReportFailure::raise(
            QStringLiteral("The report request has an unknown key \"%1\" (line %2).")
                .arg(key)
                .arg(number));
    }
}

void RunnerRequest::checkWhole() const
{
    if (reportFileName.trimmed().isEmpty())
        ReportFailure::raise(
            QStringLiteral("The report request names no report file (ReportFileName=)."));
    if (!destination.isEmpty() && !toFile() &&
        destination.compare(QLatin1String("Window"), Qt::CaseInsensitive) != 0)
        ReportFailure::raise(
            QStringLiteral("Destination must be File or Window, not \"%1\".").arg(destination));
    if (!toFile())
        return;
    if (printFileName.isEmpty())
        ReportFailure::raise(QStringLiteral("Destination=File needs a PrintFileName."));
    const QString type = printFileType.toUpper();
    if (type != QLatin1String("PDF") && type != QLatin1String("CSV"))
        ReportFailure::raise(
            QStringLiteral("PrintFileType must be PDF or CSV, not \"%1\".").arg(printFileType));
}
