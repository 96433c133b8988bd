#pragma once

#include "ReaderProtocol.h"

#include <QByteArray>
#include <QString>
#include <QtEndian>

#include <cstring>

// Writes the reader's stream by hand, for tests that give the import tables of their choosing
// (the module's own table names, say, which no Access sample file holds).
class StreamBuilder {
public:
    struct Col {
        QString name;
        ReaderProtocol::AccessType type;
    };
    StreamBuilder &table(const QString &name, quint32 rows, std::initializer_list<Col> cols)
    {
        tag(ReaderProtocol::tableTag);
        text(name);
        u32(rows);
        u32(quint32(cols.size()));
        for (const Col &c : cols) {
            text(c.name);
            m_bytes.append(char(c.type));
            u32(c.type == ReaderProtocol::Text ? 100 : 8);
        }
        return *this;
    }
    StreamBuilder &row() { return tag(ReaderProtocol::rowTag); }
    StreamBuilder &null() { return tag(ReaderProtocol::nullValue); }
    StreamBuilder &integer(qint64 v) { return tag(ReaderProtocol::integerValue).i64(v); }
    StreamBuilder &money(qint64 tenThousandths)
    {
        return tag(ReaderProtocol::moneyValue).i64(tenThousandths);
    }
    StreamBuilder &real(double v) { return tag(ReaderProtocol::realValue).f64(v); }
    StreamBuilder &date(double stored) { return tag(ReaderProtocol::dateValue).f64(stored); }
    StreamBuilder &str(const QString &v)
    {
        tag(ReaderProtocol::textValue);
        text(v);
        return *this;
    }
    StreamBuilder &end(quint32 rows)
    {
        tag(ReaderProtocol::endOfTableTag);
        return u32(rows);
    }
    StreamBuilder &endOfFile() { return tag(ReaderProtocol::endOfFileTag); }
    QByteArray bytes() const { return m_bytes; }

private:
    StreamBuilder &tag(char t)
    {
        m_bytes.append(t);
        return *this;
    }
    StreamBuilder &u32(quint32 v)
    {
        char b[4];
        qToLittleEndian(v, b);
        m_bytes.append(b, 4);
        return *this;
    }
    StreamBuilder &i64(qint64 v)
    {
        char b[8];
        qToLittleEndian(v, b);
        m_bytes.append(b, 8);
        return *this;
    }
    StreamBuilder &f64(double v)
    {
        quint64 bits;
        std::memcpy(&bits, &v, sizeof bits);
        return i64(qint64(bits));
    }
    void text(const QString &s)
    {
        const QByteArray utf8 = s.toUtf8();
        u32(quint32(utf8.size()));
        m_bytes.append(utf8);
    }
    QByteArray m_bytes;
};
