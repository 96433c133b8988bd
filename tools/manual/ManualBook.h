#pragma once

#include <QString>
#include <QStringList>

class QTextDocument;

// The manual as one document: the chapters' Markdown one after another, each chapter on a new
// page, the pictures read from the documentation folder and fitted to the page's width, links
// to other documentation files kept as their text.
class ManualBook {
public:
    explicit ManualBook(const QString &docsFolder) : m_docs(docsFolder) {}

    // The chapters named in manual/chapters.txt (one path under docs/ a line; # starts a
    // comment). Empty with a problem when the list or a chapter cannot be read.
    QStringList chapterFiles(QString *problem) const;
    // Fills the document; false with a problem when a chapter or a picture is missing.
    bool build(QTextDocument &document, const QString &version, qreal textWidth,
               QString *problem) const;
    // The width of the text on the page, in the document's units.
    static qreal textWidth();
    // Writes the document as a PDF on Letter paper.
    static bool writePdf(QTextDocument &document, const QString &path, QString *problem);

private:
    static constexpr qreal margin = 18; // points, inside the document's own margin
    QString m_docs;
};
