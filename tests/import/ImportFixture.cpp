#include "ImportFixture.h"

#include "ImportError.h"

#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

#include <gtest/gtest.h>

ImportFixture::ImportFixture() :
    m_data(m_dir.filePath(QStringLiteral("data"))),
    m_reader(QStringLiteral(APMASTER_MDB_READER_PROGRAM))
{
    QDir(m_dir.path()).mkdir(QStringLiteral("source"));
}

ImportFixture::~ImportFixture() = default;

QString ImportFixture::sourceFile(const QString &name) const
{
    return QDir(source()).filePath(name);
}

QString ImportFixture::dataFile(const QString &name) const
{
    return QDir(data()).filePath(name);
}

void ImportFixture::copyIntoSource(const QString &path, const QString &name)
{
    ASSERT_TRUE(QFile::copy(path, sourceFile(name))) << path.toStdString();
}

void ImportFixture::writeSource(const QString &name, const QByteArray &bytes)
{
    QFile f(sourceFile(name));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
}

void ImportFixture::useReaderScript(const QString &script)
{
    m_reader = m_dir.filePath(QStringLiteral("reader.sh"));
    QFile f(m_reader);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("#!/bin/sh\n" + script.toUtf8() + "\n");
    f.close();
    f.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void ImportFixture::useStream(const QByteArray &stream)
{
    const QString path = m_dir.filePath(QStringLiteral("stream.bin"));
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(stream);
    f.close();
    useReaderScript(QStringLiteral("exec cat '%1'").arg(path));
}

QString ImportFixture::run(int timeLimitSecs)
{
    CompanyImport::Options options;
    options.readerProgram = m_reader;
    options.timeLimitSecs = timeLimitSecs;
    options.progress = [this](const QString &line) { m_progress << line; };
    try {
        m_summary = CompanyImport(options).run(source(), data());
    } catch (const ImportError &e) {
        return e.message();
    }
    return {};
}

QVariantList ImportFixture::column(const QString &file, const QString &statement)
{
    QVariantList values;
    const QString connection = QStringLiteral("import-test");
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        db.setDatabaseName(QStringLiteral("file:%1?mode=rw").arg(dataFile(file)));
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_URI"));
        EXPECT_TRUE(db.open()) << file.toStdString();
        QSqlQuery q(db);
        EXPECT_TRUE(q.exec(statement))
            << statement.toStdString() << ": " << q.lastError().text().toStdString();
        while (q.next())
            values << q.value(0);
    }
    QSqlDatabase::removeDatabase(connection);
    return values;
}

QVariant ImportFixture::scalar(const QString &file, const QString &statement)
{
    const QVariantList values = column(file, statement);
    return values.isEmpty() ? QVariant() : values.first();
}

QStringList ImportFixture::dataEntries() const
{
    if (!QFileInfo::exists(data()))
        return {QStringLiteral("(no data folder)")};
    return QDir(data()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

QByteArray jetHeader()
{
    QByteArray head(4096, '\0');
    head[0] = 0;
    head[1] = 1;
    head.replace(4, 15, QByteArray("Standard Jet DB"));
    return head;
}
