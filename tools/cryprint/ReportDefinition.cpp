#include "ReportDefinition.h"

#include "ReportFailure.h"

#include <QFile>
#include <QRegularExpression>

namespace {

using Def = ReportDefinition;

const QRegularExpression &fieldPattern()
{
    static const QRegularExpression re(QStringLiteral(
        "\\{([A-Za-z_][A-Za-z0-9_]*)\\.([A-Za-z_][A-Za-z0-9_]*)(?::([a-z0-9]+))?\\}"));
    return re;
}

std::optional<Def::Format> formatNamed(const QString &name)
{
    static const std::pair<const char *, Def::Format> formats[] = {
        {"text", Def::Format::Text},         {"number", Def::Format::Number},
        {"money", Def::Format::Money},       {"date", Def::Format::Date},
        {"type1099", Def::Format::Type1099}, {"reportable", Def::Format::Reportable}};
    for (const auto &[n, f] : formats)
        if (name == QLatin1String(n))
            return f;
    return std::nullopt;
}

// "{table.field}" alone.
std::optional<Def::Field> oneField(const QString &text)
{
    const auto m = fieldPattern().match(text.trimmed());
    if (!m.hasMatch() || m.capturedLength() != text.trimmed().size() || m.hasCaptured(3))
        return std::nullopt;
    return Def::Field{m.captured(1), m.captured(2)};
}

std::optional<Def::Template> templateOf(const QString &text, QString &error)
{
    Def::Template pieces;
    int at = 0;
    auto it = fieldPattern().globalMatch(text);
    while (it.hasNext()) {
        const auto m = it.next();
        if (m.capturedStart() > at)
            pieces.push_back({text.mid(at, m.capturedStart() - at), std::nullopt, {}});
        Def::Piece piece{QString(), Def::Field{m.captured(1), m.captured(2)}, Def::Format::Text};
        if (m.hasCaptured(3)) {
            const auto format = formatNamed(m.captured(3));
            if (!format) {
                error = QStringLiteral("unknown format \"%1\"").arg(m.captured(3));
                return std::nullopt;
            }
            piece.format = *format;
        }
        pieces.push_back(piece);
        at = int(m.capturedEnd());
    }
    if (at < text.size())
        pieces.push_back({text.mid(at), std::nullopt, {}});
    for (const auto &piece : pieces)
        if (!piece.field && piece.text.contains(QLatin1Char('{'))) {
            error = QStringLiteral("\"%1\" holds a \"{\" that is not a {table.field} reference")
                        .arg(piece.text);
            return std::nullopt;
        }
    return pieces;
}

bool readInches(const QString &text, double &value)
{
    bool ok = false;
    value = text.trimmed().toDouble(&ok);
    return ok && value >= 0 && value <= 40;
}

// The handlers of the definition's keys: each reads its value into the definition and answers
// what is wrong with it (nothing when all is well).
using KeyHandler = QString (*)(Def &def, const QString &value);

QString title(Def &def, const QString &value)
{
    def.title = value;
    return {};
}

QString orientation(Def &def, const QString &value)
{
    if (value != QLatin1String("portrait") && value != QLatin1String("landscape"))
        return QStringLiteral("orientation is portrait or landscape");
    def.landscape = value == QLatin1String("landscape");
    return {};
}

QString layout(Def &def, const QString &value)
{
    if (value == QLatin1String("list"))
        def.layout = Def::Layout::List;
    else if (value == QLatin1String("labels"))
        def.layout = Def::Layout::Labels;
    else if (value == QLatin1String("cards"))
        def.layout = Def::Layout::Cards;
    else
        return QStringLiteral("layout is list, labels or cards");
    return {};
}

QString table(Def &def, const QString &value)
{
    static const QRegularExpression tableLine(
        QStringLiteral("^([0-5])\\s+([A-Za-z_][A-Za-z0-9_]*)\\s+(\\S+)$"));
    const auto m = tableLine.match(value);
    if (!m.hasMatch())
        return QStringLiteral("a table line is \"table: INDEX NAME FILE\" (index 0 to 5)");
    Def::Table table{m.captured(1).toInt(), m.captured(2), m.captured(3)};
    for (const auto &other : def.tables)
        if (other.index == table.index || other.name.compare(table.name, Qt::CaseInsensitive) == 0)
            return QStringLiteral("table %1 (index %2) is listed twice")
                .arg(table.name)
                .arg(table.index);
    def.tables.push_back(table);
    return {};
}

QString join(Def &def, const QString &value)
{
    const QStringList sides = value.split(QLatin1Char('='));
    const auto left = sides.size() == 2 ? oneField(sides[0]) : std::nullopt;
    const auto right = sides.size() == 2 ? oneField(sides[1]) : std::nullopt;
    if (!left || !right)
        return QStringLiteral("a join is \"join: {table.field} = {table.field}\"");
    def.joins.push_back({*left, *right});
    return {};
}

QString filter(Def &def, const QString &value)
{
    def.filter = value;
    return {};
}

QString order(Def &def, const QString &value)
{
    def.order << value;
    return {};
}

QString group(Def &def, const QString &value)
{
    const int bar = int(value.indexOf(QLatin1Char('|')));
    const auto field = oneField(bar < 0 ? value : value.left(bar));
    if (!field)
        return QStringLiteral("a group is \"group: {table.field} | heading\"");
    def.group = *field;
    if (bar >= 0) {
        QString error;
        const auto heading = templateOf(value.mid(bar + 1).trimmed(), error);
        if (!heading)
            return error;
        def.groupHeader = *heading;
    }
    return {};
}

QString detail(Def &def, const QString &value)
{
    if (value != QLatin1String("yes") && value != QLatin1String("no"))
        return QStringLiteral("detail is yes or no");
    def.detail = value == QLatin1String("yes");
    return {};
}

QString column(Def &def, const QString &value)
{
    const QStringList parts = value.split(QLatin1Char('|'));
    if (parts.size() < 4 || parts.size() > 5)
        return QStringLiteral("a column is \"column: {table.field} | caption | width | "
                              "format\" with \"| total\" at the end for a total");
    Def::Column column;
    const QString source = parts[0].trimmed();
    if (source == QLatin1String("@reportable")) {
        column.reportable = true;
    } else {
        const auto field = oneField(source);
        if (!field)
            return QStringLiteral("\"%1\" is not a {table.field} reference").arg(source);
        column.field = *field;
    }
    column.caption = parts[1].trimmed();
    if (!readInches(parts[2], column.width) || column.width <= 0)
        return QStringLiteral("the width \"%1\" is not a number of inches").arg(parts[2].trimmed());
    const auto format = formatNamed(parts[3].trimmed());
    if (!format)
        return QStringLiteral("unknown format \"%1\"").arg(parts[3].trimmed());
    column.format = *format;
    if (parts.size() == 5) {
        if (parts[4].trimmed() != QLatin1String("total"))
            return QStringLiteral("the fifth part of a column can only be \"total\"");
        if (column.format != Def::Format::Money && column.format != Def::Format::Number)
            return QStringLiteral("only money and number columns have totals");
        column.total = true;
    }
    def.columns.push_back(column);
    return {};
}

QString line(Def &def, const QString &value)
{
    QString error;
    const auto line = templateOf(value, error);
    if (!line)
        return error;
    def.lines.push_back(*line);
    return {};
}

QStringList words(const QString &value)
{
    static const QRegularExpression spaces(QStringLiteral("\\s+"));
    return value.split(spaces);
}

QString pairs(Def &def, const QString &value)
{
    const QStringList parts = words(value);
    const QString form = QStringLiteral("pairs is \"pairs: {t.desc} {t.value} {t.count} MOST\"");
    if (parts.size() != 4)
        return form;
    const auto d = oneField(parts[0]), v = oneField(parts[1]), c = oneField(parts[2]);
    bool ok = false;
    const int most = parts[3].toInt(&ok);
    if (!d || !v || !c || !ok || most < 1 || most > 99)
        return form;
    def.pairs = Def::Pairs{*d, *v, *c, most};
    return {};
}

QString labels(Def &def, const QString &value)
{
    // across down width height left top pitchX pitchY
    const QStringList parts = words(value);
    bool ok = parts.size() == 8;
    double n[8] = {};
    for (int i = 0; ok && i < 8; ++i)
        ok = readInches(parts[i], n[i]);
    if (!ok || n[0] < 1 || n[1] < 1 || n[0] != int(n[0]) || n[1] != int(n[1]))
        return QStringLiteral("labels is \"labels: ACROSS DOWN WIDTH HEIGHT LEFT TOP "
                              "PITCHX PITCHY\" (inches)");
    def.sheet = Def::LabelSheet{int(n[0]), int(n[1]), n[2], n[3], n[4], n[5], n[6], n[7]};
    return {};
}

QString threshold(Def &def, const QString &value)
{
    const QStringList parts = words(value);
    const auto t = parts.size() == 2 ? oneField(parts[0]) : std::nullopt;
    const auto a = parts.size() == 2 ? oneField(parts[1]) : std::nullopt;
    if (!t || !a)
        return QStringLiteral("threshold is \"threshold: {t.type} {t.amount}\"");
    def.thresholdType = *t;
    def.thresholdAmount = *a;
    return {};
}

QString count(Def &def, const QString &value)
{
    def.countNoun = value;
    return {};
}

const std::pair<const char *, KeyHandler> keyHandlers[] = {
    {"title", title},   {"orientation", orientation}, {"layout", layout}, {"table", table},
    {"join", join},     {"filter", filter},           {"order", order},   {"group", group},
    {"detail", detail}, {"column", column},           {"line", line},     {"pairs", pairs},
    {"labels", labels}, {"threshold", threshold},     {"count", count}};

// Parses one "key: value" line into the definition; an error text on failure.
QString apply(Def &def, const QString &key, const QString &value)
{
    for (const auto &[name, handler] : keyHandlers)
        if (key == QLatin1String(name))
            return handler(def, value);
    return QStringLiteral("unknown key \"%1\"").arg(key);
}

QString checkWhole(const Def &def)
{
    if (def.tables.empty())
        return QStringLiteral("the definition names no table");
    if (def.joins.size() + 1 != def.tables.size())
        return QStringLiteral("each table after the first needs one join line (%1 tables, %2 "
                              "joins)")
            .arg(def.tables.size())
            .arg(def.joins.size());
    for (size_t i = 0; i < def.joins.size(); ++i)
        if (def.joins[i].left.table.compare(def.tables[i + 1].name, Qt::CaseInsensitive) != 0)
            return QStringLiteral("join %1 must start with a field of table %2")
                .arg(i + 1)
                .arg(def.tables[i + 1].name);
    if (def.layout == Def::Layout::List && def.columns.empty())
        return QStringLiteral("a list needs at least one column");
    if (def.layout != Def::Layout::List && def.lines.empty())
        return QStringLiteral("labels and cards need at least one line");
    for (const auto &column : def.columns)
        if (column.reportable && def.thresholdType.table.isEmpty())
            return QStringLiteral("@reportable needs a threshold line");
    return {};
}

} // namespace

std::vector<Def::Field> Def::fields() const
{
    std::vector<Field> all;
    auto add = [&all](const Field &f) {
        if (!f.table.isEmpty() && std::find(all.begin(), all.end(), f) == all.end())
            all.push_back(f);
    };
    if (group)
        add(*group);
    for (const auto &piece : groupHeader)
        if (piece.field)
            add(*piece.field);
    for (const auto &column : columns)
        if (!column.reportable)
            add(column.field);
    for (const auto &line : lines)
        for (const auto &piece : line)
            if (piece.field)
                add(*piece.field);
    add(thresholdType);
    add(thresholdAmount);
    if (pairs) {
        add(pairs->count);
        for (int i = 1; i <= pairs->most; ++i) {
            add({pairs->description.table, pairs->description.column + QString::number(i)});
            add({pairs->value.table, pairs->value.column + QString::number(i)});
        }
    }
    return all;
}

Def Def::parse(const QString &text)
{
    Def def;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size(); ++i) {
        const QString line = lines[i].trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        const int colon = int(line.indexOf(QLatin1Char(':')));
        if (colon <= 0)
            ReportFailure::raise(QStringLiteral("line %1: \"%2\" is not of the form key: value")
                                     .arg(i + 1)
                                     .arg(line.left(60)));
        const QString problem =
            apply(def, line.left(colon).trimmed().toLower(), line.mid(colon + 1).trimmed());
        if (!problem.isEmpty())
            ReportFailure::raise(QStringLiteral("line %1: %2").arg(i + 1).arg(problem));
    }
    const QString problem = checkWhole(def);
    if (!problem.isEmpty())
        ReportFailure::raise(problem);
    return def;
}

Def Def::load(const QString &path)
{
    QFile file(path);
    if (!file.exists())
        ReportFailure::raise(QStringLiteral("The report file %1 cannot be found.").arg(path));
    if (!file.open(QIODevice::ReadOnly))
        ReportFailure::raise(
            QStringLiteral("The report file %1 cannot be read: %2").arg(path, file.errorString()));
    if (file.size() > 1024 * 1024)
        ReportFailure::raise(
            QStringLiteral("The report file %1 is too large to be a report definition.").arg(path));
    try {
        return parse(QString::fromUtf8(file.readAll()));
    } catch (const NumberedError &e) {
        ReportFailure::raise(
            QStringLiteral("The report file %1 has an error, %2.").arg(path, e.text()));
    }
}
