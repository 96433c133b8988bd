#pragma once

#include <QFile>
#include <QString>

#include <memory>

// A file a program writes on a user's word (a report, a printed PDF, a log). The words of a
// request or a setting must never cost the company its data: the output is written to a new
// file beside the target and takes the target's name only when it is complete, and only when
// the target is absent or a file of the same kind that this program could have written. A
// database file of the company (any .mdb name, any SQLite or Access file by its first bytes),
// a folder, a device or a link to one of those is refused with a message naming the file.
class OutputFile {
public:
    enum class Kind { Pdf, Csv, Text };

    OutputFile(const QString &target, Kind kind);
    ~OutputFile(); // removes the unfinished file unless commit() succeeded
    OutputFile(const OutputFile &) = delete;
    OutputFile &operator=(const OutputFile &) = delete;

    // Why target may not be written as kind, or empty when it may.
    static QString refusal(const QString &target, Kind kind);

    // Checks the target and makes the unfinished file beside it; false with error set.
    bool open(QString &error);
    // The unfinished file, open for writing, and its path (for writers that take a name).
    QFile &device();
    QString workPath() const;
    // Checks the target again and gives the finished file its name; false with error set (the
    // unfinished file is then removed and the target left as it was).
    bool commit(QString &error);
    // The file the output goes to (the end of a chain of links).
    QString finalPath() const { return m_final; }

private:
    QString m_target;
    QString m_final;
    Kind m_kind;
    std::unique_ptr<QFile> m_work;
    QString m_workPath;
    bool m_committed = false;
};
