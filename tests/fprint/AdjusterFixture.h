#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

// A data folder for the layout adjuster, a configuration folder of its own (the printer set-up the
// test page and the 1099 runs read) for this process and the child programs, and the real fprint
// program run as a child in the folder.
class AdjusterFixture : public ::testing::Test {
public:
    static QByteArray shipped(const QString &name);

protected:
    void SetUp() override;
    void TearDown() override;

    struct Run {
        int exitCode = -1;
        QString out;
        QString err;
    };
    // Runs the program (or the given path to it, such as a company's fprint.exe) in the folder.
    Run run(const QStringList &arguments, const QString &program = QStringLiteral(FPRINT_PROGRAM),
            const QStringList &environment = {});

    QString path(const QString &name) const { return m_folder.filePath(name); }
    QByteArray bytesOf(const QString &name) const;
    void write(const QString &name, const QByteArray &bytes) const;
    QTemporaryDir m_folder;
    QTemporaryDir m_config;
    QString m_previous;
};
