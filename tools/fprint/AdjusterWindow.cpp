#include "AdjusterWindow.h"

#include "FormPage.h"
#include "LayoutPageView.h"
#include "common/Dialogs.h"
#include "common/ScreenFit.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSettings>
#include <QSplitter>
#include <QStatusBar>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {

const QString title = QStringLiteral("Adjust 1099 forms printing");

enum Column { Number, Text, X, Y };

QSettings userSettings()
{
    return QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Velmora"),
                     QStringLiteral("apmaster"));
}

QPushButton *button(const QString &name, const QString &caption, QWidget *parent)
{
    auto *b = new QPushButton(caption, parent);
    b->setObjectName(name);
    return b;
}

} // namespace

AdjusterWindow::AdjusterWindow(Dialogs &dialogs, LayoutFiles files, QSizeF paperInches,
                               const QString &fileName) :
    m_dialogs(dialogs),
    m_files(std::move(files)), m_paper(paperInches)
{
    m_chooseImage = [this] {
        return QFileDialog::getOpenFileName(this, QStringLiteral("Scanned form"), QString(),
                                            QStringLiteral("Pictures (*.png *.jpg *.jpeg *.bmp)"));
    };
    build();
    open(fileName);
}

void AdjusterWindow::build()
{
    setObjectName(QStringLiteral("fprint"));
    auto *central = new QWidget(this);
    auto *outer = new QVBoxLayout(central);

    auto *commands = new QHBoxLayout;
    auto *formLabel = new QLabel(QStringLiteral("&Form:"), central);
    commands->addWidget(formLabel);
    m_form = new QComboBox(central);
    m_form->setObjectName(QStringLiteral("form"));
    formLabel->setBuddy(m_form);
    for (const QString &name : LayoutDocument::fileNames())
        m_form->addItem(
            LayoutDocument::formName(name) + QStringLiteral(" (") + name + QLatin1Char(')'), name);
    commands->addWidget(m_form);
    auto *fromSystem = button(QStringLiteral("fromSystem"),
                              QStringLiteral("&New layout from the system copy"), central);
    auto *scan = button(QStringLiteral("scan"), QStringLiteral("Scanned f&orm..."), central);
    m_showScan = new QCheckBox(QStringLiteral("Sho&w scan"), central);
    m_showScan->setObjectName(QStringLiteral("showScan"));
    m_showScan->setEnabled(false);
    m_testPage = button(QStringLiteral("testPage"), QStringLiteral("Print &test page"), central);
    m_save = button(QStringLiteral("save"), QStringLiteral("&Save"), central);
    auto *close = button(QStringLiteral("closeButton"), QStringLiteral("&Close"), central);
    for (QWidget *w : std::initializer_list<QWidget *>{fromSystem, scan, m_showScan})
        commands->addWidget(w);
    commands->addStretch();
    outer->addLayout(commands);
    // What is done with the layout sits below it, so that the window stays narrow enough for a
    // small screen at a large scaling.
    auto *actions = new QHBoxLayout;
    actions->addStretch();
    for (QWidget *w : std::initializer_list<QWidget *>{m_testPage, m_save, close})
        actions->addWidget(w);

    auto *splitter = new QSplitter(central);
    auto *left = new QWidget(splitter);
    auto *leftLayout = new QVBoxLayout(left);
    leftLayout->setContentsMargins(0, 0, 0, 0);
    m_table = new QTableWidget(0, 4, left);
    m_table->setObjectName(QStringLiteral("elements"));
    m_table->setAccessibleName(QStringLiteral("Elements"));
    m_table->setHorizontalHeaderLabels({QStringLiteral("No."), QStringLiteral("Text"),
                                        QStringLiteral("X (in)"), QStringLiteral("Y (in)")});
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setSectionResizeMode(Text, QHeaderView::Stretch);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    // Several rows may be chosen (Shift or Ctrl and a click) to drag them as one block.
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    leftLayout->addWidget(m_table);
    auto *spacingRow = new QHBoxLayout;
    auto *spacingLabel = new QLabel(QStringLiteral("Form s&pacing (in):"), left);
    spacingRow->addWidget(spacingLabel);
    m_spacing = new QLineEdit(left);
    spacingLabel->setBuddy(m_spacing);
    m_spacing->setObjectName(QStringLiteral("spacing"));
    m_spacing->setMinimumWidth(70);
    m_spacing->setMaximumWidth(90);
    spacingRow->addWidget(m_spacing);
    m_paperLabel = new QLabel(left);
    spacingRow->addWidget(m_paperLabel, 1);
    leftLayout->addLayout(spacingRow);
    auto *scroll = new QScrollArea(splitter);
    m_page = new LayoutPageView(scroll);
    scroll->setWidget(m_page);
    scroll->setAlignment(Qt::AlignCenter);
    splitter->addWidget(left);
    splitter->addWidget(scroll);
    splitter->setStretchFactor(1, 1);
    outer->addWidget(splitter, 1);
    outer->addLayout(actions);
    setCentralWidget(central);
    statusBar();
    resize(1180, 860);
    // Smaller on a small screen or at a large scaling: the table and the page scroll.
    ScreenFit::keepOnScreen(this);

    connect(m_form, &QComboBox::activated, this, [this](int index) {
        const QString name = m_form->itemData(index).toString();
        if (name != m_file && !open(name))
            m_form->setCurrentIndex(static_cast<int>(LayoutDocument::fileNames().indexOf(m_file)));
    });
    connect(fromSystem, &QPushButton::clicked, this, &AdjusterWindow::newFromSystem);
    connect(scan, &QPushButton::clicked, this, &AdjusterWindow::chooseScan);
    connect(m_showScan, &QCheckBox::toggled, this,
            [this](bool on) { m_page->setScan(on ? m_scan : QImage()); });
    connect(m_testPage, &QPushButton::clicked, this, &AdjusterWindow::printTestPage);
    connect(m_save, &QPushButton::clicked, this, &AdjusterWindow::save);
    connect(close, &QPushButton::clicked, this, &QWidget::close);
    connect(m_table, &QTableWidget::cellChanged, this, &AdjusterWindow::cellChanged);
    connect(m_table, &QTableWidget::itemSelectionChanged, this, &AdjusterWindow::selectionChanged);
    connect(m_spacing, &QLineEdit::editingFinished, this, &AdjusterWindow::spacingTyped);
    connect(m_page, &LayoutPageView::elementChosen, this,
            [this](int element) { m_table->selectRow(element); });
    connect(m_page, &LayoutPageView::elementsDragged, this, &AdjusterWindow::dragged);
    connect(m_page, &LayoutPageView::spacingDragged, this, &AdjusterWindow::spacingDragged);
}

void AdjusterWindow::message(const QString &text, bool problem)
{
    m_dialogs.message(text, problem ? Dialogs::Icon::Exclamation : Dialogs::Icon::Information,
                      title);
}

bool AdjusterWindow::open(const QString &fileName)
{
    if (!settle())
        return false;
    m_file = fileName;
    m_kind = LayoutDocument::kindOf(fileName);
    m_form->setCurrentIndex(static_cast<int>(LayoutDocument::fileNames().indexOf(fileName)));
    m_loaded = false;
    m_replaced = false;
    QString why;
    if (!m_files.exists(fileName)) {
        if (m_files.createFromSystem(fileName, why))
            message(QStringLiteral("%1 was not in the data folder; it was made from the system "
                                   "copy %2. Adjust it to your forms and save it.")
                        .arg(fileName, m_files.systemPath(fileName)),
                    false);
        else
            message(QStringLiteral("%1 is not in the data folder and could not be made from the "
                                   "system copy: %2")
                        .arg(fileName, why));
    }
    if (m_files.exists(fileName)) {
        LayoutDocument read;
        if (m_files.read(fileName, read, why)) {
            m_document = read;
            m_loaded = true;
        } else {
            message(why + QStringLiteral("\nThe file was left as it is. \"New layout from the "
                                         "system copy\" puts the system's layout in its place."));
        }
    }
    fill();
    restoreScan();
    if (m_loaded) {
        const QString outside = FormPage(m_document, m_kind, m_paper).problem();
        if (!outside.isEmpty())
            message(fileName + QStringLiteral(" prints off the paper:\n") + outside +
                    QStringLiteral("\nMove these elements onto the paper before saving."));
    }
    return true;
}

void AdjusterWindow::fill()
{
    m_filling = true;
    m_table->setRowCount(m_loaded ? m_document.count() : 0);
    for (int row = 0; m_loaded && row < m_document.count(); ++row) {
        const LayoutDocument::Element &e = m_document.element(row);
        const QString cells[] = {QString::number(row), e.text, e.x.written, e.y.written};
        for (int column = Number; column <= Y; ++column) {
            // The cells are kept: fill() also runs while the table reports a cell's change.
            if (QTableWidgetItem *item = m_table->item(row, column)) {
                item->setText(cells[column]);
                continue;
            }
            auto *item = new QTableWidgetItem(cells[column]);
            if (column == Number)
                item->setFlags(item->flags() & ~Qt::ItemIsEditable);
            if (column >= X)
                item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            m_table->setItem(row, column, item);
        }
    }
    m_table->resizeColumnToContents(Number);
    m_spacing->setText(m_loaded ? m_document.spacing().written : QString());
    m_spacing->setEnabled(m_loaded);
    m_table->setEnabled(m_loaded);
    m_save->setEnabled(m_loaded);
    m_testPage->setEnabled(m_loaded);
    m_filling = false;
    showPage();
}

void AdjusterWindow::showPage()
{
    const int forms = FormPlacement::formsPerPage(m_kind);
    m_paperLabel->setText(QStringLiteral("%1 forms a page on %2 by %3 in paper")
                              .arg(forms)
                              .arg(m_paper.width())
                              .arg(m_paper.height()));
    if (!m_loaded) {
        m_page->setPage(m_paper, forms, 0, {}, {});
        refreshTitle();
        return;
    }
    const FormPage page(m_document, m_kind, m_paper);
    std::vector<LayoutPageView::Mark> marks;
    const LayoutDocument::Element &origin = m_document.element(0);
    for (int element = 1; element < m_document.count(); ++element)
        marks.push_back({element, origin.x.value + m_document.element(element).x.value,
                         origin.y.value + m_document.element(element).y.value});
    m_page->setPage(m_paper, forms, m_document.spacing().value, std::move(marks), page.items());
    refreshTitle();
}

void AdjusterWindow::refreshTitle()
{
    setWindowTitle((m_file.isEmpty() ? QString()
                                     : m_file + (unsaved() ? QStringLiteral(" *") : QString()) +
                                           QStringLiteral(" - ")) +
                   title);
}

bool AdjusterWindow::propose(const LayoutDocument &after, const QString &refused)
{
    const QString problem = FormPage::changeProblem(m_document, after, m_kind, m_paper);
    if (!problem.isEmpty()) {
        message(problem + QStringLiteral(".\n") + refused);
        fill();
        return false;
    }
    m_document = after;
    fill();
    statusBar()->showMessage(QStringLiteral("Changed; Save writes %1.").arg(m_file));
    return true;
}

void AdjusterWindow::cellChanged(int row, int column)
{
    if (m_filling || !m_loaded)
        return;
    const QString typed = m_table->item(row, column)->text();
    LayoutDocument after = m_document;
    const LayoutDocument::Element &e = m_document.element(row);
    if (column == Text) {
        const QString problem = LayoutDocument::textProblem(typed);
        if (!problem.isEmpty()) {
            message(QStringLiteral("The text of element %1 was not changed: %2.")
                        .arg(row)
                        .arg(problem));
            fill();
            return;
        }
        after.setText(row, typed);
        propose(after, {});
        return;
    }
    const QString axis = column == X ? QStringLiteral("X") : QStringLiteral("Y");
    const QString kept = QStringLiteral("Element %1 keeps %2 %3.")
                             .arg(row)
                             .arg(axis, column == X ? e.x.written : e.y.written);
    double inches = 0;
    if (!LayoutDocument::parseInches(typed, inches)) {
        message(QStringLiteral("\"%1\" is not a number of inches. Type the position as a decimal "
                               "number with a point, like 1.25.\n")
                    .arg(typed.left(40)) +
                kept);
        fill();
        return;
    }
    if (column == X)
        after.setX(row, inches);
    else
        after.setY(row, inches);
    propose(after, kept);
}

void AdjusterWindow::spacingTyped()
{
    if (m_filling || !m_loaded || m_spacing->text() == m_document.spacing().written)
        return;
    const QString kept =
        QStringLiteral("The form spacing stays %1.").arg(m_document.spacing().written);
    double inches = 0;
    if (!LayoutDocument::parseInches(m_spacing->text(), inches)) {
        message(QStringLiteral("\"%1\" is not a number of inches. Type the form spacing as a "
                               "decimal number with a point, like 3.66.\n")
                    .arg(m_spacing->text().left(40)) +
                kept);
        fill();
        return;
    }
    spacingDragged(inches);
}

void AdjusterWindow::spacingDragged(double inches)
{
    const QString kept =
        QStringLiteral("The form spacing stays %1.").arg(m_document.spacing().written);
    if (inches <= 0) {
        message(QStringLiteral("The form spacing must be more than 0 inches, or the forms of a "
                               "page print over each other.\n") +
                kept);
        fill();
        return;
    }
    LayoutDocument after = m_document;
    after.setSpacing(inches);
    propose(after, kept);
}

void AdjusterWindow::selectionChanged()
{
    QList<int> rows;
    for (const QModelIndex &index : m_table->selectionModel()->selectedRows())
        rows << index.row();
    std::sort(rows.begin(), rows.end());
    m_page->choose(rows);
}

void AdjusterWindow::dragged(const QList<int> &elements, double acrossInches, double downInches)
{
    if (!m_loaded || elements.isEmpty())
        return;
    LayoutDocument after = m_document;
    QStringList names;
    for (int element : elements) {
        if (element <= 0 || element >= m_document.count())
            continue;
        const LayoutDocument::Element &e = m_document.element(element);
        after.setX(element, e.x.value + acrossInches);
        after.setY(element, e.y.value + downInches);
        names << QString::number(element);
    }
    propose(after, (names.size() == 1 ? QStringLiteral("Element %1 stays where it was.")
                                      : QStringLiteral("Elements %1 stay where they were."))
                       .arg(names.join(QStringLiteral(", "))));
}

bool AdjusterWindow::save()
{
    if (!m_loaded)
        return false;
    const QString outside = FormPage(m_document, m_kind, m_paper).problem();
    if (!outside.isEmpty()) {
        message(m_file + QStringLiteral(" was not saved:\n") + outside +
                QStringLiteral("\nMove these elements onto the paper first."));
        return false;
    }
    QString why;
    if (!m_files.save(m_file, m_document, why)) {
        message(why);
        return false;
    }
    LayoutDocument saved;
    saved.read(m_document.bytes(), why);
    m_document = saved;
    m_replaced = false;
    refreshTitle();
    statusBar()->showMessage(
        QStringLiteral("%1 saved; the next 1099 run prints with it.").arg(m_files.path(m_file)));
    return true;
}

void AdjusterWindow::newFromSystem()
{
    if (m_file.isEmpty())
        return;
    if (m_loaded &&
        m_dialogs.yesNo(QStringLiteral("Put the system copy's texts and positions in place of "
                                       "those of %1?\nThe file changes only when you click Save.")
                            .arg(m_file),
                        title, Dialogs::No) != Dialogs::Yes)
        return;
    LayoutDocument system;
    QString why;
    if (!m_files.readSystem(m_file, system, why)) {
        message(why);
        return;
    }
    m_document = system;
    m_loaded = true;
    m_replaced = true;
    fill();
    statusBar()->showMessage(
        QStringLiteral("The system copy is shown; Save writes it to %1.").arg(m_file));
}

void AdjusterWindow::printTestPage()
{
    if (!m_loaded)
        return;
    const FormPage page(m_document, m_kind, m_paper);
    const QString outside = page.problem();
    if (!outside.isEmpty()) {
        message(QStringLiteral("No test page was printed:\n") + outside);
        return;
    }
    QString done;
    QString why;
    if (!LayoutFiles::printTestPage(page, LayoutDocument::formName(m_file), done, why)) {
        message(why);
        return;
    }
    message(done, false);
}

void AdjusterWindow::chooseScan()
{
    const QString picture = m_chooseImage();
    if (picture.isEmpty())
        return;
    const QImage image(picture);
    if (image.isNull()) {
        message(QStringLiteral("%1 is not a picture this program can read (PNG, JPEG or BMP).")
                    .arg(picture));
        return;
    }
    m_scan = image;
    m_showScan->setEnabled(true);
    m_showScan->setChecked(true);
    m_page->setScan(m_scan);
    QSettings settings = userSettings();
    settings.setValue(QStringLiteral("fprint/scan-") + m_file, picture);
}

void AdjusterWindow::restoreScan()
{
    const QString picture =
        userSettings().value(QStringLiteral("fprint/scan-") + m_file).toString();
    m_scan = picture.isEmpty() ? QImage() : QImage(picture);
    m_showScan->setEnabled(!m_scan.isNull());
    m_showScan->setChecked(!m_scan.isNull());
    m_page->setScan(m_scan);
}

bool AdjusterWindow::settle()
{
    if (!unsaved())
        return true;
    const int answer = m_dialogs.yesNoCancel(QStringLiteral("Save the changes to %1?").arg(m_file),
                                             title, Dialogs::Yes);
    if (answer == Dialogs::Cancel)
        return false;
    return answer == Dialogs::No || save();
}

void AdjusterWindow::closeEvent(QCloseEvent *event)
{
    if (settle())
        event->accept();
    else
        event->ignore();
}
