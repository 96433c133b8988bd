// apmaster-1099: the year-end 1099 work of the module for scripts, run in the data folder on
// whichever engine the folder uses (SQLite files, or the server its database.ini names).
//
// Exit codes:
//   0  done; for check: no problems found
//   1  check: problems found (they are listed)
//   2  the command line is wrong (the usage is printed)
//   3  the work could not be done: the data cannot be read, apmaster-1099.ini is wrong, the
//      output cannot be written, or (iris) the payer or a vendor's tax id cannot be filed

#include "common/NumberedError.h"
#include "common/OutputFile.h"
#include "common/ProgramError.h"
#include "data/Databases.h"
#include "yearend/IrisExport.h"
#include "yearend/PayerRecord.h"
#include "yearend/RecipientCopies.h"
#include "yearend/TaxForms.h"
#include "yearend/YearEndCheck.h"
#include "yearend/YearEndReport.h"
#include "yearend/YearEndSettings.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QGuiApplication>

#include <cstdio>
#include <memory>
#include <optional>

namespace {

enum Exit { Done = 0, ProblemsFound = 1, Usage = 2, Failed = 3 };

struct Request {
    QString command;
    TaxForm form = TaxForm::Nonemployee;
    int year = 0;
    QString out;
};

int usage(const QCommandLineParser &parser, const QString &why)
{
    std::fprintf(stderr, "apmaster-1099: %s\n\n%s", qPrintable(why), qPrintable(parser.helpText()));
    return Usage;
}

// Writes text to the file (whole or not at all) or, without a file, to standard output. A file
// named on the command line never replaces a database of the company, a folder or a device.
void writeText(const QString &path, const QString &text)
{
    if (path.isEmpty()) {
        std::fputs(text.toUtf8().constData(), stdout);
        return;
    }
    OutputFile file(path, OutputFile::Kind::Text);
    QString error;
    if (!file.open(error) || file.device().write(text.toUtf8()) < 0 || !file.commit(error))
        throw ProgramError(error.isEmpty() ? path + QStringLiteral(" cannot be written.") : error,
                           Failed);
}

// Stops with `stopped` when a file may not be written, after each reason on standard error.
void mayWriteAll(const QStringList &paths, const QString &stopped)
{
    bool may = true;
    for (const QString &path : paths)
        if (const QString why = OutputFile::refusal(path, OutputFile::Kind::Text); !why.isEmpty()) {
            std::fprintf(stderr, "apmaster-1099: %s\n", qPrintable(why));
            may = false;
        }
    if (!may)
        throw ProgramError(stopped, Failed);
}

// Stops with `stopped` followed by the reasons, one a line, when there are any.
void refuseFor(const QStringList &refusals, const QString &stopped)
{
    if (!refusals.isEmpty())
        throw ProgramError(stopped + QLatin1Char('\n') + refusals.join(QLatin1Char('\n')), Failed);
}

int check(const Request &request, const YearEndSettings &settings, Databases &databases)
{
    const YearEndCheck::Result result =
        YearEndCheck(databases).run(request.form, request.year, settings.indexed);
    const QString text = YearEndReport::text(result, PayerRecord::read(databases));
    writeText(request.out, text);
    return result.problems.empty() ? Done : ProblemsFound;
}

// The IRIS upload files; nothing is written when the payer or a vendor cannot be filed.
int iris(const Request &request, const YearEndSettings &settings, Databases &databases)
{
    const YearEndCheck::Result result =
        YearEndCheck(databases).run(request.form, request.year, settings.indexed);
    const PayerRecord payer = PayerRecord::read(databases);
    const QString notWritten = QStringLiteral("no IRIS file was written.");
    refuseFor(IrisExport::refusals(result, payer), notWritten);
    const QStringList texts = IrisExport::files(result, payer);
    if (texts.isEmpty()) {
        std::printf("No vendor gets the %s for %d; no IRIS file was written.\n",
                    qPrintable(TaxForms::title(request.form)), request.year);
        return Done;
    }
    const QString path =
        request.out.isEmpty() ? IrisExport::defaultPath(request.form, request.year) : request.out;
    const QStringList names = IrisExport::fileNames(path, static_cast<int>(texts.size()));
    mayWriteAll(names, notWritten);
    for (int n = 0; n < texts.size(); ++n)
        writeText(names[n], texts[n]);
    std::printf("%zu %s returns for %d written to %s.\n", result.recipients.size(),
                qPrintable(TaxForms::title(request.form)), request.year,
                qPrintable(names.join(QStringLiteral(", "))));
    return Done;
}

// Copy B on plain paper, one vendor a page.
int copyB(const Request &request, const YearEndSettings &settings, Databases &databases)
{
    const YearEndCheck::Result result =
        YearEndCheck(databases).run(request.form, request.year, settings.indexed);
    const PayerRecord payer = PayerRecord::read(databases);
    refuseFor(IrisExport::taxIdRefusals(result, payer), QStringLiteral("no Copy B was written."));
    const QString path = request.out.isEmpty() ? QStringLiteral("copyb-%1-%2.pdf")
                                                     .arg(TaxForms::title(request.form).toLower())
                                                     .arg(request.year)
                                               : request.out;
    QString why;
    if (!RecipientCopies::write(result, payer, path, why))
        throw ProgramError(why, Failed);
    std::printf("%zu %s Copy B pages for %d written to %s.\n", result.recipients.size(),
                qPrintable(TaxForms::title(request.form)), request.year, qPrintable(path));
    return Done;
}

} // namespace

int main(int argc, char *argv[])
{
    // Copy B's text needs the fonts of a GUI application, but never a screen; the other
    // commands need neither.
    bool drawing = false;
    for (int n = 1; n < argc; ++n)
        drawing = drawing || qstrcmp(argv[n], "copyb") == 0;
    if (drawing && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    std::unique_ptr<QCoreApplication> app = drawing
                                                ? std::make_unique<QGuiApplication>(argc, argv)
                                                : std::make_unique<QCoreApplication>(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("apmaster-1099"));
    QCoreApplication::setApplicationVersion(QStringLiteral(APMASTER_VERSION));
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "The 1099 year end of A/P Master, run in the company's data folder.\n\n"
        "  check   lists the vendors that get the form for the tax year, with their amounts,\n"
        "          and every problem in their records (printable text)\n"
        "  iris    writes the CSV upload for the IRS's IRIS Taxpayer Portal (NEC and MISC), in\n"
        "          files of at most 100 returns (PATH, or PATH-1, PATH-2 ... when split;\n"
        "          default iris-1099-nec-YYYY.csv)\n"
        "  copyb   writes Copy B for the recipients on plain paper as a PDF, one vendor a page,\n"
        "          the recipient's tax id shown by its last four digits (NEC, MISC, INT\n"
        "          and DIV; default copyb-1099-nec-YYYY.pdf)\n\n"
        "Exit codes: 0 done (check: no problems), 1 check found problems, 2 wrong command\n"
        "line, 3 the data or settings cannot be read, the output cannot be written, or "
        "(iris,\ncopyb) "
        "the company's federal id or a vendor's tax id cannot be filed; nothing is written then."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("command"), QStringLiteral("check, iris or copyb"));
    const QCommandLineOption formOption(QStringLiteral("form"),
                                        QStringLiteral("The form: NEC, MISC, INT or DIV."),
                                        QStringLiteral("FORM"));
    const QCommandLineOption yearOption(QStringLiteral("year"),
                                        QStringLiteral("The tax year, such as 2026."),
                                        QStringLiteral("YYYY"));
    const QCommandLineOption outOption(
        QStringLiteral("out"), QStringLiteral("Write to this file instead of standard output."),
        QStringLiteral("PATH"));
    parser.addOption(formOption);
    parser.addOption(yearOption);
    parser.addOption(outOption);
    if (!parser.parse(QCoreApplication::arguments()))
        return usage(parser, parser.errorText());
    if (parser.isSet(QStringLiteral("help"))) {
        std::fputs(qPrintable(parser.helpText()), stdout);
        return Done;
    }
    if (parser.isSet(QStringLiteral("version"))) {
        std::printf("apmaster-1099 %s\n", APMASTER_VERSION);
        return Done;
    }

    Request request;
    const QStringList words = parser.positionalArguments();
    if (words.size() != 1)
        return usage(parser, QStringLiteral("name one command: check, iris or copyb"));
    request.command = words[0];
    if (request.command != QLatin1String("check") && request.command != QLatin1String("iris") &&
        request.command != QLatin1String("copyb"))
        return usage(parser, QStringLiteral("unknown command \"%1\"").arg(request.command));
    const std::optional<TaxForm> form = TaxForms::fromName(parser.value(formOption));
    if (!form)
        return usage(parser, QStringLiteral("--form is NEC, MISC, INT or DIV"));
    request.form = *form;
    bool ok = false;
    request.year = parser.value(yearOption).toInt(&ok);
    if (!ok || request.year < 1990 || request.year > 9999)
        return usage(parser, QStringLiteral("--year is a tax year such as 2026"));
    request.out = parser.value(outOption);

    try {
        const YearEndSettings settings = YearEndSettings::ofDataFolder();
        if (!settings.error.isEmpty())
            throw ProgramError(settings.error, Failed);
        Databases databases;
        int code = Done;
        if (request.command == QLatin1String("iris"))
            code = iris(request, settings, databases);
        else if (request.command == QLatin1String("copyb"))
            code = copyB(request, settings, databases);
        else
            code = check(request, settings, databases);
        databases.closeAll();
        return code;
    } catch (const ProgramError &error) {
        // Why nothing (more) was written, and the code that says so.
        std::fprintf(stderr, "apmaster-1099: %s\n", error.text().toUtf8().constData());
        return error.exitCode();
    } catch (const NumberedError &error) {
        std::fprintf(stderr, "apmaster-1099: the data cannot be read: %s\n",
                     qPrintable(error.text()));
        return Failed;
    }
}
