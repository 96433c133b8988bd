#include "ReaderStream.h"

#include "ImportError.h"
#include "ReaderProtocol.h"

#include <cstring>

namespace {
namespace P = ReaderProtocol;

// Thrown inside a parse when the message is not complete yet.
struct Incomplete {};

class Cursor {
public:
    Cursor(const QByteArray &buffer, qsizetype pos) : m_buffer(buffer), m_pos(pos) {}
    qsizetype pos() const { return m_pos; }
    char tag() { return static_cast<char>(*take(1)); }
    quint32 u32() { return static_cast<quint32>(little(4)); }
    qint64 i64() { return static_cast<qint64>(little(8)); }
    double f64()
    {
        const quint64 bits = little(8);
        double d;
        std::memcpy(&d, &bits, sizeof d);
        return d;
    }
    QByteArray bytes()
    {
        const quint32 size = u32();
        const unsigned char *p = take(size);
        return QByteArray(reinterpret_cast<const char *>(p), static_cast<qsizetype>(size));
    }
    QString text() { return QString::fromUtf8(bytes()); }

private:
    const unsigned char *take(quint64 n)
    {
        if (static_cast<quint64>(m_buffer.size() - m_pos) < n)
            throw Incomplete{};
        const auto *p = reinterpret_cast<const unsigned char *>(m_buffer.constData()) + m_pos;
        m_pos += static_cast<qsizetype>(n);
        return p;
    }
    quint64 little(int n)
    {
        const unsigned char *p = take(static_cast<quint64>(n));
        quint64 v = 0;
        for (int i = n - 1; i >= 0; --i)
            v = (v << 8) | p[i];
        return v;
    }
    const QByteArray &m_buffer;
    qsizetype m_pos;
};

SourceValue valueAt(Cursor &c)
{
    SourceValue v;
    v.tag = c.tag();
    switch (v.tag) {
    case P::nullValue:
        break;
    case P::integerValue:
    case P::moneyValue:
        v.integer = c.i64();
        break;
    case P::realValue:
    case P::dateValue:
        v.real = c.f64();
        break;
    case P::textValue:
    case P::bytesValue:
        v.bytes = c.bytes();
        break;
    default:
        throw ImportError(QStringLiteral("the reader sent a value it should not (tag %1)")
                              .arg(int(static_cast<unsigned char>(v.tag))));
    }
    return v;
}
} // namespace

void ReaderStream::feed(const QByteArray &bytes)
{
    m_buffer.append(bytes);
    while (!m_finished && parseOne()) {
    }
    // Keep only what is not parsed yet.
    if (m_pos > 0) {
        m_buffer.remove(0, m_pos);
        m_pos = 0;
    }
}

bool ReaderStream::parseOne()
{
    Cursor c(m_buffer, m_pos);
    try {
        const char tag = c.tag();
        switch (tag) {
        case P::tableTag: {
            SourceTable table;
            table.name = c.text();
            table.countedRows = c.u32();
            const quint32 count = c.u32();
            for (quint32 i = 0; i < count; ++i) {
                SourceColumn col;
                col.name = c.text();
                col.type = static_cast<unsigned char>(c.tag());
                col.size = c.u32();
                table.columns.push_back(col);
            }
            m_pos = c.pos();
            m_table = table;
            m_inTable = true;
            m_sink.beginTable(m_table);
            break;
        }
        case P::rowTag: {
            if (!m_inTable)
                throw ImportError(QStringLiteral("the reader sent a row outside a table"));
            m_row.resize(m_table.columns.size());
            for (SourceValue &v : m_row)
                v = valueAt(c);
            m_pos = c.pos();
            m_sink.row(m_row);
            break;
        }
        case P::endOfTableTag: {
            const quint32 rows = c.u32();
            m_pos = c.pos();
            m_inTable = false;
            m_sink.endTable(rows);
            break;
        }
        case P::failureTag:
            m_failure = c.text();
            m_pos = c.pos();
            m_finished = true;
            break;
        case P::endOfFileTag:
            m_pos = c.pos();
            m_finished = true;
            break;
        default:
            throw ImportError(QStringLiteral("the reader sent something it should not (tag %1)")
                                  .arg(int(static_cast<unsigned char>(tag))));
        }
    } catch (const Incomplete &) {
        return false;
    }
    return true;
}
