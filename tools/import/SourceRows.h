#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <vector>

// What the Access reader process reports, as the import sees it.
struct SourceColumn {
    QString name;
    unsigned char type = 0; // ReaderProtocol::AccessType
    quint32 size = 0;
};

struct SourceTable {
    QString name;
    quint32 countedRows = 0; // the count the table's definition holds
    std::vector<SourceColumn> columns;
};

struct SourceValue {
    char tag = 'N'; // ReaderProtocol value tag
    qint64 integer = 0;
    double real = 0;
    QByteArray bytes; // text (UTF-8) or binary
    bool isNull() const { return tag == 'N'; }
};

using SourceRow = std::vector<SourceValue>;

// Receives one file's tables and rows in the order the reader sends them.
class SourceSink {
public:
    virtual ~SourceSink() = default;
    virtual void beginTable(const SourceTable &table) = 0;
    virtual void row(const SourceRow &row) = 0;
    virtual void endTable(quint32 rowsRead) = 0;
};
