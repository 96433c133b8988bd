#include "PrinterSetupWindow.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QMessageBox>

QString PrinterSetupWindow::pdfEntry()
{
    return QStringLiteral("No printer: write a PDF");
}

PrinterSetupWindow::PrinterSetupWindow(const PrinterChoice &choice, const QStringList &printers) :
    m_printers(printers), m_printer(new QComboBox(this)), m_pdf(new QLineEdit(this)),
    m_paper(new QComboBox(this)), m_source(new QComboBox(this))
{
    setWindowTitle(QStringLiteral("Printer set-up"));
    m_printer->setObjectName(QStringLiteral("printer"));
    m_pdf->setObjectName(QStringLiteral("pdf"));
    m_paper->setObjectName(QStringLiteral("paper"));
    m_source->setObjectName(QStringLiteral("source"));
    m_printer->addItem(QStringLiteral("Default printer"));
    m_printer->addItems(printers);
    m_printer->addItem(pdfEntry());
    m_paper->addItems(PrinterChoice::paperNames());
    m_source->addItems(PrinterChoice::sourceNames());
    m_pdf->setPlaceholderText(QStringLiteral("PDF file, or folder for the files"));

    if (!choice.pdfTarget.isEmpty())
        m_printer->setCurrentText(pdfEntry());
    else if (printers.contains(choice.printer))
        m_printer->setCurrentText(choice.printer);
    m_pdf->setText(choice.pdfTarget);
    m_paper->setCurrentText(choice.paper);
    m_source->setCurrentText(choice.source);
    const auto pdfChosen = [this] { m_pdf->setEnabled(m_printer->currentText() == pdfEntry()); };
    connect(m_printer, &QComboBox::currentIndexChanged, this, pdfChosen);
    pdfChosen();

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *form = new QFormLayout(this);
    form->addRow(QStringLiteral("&Printer"), m_printer);
    form->addRow(QStringLiteral("P&DF target"), m_pdf);
    form->addRow(QStringLiteral("Paper &size"), m_paper);
    form->addRow(QStringLiteral("Paper s&ource"), m_source);
    form->addRow(buttons);
}

PrinterChoice PrinterSetupWindow::choice() const
{
    PrinterChoice choice;
    if (m_printer->currentText() == pdfEntry())
        choice.pdfTarget = m_pdf->text().trimmed();
    else if (m_printer->currentIndex() > 0)
        choice.printer = m_printer->currentText();
    choice.paper = m_paper->currentText();
    choice.source = m_source->currentText();
    return choice;
}

void PrinterSetupWindow::accept()
{
    const PrinterChoice chosen = choice();
    QString problem = chosen.problem(m_printers);
    if (problem.isEmpty() && m_printer->currentText() == pdfEntry() && chosen.pdfTarget.isEmpty())
        problem = QStringLiteral("Name the PDF file, or the folder to write the files in.");
    if (problem.isEmpty() && !chosen.save())
        problem = QStringLiteral("The printer set-up could not be saved.");
    if (!problem.isEmpty()) {
        QMessageBox::warning(this, QStringLiteral("Printer set-up"), problem);
        return;
    }
    QDialog::accept();
}
