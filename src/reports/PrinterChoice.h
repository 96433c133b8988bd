#pragma once

#include <QString>
#include <QStringList>

class QPrinter;

// The printer set-up of the suite's direct printing (the 1099 runs), chosen with prtctrl and kept
// per desktop user in the user's configuration (group "printing" of Velmora/apmaster). A PDF
// target (a file, or a folder to put the files in) replaces the printer. The setting
// APMASTER_PRINT_PDF keeps priority over the saved choice, and the saved choice over the
// workstation's default printer.
struct PrinterChoice {
    QString printer;   // a printer name, or empty for the default printer
    QString pdfTarget; // when not empty: no printer, write a PDF here
    QString paper = QStringLiteral("Letter");
    QString source = QStringLiteral("Auto");

    static QStringList paperNames();  // Letter, Legal, A4
    static QStringList sourceNames(); // Auto, Upper, Lower, Middle, Manual, Tractor

    // Why the choice cannot be kept, or empty. printers are the installed printers' names.
    QString problem(const QStringList &printers) const;
    // Sets the choice from "key=value" words (printer, pdf, paper, source); false with why set.
    bool parse(const QStringList &words, QString &why);

    static PrinterChoice load(); // the default choice when nothing was saved
    bool save() const;
    bool saved() const { return m_saved; }

    // Applies printer, paper and source to printer (not the PDF target).
    void applyTo(QPrinter &printer) const;

private:
    bool m_saved = false;
};
