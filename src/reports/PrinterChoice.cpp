#include "reports/PrinterChoice.h"

#include "common/OutputFile.h"

#include <QFileInfo>
#include <QPageSize>
#include <QPrinter>
#include <QSettings>

namespace {

QSettings userSettings()
{
    return QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Velmora"),
                     QStringLiteral("apmaster"));
}

QPageSize::PageSizeId pageSizeOf(const QString &paper)
{
    if (paper == QLatin1String("Legal"))
        return QPageSize::Legal;
    if (paper == QLatin1String("A4"))
        return QPageSize::A4;
    return QPageSize::Letter;
}

QPrinter::PaperSource paperSourceOf(const QString &source)
{
    if (source == QLatin1String("Upper"))
        return QPrinter::Upper;
    if (source == QLatin1String("Lower"))
        return QPrinter::Lower;
    if (source == QLatin1String("Middle"))
        return QPrinter::Middle;
    if (source == QLatin1String("Manual"))
        return QPrinter::Manual;
    if (source == QLatin1String("Tractor"))
        return QPrinter::Tractor;
    return QPrinter::Auto;
}

} // namespace

QStringList PrinterChoice::paperNames()
{
    return {QStringLiteral("Letter"), QStringLiteral("Legal"), QStringLiteral("A4")};
}

QStringList PrinterChoice::sourceNames()
{
    return {QStringLiteral("Auto"),   QStringLiteral("Upper"),  QStringLiteral("Lower"),
            QStringLiteral("Middle"), QStringLiteral("Manual"), QStringLiteral("Tractor")};
}

QString PrinterChoice::problem(const QStringList &printers) const
{
    if (!paperNames().contains(paper))
        return QStringLiteral("The paper size \"%1\" is not known; choose one of %2.")
            .arg(paper, paperNames().join(QStringLiteral(", ")));
    if (!sourceNames().contains(source))
        return QStringLiteral("The paper source \"%1\" is not known; choose one of %2.")
            .arg(source, sourceNames().join(QStringLiteral(", ")));
    if (!pdfTarget.isEmpty()) {
        if (QFileInfo(pdfTarget).isDir())
            return {};
        return OutputFile::refusal(QFileInfo(pdfTarget).absoluteFilePath(), OutputFile::Kind::Pdf);
    }
    if (!printer.isEmpty() && !printers.contains(printer))
        return QStringLiteral("The printer \"%1\" is not installed on this workstation.")
            .arg(printer);
    return {};
}

bool PrinterChoice::parse(const QStringList &words, QString &why)
{
    for (const QString &word : words) {
        const qsizetype equals = word.indexOf(QLatin1Char('='));
        const QString key = word.left(equals);
        const QString value = word.mid(equals + 1);
        if (equals < 0) {
            why = QStringLiteral("\"%1\" is not of the form key=value.").arg(word);
            return false;
        }
        if (key == QLatin1String("printer")) {
            printer = value;
            pdfTarget.clear();
        } else if (key == QLatin1String("pdf")) {
            pdfTarget = value.isEmpty() ? value : QFileInfo(value).absoluteFilePath();
            printer.clear();
        } else if (key == QLatin1String("paper")) {
            paper = value;
        } else if (key == QLatin1String("source")) {
            source = value;
        } else {
            why = QStringLiteral("\"%1\" is not one of printer, pdf, paper, source.").arg(key);
            return false;
        }
    }
    return true;
}

PrinterChoice PrinterChoice::load()
{
    QSettings settings = userSettings();
    settings.beginGroup(QStringLiteral("printing"));
    PrinterChoice choice;
    choice.m_saved = settings.contains(QStringLiteral("paper"));
    choice.printer = settings.value(QStringLiteral("printer")).toString();
    choice.pdfTarget = settings.value(QStringLiteral("pdf")).toString();
    choice.paper = settings.value(QStringLiteral("paper"), choice.paper).toString();
    choice.source = settings.value(QStringLiteral("source"), choice.source).toString();
    return choice;
}

bool PrinterChoice::save() const
{
    QSettings settings = userSettings();
    settings.beginGroup(QStringLiteral("printing"));
    settings.setValue(QStringLiteral("printer"), printer);
    settings.setValue(QStringLiteral("pdf"), pdfTarget);
    settings.setValue(QStringLiteral("paper"), paper);
    settings.setValue(QStringLiteral("source"), source);
    settings.endGroup();
    settings.sync();
    return settings.status() == QSettings::NoError;
}

void PrinterChoice::applyTo(QPrinter &target) const
{
    if (!printer.isEmpty())
        target.setPrinterName(printer);
    target.setPageSize(QPageSize(pageSizeOf(paper)));
    target.setPaperSource(paperSourceOf(source));
}
