#include "utilities/YearEndCheckWindow.h"

#include "common/Clock.h"
#include "common/Dialogs.h"
#include "common/NumberedError.h"
#include "common/OutputFile.h"
#include "reports/PrinterFormPrinter.h"
#include "yearend/PayerRecord.h"
#include "yearend/TaxThresholds.h"
#include "yearend/YearEndReport.h"
#include "yearend/YearEndSettings.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QPrinter>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QTextDocument>
#include <QVBoxLayout>

#include <memory>

namespace {

QString money(double amount)
{
    return QLocale(QLocale::English, QLocale::UnitedStates).toString(amount, 'f', 2);
}

} // namespace

YearEndCheckWindow::YearEndCheckWindow(Services services, QWidget *parent) :
    QDialog(parent), m_s(services)
{
    setObjectName(QStringLiteral("frm1099check"));
    setWindowTitle(tr("1099 year-end check"));
    m_form = new QComboBox;
    m_form->setObjectName(QStringLiteral("cboform"));
    for (TaxForm form :
         {TaxForm::Nonemployee, TaxForm::Misc, TaxForm::Interest, TaxForm::Dividends})
        m_form->addItem(TaxForms::title(form), static_cast<int>(form));
    m_year = new QSpinBox;
    m_year->setObjectName(QStringLiteral("spnyear"));
    m_year->setRange(1990, 9999);
    // The forms are made in January for the year just ended.
    m_year->setValue(m_s.clock.currentYear() - 1);
    m_check = new QPushButton(tr("&Check"));
    m_check->setObjectName(QStringLiteral("cmdcheck"));
    m_print = new QPushButton(tr("&Print"));
    m_print->setObjectName(QStringLiteral("cmdprint"));
    m_print->setEnabled(false);
    auto *close = new QPushButton(tr("Cl&ose"));
    close->setObjectName(QStringLiteral("cmdclose"));
    m_summary = new QLabel(tr("Choose the form and the tax year, then Check."));
    m_summary->setObjectName(QStringLiteral("lblsummary"));
    m_grid = new QTableWidget(0, 4);
    m_grid->setObjectName(QStringLiteral("grdcheck"));
    m_grid->setHorizontalHeaderLabels({tr("Vendor"), tr("Name"), tr("Amount"), tr("Problem")});
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->horizontalHeader()->setStretchLastSection(true);
    m_grid->verticalHeader()->hide();

    auto *choice = new QHBoxLayout;
    auto *formLabel = new QLabel(tr("&Form"));
    formLabel->setBuddy(m_form);
    auto *yearLabel = new QLabel(tr("Tax &year"));
    yearLabel->setBuddy(m_year);
    choice->addWidget(formLabel);
    choice->addWidget(m_form);
    choice->addWidget(yearLabel);
    choice->addWidget(m_year);
    choice->addWidget(m_check);
    choice->addStretch();
    choice->addWidget(m_print);
    choice->addWidget(close);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(choice);
    layout->addWidget(m_summary);
    layout->addWidget(m_grid);
    resize(760, 480);

    connect(m_check, &QPushButton::clicked, this, &YearEndCheckWindow::check);
    connect(m_print, &QPushButton::clicked, this, &YearEndCheckWindow::print);
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    connect(m_grid, &QTableWidget::cellActivated, this, [this](int row, int) { openRow(row); });
}

void YearEndCheckWindow::check()
{
    const YearEndSettings settings = YearEndSettings::ofDataFolder();
    if (!settings.error.isEmpty()) {
        m_s.dialogs.message(settings.error, Dialogs::Icon::Critical, windowTitle());
        return;
    }
    const auto form = static_cast<TaxForm>(m_form->currentData().toInt());
    try {
        m_result = YearEndCheck(m_s.databases).run(form, m_year->value(), settings.indexed);
    } catch (const NumberedError &error) {
        m_s.dialogs.message(QStringLiteral("The vendors cannot be read: ") + error.text(),
                            Dialogs::Icon::Critical, windowTitle());
        return;
    }
    m_checked = true;
    fill();
}

void YearEndCheckWindow::fill()
{
    m_grid->setRowCount(0);
    auto addRow = [this](long long vendor, const QString &name, const QString &amount,
                         const QString &problem) {
        const int row = m_grid->rowCount();
        m_grid->insertRow(row);
        const QStringList cells{QString::number(vendor), name, amount, problem};
        for (int column = 0; column < cells.size(); ++column) {
            auto *item = new QTableWidgetItem(cells[column]);
            item->setData(Qt::UserRole, vendor);
            if (column == 2)
                item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            if (column == 3)
                item->setToolTip(cells[column]); // a long problem reads in full
            m_grid->setItem(row, column, item);
        }
    };
    double total = 0;
    for (const YearEndCheck::Recipient &r : m_result.recipients) {
        addRow(r.vendor, r.name, money(r.amount), QString());
        total += r.amount;
    }
    for (const YearEndCheck::Problem &p : m_result.problems)
        addRow(p.vendor, p.name, QString(), p.text);
    m_grid->resizeColumnsToContents();
    const auto vendors = m_result.recipients.size();
    const auto problems = m_result.problems.size();
    m_summary->setText(tr("%1, tax year %2, threshold %3 or more: %4 %5 the form, %6 in all; %7 %8.")
                           .arg(TaxForms::title(m_result.form))
                           .arg(m_result.year)
                           .arg(TaxThresholds::dollars(m_result.threshold))
                           .arg(vendors)
                           .arg(vendors == 1 ? tr("vendor gets") : tr("vendors get"))
                           .arg(money(total))
                           .arg(problems)
                           .arg(problems == 1 ? tr("problem") : tr("problems")));
    m_print->setEnabled(true);
}

void YearEndCheckWindow::openRow(int row)
{
    const QTableWidgetItem *item = m_grid->item(row, 0);
    if (item)
        emit vendorChosen(item->data(Qt::UserRole).toLongLong());
}

void YearEndCheckWindow::keyPressEvent(QKeyEvent *event)
{
    // Enter on the list has opened its row (the list's own activation); it does not also press
    // a button of the window.
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && m_grid->hasFocus())
        return;
    QDialog::keyPressEvent(event);
}

void YearEndCheckWindow::print()
{
    if (!m_checked)
        return;
    PayerRecord payer;
    try {
        payer = PayerRecord::read(m_s.databases);
    } catch (const NumberedError &error) {
        m_s.dialogs.message(QStringLiteral("The company record cannot be read: ") + error.text(),
                            Dialogs::Icon::Critical, windowTitle());
        return;
    }
    const QString job = QStringLiteral("1099 year-end check");
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(job);
    printer.setPageSize(QPageSize(QPageSize::Letter));
    const QString pdf = PrinterFormPrinter::pdfTarget(job);
    // The PDF setting is the user's word: the check goes into a new file that takes the name
    // when complete, never over a database of the company, a folder or a device.
    std::unique_ptr<OutputFile> output;
    QString why;
    if (!pdf.isEmpty()) {
        output = std::make_unique<OutputFile>(pdf, OutputFile::Kind::Pdf);
        if (!output->open(why)) {
            m_s.dialogs.message(why + QStringLiteral(" Nothing was printed."),
                                Dialogs::Icon::Critical, windowTitle());
            return;
        }
        output->device().close();
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(output->workPath());
    }
    QTextDocument document;
    document.setDefaultFont(PrinterFormPrinter::formFont());
    document.setPlainText(YearEndReport::text(m_result, payer));
    document.print(&printer);
    if (!output)
        return;
    if (!output->commit(why)) {
        m_s.dialogs.message(why + QStringLiteral(" Nothing was printed."), Dialogs::Icon::Critical,
                            windowTitle());
        return;
    }
    m_s.dialogs.message(QStringLiteral("The check was written to ") + pdf + QLatin1Char('.'),
                        Dialogs::Icon::Information, windowTitle());
}
