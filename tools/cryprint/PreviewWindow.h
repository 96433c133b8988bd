#pragma once

#include "ReportDefinition.h"
#include "RunnerRequest.h"

#include <QMainWindow>

#include <functional>
#include <memory>

class PageView;
class PreviewPages;
class QLabel;
class QPrinter;

// The report on screen: its pages, page by page or zoomed, printed on a printer chosen in the
// print dialog, or exported to PDF or CSV. Everything is reached from the keyboard as well.
// The pages are laid out as they are needed, so the first one shows at once.
class PreviewWindow : public QMainWindow {
    Q_OBJECT
public:
    PreviewWindow(const ReportDefinition &def, const RunnerRequest &request,
                  QWidget *parent = nullptr);
    ~PreviewWindow() override;

    PageView *preview() const { return m_view; }
    const PreviewPages &pages() const { return *m_pages; }
    // Writes the report to a file as the export commands do; a NumberedError says what failed.
    void exportTo(const QString &fileName, const QString &type);
    // Prints the report on the printer as the print dialog left it; when that prints to a PDF
    // file, the file is checked and replaced as an export's is. A NumberedError says what
    // failed.
    void printTo(QPrinter &printer);

protected:
    // The window's size and place are kept for the next report.
    void hideEvent(QHideEvent *event) override;

private:
    // Runs a command; what stops it is shown in a message box, and the window stays.
    void guarded(const std::function<void()> &command);
    void paintPages(QPrinter *printer);
    void print();
    void exportAs(const QString &type);
    void updatePageLabel();

    ReportDefinition m_def;
    RunnerRequest m_request;
    std::unique_ptr<PreviewPages> m_pages;
    PageView *m_view = nullptr;
    QLabel *m_pageLabel = nullptr;
    QString m_error;
};
