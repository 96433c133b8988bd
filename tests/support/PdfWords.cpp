#include "support/PdfWords.h"

#include <QProcess>
#include <QRegularExpression>

#include <cmath>

PdfWords::PdfWords(const QString &pdfFile)
{
    QProcess pdftotext;
    pdftotext.start(QStringLiteral("pdftotext"),
                    {QStringLiteral("-bbox"), pdfFile, QStringLiteral("-")});
    if (!pdftotext.waitForFinished(60000) || pdftotext.exitCode() != 0) {
        m_error = QStringLiteral("pdftotext failed: ") +
                  QString::fromLocal8Bit(pdftotext.readAllStandardError());
        return;
    }
    const QString html = QString::fromUtf8(pdftotext.readAllStandardOutput());
    static const QRegularExpression token(
        QStringLiteral(R"re(<page\b|<word xMin="([\d.]+)" yMin="([\d.]+)" )re"
                       R"re(xMax="([\d.]+)" yMax="([\d.]+)">([^<]*)</word>)re"));
    int page = -1;
    for (auto it = token.globalMatch(html); it.hasNext();) {
        const QRegularExpressionMatch m = it.next();
        if (m.captured(0).startsWith(QLatin1String("<page"))) {
            ++page;
            continue;
        }
        QString text = m.captured(5);
        text.replace(QLatin1String("&amp;"), QLatin1String("&"))
            .replace(QLatin1String("&lt;"), QLatin1String("<"))
            .replace(QLatin1String("&gt;"), QLatin1String(">"))
            .replace(QLatin1String("&quot;"), QLatin1String("\""))
            .replace(QLatin1String("&apos;"), QLatin1String("'"));
        m_words.push_back({page, m.captured(1).toDouble(), m.captured(2).toDouble(),
                           m.captured(3).toDouble(), m.captured(4).toDouble(), text});
    }
    m_pages = page + 1;
    m_ok = true;
}

QString PdfWords::pageText(int page) const
{
    QStringList texts;
    for (const PdfWord &word : m_words)
        if (word.page == page)
            texts << word.text;
    return texts.join(QLatin1Char(' '));
}

const PdfWord *PdfWords::at(int page, const QString &text, double x, double y,
                            double tolerance) const
{
    for (const PdfWord &word : m_words)
        if (word.page == page && word.text == text && std::fabs(word.xMin - x) <= tolerance &&
            std::fabs(word.yMin - y) <= tolerance)
            return &word;
    return nullptr;
}

std::vector<const PdfWord *> PdfWords::find(int page, const QString &text) const
{
    std::vector<const PdfWord *> found;
    for (const PdfWord &word : m_words)
        if (word.page == page && word.text == text)
            found.push_back(&word);
    return found;
}
