#include "PreviewWindow.h"

#include "PageView.h"
#include "PreviewPages.h"
#include "ReportFailure.h"
#include "ReportLayout.h"
#include "ReportQuery.h"
#include "ReportRenderer.h"

#include "common/OutputFile.h"
#include "common/ScreenFit.h"

#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QHideEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QStatusBar>
#include <QToolBar>

#include <optional>

PreviewWindow::PreviewWindow(const ReportDefinition &def, const RunnerRequest &request,
                             QWidget *parent) :
    QMainWindow(parent),
    m_def(def), m_request(request)
{
    setObjectName(QStringLiteral("reportpreview"));
    setWindowTitle(m_request.windowTitle.isEmpty() ? m_def.title : m_request.windowTitle);
    m_pages = std::make_unique<PreviewPages>(m_def, m_request);
    m_view = new PageView(*m_pages, ReportLayout::pageSize(m_def), this);
    m_view->setObjectName(QStringLiteral("pages"));
    m_view->setAccessibleName(tr("Report pages"));
    setCentralWidget(m_view);
    connect(m_view, &PageView::changed, this, &PreviewWindow::updatePageLabel);

    QToolBar *bar = addToolBar(tr("Report"));
    bar->setObjectName(QStringLiteral("reporttools"));
    bar->setMovable(false);
    auto add = [this, bar](const QString &name, const QString &text, QKeySequence keys, auto slot) {
        QAction *action = bar->addAction(text);
        action->setObjectName(name);
        action->setShortcut(keys);
        action->setToolTip(text + QStringLiteral(" (") + keys.toString(QKeySequence::NativeText) +
                           QLatin1Char(')'));
        connect(action, &QAction::triggered, this, [this, slot] { guarded(slot); });
        return action;
    };
    add(QStringLiteral("firstpage"), tr("First"), QKeySequence(Qt::CTRL | Qt::Key_Home),
        [this] { m_view->setCurrentPage(1); });
    add(QStringLiteral("previouspage"), tr("Previous"), QKeySequence(Qt::Key_PageUp),
        [this] { m_view->setCurrentPage(m_view->currentPage() - 1); });
    add(QStringLiteral("nextpage"), tr("Next"), QKeySequence(Qt::Key_PageDown),
        [this] { m_view->setCurrentPage(m_view->currentPage() + 1); });
    add(QStringLiteral("lastpage"), tr("Last"), QKeySequence(Qt::CTRL | Qt::Key_End), [this] {
        // The whole report is laid out first: a long one takes a while.
        QApplication::setOverrideCursor(Qt::WaitCursor);
        m_view->showLastPage();
        QApplication::restoreOverrideCursor();
    });
    bar->addSeparator();
    add(QStringLiteral("zoomin"), tr("Zoom in"), QKeySequence(QKeySequence::ZoomIn),
        [this] { m_view->zoomIn(); });
    add(QStringLiteral("zoomout"), tr("Zoom out"), QKeySequence(QKeySequence::ZoomOut),
        [this] { m_view->zoomOut(); });
    add(QStringLiteral("fitwidth"), tr("Fit width"), QKeySequence(Qt::CTRL | Qt::Key_1),
        [this] { m_view->fitToWidth(); });
    add(QStringLiteral("fitpage"), tr("Whole page"), QKeySequence(Qt::CTRL | Qt::Key_0),
        [this] { m_view->fitInView(); });
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
    m_pageLabel->setObjectName(QStringLiteral("pagenumber"));
    statusBar()->addWidget(m_pageLabel);
    // A page's height where the screen has room for it; where the user left it after that.
    ScreenFit::restore(this, QStringLiteral("windows/preview"), QSize(900, 1000));
    ScreenFit::keepOnScreen(this);
    m_view->fitToWidth();
    updatePageLabel();
}

PreviewWindow::~PreviewWindow()
{
    // The view paints from the pages: it goes before them.
    delete m_view;
}

void PreviewWindow::hideEvent(QHideEvent *event)
{
    if (!event->spontaneous())
        ScreenFit::remember(this, QStringLiteral("windows/preview"));
    QMainWindow::hideEvent(event);
}

void PreviewWindow::guarded(const std::function<void()> &command)
{
    try {
        command();
    } catch (const NumberedError &e) {
        QApplication::restoreOverrideCursor();
        QMessageBox::warning(this, windowTitle(), e.text());
    }
}

void PreviewWindow::paintPages(QPrinter *printer)
{
    m_error.clear();
    try {
        ReportQuery rows;
        rows.setStableOrder(); // read twice: to count the pages, then to print them
        rows.open(m_def, m_request);
        ReportRenderer(m_def, m_request).paint(rows, *printer);
    } catch (const NumberedError &e) {
        m_error = e.text(); // in the status line as well
        throw;
    }
}

void PreviewWindow::updatePageLabel()
{
    const QString error = m_error.isEmpty() ? m_pages->error() : m_error;
    if (!error.isEmpty())
        m_pageLabel->setText(error);
    else if (m_view->isComplete())
        m_pageLabel->setText(
            tr("Page %1 of %2").arg(m_view->currentPage()).arg(m_view->pageCount()));
    else // the rest is laid out when it is asked for
        m_pageLabel->setText(tr("Page %1 of many").arg(m_view->currentPage()));
}

void PreviewWindow::print()
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setFullPage(true);
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() == QDialog::Accepted)
        printTo(printer);
}

void PreviewWindow::printTo(QPrinter &printer)
{
    std::optional<OutputFile> file;
    QString error;
    if (printer.outputFormat() == QPrinter::PdfFormat && !printer.outputFileName().isEmpty()) {
        file.emplace(printer.outputFileName(), OutputFile::Kind::Pdf);
        if (!file->open(error))
            ReportFailure::raise(error);
        file->device().close();
        printer.setOutputFileName(file->workPath());
    }
    paintPages(&printer);
    if (file && !file->commit(error))
        ReportFailure::raise(error);
}

void PreviewWindow::exportTo(const QString &fileName, const QString &type)
{
    RunnerRequest request = m_request;
    request.destination = QStringLiteral("File");
    request.printFileName = fileName;
    request.printFileType = type;
    writeReportFile(m_def, request);
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
    exportTo(name, type);
    statusBar()->showMessage(tr("Written to %1").arg(name), 5000);
}
