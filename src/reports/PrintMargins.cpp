#include "reports/PrintMargins.h"

#include "common/DataFiles.h"
#include "common/Dialogs.h"
#include "common/Numbers.h"

#include <QFile>
#include <QRegularExpression>
#include <QSaveFile>
#include <QTextStream>

#include <cmath>

void PrintMargins::read(Dialogs &dialogs)
{
    m_top = 0;
    m_left = 0;
    QFile file(DataFiles::pathOf(fileName()));
    if (!file.exists() || !file.open(QIODevice::ReadOnly | QIODevice::Text))
        return;
    // Two whole numbers, one a line, blanks around them allowed; the second may be missing.
    static const QRegularExpression number(QStringLiteral(R"(^\s*[-+]?\d{1,9}\s*$)"));
    const QStringList lines =
        QString::fromLatin1(file.read(4096)).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    int values[2] = {0, 0};
    int read = 0;
    for (const QString &line : lines) {
        if (line.trimmed().isEmpty())
            continue;
        if (read == 2 || !number.match(line).hasMatch()) {
            dialogs.message(QStringLiteral("The printer margin file ") + fileName() +
                                QStringLiteral(" does not hold two margins in twips; reports "
                                               "are printed without margins. Set the margins "
                                               "again from the Reports menu."),
                            Dialogs::Icon::Information, QStringLiteral("Set Printer Margins"));
            return;
        }
        values[read++] = line.trimmed().toInt();
    }
    m_top = values[0];
    m_left = values[1];
}

bool PrintMargins::askInches(Dialogs &dialogs, const QString &side, int &twips)
{
    const QString prompt = QStringLiteral("Set the ") + side +
                           QStringLiteral(" margin by typing a number in inches.\n"
                                          "For example: 1=1 inch  or .5 = 1/2 inch \n\n"
                                          "Type a zero to disable the feature altogether\n\n"
                                          "When done, press ENTER or click OK.\n");
    const QString answer =
        dialogs.input(prompt, QStringLiteral("Adjust ") + side + QStringLiteral(" Margin"))
            .trimmed();
    if (answer.isEmpty())
        return false;
    const double inches = Numbers::leading(answer);
    if (inches < 0 || inches > 11)
        return false;
    twips = static_cast<int>(std::lround(inches * 1440));
    return true;
}

void PrintMargins::adjust(Dialogs &dialogs)
{
    dialogs.message(QStringLiteral("You may adjust both the TOP and LEFT printing margins for \n"
                                   "Velmora Office reports. Moving the margins affect all reports\n"
                                   "that use the Cryprint module. Click OK to begin."),
                    Dialogs::Icon::Information, QStringLiteral("Set Printer Margins"));
    if (!askInches(dialogs, QStringLiteral("TOP"), m_top))
        return;
    if (!askInches(dialogs, QStringLiteral("LEFT"), m_left))
        return;
    write(dialogs);
}

void PrintMargins::write(Dialogs &dialogs) const
{
    QSaveFile file(DataFiles::pathOf(fileName()));
    if (file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        QTextStream out(&file);
        out << m_top << '\n' << m_left << '\n';
        out.flush();
        if (file.commit())
            return;
    }
    dialogs.message(QStringLiteral("The printer margins could not be written to ") + fileName() +
                        QStringLiteral(": ") + file.errorString(),
                    Dialogs::Icon::Critical, QStringLiteral("Set Printer Margins"));
}
