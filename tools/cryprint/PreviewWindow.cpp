#include "PreviewWindow.h"

#include "ReportQuery.h"
#include "ReportRenderer.h"

#include <QAction>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPageLayout>
#include <QPageSize>
#include <QPrintDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QStatusBar>
#include <QToolBar>

PreviewWindow::PreviewWindow(const ReportDefinition &def, const RunnerRequest &request,
                             QWidget *parent) :
    QMainWindow(parent),
    m_def(def), m_request(request)
{
    setObjectName(QStringLiteral("reportpreview"));
    setWindowTitle(m_request.windowTitle.isEmpty() ? m_def.title : m_request.windowTitle);
    m_printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    m_printer->setFullPage(true);
    m_printer->setPageLayout(QPageLayout(
        QPageSize(QPageSize::Letter),
        def.landscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF(0, 0, 0, 0)));
    m_preview = new QPrintPreviewWidget(m_printer.get(), this);
    m_preview->setObjectName(QStringLiteral("pages"));
    setCentralWidget(m_preview);
    connect(m_preview, &QPrintPreviewWidget::paintRequested, this, &PreviewWindow::paintPages);
    connect(m_preview, &QPrintPreviewWidget::previewChanged, this, &PreviewWindow::updatePageLabel);

    QToolBar *bar = addToolBar(tr("Report"));
    bar->setObjectName(QStringLiteral("reporttools"));
    bar->setMovable(false);
    auto add = [this, bar](const QString &name, const QString &text, QKeySequence keys, auto slot) {
        QAction *action = bar->addAction(text);
        action->setObjectName(name);
        action->setShortcut(keys);
        action->setToolTip(text + QStringLiteral(" (") + keys.toString(QKeySequence::NativeText) +
                           QLatin1Char(')'));
        connect(action, &QAction::triggered, this, slot);
        return action;
    };
    add(QStringLiteral("firstpage"), tr("First"), QKeySequence(Qt::CTRL | Qt::Key_Home),
        [this] { m_preview->setCurrentPage(1); });
    add(QStringLiteral("previouspage"), tr("Previous"), QKeySequence(Qt::Key_PageUp),
        [this] { m_preview->setCurrentPage(m_preview->currentPage() - 1); });
    add(QStringLiteral("nextpage"), tr("Next"), QKeySequence(Qt::Key_PageDown),
        [this] { m_preview->setCurrentPage(m_preview->currentPage() + 1); });
    add(QStringLiteral("lastpage"), tr("Last"), QKeySequence(Qt::CTRL | Qt::Key_End),
        [this] { m_preview->setCurrentPage(m_preview->pageCount()); });
    bar->addSeparator();
    add(QStringLiteral("zoomin"), tr("Zoom in"), QKeySequence(QKeySequence::ZoomIn),
        [this] { m_preview->zoomIn(); });
    add(QStringLiteral("zoomout"), tr("Zoom out"), QKeySequence(QKeySequence::ZoomOut),
        [this] { m_preview->zoomOut(); });
    add(QStringLiteral("fitwidth"), tr("Fit width"), QKeySequence(Qt::CTRL | Qt::Key_1),
        [this] { m_preview->fitToWidth(); });
    add(QStringLiteral("fitpage"), tr("Whole page"), QKeySequence(Qt::CTRL | Qt::Key_0),
        [this] { m_preview->fitInView(); });
    bar->addSeparator();
    add(QStringLiteral("printreport"), tr("Print..."), QKeySequence(QKeySequence::Print),
        [this] { print(); });
    add(QStringLiteral("exportpdf"), tr("Export PDF..."), QKeySequence(Qt::CTRL | Qt::Key_E),
        [this] { exportAs(QStringLiteral("PDF")); });
    add(QStringLiteral("exportcsv"), tr("Export CSV..."),
        QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E),
        [this] { exportAs(QStringLiteral("CSV")); });
    bar->addSeparator();
    add(QStringLiteral("closepreview"), tr("Close"), QKeySequence(Qt::Key_Escape),
        [this] { close(); });
    m_pageLabel = new QLabel(this);
    statusBar()->addWidget(m_pageLabel);
    resize(900, 1000);
    m_preview->fitToWidth();
}

PreviewWindow::~PreviewWindow() = default;

void PreviewWindow::paintPages(QPrinter *printer)
{
    ReportQuery rows;
    QString error;
    if (!rows.open(m_def, m_request, error)) {
        m_error = error;
        return;
    }
    ReportRenderer(m_def, m_request).paint(rows, *printer, error);
    m_error = error;
}

void PreviewWindow::updatePageLabel()
{
    m_pageLabel->setText(
        m_error.isEmpty()
            ? tr("Page %1 of %2").arg(m_preview->currentPage()).arg(m_preview->pageCount())
            : m_error);
}

void PreviewWindow::print()
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setFullPage(true);
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    paintPages(&printer);
    if (!m_error.isEmpty())
        QMessageBox::warning(this, windowTitle(), m_error);
}

bool PreviewWindow::exportTo(const QString &fileName, const QString &type, QString &error)
{
    RunnerRequest request = m_request;
    request.destination = QStringLiteral("File");
    request.printFileName = fileName;
    request.printFileType = type;
    return writeReportFile(m_def, request, error);
}

void PreviewWindow::exportAs(const QString &type)
{
    const QString suffix = type.toLower();
    const QString name = QFileDialog::getSaveFileName(
        this, tr("Export the report"),
        QFileInfo(m_request.reportFileName).completeBaseName() + QLatin1Char('.') + suffix,
        type + QStringLiteral(" (*.") + suffix + QLatin1Char(')'));
    if (name.isEmpty())
        return;
    QString error;
    if (!exportTo(name, type, error))
        QMessageBox::warning(this, windowTitle(), error);
    else
        statusBar()->showMessage(tr("Written to %1").arg(name), 5000);
}
