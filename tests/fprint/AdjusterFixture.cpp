#include "AdjusterFixture.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSettings>

void AdjusterFixture::SetUp()
{
    ASSERT_TRUE(m_folder.isValid());
    qputenv("XDG_CONFIG_HOME", m_config.path().toLocal8Bit());
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_config.path());
    qunsetenv("APMASTER_PRINT_PDF");
    m_previous = QDir::currentPath();
    QDir::setCurrent(m_folder.path());
}

void AdjusterFixture::TearDown()
{
    QDir::setCurrent(m_previous);
    qunsetenv("APMASTER_PRINT_PDF");
}

AdjusterFixture::Run AdjusterFixture::run(const QStringList &arguments, const QString &program,
                                          const QStringList &environment)
{
    QProcess process;
    process.setWorkingDirectory(m_folder.path());
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    for (const QString &setting : environment)
        env.insert(setting.section('=', 0, 0), setting.section('=', 1));
    process.setProcessEnvironment(env);
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(60000));
    Run result;
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.out = QString::fromLocal8Bit(process.readAllStandardOutput());
    QStringList lines = QString::fromLocal8Bit(process.readAllStandardError()).split('\n');
    lines.removeIf([](const QString &l) { return l.startsWith("QStandardPaths:"); });
    result.err = lines.join('\n').trimmed();
    return result;
}

QByteArray AdjusterFixture::bytesOf(const QString &name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
}

void AdjusterFixture::write(const QString &name, const QByteArray &bytes) const
{
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
}

QByteArray AdjusterFixture::shipped(const QString &name)
{
    QFile file(QDir(QStringLiteral(APMASTER_SYSTEM_LAYOUTS)).filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
