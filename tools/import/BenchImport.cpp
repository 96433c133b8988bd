// apmaster-bench-import [--rows N] [--table NAME] [--folder SOURCE]
// Times the import. With --folder: the Access files of SOURCE through the real reader. Without:
// N generated invoices (100,000 unless given) of the module's `invoices` table, handed to the
// import as the reader's stream by a stand-in reader (no program here writes Jet files), which
// times the conversion and the writing on their own. Prints rows, seconds and rows a second.
#include "CompanyImport.h"
#include "ImportError.h"
#include "ReaderProtocol.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtEndian>

#include <cstdio>
#include <cstring>

namespace {
namespace P = ReaderProtocol;

class Stream {
public:
    void tag(char t) { m_bytes.append(t); }
    void u32(quint32 v)
    {
        char b[4];
        qToLittleEndian(v, b);
        m_bytes.append(b, 4);
    }
    void i64(qint64 v)
    {
        char b[8];
        qToLittleEndian(v, b);
        m_bytes.append(b, 8);
    }
    void f64(double v)
    {
        qint64 bits;
        std::memcpy(&bits, &v, sizeof bits);
        i64(bits);
    }
    void text(const QByteArray &s)
    {
        u32(quint32(s.size()));
        m_bytes.append(s);
    }
    QByteArray m_bytes;
};

// Invoices as an office keeps them: a stored date, amounts in Currency, a few split lines.
QByteArray invoiceStream(int rows, const QByteArray &table)
{
    struct Col {
        const char *name;
        P::AccessType type;
    };
    const Col cols[] = {{"vendnumber", P::LongInteger}, {"invnumber", P::Text},
                        {"invdate", P::DateTime},       {"invduedate", P::DateTime},
                        {"invproduct", P::Text},        {"invamount", P::Currency},
                        {"invstatus", P::Integer},      {"invchecknumber", P::LongInteger},
                        {"splitgl1", P::Double},        {"splitamt1", P::Currency}};
    Stream s;
    s.tag(P::tableTag);
    s.text(table);
    s.u32(quint32(rows));
    s.u32(std::size(cols));
    for (const Col &c : cols) {
        s.text(c.name);
        s.m_bytes.append(char(c.type));
        s.u32(8);
    }
    QRandomGenerator random(42);
    for (int i = 0; i < rows; ++i) {
        const qint64 cents = random.bounded(1, 500000);
        const double day = 43000 + random.bounded(2000);
        s.tag(P::rowTag);
        s.tag(P::integerValue), s.i64(1000 + random.bounded(5000));
        s.tag(P::textValue), s.text("INV-" + QByteArray::number(i));
        s.tag(P::dateValue), s.f64(day);
        s.tag(P::dateValue), s.f64(day + 30);
        s.tag(P::textValue), s.text("Office supplies and services");
        s.tag(P::moneyValue), s.i64(cents * 100);
        s.tag(P::integerValue), s.i64(random.bounded(1, 6));
        s.tag(P::integerValue), s.i64(random.bounded(0, 9000));
        s.tag(P::realValue), s.f64(5100.01);
        s.tag(P::moneyValue), s.i64(cents * 100);
    }
    s.tag(P::endOfTableTag);
    s.u32(quint32(rows));
    s.tag(P::endOfFileTag);
    return s.m_bytes;
}

void write(const QString &path, const QByteArray &bytes, bool executable = false)
{
    QFile f(path);
    f.open(QIODevice::WriteOnly);
    f.write(bytes);
    f.close();
    if (executable)
        f.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

qint64 rowsOf(const ImportSummary &summary)
{
    qint64 rows = 0;
    for (const FileSummary &f : summary.files)
        for (const TableSummary &t : f.tables)
            rows += t.rowsWritten;
    return rows;
}
} // namespace

int main(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--help") == 0 || std::strcmp(argv[i], "-h") == 0) {
            std::printf(
                "Usage: apmaster-bench-import [--rows N] [--table NAME] [--folder SOURCE]\n\n"
                "Times the import. With --folder: the Access files of SOURCE through the real "
                "reader. Without: N generated invoices (100,000 unless given) handed to the "
                "import as the reader's stream, into the module's invoices or, with --table, "
                "into a table of that name without indexes. Prints rows, seconds and rows a "
                "second.\n");
            return 0;
        }
    }
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    const qsizetype rowsAt = args.indexOf(QStringLiteral("--rows"));
    const qsizetype folderAt = args.indexOf(QStringLiteral("--folder"));
    const int rows = rowsAt > 0 ? args.value(rowsAt + 1).toInt() : 100000;
    // --table NAME: the rows go into a table of that name (one the module does not know: no
    // indexes) instead of the module's invoices.
    const qsizetype tableAt = args.indexOf(QStringLiteral("--table"));
    const QByteArray table =
        tableAt > 0 ? args.value(tableAt + 1).toUtf8() : QByteArrayLiteral("invoices");
    QTemporaryDir work;
    CompanyImport::Options options;
    options.readerProgram =
        QDir(app.applicationDirPath()).filePath(QStringLiteral("apmaster-mdb-reader"));
    QString source;
    if (folderAt > 0) {
        source = args.value(folderAt + 1);
    } else {
        source = work.filePath(QStringLiteral("source"));
        QDir().mkpath(source);
        QByteArray header(4096, '\0');
        header[1] = 1;
        header.replace(4, 15, "Standard Jet DB");
        write(QDir(source).filePath(QStringLiteral("ap.mdb")), header);
        const QString stream = work.filePath(QStringLiteral("stream.bin"));
        write(stream, invoiceStream(rows, table));
        options.readerProgram = work.filePath(QStringLiteral("reader.sh"));
        write(options.readerProgram, "#!/bin/sh\nexec cat '" + stream.toUtf8() + "'\n", true);
    }
    QElapsedTimer timer;
    timer.start();
    try {
        const ImportSummary summary =
            CompanyImport(options).run(source, work.filePath(QStringLiteral("data")));
        const double secs = double(timer.nsecsElapsed()) / 1e9;
        const qint64 done = rowsOf(summary);
        std::printf("%s: %lld rows in %.2f s, %.0f rows a second\n",
                    folderAt > 0 ? "real reader" : "generated stream", static_cast<long long>(done),
                    secs, double(done) / secs);
    } catch (const ImportError &e) {
        std::fprintf(stderr, "%s\n", e.message().toLocal8Bit().constData());
        return 1;
    }
    return 0;
}
