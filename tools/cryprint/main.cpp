// cryprint: the suite's report runner. It reads a report request from the clipboard (or from
// the file named on its command line), renders the report definition it names against the
// data folder's databases, and shows it in a preview window, or writes it to a PDF or CSV file
// without a window when the request says Destination=File.
#include "PreviewWindow.h"
#include "ReportDefinition.h"
#include "ReportFailure.h"
#include "ReportRenderer.h"
#include "RunnerRequest.h"

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QMessageBox>
#include <QTimer>

#include <cstdio>
#include <malloc.h>
#include <optional>

namespace {

int failed(const QString &message, bool window)
{
    std::fprintf(stderr, "cryprint: %s\n", qPrintable(message));
    if (window)
        QMessageBox::critical(nullptr, QStringLiteral("Report"), message);
    return ReportFailure::exitCode;
}

// The request, or nothing with the reason in error (shown once there is a window to show it).
std::optional<RunnerRequest> parsed(const QString &text, QString &error)
{
    try {
        return RunnerRequest::parse(text);
    } catch (const NumberedError &e) {
        error = e.text();
        return std::nullopt;
    }
}

} // namespace

int main(int argc, char *argv[])
{
    // The PDF pages are built in buffers of a few hundred kB, made and freed page after page;
    // without these the C library hands them back to the system and asks again every time.
    mallopt(M_MMAP_THRESHOLD, 64 * 1024 * 1024);
    mallopt(M_TRIM_THRESHOLD, 256 * 1024 * 1024);
    QString fromFile;
    QString requestText;
    bool fromClipboard = argc < 2;
    if (!fromClipboard) {
        fromFile = QString::fromLocal8Bit(argv[1]);
        if (fromFile == QLatin1String("--help") || fromFile == QLatin1String("-h")) {
            std::printf("Usage: cryprint [REQUEST_FILE]\nRuns the report request on the "
                        "clipboard, or the one in REQUEST_FILE, in the current folder.\n");
            return 0;
        }
        if (fromFile == QLatin1String("--version")) {
            std::printf("cryprint %s\n", APMASTER_VERSION);
            return 0;
        }
        QFile file(fromFile);
        if (!file.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "cryprint: The request file %s cannot be read: %s\n",
                         qPrintable(fromFile), qPrintable(file.errorString()));
            return 1;
        }
        requestText = QString::fromUtf8(file.read(1024 * 1024));
    }
    // A request for a file needs no screen.
    std::optional<RunnerRequest> request;
    QString parseError;
    if (!fromClipboard)
        request = parsed(requestText, parseError);
    if (request && request->toFile() && qEnvironmentVariableIsEmpty("DISPLAY") &&
        qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
        qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("cryprint"));
    if (fromClipboard) {
        requestText = QApplication::clipboard()->text();
        request = parsed(requestText, parseError);
    }
    const bool window = !request || !request->toFile();
    const bool showErrors = window && fromClipboard;
    if (!request)
        return failed(parseError, showErrors);
    try {
        const ReportDefinition def = ReportDefinition::load(request->reportFileName);
        if (request->toFile()) {
            writeReportFile(def, *request);
            return 0;
        }
        PreviewWindow preview(def, *request);
        preview.show();
        // Started from a window that was on top: the preview comes in front of it with the
        // keyboard.
        preview.raise();
        preview.activateWindow();
        preview.raise();
        preview.activateWindow();
        return app.exec();
    } catch (const NumberedError &e) {
        // A report written to a file has no one to show a message to.
        return failed(e.text(), showErrors);
    }
}
