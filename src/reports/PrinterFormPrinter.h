#pragma once

#include "reports/FormPrinter.h"

#include <QFont>

#include <memory>

class OutputFile;
class QPainter;
class QPrinter;

// Forms printed with the desktop's print support: on the printer, paper and source the user chose
// with prtctrl (else the workstation's default printer), or into a PDF file when the setting
// APMASTER_PRINT_PDF names one (a file, or a folder to put it in; it wins over the saved choice),
// when the saved choice is a PDF target, or when no printer is installed (then in the user's
// documents folder). A PDF file is written
// beside the file it replaces and never takes the name of a database, folder or device. The text is
// DejaVu Sans Mono at 10 points on every machine, so that it fits the boxes of the pre-printed
// forms.
class PrinterFormPrinter : public FormPrinter {
public:
    // jobName names the job and, for a PDF, the file ("1099-NEC forms").
    explicit PrinterFormPrinter(const QString &jobName);
    ~PrinterFormPrinter() override;

    bool begin() override;
    void print(int xTwips, int yTwips, const QString &text) override;
    void newPage() override;
    bool finish() override;
    QString pdfFile() const override { return m_pdfFile; }
    QString why() const override { return m_why; }

    // The PDF file a job of that name goes to, or empty for the default printer.
    static QString pdfTarget(const QString &jobName);
    static QFont formFont();

private:
    std::unique_ptr<QPrinter> m_printer;
    std::unique_ptr<QPainter> m_painter;
    std::unique_ptr<OutputFile> m_output;
    QString m_pdfFile;
    QString m_why;
    double m_dotsPerTwip = 0;
    int m_ascent = 0;
};
