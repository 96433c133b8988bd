#pragma once

#include <QString>

class FormPage;
class LayoutDocument;

// The layout files of a company's data folder and the system copies they are made from, and the
// test page: what the window and the command line both do with them.
class LayoutFiles {
public:
    // The folder of the installed system copies: the setting APMASTER_SYSTEM_LAYOUTS when given,
    // then share/apmaster/layouts beside the installed program, then the build's source tree.
    static QString systemFolder();

    LayoutFiles(const QString &dataFolder, const QString &systemFolder);

    QString path(const QString &fileName) const;
    QString systemPath(const QString &fileName) const;
    bool exists(const QString &fileName) const;

    // Reads the company's file (false with why, a sentence for the user, when it cannot be used).
    bool read(const QString &fileName, LayoutDocument &document, QString &why) const;
    // Reads the system copy of that file.
    bool readSystem(const QString &fileName, LayoutDocument &document, QString &why) const;
    // Writes the file through a work file beside it that takes its name when complete, so that a
    // save that fails leaves the file as it was.
    bool save(const QString &fileName, const LayoutDocument &document, QString &why) const;
    // Makes a missing file from its system copy.
    bool createFromSystem(const QString &fileName, QString &why) const;

    // Prints the page's sample forms on the printer of the printer set-up, or into the PDF file
    // it or the setting APMASTER_PRINT_PDF names; `done` says where they went.
    static bool printTestPage(const FormPage &page, const QString &formName, QString &done,
                              QString &why);

private:
    static bool readPath(const QString &path, LayoutDocument &document, QString &why);

    QString m_data;
    QString m_system;
};
