#include "reports/ReportRunner.h"

#include "common/Clipboard.h"
#include "common/DataFiles.h"
#include "common/Dialogs.h"
#include "common/Processes.h"
#include "common/StatusLine.h"
#include "reports/PrintMargins.h"
#include "reports/ReportRequest.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace {
const QString runner = QStringLiteral("cryprint.exe");

bool inDataFolder(const QString &fileName)
{
    return QFileInfo(DataFiles::pathOf(fileName)).isFile();
}
} // namespace

void ReportRunner::runReport(ReportRequest &request)
{
    if (m_notTopmost)
        m_notTopmost();
    m_margins.read(m_s.dialogs);
    const QString text = request.text(m_margins.top(), m_margins.left());
    request.clear();
    // The clipboard is written before the checks: a missing runner still replaces it.
    m_s.clipboard.clear();
    QCoreApplication::processEvents();
    m_s.clipboard.setText(text);
    if (!inDataFolder(runner)) {
        m_s.dialogs.message(runner + QStringLiteral(" cannot be found"));
        return;
    }
    if (!inDataFolder(request.reportFileName)) {
        m_s.dialogs.message(request.reportFileName + QStringLiteral(" cannot be found"));
        return;
    }
    request.reportTaskId = m_s.processes.start(runner, Processes::Show::Normal);
    QCoreApplication::processEvents();
}

void ReportRunner::printReport(ReportRequest &request)
{
    m_s.status.show(QStringLiteral("Creating report..."));
    runReport(request);
    request.sortFields[0].clear();
    request.selectionFormula.clear();
    m_s.status.show(QStringLiteral("Report complete"));
}
