#include "RunnerCompany.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

void RunnerCompany::SetUp()
{
    ASSERT_TRUE(m_dir.isValid());
    QProcess demo;
    demo.start(
        QStringLiteral(APMASTER_DEMO_PROGRAM),
        {m_dir.path(), "--vendors", "40", "--invoices", "480", "--seed", "7", "--year", "2024"});
    ASSERT_TRUE(demo.waitForFinished(60000));
    ASSERT_EQ(demo.exitCode(), 0) << demo.readAllStandardError().toStdString();
    // The module driven by a test must not start the runner's preview itself: the tests run
    // the runner on the request they take from the clipboard.
    QFile::remove(m_dir.filePath(QStringLiteral("cryprint.exe")));
    const QDir definitions(QStringLiteral(CRYPRINT_DEFINITIONS));
    for (const QString &name : definitions.entryList({"*.rpt"}, QDir::Files)) {
        QFile::remove(m_dir.filePath(name)); // the generator's copy, when it made one
        ASSERT_TRUE(QFile::copy(definitions.filePath(name), m_dir.filePath(name)))
            << name.toStdString();
    }
    m_previous = QDir::currentPath();
    QDir::setCurrent(m_dir.path());
}

void RunnerCompany::TearDown()
{
    QDir::setCurrent(m_previous);
}

RunnerCompany::Run RunnerCompany::runRequest(const QString &text)
{
    QFile request(m_dir.filePath(QStringLiteral("request.txt")));
    EXPECT_TRUE(request.open(QIODevice::WriteOnly | QIODevice::Truncate));
    request.write(text.toUtf8());
    request.close();
    QProcess runner;
    runner.setWorkingDirectory(m_dir.path());
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
    tool.start(QStringLiteral("pdftotext"), {"-layout", m_dir.filePath(file), "-"});
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
    const QDir dir(m_dir.path());
    for (const QFileInfo &info : dir.entryInfoList({"*.mdb"}, QDir::Files))
        stamps << QStringLiteral("%1 %2 %3")
                      .arg(info.fileName())
                      .arg(info.size())
                      .arg(info.lastModified().toMSecsSinceEpoch());
    return stamps;
}
