// apmaster-bench-make-jet SOURCE.mdb TARGET.mdb TABLE ROWS
// Makes a large Access file for timing the import: a copy of SOURCE with ROWS rows appended to
// TABLE, each a copy of the table's first row with its first Long Integer column counting up
// from above the highest one there, its Currency columns and its dates varied.
//
// mdbtools' library lays the rows out (it packs a row and places it on a data page) but cannot
// give a table new pages, so this program appends the pages to the file itself, gives the table
// a usage map of the kind large tables have (a map page whose bits name the table's pages) and
// raises the row count of the table's definition. The table's indexes are left as they were:
// the copy is for reading the table through, as the import does, not for Access to edit (Access
// would want to compact and repair it first). Not shipped; see the README for the figure.
#include <glib.h>

#include <mdbtools.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

namespace {

struct Failure {
    std::string what;
};

void put32(unsigned char *p, unsigned long v)
{
    for (int i = 0; i < 4; ++i)
        p[i] = static_cast<unsigned char>((v >> (8 * i)) & 0xff);
}

unsigned get16(const unsigned char *p)
{
    return unsigned(p[0]) | unsigned(p[1]) << 8;
}

unsigned long get32(const unsigned char *p)
{
    return get16(p) | static_cast<unsigned long>(get16(p + 2)) << 16;
}

class PageFile {
public:
    PageFile(const std::string &path, std::size_t pageSize) : m_pageSize(pageSize)
    {
        m_file = std::fopen(path.c_str(), "r+b");
        if (!m_file)
            throw Failure{"cannot open " + path + " for writing"};
    }
    ~PageFile() { std::fclose(m_file); }
    PageFile(const PageFile &) = delete;
    PageFile &operator=(const PageFile &) = delete;

    unsigned long pageCount()
    {
        std::fseek(m_file, 0, SEEK_END);
        return static_cast<unsigned long>(std::ftell(m_file)) / m_pageSize;
    }
    std::vector<unsigned char> read(unsigned long page)
    {
        std::vector<unsigned char> bytes(m_pageSize);
        std::fseek(m_file, long(page * m_pageSize), SEEK_SET);
        if (std::fread(bytes.data(), 1, m_pageSize, m_file) != m_pageSize)
            throw Failure{"cannot read page " + std::to_string(page)};
        return bytes;
    }
    void write(unsigned long page, const unsigned char *bytes)
    {
        std::fseek(m_file, long(page * m_pageSize), SEEK_SET);
        if (std::fwrite(bytes, 1, m_pageSize, m_file) != m_pageSize)
            throw Failure{"cannot write page " + std::to_string(page)};
    }

private:
    std::FILE *m_file;
    std::size_t m_pageSize;
};

// The first row of the table, its values copied out of the library's page buffer.
struct Template {
    std::vector<MdbField> fields;
    std::vector<unsigned char> page;
};

Template firstRow(MdbHandle *mdb, MdbTableDef *table)
{
    mdb_rewind_table(table);
    if (!mdb_fetch_row(table))
        throw Failure{"the table has no row to copy"};
    int start = 0;
    size_t size = 0;
    if (mdb_find_row(mdb, int(table->cur_row) - 1, &start, &size) != 0)
        throw Failure{"the first row could not be found"};
    Template t;
    t.fields.resize(table->num_cols + 1);
    const int count = mdb_crack_row(table, start, size, t.fields.data());
    t.fields.resize(std::size_t(count));
    t.page.assign(mdb->pg_buf, mdb->pg_buf + mdb->fmt->pg_size);
    for (MdbField &f : t.fields)
        if (f.value)
            f.value = t.page.data() + (static_cast<unsigned char *>(f.value) - mdb->pg_buf);
    return t;
}

long highestKey(MdbTableDef *table, int column)
{
    std::vector<MdbField> fields(table->num_cols + 1);
    long highest = 0;
    mdb_rewind_table(table);
    while (mdb_fetch_row(table)) {
        int start = 0;
        size_t size = 0;
        mdb_find_row(table->entry->mdb, int(table->cur_row) - 1, &start, &size);
        const int count = mdb_crack_row(table, start, size, fields.data());
        for (int i = 0; i < count; ++i)
            if (fields[std::size_t(i)].colnum == column && !fields[std::size_t(i)].is_null)
                highest = std::max<long>(highest, long(int32_t(get32(static_cast<unsigned char *>(
                                                      fields[std::size_t(i)].value)))));
    }
    return highest;
}

// The table's pages as its usage map (of the small kind, bits from a start page) names them.
std::vector<unsigned long> pagesOf(MdbTableDef *table)
{
    if (table->map_sz < 5 || table->usage_map[0] != 0)
        throw Failure{"the table's usage map is not of the small kind this program changes"};
    std::vector<unsigned long> pages;
    const unsigned long first = get32(table->usage_map + 1);
    for (std::size_t bit = 0; bit < (table->map_sz - 5) * 8; ++bit)
        if (table->usage_map[5 + bit / 8] & (1u << (bit % 8)))
            pages.push_back(first + bit);
    return pages;
}

void run(const std::string &source, const std::string &target, const std::string &tableName,
         long rows)
{
    std::filesystem::copy_file(source, target, std::filesystem::copy_options::overwrite_existing);
    std::filesystem::permissions(target, std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::add);
    MdbHandle *mdb = mdb_open(target.c_str(), MDB_NOFLAGS);
    if (!mdb)
        throw Failure{"mdbtools cannot open " + target};
    if (!mdb_read_catalog(mdb, MDB_TABLE))
        throw Failure{"mdbtools cannot read the catalogue"};
    MdbTableDef *table =
        mdb_read_table_by_name(mdb, const_cast<gchar *>(tableName.c_str()), MDB_TABLE);
    if (!table || !mdb_read_columns(table))
        throw Failure{"no table " + tableName};
    const std::size_t pageSize = std::size_t(mdb->fmt->pg_size);
    const unsigned rowCountAt = mdb->fmt->row_count_offset;
    const unsigned long tdefPage = table->entry->table_pg;
    const std::vector<unsigned long> oldPages = pagesOf(table);
    const unsigned oldRows = table->num_rows;

    Template tmpl = firstRow(mdb, table);
    int keyColumn = -1;
    for (unsigned i = 0; i < table->num_cols; ++i) {
        auto *col = static_cast<MdbColumn *>(g_ptr_array_index(table->columns, i));
        if (col->col_type == MDB_LONGINT) {
            keyColumn = col->col_num;
            break;
        }
    }
    const long firstKey = keyColumn >= 0 ? highestKey(table, keyColumn) + 1 : 0;

    PageFile file(target, pageSize);
    unsigned long nextPage = file.pageCount();
    std::vector<unsigned long> newPages;
    std::vector<unsigned char> rowBuffer(pageSize);
    std::vector<std::vector<unsigned char>> values(tmpl.fields.size(),
                                                   std::vector<unsigned char>(8));
    auto startPage = [&] {
        void *fresh = mdb_new_data_pg(table->entry);
        std::memcpy(mdb->pg_buf, fresh, pageSize);
        g_free(fresh);
    };
    auto flushPage = [&] {
        file.write(nextPage, mdb->pg_buf);
        newPages.push_back(nextPage++);
    };
    startPage();
    unsigned rowsOnPage = 0;
    for (long n = 0; n < rows; ++n) {
        std::vector<MdbField> fields = tmpl.fields;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            MdbField &f = fields[i];
            if (f.is_null || !f.is_fixed)
                continue;
            auto *col = static_cast<MdbColumn *>(g_ptr_array_index(table->columns, i));
            unsigned char *v = values[i].data();
            if (col->col_num == keyColumn) {
                put32(v, static_cast<unsigned long>(firstKey + n));
            } else if (col->col_type == MDB_MONEY) {
                const long long tenThousandths = 12345 + (n % 997) * 125000LL;
                std::memcpy(v, &tenThousandths, 8);
            } else if (col->col_type == MDB_DATETIME) {
                double day = 0;
                std::memcpy(&day, f.value, 8);
                day += double(n % 3650);
                std::memcpy(v, &day, 8);
            } else {
                continue;
            }
            f.value = v;
        }
        const int size =
            mdb_pack_row(table, rowBuffer.data(), unsigned(fields.size()), fields.data());
        if (size <= 0)
            throw Failure{"mdbtools could not pack a row"};
        const unsigned freeSpace = get16(mdb->pg_buf + 2);
        // Jet keeps at most 255 rows on a page, each with its two-byte offset.
        if (freeSpace < unsigned(size) + 2 || rowsOnPage == 255) {
            flushPage();
            startPage();
            rowsOnPage = 0;
        }
        mdb_add_row_to_pg(table, rowBuffer.data(), size);
        ++rowsOnPage;
    }
    if (rowsOnPage > 0)
        flushPage();

    // The usage map of large tables: one map page whose bits, from page 0, name the pages.
    const std::size_t bitsPerMapPage = (pageSize - 4) * 8;
    std::vector<unsigned char> mapPage(pageSize, 0);
    mapPage[0] = 0x05;
    mapPage[1] = 0x01;
    std::vector<unsigned long> allPages = oldPages;
    allPages.insert(allPages.end(), newPages.begin(), newPages.end());
    for (unsigned long page : allPages) {
        if (page >= bitsPerMapPage)
            throw Failure{"more pages than one map page names; ask for fewer rows"};
        mapPage[4 + page / 8] |= static_cast<unsigned char>(1u << (page % 8));
    }
    const unsigned long mapPageNumber = nextPage;
    file.write(mapPageNumber, mapPage.data());

    // The map itself is a row of another page, which the definition points at.
    std::vector<unsigned char> tdef = file.read(tdefPage);
    const unsigned char *mapRef = tdef.data() + mdb->fmt->tab_usage_map_offset;
    const unsigned mapRow = mapRef[0];
    const unsigned long mapRowPage = get32(mapRef) >> 8;
    std::vector<unsigned char> holder = file.read(mapRowPage);
    const unsigned offsetMask = unsigned(pageSize) - 1;
    const unsigned start = get16(holder.data() + rowCountAt + 2 + 2 * mapRow) & offsetMask;
    const unsigned end =
        mapRow == 0 ? unsigned(pageSize)
                    : get16(holder.data() + rowCountAt + 2 + 2 * (mapRow - 1)) & offsetMask;
    if (end - start != table->map_sz)
        throw Failure{"the usage map is not where the definition says"};
    std::memset(holder.data() + start, 0, end - start);
    holder[start] = 0x01;
    put32(holder.data() + start + 1, mapPageNumber);
    file.write(mapRowPage, holder.data());

    put32(tdef.data() + mdb->fmt->tab_num_rows_offset, oldRows + static_cast<unsigned long>(rows));
    file.write(tdefPage, tdef.data());
    std::printf("%s: %s now has %lu rows on %zu pages (%zu new) and a map page at %lu\n",
                target.c_str(), tableName.c_str(), oldRows + static_cast<unsigned long>(rows),
                oldPages.size() + newPages.size(), newPages.size(), mapPageNumber);
    mdb_free_tabledef(table);
    mdb_close(mdb);
}

} // namespace

int main(int argc, char **argv)
{
    static const char usage[] = "Usage: apmaster-bench-make-jet SOURCE.mdb TARGET.mdb TABLE ROWS\n";
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--help") == 0 || std::strcmp(argv[i], "-h") == 0) {
            std::printf("%s\nMakes a large Access file to time the import on: a copy of "
                        "SOURCE with ROWS rows appended to TABLE.\n",
                        usage);
            return 0;
        }
    }
    if (argc != 5) {
        std::fputs(usage, stderr);
        return 2;
    }
    try {
        run(argv[1], argv[2], argv[3], std::atol(argv[4]));
    } catch (const Failure &f) {
        std::fprintf(stderr, "%s\n", f.what.c_str());
        return 1;
    } catch (const std::exception &e) {
        std::fprintf(stderr, "%s\n", e.what());
        return 1;
    }
    return 0;
}
