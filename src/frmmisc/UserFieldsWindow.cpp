#include "frmmisc/UserFieldsWindow.h"

#include "common/Dialogs.h"
#include "common/ProgramRunner.h"
#include "common/Prompts.h"
#include "common/ScreenFit.h"
#include "common/Session.h"
#include "data/DbError.h"
#include "data/RecordHelpers.h"
#include "frmmisc/ReportFieldChoice.h"
#include "frmmisc/ReportRecord.h"
#include "reports/ReportRequest.h"
#include "reports/ReportRunner.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHideEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>

namespace {

const QString crlf = QStringLiteral("\r\n");

QString multiUserText()
{
    return QStringLiteral("Note: Another user has changed this record since you recalled it. ") +
           crlf +
           QStringLiteral("Do you want to overwrite the changes anyway without reviewing them? ") +
           crlf + crlf + QStringLiteral("(Note: Answering NO will reload this record)");
}

QString cannotContinueText()
{
    return QStringLiteral("The database does not have the required fields ") + crlf +
           QStringLiteral("to store the miscellaneous data. Please download ") + crlf +
           QStringLiteral("the most recent DBUPDATE.DAT file and update your ") + crlf +
           QStringLiteral("databases. Then you may use this module. Click EXIT. ");
}

QString renamePrompt()
{
    return QStringLiteral("Type the new description for this data field and click OK.\n"
                          "Press ENTER to accept the default.\n\n"
                          "Limit: 20 characters in length");
}

// The mode menu's caption: the chosen entry's words, with Alt+M opening the menu.
QString menuCaption(const QAction *entry)
{
    QString caption = entry->text().remove(QLatin1Char('&'));
    caption.replace(QStringLiteral("Mode"), QStringLiteral("&Mode"));
    return caption;
}

// Widths of the row columns, shared by the headings and the rows.
constexpr int numberWidth = 28;
constexpr int descriptionWidth = 170;
constexpr int sortWidth = 44;
constexpr int rowMargin = 4;
constexpr int rowSpacing = 6;

// Where the window's size and place are kept in the user's settings.
const QString geometryKey = QStringLiteral("windows/userfields");

} // namespace

UserFieldsWindow::UserFieldsWindow(Services services, QWidget *owner) :
    QWidget(owner, Qt::Window), m_s(std::move(services)),
    m_guard(m_s.dialogs, [session = &m_s.session] { return session->userName; }),
    m_margins(m_s.session.sysUser),
    m_runner(std::make_unique<ReportRunner>(
        ReportRunner::Services{m_s.clipboard, m_s.processes, m_s.dialogs, m_s.status}, m_margins,
        m_s.notTopmost))
{
    setObjectName(QStringLiteral("frmmisc"));
    setAttribute(Qt::WA_DeleteOnClose);
    for (int i = 0; i < fieldCount; ++i) {
        m_descriptionTags << QString();
        m_valueTags << QString();
    }
    build();
    wire();
}

// Destroyed with its owner, the window tells no one: the owner is going too.
UserFieldsWindow::~UserFieldsWindow() = default;

void UserFieldsWindow::build()
{
    auto *layout = new QVBoxLayout(this);
    m_c.menubar = new QMenuBar(this);
    m_c.mnufile = m_c.menubar->addMenu(QString());
    m_c.mnufile->setObjectName(QStringLiteral("mnufile"));
    m_c.mnusingle = m_c.mnufile->addAction(tr("&Single Account Mode"));
    m_c.mnusingle->setObjectName(QStringLiteral("mnusingle"));
    m_c.mnuall = m_c.mnufile->addAction(tr("&All Accounts Mode"));
    m_c.mnuall->setObjectName(QStringLiteral("mnuall"));
    for (QAction *entry : {m_c.mnusingle, m_c.mnuall})
        entry->setCheckable(true);
    m_c.mnusingle->setChecked(true);
    m_c.mnufile->setTitle(menuCaption(m_c.mnusingle));
    layout->setMenuBar(m_c.menubar);

    auto *scroll = m_rows = new QScrollArea(this);
    scroll->setObjectName(QStringLiteral("rows"));
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    scroll->setWidget(buildRows());

    // The column headings stay put while the rows scroll under them, lined up with the rows.
    auto *headings = new QHBoxLayout;
    const int frame = scroll->frameWidth();
    headings->setContentsMargins(
        frame + rowMargin, 0, frame + rowMargin + style()->pixelMetric(QStyle::PM_ScrollBarExtent),
        0);
    headings->setSpacing(rowSpacing);
    auto heading = [headings](const QString &text, int width, Qt::Alignment align = Qt::AlignLeft) {
        auto *label = new QLabel(text);
        label->setAlignment(align | Qt::AlignVCenter);
        QFont bold = label->font();
        bold.setBold(true);
        label->setFont(bold);
        if (width > 0)
            label->setFixedWidth(width);
        headings->addWidget(label, width > 0 ? 0 : 1);
    };
    heading(tr("#"), numberWidth, Qt::AlignRight);
    heading(tr("Description"), descriptionWidth);
    heading(tr("Value"), 0);
    heading(tr("Sort"), sortWidth);
    layout->addLayout(headings);
    layout->addWidget(scroll, 1);

    auto *hint = new QLabel(tr("Double-click a description (or press F2 in its row) to rename it. "
                               "Number the Sort boxes 1, 2, 3... to choose the fields a report "
                               "prints."));
    hint->setWordWrap(true);
    layout->addWidget(hint);

    m_c.lblreminder = new QLabel(tr("Changes made - be sure to click SAVE!"), this);
    m_c.lblreminder->setObjectName(QStringLiteral("lblreminder"));
    QPalette warning = m_c.lblreminder->palette();
    warning.setColor(QPalette::WindowText, QColor(0xc0, 0, 0));
    m_c.lblreminder->setPalette(warning);
    QFont bold = m_c.lblreminder->font();
    bold.setBold(true);
    m_c.lblreminder->setFont(bold);
    m_c.lblreminder->hide();
    layout->addWidget(m_c.lblreminder);

    auto *buttons = new QHBoxLayout;
    const std::pair<QPushButton **, std::pair<const char *, const char *>> made[] = {
        {&m_c.cmdsave, {"cmdsave", "&Save"}},       {&m_c.cmdprint, {"cmdprint", "&Print"}},
        {&m_c.cmdselect, {"cmdselect", "S&elect"}}, {&m_c.cmdhelp, {"cmdhelp", "&Help"}},
        {&m_c.cmdexit, {"cmdexit", "E&xit"}},
    };
    for (const auto &[slot, names] : made) {
        *slot = new QPushButton(tr(names.second), this);
        (*slot)->setObjectName(QString::fromLatin1(names.first));
        (*slot)->setAutoDefault(false);
        buttons->addWidget(*slot);
    }
    m_c.cmdselect->setToolTip(tr("Numbers the Sort boxes of every described field in order"));
    layout->addLayout(buttons);

    // Tab goes along each row, then down to the next, then to the buttons.
    QWidget *previous = nullptr;
    auto chain = [&previous](QWidget *next) {
        if (previous)
            QWidget::setTabOrder(previous, next);
        previous = next;
    };
    for (int i = 0; i < fieldCount; ++i) {
        chain(m_c.txtinfo[i]);
        chain(m_c.txtsort[i]);
    }
    for (QPushButton *button : {m_c.cmdsave, m_c.cmdprint, m_c.cmdselect, m_c.cmdhelp, m_c.cmdexit})
        chain(button);
    resize(640, 600);
}

QWidget *UserFieldsWindow::buildRows()
{
    auto *rows = new QWidget;
    auto *grid = new QGridLayout(rows);
    grid->setContentsMargins(rowMargin, rowMargin, rowMargin, rowMargin);
    grid->setHorizontalSpacing(rowSpacing);
    grid->setVerticalSpacing(3);
    grid->setColumnStretch(2, 1);
    for (int i = 0; i < fieldCount; ++i) {
        auto *number = new QLabel(QString::number(i + 1), rows);
        number->setFixedWidth(numberWidth);
        number->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        m_c.lbldescrip[i] = new QLabel(rows);
        m_c.lbldescrip[i]->setObjectName(QStringLiteral("lbldescrip_%1").arg(i));
        // A description is shown as typed: no markup, no mnemonic.
        m_c.lbldescrip[i]->setTextFormat(Qt::PlainText);
        m_c.lbldescrip[i]->setFrameShape(QFrame::Panel);
        m_c.lbldescrip[i]->setFrameShadow(QFrame::Sunken);
        m_c.lbldescrip[i]->setFixedWidth(descriptionWidth);
        m_c.lbldescrip[i]->setToolTip(tr("Double-click to rename field %1").arg(i + 1));
        m_c.lbldescrip[i]->installEventFilter(this);
        m_c.txtinfo[i] = new QLineEdit(rows);
        m_c.txtinfo[i]->setObjectName(QStringLiteral("txtinfo_%1").arg(i));
        m_c.txtinfo[i]->setMaxLength(valueLimit);
        m_c.txtinfo[i]->installEventFilter(this);
        m_c.txtsort[i] = new QLineEdit(rows);
        m_c.txtsort[i]->setObjectName(QStringLiteral("txtsort_%1").arg(i));
        m_c.txtsort[i]->setFixedWidth(sortWidth);
        m_c.txtsort[i]->setMaxLength(4);
        m_c.txtsort[i]->setAlignment(Qt::AlignRight);
        m_c.txtsort[i]->installEventFilter(this);
        grid->addWidget(number, i, 0);
        grid->addWidget(m_c.lbldescrip[i], i, 1);
        grid->addWidget(m_c.txtinfo[i], i, 2);
        grid->addWidget(m_c.txtsort[i], i, 3);
        nameRow(i);
    }
    return rows;
}

void UserFieldsWindow::wire()
{
    auto click = [this](QPushButton *button, std::function<void()> handler) {
        connect(button, &QPushButton::clicked, this,
                [this, handler = std::move(handler)] { guarded(handler); });
    };
    click(m_c.cmdsave, [this] { save(); });
    click(m_c.cmdprint, [this] { print(); });
    click(m_c.cmdselect, [this] { selectDescribed(); });
    click(m_c.cmdhelp, [this] {
        m_c.cmdhelp->setEnabled(false);
        m_s.programs.help(m_s.notTopmost);
        m_c.cmdhelp->setEnabled(true);
    });
    click(m_c.cmdexit, [this] {
        if (mayClose())
            close();
    });
    connect(m_c.mnusingle, &QAction::triggered, this,
            [this] { guarded([this] { setAllAccountsMode(false); }); });
    connect(m_c.mnuall, &QAction::triggered, this,
            [this] { guarded([this] { setAllAccountsMode(true); }); });
}

void UserFieldsWindow::guarded(const std::function<void()> &work)
{
    m_guard.run([this, &work] {
        try {
            work();
        } catch (const DbError &error) {
            if (error.code() == DbError::NoSuchTable || error.code() == DbError::NoSuchColumn) {
                cannotContinue();
                return;
            }
            m_s.dialogs.message(error.text(), Dialogs::Icon::Critical, QStringLiteral("Uh-oh..."));
        }
    });
}

bool UserFieldsWindow::open(const QString &callingCode)
{
    m_call = UserFieldsCall::parse(callingCode);
    setWindowTitle(QStringLiteral("User Defined Information - acct#: ") + m_call.accountText());
    // Above an always-on-top owner, as its message boxes are: the user is never left with a
    // window hidden behind the one that waits for it.
    if (parentWidget() && parentWidget()->windowFlags().testFlag(Qt::WindowStaysOnTopHint))
        setWindowFlag(Qt::WindowStaysOnTopHint);
    // Where the user last left it, else centred; wholly on the screen either way.
    ScreenFit::restore(this, geometryKey, size());
    ScreenFit::keepOnScreen(this);
    bool filled = false;
    guarded([this, &filled] { filled = populate(); });
    if (m_finished)
        return false;
    if (!filled) {
        // The kind's database file is missing: its message was shown, and there is nothing to
        // work on.
        close();
        return false;
    }
    show();
    raise();
    activateWindow();
    m_c.txtinfo[0]->setFocus();
    return true;
}

bool UserFieldsWindow::load(const QString &query)
{
    m_s.session.messageText.clear();
    if (!RecordHelpers::loadRecord(m_s.databases, m_s.session, m_call.databaseFile(), query)) {
        Prompts::showDatabaseMissing(m_s.dialogs,
                                     RecordHelpers::withMdbExtension(m_call.databaseFile()));
        return false;
    }
    return true;
}

QStringList UserFieldsWindow::loadedTexts(const QString &stem) const
{
    QStringList texts;
    for (int i = 1; i <= fieldCount; ++i) {
        const QString name = stem + QString::number(i);
        const auto &fields = m_s.session.record.fields;
        const auto at = std::find_if(fields.begin(), fields.end(), [&name](const auto &field) {
            return field.name.compare(name, Qt::CaseInsensitive) == 0;
        });
        if (at == fields.end())
            throw DbError(DbError::NoSuchColumn,
                          QStringLiteral("The column %1 is not in the database.").arg(name));
        texts << at->value.toString();
    }
    return texts;
}

void UserFieldsWindow::setLoadedTexts(const QString &stem, const QStringList &texts)
{
    for (auto &field : m_s.session.record.fields) {
        if (!field.name.startsWith(stem, Qt::CaseInsensitive))
            continue;
        bool ok = false;
        const int number = field.name.mid(stem.size()).toInt(&ok);
        if (ok && number >= 1 && number <= fieldCount)
            field.value = texts.value(number - 1);
    }
}

bool UserFieldsWindow::populate()
{
    if (!load(QStringLiteral("select * from miscinfo")))
        return false;
    const QStringList descriptions = loadedTexts(QStringLiteral("miscdesc"));
    if (!load(QStringLiteral("select * from miscdata where acctid = ") + m_call.accountText()))
        return false;
    const QStringList values = loadedTexts(QStringLiteral("miscvalue"));
    for (int i = 0; i < fieldCount; ++i) {
        m_c.lbldescrip[i]->setText(descriptions[i]);
        m_c.txtinfo[i]->setText(values[i]);
        m_c.txtinfo[i]->setCursorPosition(0);
        nameRow(i);
    }
    m_descriptionTags = descriptions;
    m_valueTags = values;
    return true;
}

QStringList UserFieldsWindow::descriptions() const
{
    QStringList texts;
    for (const QLabel *label : m_c.lbldescrip)
        texts << label->text();
    return texts;
}

QStringList UserFieldsWindow::values() const
{
    QStringList texts;
    for (const QLineEdit *box : m_c.txtinfo)
        texts << box->text();
    return texts;
}

void UserFieldsWindow::showReminder()
{
    m_c.lblreminder->show();
}

void UserFieldsWindow::renameDescription(int field)
{
    QLabel *label = m_c.lbldescrip[field];
    const QString old = label->text();
    const QString answer = m_s.dialogs.input(
        renamePrompt(), QStringLiteral("Misc field# ") + QString::number(field + 1), old.trimmed());
    if (answer.isEmpty()) {
        m_s.session.lastYesNo =
            m_s.dialogs.yesNo(QStringLiteral("Do you want to delete the description?"),
                              QStringLiteral("Yes/No?"), Dialogs::No);
        if (m_s.session.lastYesNo == Dialogs::No)
            return;
        // The user has just confirmed the clearing; the reminder is for renames.
        label->clear();
        return;
    }
    const QString renamed = answer.left(descriptionLimit).trimmed();
    if (renamed != old)
        showReminder();
    label->setText(renamed);
}

bool UserFieldsWindow::othersChanged(const QStringList &stored, const QStringList &tags) const
{
    for (int i = 0; i < fieldCount; ++i)
        if (stored.value(i) != tags.value(i))
            return true;
    return false;
}

bool UserFieldsWindow::askOverwrite()
{
    m_s.session.lastYesNo =
        m_s.dialogs.yesNo(multiUserText(), QStringLiteral("Multi-User concern..."));
    if (m_s.session.lastYesNo == Dialogs::No) {
        populate();
        return false;
    }
    return true;
}

bool UserFieldsWindow::save()
{
    m_c.cmdsave->setEnabled(false);
    struct Enable {
        QPushButton *button;
        ~Enable() { button->setEnabled(true); }
    } enable{m_c.cmdsave};
    m_c.lblreminder->hide();

    // The shared descriptions.
    const QString descriptionQuery = QStringLiteral("select * from miscinfo");
    if (!load(descriptionQuery) || m_s.session.messageText == QLatin1String("QUIT"))
        return false;
    if (othersChanged(loadedTexts(QStringLiteral("miscdesc")), m_descriptionTags) &&
        !askOverwrite())
        return false;
    const QStringList shownDescriptions = descriptions();
    setLoadedTexts(QStringLiteral("miscdesc"), shownDescriptions);
    if (!RecordHelpers::saveRecord(m_s.databases, m_s.session, m_call.databaseFile(),
                                   descriptionQuery, false)) {
        Prompts::showDatabaseMissing(m_s.dialogs,
                                     RecordHelpers::withMdbExtension(m_call.databaseFile()));
        return false;
    }
    m_descriptionTags = shownDescriptions;

    // The account's values; an account without a row of values gets one.
    const QString valueQuery =
        QStringLiteral("select * from miscdata where acctid = ") + m_call.accountText();
    if (!load(valueQuery))
        return false;
    const bool newRow = m_s.session.messageText == QLatin1String("QUIT");
    if (othersChanged(loadedTexts(QStringLiteral("miscvalue")), m_valueTags) && !askOverwrite())
        return false;
    const QStringList shownValues = values();
    setLoadedTexts(QStringLiteral("miscvalue"), shownValues);
    if (newRow) {
        for (auto &field : m_s.session.record.fields)
            if (field.name.compare(QLatin1String("acctid"), Qt::CaseInsensitive) == 0)
                field.value = m_call.account;
    }
    if (!RecordHelpers::saveRecord(m_s.databases, m_s.session, m_call.databaseFile(), valueQuery,
                                   newRow)) {
        Prompts::showDatabaseMissing(m_s.dialogs,
                                     RecordHelpers::withMdbExtension(m_call.databaseFile()));
        return false;
    }
    m_valueTags = shownValues;
    return true;
}

void UserFieldsWindow::print()
{
    QStringList sortTexts;
    for (const QLineEdit *box : m_c.txtsort)
        sortTexts << box->text();
    std::vector<int> chosen = ReportFieldChoice::choose(sortTexts);
    if (chosen.empty()) {
        m_s.dialogs.message(QStringLiteral("No fields selected for the report"),
                            Dialogs::Icon::Information, QStringLiteral("Oops"));
        return;
    }
    m_c.cmdprint->setEnabled(false);
    struct Enable {
        QPushButton *button;
        ~Enable() { button->setEnabled(true); }
    } enable{m_c.cmdprint};
    QApplication::setOverrideCursor(Qt::WaitCursor);
    struct Restore {
        ~Restore() { QApplication::restoreOverrideCursor(); }
    } restore;
    const ReportRecord record(m_call, std::move(chosen), descriptions());
    const auto accounts = record.gather(m_s.databases, values(), m_allAccounts);
    const QString path = ReportRecord::pathFor(m_s.session.localDrive, m_s.session.userName);
    record.write(path, accounts);
    m_recordPath = path;

    ReportRequest request;
    request.reportFileName = m_call.reportLayout();
    request.dataFiles[5] = path;
    m_margins.setSysUser(m_s.session.sysUser);
    m_runner->runReport(request);
}

void UserFieldsWindow::selectDescribed()
{
    int position = 0;
    for (int i = 0; i < fieldCount; ++i) {
        const bool described = !m_c.lbldescrip[i]->text().trimmed().isEmpty();
        if (described && position < ReportFieldChoice::lastPosition)
            m_c.txtsort[i]->setText(QString::number(++position));
        else
            m_c.txtsort[i]->clear();
    }
}

void UserFieldsWindow::setAllAccountsMode(bool all)
{
    m_allAccounts = all;
    QAction *chosen = all ? m_c.mnuall : m_c.mnusingle;
    QAction *other = all ? m_c.mnusingle : m_c.mnuall;
    chosen->setChecked(true);
    other->setChecked(false);
    m_c.mnufile->setTitle(menuCaption(chosen));
}

void UserFieldsWindow::cannotContinue()
{
    m_s.dialogs.message(cannotContinueText(), Dialogs::Icon::Critical,
                        QStringLiteral("Cannot Continue"));
    finish();
    close();
}

bool UserFieldsWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn && m_rows) {
        // The whole box of a row that takes the focus comes into view, not only its cursor.
        if (auto *box = qobject_cast<QWidget *>(watched)) {
            const QPoint centre = box->mapTo(m_rows->widget(), box->rect().center());
            m_rows->ensureVisible(centre.x(), centre.y(), box->width() / 2 + rowMargin,
                                  box->height() / 2 + rowMargin);
        }
    }
    for (int i = 0; i < fieldCount; ++i) {
        if (watched == m_c.lbldescrip[i] && event->type() == QEvent::MouseButtonDblClick) {
            guarded([this, i] {
                renameDescription(i);
                nameRow(i);
            });
            return true;
        }
        if (event->type() != QEvent::KeyPress ||
            (watched != m_c.txtinfo[i] && watched != m_c.txtsort[i]))
            continue;
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_F2) {
            guarded([this, i] {
                renameDescription(i);
                nameRow(i);
            });
            return true;
        }
        if (watched == m_c.txtinfo[i] &&
            (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter)) {
            if (m_s.sendKeys)
                m_s.sendKeys(QStringLiteral("{TAB}"));
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

bool UserFieldsWindow::hasUnsavedChanges() const
{
    if (descriptions() != m_descriptionTags)
        return true;
    const QStringList shown = values();
    for (int i = 0; i < fieldCount; ++i)
        if (shown.value(i) != m_valueTags.value(i).left(valueLimit)) // a box holds 50 at most
            return true;
    return false;
}

bool UserFieldsWindow::mayClose()
{
    if (m_finished || !hasUnsavedChanges())
        return true;
    const bool vendor = m_call.kind == UserFieldsCall::Kind::Vendor;
    const QString question = vendor ? QStringLiteral("Save the changes to this vendor?")
                                    : QStringLiteral("Save the changes to this account?");
    switch (m_s.dialogs.yesNoCancel(question, QStringLiteral("Save Changes?"), Dialogs::Yes)) {
    case Dialogs::Yes: {
        bool saved = false;
        guarded([this, &saved] { saved = save(); });
        return saved;
    }
    case Dialogs::No:
        return true;
    default:
        return false;
    }
}

void UserFieldsWindow::nameRow(int field)
{
    // A screen reader names a value by the description beside it.
    const QString description = m_c.lbldescrip[field]->text().trimmed();
    m_c.txtinfo[field]->setAccessibleName(description.isEmpty() ? tr("Field %1").arg(field + 1)
                                                                : description);
    m_c.txtinfo[field]->setAccessibleDescription(tr("Value of field %1").arg(field + 1));
    m_c.txtsort[field]->setAccessibleName(tr("Sort position of field %1").arg(field + 1));
}

void UserFieldsWindow::hideEvent(QHideEvent *event)
{
    if (!event->spontaneous())
        ScreenFit::remember(this, geometryKey);
    QWidget::hideEvent(event);
}

void UserFieldsWindow::closeEvent(QCloseEvent *event)
{
    // Closed by the user from the window's frame: asked as Exit asks. The vendor screen closes
    // the window itself when it changes mode.
    if (event->spontaneous() && !mayClose()) {
        event->ignore();
        return;
    }
    finish();
    QWidget::closeEvent(event);
}

void UserFieldsWindow::finish()
{
    if (m_finished)
        return;
    m_finished = true;
    emit closed();
}
