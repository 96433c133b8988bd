#include "PdfPages.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>

namespace {

// PDF files made by the page writer alone, read back by the poppler tools.
class PdfPagesTest : public ::testing::Test {
protected:
    QTemporaryDir dir;
    QString file = dir.filePath(QStringLiteral("pages.pdf"));

    // Writes a letter-size file with the pages the function draws.
    void write(const std::function<void(PdfPages &)> &draw, const QString &title = "Pages")
    {
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        PdfPages pages(out, QSizeF(612, 792), title);
        draw(pages);
        ASSERT_TRUE(pages.finish());
    }

    static QString run(const QString &program, const QStringList &args, int *exitCode = nullptr)
    {
        QProcess tool;
        tool.start(program, args);
        EXPECT_TRUE(tool.waitForFinished(30000)) << program.toStdString();
        if (exitCode)
            *exitCode = tool.exitCode();
        return QString::fromUtf8(tool.readAllStandardOutput() + tool.readAllStandardError());
    }

    QString pageText(int page) const
    {
        return run("pdftotext",
                   {"-f", QString::number(page), "-l", QString::number(page), "-layout", file, "-"})
            .trimmed();
    }

    // The box of the first word pdftotext finds with that text: xMin, yMin, xMax, yMax.
    QList<double> box(const QString &word) const
    {
        const QString html = run("pdftotext", {"-bbox", file, "-"});
        const QRegularExpression re(
            "xMin=\"([0-9.]+)\" yMin=\"([0-9.]+)\" xMax=\"([0-9.]+)\" yMax=\"([0-9.]+)\">" +
            QRegularExpression::escape(word) + "<");
        const auto m = re.match(html);
        if (!m.hasMatch())
            return {};
        return {m.captured(1).toDouble(), m.captured(2).toDouble(), m.captured(3).toDouble(),
                m.captured(4).toDouble()};
    }
};

TEST_F(PdfPagesTest, ATextStandsAtItsPositionOnThePage)
{
    write([](PdfPages &p) {
        p.beginPage();
        p.text(TextStyle::Body, 72, 100, 300, Qt::AlignLeft, "Invoices");
        p.endPage();
    });
    const auto b = box("Invoices");
    ASSERT_EQ(b.size(), 4);
    EXPECT_NEAR(b[0], 72.0, 0.05);
    EXPECT_NEAR(b[2] - b[0], PdfPages::width(TextStyle::Body, u"Invoices"), 0.05);
    EXPECT_LT(b[1], 100.0); // the baseline is inside the word's box
    EXPECT_GT(b[3], 100.0);
    EXPECT_NEAR(b[3] - b[1], 8.0, 2.0);
}

// The reader sets the text in its own Helvetica: its right edge falls where the writer's
// widths put it, at the right of the room.
TEST_F(PdfPagesTest, ARightAlignedTextEndsAtTheRightOfItsRoom)
{
    write([](PdfPages &p) {
        p.beginPage();
        p.text(TextStyle::Body, 100, 200, 150, Qt::AlignRight, "1,234.56");
        p.text(TextStyle::Bold, 100, 220, 150, Qt::AlignRight, "Wallaby");
        p.text(TextStyle::Title, 100, 260, 150, Qt::AlignHCenter, "Mid");
        p.endPage();
    });
    const auto money = box("1,234.56");
    ASSERT_EQ(money.size(), 4);
    EXPECT_NEAR(money[2], 250.0, 0.05);
    EXPECT_NEAR(money[0], 250.0 - 8 * (5 * 556 + 2 * 278 + 556) / 1000.0, 0.05);
    const auto bold = box("Wallaby");
    ASSERT_EQ(bold.size(), 4);
    EXPECT_NEAR(bold[2], 250.0, 0.05);
    const auto mid = box("Mid");
    ASSERT_EQ(mid.size(), 4);
    EXPECT_NEAR((mid[0] + mid[2]) / 2, 175.0, 0.05);
}

TEST_F(PdfPagesTest, SeveralPagesEachHoldTheirOwnText)
{
    write([](PdfPages &p) {
        for (const char *word : {"First", "Second", "Third"}) {
            p.beginPage();
            p.text(TextStyle::Body, 72, 72, 300, Qt::AlignLeft, QString::fromLatin1(word));
            p.line({72, 80}, {300, 80});
            p.endPage();
        }
        EXPECT_EQ(p.pageCount(), 3);
    });
    EXPECT_EQ(pageText(1), "First");
    EXPECT_EQ(pageText(2), "Second");
    EXPECT_EQ(pageText(3), "Third");
    EXPECT_TRUE(run("pdfinfo", {file}).contains(QRegularExpression("Pages: +3\n")));
}

TEST_F(PdfPagesTest, LettersOutsideAsciiAreWrittenInTheWindowsEncoding)
{
    write([](PdfPages &p) {
        p.beginPage();
        p.text(TextStyle::Body, 72, 72, 400, Qt::AlignLeft,
               QString::fromUtf8("Café Müller – 5 € “Größe”"));
        p.endPage();
    });
    EXPECT_EQ(pageText(1), QString::fromUtf8("Café Müller – 5 € “Größe”"));
    EXPECT_EQ(PdfPages::winAnsi(QChar(0xE9)), 0xE9);
    EXPECT_EQ(PdfPages::winAnsi(QChar(0x20AC)), 0x80);
    EXPECT_EQ(PdfPages::winAnsi(QChar(0x2013)), 0x96);
}

TEST_F(PdfPagesTest, ACharacterOutsideTheEncodingIsAQuestionMark)
{
    write([](PdfPages &p) {
        p.beginPage();
        p.text(TextStyle::Body, 72, 72, 400, Qt::AlignLeft, QString::fromUtf8("Kanji 漢 ok"));
        p.endPage();
    });
    EXPECT_EQ(pageText(1), "Kanji ? ok");
}

TEST_F(PdfPagesTest, ParenthesesAndBackslashesInTextAreEscaped)
{
    const QString odd = QStringLiteral("Smith (East) a) b( c\\ d\\)");
    write([&](PdfPages &p) {
        p.beginPage();
        p.text(TextStyle::Body, 72, 72, 400, Qt::AlignLeft, odd);
        p.text(TextStyle::Body, 72, 90, 400, Qt::AlignLeft, QStringLiteral("after"));
        p.endPage();
    });
    const QStringList lines = pageText(1).split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[0], odd);
    EXPECT_EQ(lines[1], "after");
}

TEST_F(PdfPagesTest, ATextTooLongForItsRoomIsCutWithAnEllipsis)
{
    write([](PdfPages &p) {
        p.beginPage();
        p.text(TextStyle::Body, 72, 72, 40, Qt::AlignLeft, "Northwestern Supplies");
        p.text(TextStyle::Body, 72, 90, PdfPages::width(TextStyle::Body, u"Exact"), Qt::AlignLeft,
               "Exact");
        p.endPage();
    });
    const QStringList lines = pageText(1).split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[0].endsWith(QChar(0x2026))) << lines[0].toStdString();
    EXPECT_TRUE(lines[0].startsWith("North")) << lines[0].toStdString();
    const auto cut = box(lines[0]);
    ASSERT_EQ(cut.size(), 4);
    EXPECT_LE(cut[2], 72.0 + 40.0 + 0.05);
    // A text exactly as wide as its room is left whole.
    EXPECT_EQ(lines[1], "Exact");
}

TEST_F(PdfPagesTest, TheFileIsValidForTheCheckers)
{
    write(
        [](PdfPages &p) {
            for (int page = 0; page < 4; ++page) {
                p.beginPage();
                p.text(TextStyle::Title, 36, 50, 540, Qt::AlignHCenter, "Invoices (all)");
                p.line({36, 60}, {576, 60});
                p.text(TextStyle::Body, 36, 80, 540, Qt::AlignLeft, QString::number(page));
                p.endPage();
            }
        },
        QString::fromUtf8("Liste des factures é"));
    const QString info = run("pdfinfo", {file});
    EXPECT_TRUE(info.contains(QString::fromUtf8("Title:           Liste des factures é")))
        << info.toStdString();
    EXPECT_TRUE(info.contains("Page size:       612 x 792 pts (letter)")) << info.toStdString();
    if (QStandardPaths::findExecutable("qpdf").isEmpty())
        GTEST_SKIP() << "qpdf is not installed (scripts/setup.sh installs it)";
    int exitCode = -1;
    const QString check = run("qpdf", {"--check", file}, &exitCode);
    EXPECT_EQ(exitCode, 0) << check.toStdString();
    EXPECT_TRUE(check.contains("No syntax or stream encoding errors")) << check.toStdString();
}

TEST_F(PdfPagesTest, AnEmptyDocumentStillHasAPage)
{
    write([](PdfPages &p) {
        p.beginPage();
        p.endPage();
    });
    EXPECT_TRUE(run("pdfinfo", {file}).contains(QRegularExpression("Pages: +1\n")));
}

TEST_F(PdfPagesTest, ADeviceThatFailsIsReported)
{
    QFile full(QStringLiteral("/dev/full"));
    if (!full.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        GTEST_SKIP() << "/dev/full cannot be opened here";
    PdfPages pages(full, QSizeF(612, 792), "Full");
    pages.beginPage();
    pages.text(TextStyle::Body, 72, 72, 300, Qt::AlignLeft, "nowhere");
    EXPECT_FALSE(pages.finish());
}

} // namespace
