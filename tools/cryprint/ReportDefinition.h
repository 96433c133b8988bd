#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

// A report definition: the text file a report request names (rap001.rpt and the others). The
// format is described in the README; in short, "key: value" lines, "#" starts a comment.
struct ReportDefinition {
    enum class Layout { List, Labels, Cards };
    enum class Format { Text, Number, Money, Date, Type1099, Reportable };

    struct Field {
        QString table;
        QString column;
        bool operator==(const Field &) const = default;
    };
    struct Table {
        int index = 0; // the DataFiles(n) that can point it at another file
        QString name;
        QString file; // the default file, relative to the data folder
    };
    struct Join {
        Field left;  // a field of the joined table
        Field right; // a field of a table listed before it
    };
    // A piece of a line template: literal text, or a field with its format.
    struct Piece {
        QString text;
        std::optional<Field> field;
        Format format = Format::Text;
    };
    using Template = std::vector<Piece>;
    struct Column {
        Field field;
        bool reportable = false; // "@reportable": the group's 1099 verdict
        QString caption;
        double width = 1.0; // inches
        Format format = Format::Text;
        bool total = false;
    };
    struct LabelSheet {
        int across = 3, down = 10;
        double width = 2.625, height = 1.0; // a label, inches
        double left = 0.1875, top = 0.5;    // the first label's corner
        double pitchX = 2.75, pitchY = 1.0; // from one label to the next
    };
    struct Pairs {
        Field description, value, count; // "miscdesc" + n, "miscvalue" + n; count: how many
        int most = 30;
    };

    QString title;
    bool landscape = false;
    Layout layout = Layout::List;
    std::vector<Table> tables;
    std::vector<Join> joins; // one for each table after the first
    QString filter;          // a selection formula always applied
    QStringList order;       // sort fields used when the request gives none
    std::optional<Field> group;
    Template groupHeader;
    bool detail = true; // false: one line per group (its values and totals)
    std::vector<Column> columns;
    std::vector<Template> lines; // labels and cards
    std::optional<Pairs> pairs;
    LabelSheet sheet;
    Field thresholdType, thresholdAmount; // for "@reportable"
    QString countNoun = QStringLiteral("records");

    // Every field the report shows, groups or totals (each once).
    std::vector<Field> fields() const;

    // A definition's text; a NumberedError (ReportFailure) names the line and what is wrong.
    static ReportDefinition parse(const QString &text);
    // Reads and parses a file; errors name the file and the line.
    static ReportDefinition load(const QString &path);
};
