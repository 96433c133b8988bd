#pragma once

#include "reports/PrinterChoice.h"

#include <QDialog>

class QComboBox;
class QLineEdit;

// The set-up window: the printer (or "No printer: write a PDF" with its file or folder), the
// paper size and the paper source. OK checks the choice with PrinterChoice and saves it; a choice
// that cannot be kept is shown in a message and the window stays open.
class PrinterSetupWindow : public QDialog {
    Q_OBJECT
public:
    static QString pdfEntry();

    PrinterSetupWindow(const PrinterChoice &choice, const QStringList &printers);
    PrinterChoice choice() const;

    void accept() override;

private:
    QStringList m_printers;
    QComboBox *m_printer;
    QLineEdit *m_pdf;
    QComboBox *m_paper;
    QComboBox *m_source;
};
