#include "common/OutputFile.h"

#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QStringDecoder>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr qint64 headSize = 4096;

// Names the engines give a company's databases and their companion files.
bool databaseName(const QString &path)
{
    const QString name = QFileInfo(path).fileName().toLower();
    for (const char *suffix : {".mdb", ".accdb", ".ldb", ".laccdb"})
        if (name.endsWith(QLatin1String(suffix)))
            return true;
    return name.contains(QLatin1String(".mdb-"));
}

bool databaseBytes(const QByteArray &head)
{
    if (head.startsWith(QByteArrayLiteral("SQLite format 3\0")))
        return true;
    const QByteArray jet = head.mid(4, 15);
    if (jet == "Standard Jet DB" || jet == "Standard ACE DB")
        return true;
    // A write-ahead log of an SQLite database.
    return head.startsWith("\x37\x7f\x06\x82") || head.startsWith("\x37\x7f\x06\x83");
}

bool looksLikeText(const QByteArray &head)
{
    if (head.contains('\0'))
        return false;
    // A character cut at the end of the head is held in the decoder's state, not an error.
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(head);
    Q_UNUSED(text)
    return !decoder.hasError();
}

bool sameKind(const QByteArray &head, OutputFile::Kind kind)
{
    switch (kind) {
    case OutputFile::Kind::Pdf:
        return head.startsWith("%PDF-");
    case OutputFile::Kind::Csv:
        return looksLikeText(head) && head.contains("\r\n");
    case OutputFile::Kind::Text:
        return looksLikeText(head);
    }
    return false;
}

QString kindName(OutputFile::Kind kind)
{
    switch (kind) {
    case OutputFile::Kind::Pdf:
        return QStringLiteral("a PDF file");
    case OutputFile::Kind::Csv:
        return QStringLiteral("a CSV file");
    case OutputFile::Kind::Text:
        return QStringLiteral("a text file");
    }
    return {};
}

// The end of a chain of links, or an empty string when the chain leads nowhere.
QString resolved(const QString &path)
{
    const QFileInfo info(path);
    if (!info.isSymLink())
        return info.absoluteFilePath();
    return info.canonicalFilePath();
}

QString errnoText()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

} // namespace

OutputFile::OutputFile(const QString &target, Kind kind) : m_target(target), m_kind(kind) {}

OutputFile::~OutputFile()
{
    if (m_work && !m_committed) {
        m_work->close();
        QFile::remove(m_workPath);
    }
}

QString OutputFile::refusal(const QString &target, Kind kind)
{
    if (target.isEmpty())
        return QStringLiteral("No output file is named.");
    const QFileInfo info(target);
    const QString end = resolved(target);
    const QString linked = end.isEmpty() ? info.symLinkTarget() : end;
    const QString named =
        info.isSymLink() ? QStringLiteral("%1 (a link to %2)").arg(target, linked) : target;
    const QString keep = QStringLiteral(" Choose another file name.");
    if (databaseName(target) || databaseName(linked))
        return QStringLiteral("The output file %1 is a database file of the company; no output "
                              "is ever written over it.")
                   .arg(named) +
               keep;
    if (end.isEmpty())
        return QStringLiteral("The output file %1 is a link to %2, which does not exist.")
                   .arg(target, linked) +
               keep;
    struct stat status {};
    if (::stat(QFile::encodeName(end).constData(), &status) != 0)
        return {}; // absent: a new file
    if (S_ISDIR(status.st_mode))
        return QStringLiteral("The output file %1 is a folder, not a file.").arg(named) + keep;
    if (!S_ISREG(status.st_mode))
        return QStringLiteral("The output file %1 is a device or another special file, not a "
                              "plain file.")
                   .arg(named) +
               keep;
    QFile existing(end);
    if (!existing.open(QIODevice::ReadOnly))
        return QStringLiteral("The output file %1 exists and cannot be read to see what it "
                              "holds: %2.")
                   .arg(named, existing.errorString()) +
               keep;
    const QByteArray head = existing.read(headSize);
    if (head.isEmpty())
        return {};
    if (databaseBytes(head))
        return QStringLiteral("The output file %1 is a database file of the company (its first "
                              "bytes say so); no output is ever written over it.")
                   .arg(named) +
               keep;
    if (!sameKind(head, kind))
        return QStringLiteral("The output file %1 exists and is not %2 (its first bytes say "
                              "otherwise); it is left as it is.")
                   .arg(named, kindName(kind)) +
               keep;
    return {};
}

bool OutputFile::open(QString &error)
{
    error = refusal(m_target, m_kind);
    if (!error.isEmpty())
        return false;
    m_final = resolved(m_target);
    const QFileInfo final(m_final);
    struct stat existing {};
    const bool replaces = ::stat(QFile::encodeName(m_final).constData(), &existing) == 0;
    // Beside the target, so that the finished file takes its name in one step.
    for (int attempt = 0; attempt < 100; ++attempt) {
        const QString work = final.dir().filePath(
            QStringLiteral(".%1.%2")
                .arg(final.fileName())
                .arg(QRandomGenerator::global()->generate(), 8, 16, QLatin1Char('0')));
        const int fd = ::open(QFile::encodeName(work).constData(),
                              O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd < 0) {
            if (errno == EEXIST)
                continue;
            error = QStringLiteral("The file %1 cannot be written: %2.").arg(m_target, errnoText());
            return false;
        }
        if (replaces)
            (void)::fchmod(fd, existing.st_mode & 07777);
        m_work = std::make_unique<QFile>();
        m_workPath = work;
        if (!m_work->open(fd, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle)) {
            ::close(fd);
            error = QStringLiteral("The file %1 cannot be written: %2.")
                        .arg(m_target, m_work->errorString());
            QFile::remove(work);
            m_work.reset();
            return false;
        }
        return true;
    }
    error = QStringLiteral("The file %1 cannot be written: no work file could be made beside it.")
                .arg(m_target);
    return false;
}

QFile &OutputFile::device()
{
    return *m_work;
}

QString OutputFile::workPath() const
{
    return m_workPath;
}

bool OutputFile::commit(QString &error)
{
    if (!m_work) {
        error = QStringLiteral("The file %1 was not opened.").arg(m_target);
        return false;
    }
    bool written = true;
    if (m_work->isOpen()) {
        written = m_work->flush() && m_work->error() == QFileDevice::NoError &&
                  ::fsync(m_work->handle()) == 0;
        if (!written)
            error = QStringLiteral("The file %1 cannot be written: %2.")
                        .arg(m_target, m_work->errorString());
        m_work->close();
    }
    if (written) {
        // The target may have changed while the output was being made.
        error = refusal(m_target, m_kind);
        written = error.isEmpty();
    }
    if (written && ::rename(QFile::encodeName(m_workPath).constData(),
                            QFile::encodeName(m_final).constData()) != 0) {
        error = QStringLiteral("The file %1 cannot be written: %2.").arg(m_target, errnoText());
        written = false;
    }
    if (!written) {
        QFile::remove(m_workPath);
        return false;
    }
    m_committed = true;
    return true;
}
