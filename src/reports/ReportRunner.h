#pragma once

#include <functional>

class Clipboard;
class Dialogs;
class PrintMargins;
class Processes;
class StatusLine;
struct ReportRequest;

// Hands a report request to the suite's report runner: the request goes on the clipboard as
// text and the runner (cryprint.exe) is started without waiting; it reads the clipboard.
class ReportRunner {
public:
    struct Services {
        Clipboard &clipboard;
        Processes &processes;
        Dialogs &dialogs;
        StatusLine &status;
    };

    // notTopmost takes the main window out of the always-on-top state, so that the runner's
    // window can come in front of it.
    ReportRunner(Services services, PrintMargins &margins, std::function<void()> notTopmost) :
        m_s(services), m_margins(margins), m_notTopmost(std::move(notTopmost))
    {
    }

    // Composes the request, clears it, puts it on the clipboard and starts the runner.
    void runReport(ReportRequest &request);
    // runReport with "Creating report..." and "Report complete" in the status line; clears the
    // first sort field and the selection formula again afterwards.
    void printReport(ReportRequest &request);

private:
    Services m_s;
    PrintMargins &m_margins;
    std::function<void()> m_notTopmost;
};
