#include "reports/PrinterFormPrinter.h"

#include "common/OutputFile.h"
#include "reports/PrinterChoice.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QPageLayout>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QStandardPaths>

namespace {
const char *const pdfSetting = "APMASTER_PRINT_PDF";
const char *const fontFile = "/usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf";
} // namespace

QFont PrinterFormPrinter::formFont()
{
    static const QString family = [] {
        const int id = QFontDatabase::addApplicationFont(QString::fromLatin1(fontFile));
        const QStringList families = QFontDatabase::applicationFontFamilies(id);
        return families.isEmpty() ? QStringLiteral("DejaVu Sans Mono") : families.first();
    }();
    QFont font(family);
    font.setStyleHint(QFont::Monospace);
    font.setPointSize(10);
    return font;
}

QString PrinterFormPrinter::pdfTarget(const QString &jobName)
{
    const QString stamp =
        QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH.mm.ss"));
    const QString name = jobName + QLatin1Char(' ') + stamp + QStringLiteral(".pdf");
    const QString setting = qEnvironmentVariable(pdfSetting);
    // The environment setting first, then the user's saved choice, then the default printer.
    const PrinterChoice choice = PrinterChoice::load();
    const QString target = !setting.isEmpty() ? setting : choice.pdfTarget;
    if (!target.isEmpty()) {
        if (QFileInfo(target).isDir())
            return QDir(target).absoluteFilePath(name);
        return QFileInfo(target).absoluteFilePath();
    }
    if (!choice.printer.isEmpty() || !QPrinterInfo::defaultPrinterName().isEmpty())
        return {};
    QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (folder.isEmpty() || !QDir().mkpath(folder))
        folder = QDir::currentPath();
    return QDir(folder).absoluteFilePath(name);
}

PrinterFormPrinter::PrinterFormPrinter(const QString &jobName) :
    m_printer(std::make_unique<QPrinter>(QPrinter::HighResolution))
{
    m_printer->setDocName(jobName);
    m_printer->setPageSize(QPageSize(QPageSize::Letter));
    PrinterChoice::load().applyTo(*m_printer);
    m_printer->setPageOrientation(QPageLayout::Portrait);
    // Positions count from the paper's corner, not from the printable area's.
    m_printer->setFullPage(true);
    m_pdfFile = pdfTarget(jobName);
    if (!m_pdfFile.isEmpty())
        m_printer->setOutputFormat(QPrinter::PdfFormat);
}

PrinterFormPrinter::~PrinterFormPrinter()
{
    if (m_painter && m_painter->isActive())
        m_painter->end();
}

bool PrinterFormPrinter::begin()
{
    if (!m_pdfFile.isEmpty()) {
        // The forms are printed into a new file that takes the setting's name when complete.
        m_output = std::make_unique<OutputFile>(m_pdfFile, OutputFile::Kind::Pdf);
        if (!m_output->open(m_why))
            return false;
        m_output->device().close();
        m_printer->setOutputFileName(m_output->workPath());
    }
    m_painter = std::make_unique<QPainter>();
    if (!m_painter->begin(m_printer.get())) {
        m_why = m_pdfFile.isEmpty() ? QStringLiteral("The printer ") + m_printer->printerName() +
                                          QStringLiteral(" could not be started.")
                                    : QStringLiteral("The file ") + m_pdfFile +
                                          QStringLiteral(" could not be written.");
        return false;
    }
    const QFont font = formFont();
    m_painter->setFont(QFont(font, m_printer.get()));
    m_painter->setPen(Qt::black);
    m_dotsPerTwip = m_printer->resolution() / 1440.0;
    m_ascent = QFontMetrics(m_painter->font(), m_printer.get()).ascent();
    return true;
}

void PrinterFormPrinter::print(int xTwips, int yTwips, const QString &text)
{
    // A position names the text's top left corner; the painter draws from the baseline.
    m_painter->drawText(QPointF(xTwips * m_dotsPerTwip, yTwips * m_dotsPerTwip + m_ascent), text);
}

void PrinterFormPrinter::newPage()
{
    m_printer->newPage();
}

bool PrinterFormPrinter::finish()
{
    if (m_painter && m_painter->isActive())
        m_painter->end();
    return !m_output || m_output->commit(m_why);
}
