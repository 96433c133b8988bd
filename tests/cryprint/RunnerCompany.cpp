#include "RunnerCompany.h"

#include "support/DataFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

namespace {

void generate(const QString &folder, const QStringList &more = {})
{
    QProcess demo;
    demo.start(QStringLiteral(APMASTER_DEMO_PROGRAM),
               QStringList{folder, "--vendors", "40", "--invoices", "480", "--seed", "7", "--year",
                           "2024"} +
                   more);
    ASSERT_TRUE(demo.waitForFinished(60000));
    ASSERT_EQ(demo.exitCode(), 0) << demo.readAllStandardError().toStdString();
}

} // namespace

void RunnerCompany::SetUp()
{
    ASSERT_TRUE(m_dir.isValid());
    m_previous = QDir::currentPath();
    generate(m_dir.path());
    if (DataFolder::onPostgres()) {
        m_server = std::make_unique<DataFolder>(DataFolder::Start::Empty);
        generate(m_server->path(), {"--postgres"});
    }
    // The module driven by a test must not start the runner's preview itself: the tests run
    // the runner on the request they take from the clipboard.
    QFile::remove(path(QStringLiteral("cryprint.exe")));
    const QDir definitions(QStringLiteral(CRYPRINT_DEFINITIONS));
    for (const QString &name : definitions.entryList({"*.rpt"}, QDir::Files)) {
        QFile::remove(path(name)); // the generator's copy, when it made one
        ASSERT_TRUE(QFile::copy(definitions.filePath(name), path(name))) << name.toStdString();
    }
    QDir::setCurrent(path(QString()));
}

QString RunnerCompany::path(const QString &name) const
{
    return m_server ? QDir(m_server->path()).filePath(name) : m_dir.filePath(name);
}

void RunnerCompany::TearDown()
{
    QDir::setCurrent(m_previous);
    m_server.reset();
}

RunnerCompany::Run RunnerCompany::runRequest(const QString &text)
{
    QFile request(path(QStringLiteral("request.txt")));
    EXPECT_TRUE(request.open(QIODevice::WriteOnly | QIODevice::Truncate));
    request.write(text.toUtf8());
    request.close();
    QProcess runner;
    runner.setWorkingDirectory(path(QString()));
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    runner.setProcessEnvironment(env);
    runner.start(QStringLiteral(CRYPRINT_PROGRAM), {QStringLiteral("request.txt")});
    EXPECT_TRUE(runner.waitForFinished(60000));
    Run run;
    run.exitCode = runner.exitStatus() == QProcess::NormalExit ? runner.exitCode() : -1;
    run.errors = QString::fromUtf8(runner.readAllStandardError());
    // Qt's own notes about the environment are not the runner's messages.
    QStringList lines = run.errors.split('\n', Qt::SkipEmptyParts);
    lines.removeIf([](const QString &l) { return l.startsWith("QStandardPaths:"); });
    run.errors = lines.join('\n');
    return run;
}

QString RunnerCompany::toFile(const QString &moduleText, const QString &outFile,
                              const QString &type)
{
    return moduleText + QStringLiteral("\nDestination=File~\nPrintFileName=%1~\nPrintFileType=%2~")
                            .arg(outFile, type);
}

QStringList RunnerCompany::sqlite(const QString &file, const QString &sql) const
{
    QProcess tool;
    tool.start(QStringLiteral("sqlite3"), {"-readonly", m_dir.filePath(file), sql});
    EXPECT_TRUE(tool.waitForFinished(30000));
    EXPECT_EQ(tool.exitCode(), 0) << tool.readAllStandardError().toStdString();
    return QString::fromUtf8(tool.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
}

QString RunnerCompany::sqliteValue(const QString &file, const QString &sql) const
{
    const QStringList rows = sqlite(file, sql);
    return rows.isEmpty() ? QString() : rows.first();
}

QString RunnerCompany::pdfText(const QString &file) const
{
    QProcess tool;
    tool.start(QStringLiteral("pdftotext"), {"-layout", path(file), "-"});
    EXPECT_TRUE(tool.waitForFinished(30000));
    return QString::fromUtf8(tool.readAllStandardOutput());
}

QString RunnerCompany::withSeparators(const QString &fixed2)
{
    QString text = fixed2;
    const bool negative = text.startsWith('-');
    if (negative)
        text.remove(0, 1);
    const int dot = int(text.indexOf('.'));
    for (int i = dot - 3; i > 0; i -= 3)
        text.insert(i, ',');
    return (negative ? "-" : "") + text;
}

QStringList RunnerCompany::databaseStamps() const
{
    QStringList stamps;
    if (m_server) {
        for (const char *table : {"vendors", "invoices", "checks", "vendnotes"}) {
            QProcess psql;
            psql.start("psql", {"-h", qEnvironmentVariable("APMASTER_TEST_POSTGRES_HOST"), "-U",
                                "postgres", "-d", m_server->serverDatabase(), "-tAc",
                                QStringLiteral("select count(*) || ' ' || coalesce(md5(string_agg("
                                               "t::text, ',' order by t::text)), '') from "
                                               "ap_mdb.%1 t")
                                    .arg(QLatin1String(table))});
            EXPECT_TRUE(psql.waitForFinished(30000));
            stamps << QLatin1String(table) + QLatin1Char(' ') +
                          QString::fromUtf8(psql.readAllStandardOutput()).trimmed();
        }
        return stamps;
    }
    const QDir dir(m_dir.path());
    for (const QFileInfo &info : dir.entryInfoList({"*.mdb"}, QDir::Files))
        stamps << QStringLiteral("%1 %2 %3")
                      .arg(info.fileName())
                      .arg(info.size())
                      .arg(info.lastModified().toMSecsSinceEpoch());
    return stamps;
}
