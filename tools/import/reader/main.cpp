// apmaster-mdb-reader FILE: writes every user table of an Access (Jet 3 / Jet 4) file, with
// every column and row, to standard output in the stream of ReaderProtocol.h. It runs as a
// process of its own, started by apmaster-import, so that a damaged file that crashes or hangs
// the library takes only this process down.
#include "ReaderProtocol.h"
#include "StreamOut.h"

// The library's header opens an extern "C" block around a glib include: glib comes first.
#include <glib.h>
#include <mdbtools.h>

#include <charconv>
#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

extern "C" char *mdb_numeric_to_string(MdbHandle *mdb, int start, int scale, int prec);

// The library keeps a few allocations until the process ends; a sanitizer build of this short
// process must not fail on them.
extern "C" const char *__asan_default_options()
{
    return "detect_leaks=0";
}

namespace {
namespace P = ReaderProtocol;

constexpr int offsetMask = 0x1fff;
constexpr std::size_t oleBufferSize = 16384 * 64; // what the library's blob reader fills at most

struct Failure {
    std::string message;
};

std::int64_t littleEndian(const unsigned char *p, int bytes)
{
    std::uint64_t v = 0;
    for (int i = bytes - 1; i >= 0; --i)
        v = (v << 8) | p[i];
    if (bytes < 8 && (v >> (8 * bytes - 1)) & 1)
        v |= ~std::uint64_t(0) << (8 * bytes); // sign-extend
    return static_cast<std::int64_t>(v);
}

double rawDouble(const unsigned char *p)
{
    double d;
    std::memcpy(&d, p, sizeof d);
    return d;
}

// A Single as the shortest decimal that reads back as the same Single, so that 0.1 stays 0.1
// instead of gaining the digits of its binary neighbour.
double singleValue(const unsigned char *p)
{
    float f;
    std::memcpy(&f, p, sizeof f);
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text - 1, f).ptr;
    *end = '\0';
    return std::strtod(text, nullptr);
}

// A text or memo value through the library, which decodes the file's code page or UCS-2 to
// UTF-8. The library cuts at its bind size, so that size comes from the value's own length.
std::string textOf(MdbHandle *mdb, const MdbColumn *col, const MdbField &field)
{
    std::size_t bytes = static_cast<std::size_t>(col->col_size);
    if (col->col_type == P::Memo && field.siz >= 4)
        bytes = static_cast<std::size_t>(littleEndian(mdb->pg_buf + field.start, 4) & 0x00ffffff);
    bytes = std::max<std::size_t>(bytes, static_cast<std::size_t>(field.siz));
    mdb_set_bind_size(mdb, std::max<std::size_t>(MDB_BIND_SIZE, bytes * 3 + 16));
    char *text = mdb_col_to_string(mdb, mdb->pg_buf, field.start, col->col_type, field.siz);
    std::string value = text ? text : "";
    g_free(text);
    return value;
}

class TableReader {
public:
    TableReader(MdbHandle *mdb, MdbTableDef *table, StreamOut &out) :
        m_mdb(mdb), m_table(table), m_out(out), m_fields(table->num_cols),
        m_oleBuffers(table->num_cols)
    {
        for (unsigned i = 0; i < table->num_cols; ++i) {
            auto *col = static_cast<MdbColumn *>(g_ptr_array_index(table->columns, i));
            if (col->col_type == P::OleObject) {
                m_oleBuffers[i].resize(oleBufferSize);
                mdb_bind_column(table, static_cast<int>(i) + 1, m_oleBuffers[i].data(), nullptr);
            }
        }
    }

    void writeHeader()
    {
        if (m_table->name[0] == '\0')
            throw Failure{"a table without a name: the file is damaged"};
        m_out.tag(P::tableTag);
        m_out.text(m_table->name);
        m_out.u32(m_table->num_rows);
        m_out.u32(m_table->num_cols);
        for (unsigned i = 0; i < m_table->num_cols; ++i) {
            const MdbColumn *col = column(i);
            m_out.text(col->name);
            m_out.u8(static_cast<unsigned char>(col->col_type));
            m_out.u32(static_cast<std::uint32_t>(col->col_size));
        }
    }

    void writeRows()
    {
        std::uint32_t rows = 0;
        mdb_rewind_table(m_table);
        while (mdb_fetch_row(m_table)) {
            crackCurrentRow();
            m_out.tag(P::rowTag);
            for (unsigned i = 0; i < m_table->num_cols; ++i)
                writeValue(i);
            ++rows;
        }
        // A damaged file can end a table early without an error: its own count tells.
        if (rows != m_table->num_rows)
            throw Failure{"table '" + std::string(m_table->name) + "': " + std::to_string(rows) +
                          " rows could be read, the table counts " +
                          std::to_string(m_table->num_rows) + ": the file is damaged"};
        m_out.tag(P::endOfTableTag);
        m_out.u32(rows);
    }

private:
    MdbColumn *column(unsigned i) const
    {
        return static_cast<MdbColumn *>(g_ptr_array_index(m_table->columns, i));
    }

    // The row the fetch just read, split again to get its null flags (the bound values do not
    // tell a null from an empty text).
    void crackCurrentRow()
    {
        int start = 0;
        size_t size = 0;
        if (mdb_find_row(m_mdb, static_cast<int>(m_table->cur_row) - 1, &start, &size) != 0)
            throw Failure{"a row of table '" + std::string(m_table->name) +
                          "' could not be found again: the file is damaged"};
        std::vector<MdbField> cracked(m_table->num_cols);
        if (mdb_crack_row(m_table, start & offsetMask, size, cracked.data()) < 0)
            throw Failure{"a row of table '" + std::string(m_table->name) +
                          "' could not be read: the file is damaged"};
        for (const MdbField &f : cracked)
            if (f.colnum >= 0 && static_cast<unsigned>(f.colnum) < m_fields.size())
                m_fields[static_cast<unsigned>(f.colnum)] = f;
    }

    void writeValue(unsigned i)
    {
        const MdbColumn *col = column(i);
        const MdbField &f = m_fields[i];
        const unsigned char *p = m_mdb->pg_buf + f.start;
        if (col->col_type == P::Boolean) {
            // A Yes/No value lives in the null flag itself: set means No.
            m_out.tag(P::integerValue);
            m_out.i64(f.is_null ? 0 : 1);
            return;
        }
        if (f.is_null) {
            m_out.tag(P::nullValue);
            return;
        }
        switch (col->col_type) {
        case P::Byte:
            integer(p[0]);
            break;
        case P::Integer:
            integer(littleEndian(p, 2));
            break;
        case P::LongInteger:
            integer(littleEndian(p, 4));
            break;
        case P::Currency:
            m_out.tag(P::moneyValue);
            m_out.i64(littleEndian(p, 8));
            break;
        case P::Single:
            m_out.tag(P::realValue);
            m_out.f64(singleValue(p));
            break;
        case P::Double:
            m_out.tag(P::realValue);
            m_out.f64(rawDouble(p));
            break;
        case P::DateTime:
            m_out.tag(P::dateValue);
            m_out.f64(rawDouble(p));
            break;
        case P::Binary:
            m_out.tag(P::bytesValue);
            m_out.bytes(p, static_cast<std::size_t>(f.siz));
            break;
        case P::OleObject:
            ole(i);
            break;
        case P::Numeric: {
            char *text = mdb_numeric_to_string(m_mdb, f.start, col->col_scale, col->col_prec);
            m_out.tag(P::textValue);
            m_out.text(text ? text : "");
            g_free(text);
            break;
        }
        case P::Text:
        case P::Memo:
        case P::ReplicationId:
            m_out.tag(P::textValue);
            m_out.text(textOf(m_mdb, col, f));
            break;
        default:
            throw Failure{"table '" + std::string(m_table->name) + "', column '" +
                          std::string(col->name) + "': unknown column type " +
                          std::to_string(col->col_type)};
        }
    }

    void integer(std::int64_t v)
    {
        m_out.tag(P::integerValue);
        m_out.i64(v);
    }

    void ole(unsigned i)
    {
        // The object's own length comes first; a damaged file gives fewer bytes than it says.
        const auto stated = static_cast<std::size_t>(
            littleEndian(m_mdb->pg_buf + m_fields[i].start, 4) & 0x3fffffff);
        size_t size = 0;
        void *data = mdb_ole_read_full(m_mdb, column(i), &size);
        if (!data)
            size = 0;
        if (size != stated) {
            std::free(data);
            throw Failure{"table '" + std::string(m_table->name) + "', column '" +
                          std::string(column(i)->name) + "': an object of " +
                          std::to_string(stated) + " bytes gave " + std::to_string(size) +
                          ": the file is damaged"};
        }
        m_out.tag(P::bytesValue);
        m_out.bytes(data, size);
        std::free(data);
    }

    MdbHandle *m_mdb;
    MdbTableDef *m_table;
    StreamOut &m_out;
    std::vector<MdbField> m_fields;
    std::vector<std::vector<char>> m_oleBuffers;
};

void readFile(const char *path, StreamOut &out)
{
    MdbHandle *mdb = mdb_open(path, MDB_NOFLAGS);
    if (!mdb)
        throw Failure{"not an Access database the reader recognises, or damaged"};
    std::unique_ptr<MdbHandle, void (*)(MdbHandle *)> closer(mdb, mdb_close);
    if (!mdb_read_catalog(mdb, MDB_TABLE))
        throw Failure{"its list of tables could not be read: the file is damaged"};
    for (unsigned i = 0; i < mdb->num_catalog; ++i) {
        auto *entry = static_cast<MdbCatalogEntry *>(g_ptr_array_index(mdb->catalog, i));
        if (entry->object_type != MDB_TABLE || mdb_is_system_table(entry))
            continue;
        MdbTableDef *table = mdb_read_table(entry);
        if (!table)
            throw Failure{"table '" + std::string(entry->object_name) +
                          "' could not be read: the file is damaged"};
        std::unique_ptr<MdbTableDef, void (*)(MdbTableDef *)> freer(table, mdb_free_tabledef);
        mdb_read_columns(table);
        TableReader reader(mdb, table, out);
        reader.writeHeader();
        reader.writeRows();
    }
    out.tag(ReaderProtocol::endOfFileTag);
}
} // namespace

int main(int argc, char **argv)
{
    // Decimal points stay points whatever the environment's locale says.
    std::setlocale(LC_ALL, "C");
    StreamOut out;
    if (argc != 2) {
        std::fputs("usage: apmaster-mdb-reader FILE\n", stderr);
        return 2;
    }
    try {
        readFile(argv[1], out);
    } catch (const Failure &failure) {
        out.tag(ReaderProtocol::failureTag);
        out.text(failure.message);
        out.flush();
        return 1;
    }
    out.flush();
    return 0;
}
