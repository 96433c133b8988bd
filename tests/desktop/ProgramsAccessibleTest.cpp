#include "LaunchWindow.h"
#include "PreviewWindow.h"
#include "support/DataFolder.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QDir>
#include <QLineEdit>
#include <QSettings>
#include <QTemporaryDir>
#include <QToolButton>

#include <gtest/gtest.h>

namespace {

QString accessibleName(QWidget *w)
{
    QAccessibleInterface *face = QAccessible::queryAccessibleInterface(w);
    return face ? face->text(QAccessible::Name) : QStringLiteral("<no interface>");
}

// The names of the inputs a user reaches in a window (not the parts Qt builds itself).
QMap<QString, QString> inputNames(QWidget *window)
{
    QMap<QString, QString> names;
    int unnamed = 0;
    for (QWidget *w : window->findChildren<QWidget *>()) {
        if (w->objectName().startsWith(QLatin1String("qt_")))
            continue;
        if (!qobject_cast<QAbstractButton *>(w) && !qobject_cast<QLineEdit *>(w) &&
            !qobject_cast<QAbstractItemView *>(w) && w->objectName() != QLatin1String("pages"))
            continue;
        const QString name = accessibleName(w);
        names.insert(name.isEmpty() ? QStringLiteral("<unnamed %1>").arg(++unnamed) : name,
                     w->metaObject()->className());
    }
    return names;
}

TEST(ProgramsAccessible, EveryInputOfTheLauncherIsNamedByItsCaption)
{
    QTemporaryDir dir;
    QSettings settings(dir.filePath(QStringLiteral("launch.ini")), QSettings::IniFormat);
    LaunchServices services;
    services.settings = &settings;
    services.chooseFolder = [](QWidget *, const QString &) { return QString(); };
    LaunchWindow window(services);
    window.show();
    const QMap<QString, QString> names = inputNames(&window);
    EXPECT_EQ(names.keys(),
              QStringList({"Browse...", "Close", "Company data folder:", "Sign in", "Staff"}));
}

TEST(ProgramsAccessible, EveryInputOfTheReportPreviewIsNamed)
{
    DataFolder folder;
    const QString previous = QDir::currentPath();
    QDir::setCurrent(folder.path());
    const auto def = ReportDefinition::load(QStringLiteral(CRYPRINT_DEFINITIONS "/rap001.rpt"));
    RunnerRequest request;
    request.reportFileName = QStringLiteral("rap001.rpt");
    {
        PreviewWindow window(def, request);
        window.show();
        const QMap<QString, QString> names = inputNames(&window);
        EXPECT_EQ(names.keys(), QStringList({"Close", "Export CSV", "Export PDF", "First",
                                             "Fit width", "Last", "Next", "Previous", "Print",
                                             "Report pages", "Whole page", "Zoom in", "Zoom out"}));
        QSettings(QSettings::NativeFormat, QSettings::UserScope, "Velmora", "apmaster").clear();
    }
    QDir::setCurrent(previous);
}

} // namespace
