#include "EditorWindow.h"

#include "common/ScreenFit.h"

#include <QCloseEvent>
#include <QFile>
#include <QFileInfo>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QKeySequence>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSaveFile>
#include <QShortcut>
#include <QStringDecoder>
#include <QVBoxLayout>

EditorWindow::EditorWindow(const QString &path, Questions questions, QWidget *parent) :
    QWidget(parent), m_path(path), m_questions(std::move(questions)),
    m_text(new QPlainTextEdit(this)), m_save(new QPushButton(tr("&Save"), this)),
    m_close(new QPushButton(tr("&Close"), this)), m_status(new QLabel(this))
{
    m_text->setObjectName(QStringLiteral("text"));
    m_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_text->setAccessibleName(QFileInfo(path).fileName());
    m_save->setObjectName(QStringLiteral("save"));
    m_close->setObjectName(QStringLiteral("close"));
    m_status->setObjectName(QStringLiteral("status"));
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_status, 1);
    buttons->addWidget(m_save);
    buttons->addWidget(m_close);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_text);
    layout->addLayout(buttons);
    connect(m_save, &QPushButton::clicked, this, [this] { save(); });
    connect(m_close, &QPushButton::clicked, this, &QWidget::close);
    new QShortcut(QKeySequence::Save, this, [this] { save(); });
    connect(m_text, &QPlainTextEdit::modificationChanged, this, [this] { updateTitle(); });
    resize(720, 560);
    ScreenFit::keepOnScreen(this); // smaller on a small screen or at a large scaling
    updateTitle();
}

bool EditorWindow::load(const QString &installedCopy)
{
    QFile file(m_path);
    if (!file.exists()) {
        // A company folder without its own help text shows the installed one; nothing is
        // written unless the user saves, which makes the folder's own copy.
        if (!installedCopy.isEmpty() && QFileInfo(installedCopy).isFile() &&
            readInto(installedCopy)) {
            m_status->setText(tr("The installed text is shown: Save makes this folder's own %1.")
                                  .arg(QFileInfo(m_path).fileName()));
            return true;
        }
        m_status->setText(tr("New file: Save creates it."));
        return true;
    }
    if (!readInto(m_path))
        return false;
    m_status->setText(QFileInfo(file).isWritable() ? QString() : tr("Read only."));
    return true;
}

bool EditorWindow::readInto(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        m_questions.problem(tr("%1 cannot be read: %2").arg(path, file.errorString()));
        return false;
    }
    const QByteArray bytes = file.readAll();
    QStringDecoder utf8(QStringDecoder::Utf8);
    QString content = utf8(bytes);
    if (bytes.contains('\0')) {
        m_questions.problem(tr("%1 is not a text file; it is left as it is.").arg(path));
        return false;
    }
    if (utf8.hasError()) // an older help text written in the Windows code page
        content = QString::fromLatin1(bytes);
    content.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    m_text->setPlainText(content);
    m_text->document()->setModified(false);
    return true;
}

bool EditorWindow::save()
{
    QSaveFile file(m_path);
    const QByteArray bytes = m_text->toPlainText().toUtf8();
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text) || file.write(bytes) != bytes.size() ||
        !file.commit()) {
        m_questions.problem(tr("%1 could not be saved: %2. The text is still here.")
                                .arg(m_path, file.errorString()));
        return false;
    }
    m_text->document()->setModified(false);
    m_status->setText(tr("Saved."));
    return true;
}

bool EditorWindow::isModified() const
{
    return m_text->document()->isModified();
}

void EditorWindow::closeEvent(QCloseEvent *event)
{
    if (isModified()) {
        switch (m_questions.unsavedChanges(
            tr("Save the changes to %1?").arg(QFileInfo(m_path).fileName()))) {
        case Answer::Save:
            if (!save()) {
                event->ignore();
                return;
            }
            break;
        case Answer::Discard:
            break;
        case Answer::Cancel:
            event->ignore();
            return;
        }
    }
    event->accept();
}

void EditorWindow::updateTitle()
{
    setWindowTitle(
        QStringLiteral("%1%2 - Velmora Office text editor")
            .arg(QFileInfo(m_path).fileName(), isModified() ? QStringLiteral(" *") : QString()));
}
