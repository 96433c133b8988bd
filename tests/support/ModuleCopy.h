#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

// Another user's copy of the module: a separate process (apmaster-copy) on a data folder,
// driven by commands and answering with the lines it printed.
class ModuleCopy {
public:
    // lockFolder "-" uses the user's own runtime folder, as the program does.
    ModuleCopy(const QString &dataFolder, const QString &lockFolder,
               const QString &argument = QStringLiteral("VDR99DEMO"),
               const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment(),
               const QStringList &wrapper = {});
    ~ModuleCopy();
    ModuleCopy(const ModuleCopy &) = delete;
    ModuleCopy &operator=(const ModuleCopy &) = delete;

    // The lines printed until the copy was started or refused ("started", "refused N").
    const QStringList &startLines() const { return m_startLines; }
    bool started() const { return m_startLines.contains(QStringLiteral("started")); }
    // Runs a command and returns the lines it printed before "done".
    QStringList send(const QString &command);
    // Sends a command without waiting for its answer.
    void post(const QString &command);
    // The answer of a command posted earlier: the lines it printed before "done".
    QStringList answer();
    // Whether the answer of the command posted earlier is there to read (without reading it).
    bool hasAnswer();
    // Ends the copy at once, as a power cut or a killed process would.
    void kill();
    // The dialogs among lines ("dialog|title|text" becomes "title|text").
    static QStringList dialogs(const QStringList &lines);
    // Ends the copy through its closing steps; returns its exit code.
    int quit();
    int exitCode() const { return m_process.exitCode(); }

private:
    QString readLine();

    QProcess m_process;
    QStringList m_startLines;
};
