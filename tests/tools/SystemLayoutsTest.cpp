#include "DemoLayouts.h"

#include "support/FakeDialogs.h"

#include "reports/FormLayout.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace {

QString shipped(const QString &name)
{
    QFile file(QDir(QStringLiteral(APMASTER_SYSTEM_LAYOUTS)).filePath(name));
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("(cannot read %1)").arg(file.fileName());
    return QString::fromUtf8(file.readAll());
}

} // namespace

TEST(SystemLayouts, TheShippedFilesAreTheGeneratorsSystemCopies)
{
    const std::vector<Demo::Layout> layouts = Demo::Layouts::system();
    ASSERT_EQ(layouts.size(), 4u);
    for (const Demo::Layout &layout : layouts)
        EXPECT_EQ(shipped(layout.fileName), Demo::Layouts::text(layout))
            << qPrintable(layout.fileName);
}

TEST(SystemLayouts, TheShippedFilesLoadWithoutAMessage)
{
    const std::pair<const char *, int> files[] = {
        {"1099misc.lof", 25}, {"1099int.lof", 14}, {"1099div.lof", 25}, {"1099nec.lof", 14}};
    for (const auto &[name, lastIndex] : files) {
        FakeDialogs dialogs;
        FormLayout layout;
        EXPECT_EQ(
            layout.loadText(QString::fromLatin1(name), shipped(QString::fromLatin1(name)), dialogs),
            FormLayout::Outcome::Loaded)
            << name;
        EXPECT_EQ(dialogs.count(), 0) << name;
        EXPECT_EQ(layout.lastIndex, lastIndex) << name;
    }
}

TEST(SystemLayouts, TheNecSystemCopyLeavesThePayersLinesToBeFilledIn)
{
    FakeDialogs dialogs;
    FormLayout layout;
    layout.loadText(QStringLiteral("1099nec.lof"), shipped(QStringLiteral("1099nec.lof")), dialogs);
    EXPECT_EQ(layout.text[0], QStringLiteral("SYSTEM NEC"));
    EXPECT_EQ(layout.text[2], QStringLiteral("PAYER'S NAME"));
    EXPECT_EQ(layout.text[6], QStringLiteral("TELEPHONE"));
    EXPECT_EQ(layout.y[2], 432); // 0.3 inches
}
