#include "VersionWindow.h"

#include "VersionInfo.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

VersionWindow::VersionWindow(const VersionInfo &info, QWidget *parent) : QDialog(parent)
{
    setWindowTitle(QStringLiteral("Version information"));
    auto *text = new QPlainTextEdit(info.text(), this);
    text->setObjectName(QStringLiteral("versionText"));
    text->setReadOnly(true);
    text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    text->setMinimumSize(560, 240);

    auto *buttons = new QDialogButtonBox(this);
    m_copy = buttons->addButton(QStringLiteral("&Copy"), QDialogButtonBox::ActionRole);
    m_close = buttons->addButton(QDialogButtonBox::Close);
    m_close->setDefault(true);
    // The text is read again so that what is copied is what the window shows.
    connect(m_copy, &QPushButton::clicked, this,
            [text] { QGuiApplication::clipboard()->setText(text->toPlainText()); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(text);
    layout->addWidget(buttons);
}
