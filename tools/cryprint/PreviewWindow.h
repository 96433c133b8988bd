#pragma once

#include "ReportDefinition.h"
#include "RunnerRequest.h"

#include <QMainWindow>

#include <memory>

class QLabel;
class QPrinter;
class QPrintPreviewWidget;

// The report on screen: its pages, page by page or zoomed, printed on a printer chosen in the
// print dialog, or exported to PDF or CSV. Everything is reached from the keyboard as well.
class PreviewWindow : public QMainWindow {
    Q_OBJECT
public:
    PreviewWindow(const ReportDefinition &def, const RunnerRequest &request,
                  QWidget *parent = nullptr);
    ~PreviewWindow() override;

    QPrintPreviewWidget *preview() const { return m_preview; }
    // Writes the report to a file as the export commands do; false with a message on failure.
    bool exportTo(const QString &fileName, const QString &type, QString &error);

private:
    void paintPages(QPrinter *printer);
    void print();
    void exportAs(const QString &type);
    void updatePageLabel();

    ReportDefinition m_def;
    RunnerRequest m_request;
    std::unique_ptr<QPrinter> m_printer;
    QPrintPreviewWidget *m_preview = nullptr;
    QLabel *m_pageLabel = nullptr;
    QString m_error;
};
