#include "LaunchWindow.h"

#include "SignIn.h"

#include "common/ProgramError.h"
#include "common/ScreenFit.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QVBoxLayout>

LaunchWindow::LaunchWindow(LaunchServices services, QWidget *parent) :
    QWidget(parent), m_services(std::move(services)), m_folderEdit(new QLineEdit(this)),
    m_browse(new QPushButton(tr("&Browse..."), this)), m_staffList(new QListWidget(this)),
    m_status(new QLabel(this)), m_signIn(new QPushButton(tr("&Sign in"), this))
{
    setWindowTitle(tr("A/P Master - Sign in"));
    m_folderEdit->setObjectName(QStringLiteral("folder"));
    m_browse->setObjectName(QStringLiteral("browse"));
    m_staffList->setObjectName(QStringLiteral("staff"));
    m_status->setObjectName(QStringLiteral("status"));
    m_signIn->setObjectName(QStringLiteral("signIn"));
    m_status->setWordWrap(true);
    m_signIn->setDefault(true);

    auto *folderRow = new QHBoxLayout;
    folderRow->addWidget(m_folderEdit, 1);
    folderRow->addWidget(m_browse);
    auto *folderLabel = new QLabel(tr("Company &data folder:"), this);
    folderLabel->setBuddy(m_folderEdit);
    auto *form = new QFormLayout;
    form->addRow(folderLabel, folderRow);
    form->addRow(tr("S&taff:"), m_staffList);
    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(m_signIn, QDialogButtonBox::AcceptRole);
    buttons->addButton(QDialogButtonBox::Close);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_status);
    layout->addWidget(buttons);
    m_staffList->setAccessibleName(tr("Staff"));
    m_status->setAccessibleName(tr("Status"));
    resize(460, 340);
    ScreenFit::keepOnScreen(this);

    connect(m_browse, &QPushButton::clicked, this, &LaunchWindow::browse);
    connect(m_folderEdit, &QLineEdit::editingFinished, this,
            [this] { openFolder(m_folderEdit->text()); });
    connect(buttons, &QDialogButtonBox::accepted, this, &LaunchWindow::signIn);
    connect(buttons, &QDialogButtonBox::rejected, this, &QWidget::close);
    connect(m_staffList, &QListWidget::itemActivated, this, &LaunchWindow::signIn);
    connect(&m_module, &QProcess::finished, this, &LaunchWindow::moduleEnded);
    connect(&m_module, &QProcess::errorOccurred, this, &LaunchWindow::moduleFailed);
    // The module's own messages on its standard error stay visible where the launcher's are.
    m_module.setProcessChannelMode(QProcess::ForwardedChannels);

    const QString remembered = m_services.settings->value(folderKey()).toString();
    if (remembered.isEmpty())
        tell(tr("Choose the company's data folder."));
    else
        openFolder(remembered);
}

void LaunchWindow::browse()
{
    const QString chosen = m_services.chooseFolder(this, m_folderEdit->text());
    if (!chosen.isEmpty())
        openFolder(chosen);
}

void LaunchWindow::openFolder(const QString &folder)
{
    const QString path = QDir::cleanPath(folder.trimmed());
    if (path == m_folder && !m_staff.empty())
        return;
    m_folder = path;
    m_folderEdit->setText(QDir::toNativeSeparators(path));
    m_staffList->clear();
    m_signIn->setEnabled(false);
    try {
        m_staff = StaffList::read(path);
    } catch (const ProgramError &error) {
        // Why the list could not be read; the folder is not remembered.
        m_staff.clear();
        tell(error.text());
        return;
    }
    showStaff(path);
    m_services.settings->setValue(folderKey(), path);
}

void LaunchWindow::showStaff(const QString &folder)
{
    const StaffMember *login = SignIn::forLogin(m_staff, m_services.loginName);
    const bool choosing = SignIn::choosingAllowed(folder);
    for (const StaffMember &member : m_staff) {
        if (choosing || &member == login)
            m_staffList->addItem(member.name);
    }
    m_staffList->setEnabled(choosing);
    if (choosing) {
        const auto matches = login ? m_staffList->findItems(login->name, Qt::MatchExactly)
                                   : QList<QListWidgetItem *>{};
        m_staffList->setCurrentRow(matches.isEmpty() ? 0 : m_staffList->row(matches.first()));
        m_signIn->setEnabled(!m_staff.empty());
        tell(m_staff.empty() ? tr("The staff list of this company is empty.")
                             : tr("Choose your name and sign in."));
        return;
    }
    if (!login) {
        tell(tr("There is no staff user %1 in this company, so you cannot sign in here. "
                "See system administrator.")
                 .arg(m_services.loginName.trimmed().toUpper()));
        return;
    }
    m_staffList->setCurrentRow(0);
    m_signIn->setEnabled(true);
    tell(tr("You sign in as %1.").arg(login->name));
}

void LaunchWindow::signIn()
{
    if (!m_signIn->isEnabled() || m_module.state() != QProcess::NotRunning)
        return;
    const QListWidgetItem *item = m_staffList->currentItem();
    const auto member = std::find_if(m_staff.begin(), m_staff.end(), [&](const StaffMember &m) {
        return item && m.name == item->text();
    });
    if (member == m_staff.end())
        return;
    m_module.setWorkingDirectory(m_folder);
    m_module.setProgram(m_services.modulePath);
    m_module.setArguments({SignIn::argument(*member)});
    tell(QString());
    hide();
    m_module.start();
}

void LaunchWindow::moduleEnded(int exitCode, QProcess::ExitStatus status)
{
    if (status == QProcess::NormalExit && exitCode == 0) {
        emit finished();
        return;
    }
    tell(status == QProcess::NormalExit
             ? tr("A/P Master ended without starting (exit code %1).").arg(exitCode)
             : tr("A/P Master stopped unexpectedly."));
    show();
}

void LaunchWindow::moduleFailed(QProcess::ProcessError error)
{
    if (error != QProcess::FailedToStart)
        return;
    tell(tr("A/P Master could not be started (%1): %2")
             .arg(QDir::toNativeSeparators(m_services.modulePath), m_module.errorString()));
    show();
}

void LaunchWindow::tell(const QString &text)
{
    m_status->setText(text);
}
