// apmaster-make-manual: makes the user manual, manual-ACCTPAY.pdf, from the user documentation
// when the project is built.
//
//   apmaster-make-manual DOCS_FOLDER OUTPUT.pdf VERSION
#include "ManualBook.h"

#include <QGuiApplication>
#include <QTextDocument>

#include <cstdio>

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    if (argc != 4) {
        std::fputs("Usage: apmaster-make-manual DOCS_FOLDER OUTPUT.pdf VERSION\n", stderr);
        return 2;
    }
    const QString docs = QString::fromLocal8Bit(argv[1]);
    const QString output = QString::fromLocal8Bit(argv[2]);
    QTextDocument document;
    QString problem;
    if (!ManualBook(docs).build(document, QString::fromLocal8Bit(argv[3]), ManualBook::textWidth(),
                                &problem) ||
        !ManualBook::writePdf(document, output, &problem)) {
        std::fprintf(stderr, "apmaster-make-manual: %s\n", qPrintable(problem));
        return 1;
    }
    return 0;
}
