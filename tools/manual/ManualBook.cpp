#include "ManualBook.h"

#include <QDir>
#include <QFile>
#include <QFont>
#include <QImage>
#include <QPageLayout>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextImageFormat>
#include <QUrl>

#include <algorithm>
#include <vector>

namespace {

QString readText(const QString &path, QString *problem)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        *problem = QStringLiteral("%1: %2").arg(path, file.errorString());
        return {};
    }
    return QString::fromUtf8(file.readAll());
}

// "[the server notes](server.md)" reads as "the server notes": a PDF has no other files to open.
QString withoutFileLinks(QString markdown)
{
    static const QRegularExpression link(QStringLiteral(R"((?<!!)\[([^\]]+)\]\(([^)]+\.md)\))"));
    return markdown.replace(link, QStringLiteral("\\1"));
}

} // namespace

QStringList ManualBook::chapterFiles(QString *problem) const
{
    const QString list =
        readText(QDir(m_docs).filePath(QStringLiteral("manual/chapters.txt")), problem);
    if (list.isEmpty())
        return {};
    QStringList files;
    for (const QString &line : list.split(QLatin1Char('\n'))) {
        const QString name = line.trimmed();
        if (!name.isEmpty() && !name.startsWith(QLatin1Char('#')))
            files << QDir(m_docs).filePath(name);
    }
    return files;
}

bool ManualBook::build(QTextDocument &document, const QString &version, qreal textWidth,
                       QString *problem) const
{
    const QStringList files = chapterFiles(problem);
    if (files.isEmpty())
        return false;
    QString markdown;
    for (const QString &file : files) {
        const QString chapter = readText(file, problem);
        if (chapter.isEmpty()) {
            if (problem->isEmpty())
                *problem = file + QStringLiteral(": the chapter is empty");
            return false;
        }
        markdown += withoutFileLinks(chapter) + QStringLiteral("\n\n");
    }
    markdown.replace(QStringLiteral("@VERSION@"), version);
    QFont font(QStringLiteral("DejaVu Sans"), 10);
    // Letters as they are, without ligatures ("fi" as one glyph), so that the PDF's text is
    // found and copied as typed.
    font.setStyleStrategy(QFont::PreferNoShaping);
    document.setDefaultFont(font);
    document.setMarkdown(markdown);

    // Every chapter but the first starts a page.
    bool first = true;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() != 1)
            continue;
        if (!first) {
            QTextCursor cursor(block);
            QTextBlockFormat format = block.blockFormat();
            format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
            cursor.setBlockFormat(format);
        }
        first = false;
    }
    // The pictures: read from the documentation folder, never wider than the text. Found first
    // and sized afterwards, as sizing one changes the fragments.
    struct Picture {
        int position;
        int length;
        QTextImageFormat format;
    };
    std::vector<Picture> pictures;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            if (fragment.charFormat().isImageFormat())
                pictures.push_back({fragment.position(), fragment.length(),
                                    fragment.charFormat().toImageFormat()});
        }
    }
    for (Picture &picture : pictures) {
        const QString name = picture.format.name();
        const QImage image(QDir(m_docs).filePath(name));
        if (image.isNull()) {
            *problem = QStringLiteral("the picture %1 is not in %2").arg(name, m_docs);
            return false;
        }
        document.addResource(QTextDocument::ImageResource, QUrl(name), image);
        const qreal width = std::min<qreal>(image.width(), textWidth);
        picture.format.setWidth(width);
        picture.format.setHeight(width * image.height() / image.width());
        QTextCursor cursor(&document);
        cursor.setPosition(picture.position);
        cursor.setPosition(picture.position + picture.length, QTextCursor::KeepAnchor);
        cursor.setCharFormat(picture.format);
    }
    return true;
}

qreal ManualBook::textWidth()
{
    // The paper less the writer's margins and the 2 cm the document's printing adds on each side,
    // in the document's units (1/96 inch); a little less, so that a picture never touches it.
    const qreal inches = 8.5 - 2 * margin / 72.0 - 2 * 2 / 2.54;
    return inches * 96 - 8;
}

bool ManualBook::writePdf(QTextDocument &document, const QString &path, QString *problem)
{
    QPdfWriter writer(path);
    writer.setTitle(QStringLiteral("A/P Master user manual"));
    writer.setCreator(QStringLiteral("Velmora Office Accounting"));
    writer.setPageLayout(QPageLayout(QPageSize(QPageSize::Letter), QPageLayout::Portrait,
                                     QMarginsF(margin, margin, margin, margin),
                                     QPageLayout::Point));
    writer.setResolution(300);
    document.print(&writer);
    if (!QFile::exists(path) || QFile(path).size() == 0) {
        *problem = path + QStringLiteral(" could not be written");
        return false;
    }
    return true;
}
