#include "reports/FormLayout.h"

#include "common/DataFiles.h"
#include "common/Dialogs.h"
#include "reports/LayoutRecords.h"

#include <QFile>

#include <cmath>
#include <optional>
#include <vector>

namespace {

struct Record {
    QString text;
    float x = 0;
    float y = 0;
    float spacing = 0; // record 0 only
    double extra = 0;  // record 0 only
};

std::optional<double> number(const QString &value)
{
    bool ok = false;
    const double read = value.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(read))
        return std::nullopt;
    return read;
}

void malformed(Dialogs &dialogs, const QString &fileName, const QString &what)
{
    dialogs.message(QStringLiteral("The ") + fileName +
                        QStringLiteral(" layout file cannot be read: ") + what +
                        QStringLiteral(".\r\nNothing was changed; use the Adjust 1099 Forms "
                                       "printing option to make the file anew."),
                    Dialogs::Icon::Information, QStringLiteral("Oops..."));
}

} // namespace

int FormLayout::toTwips(float inches)
{
    return static_cast<int>(std::trunc(static_cast<double>(inches) * 1440.0));
}

FormLayout::Outcome FormLayout::load(const QString &fileName, Dialogs &dialogs)
{
    if (fileName.trimmed().isEmpty())
        return Outcome::Missing;
    QFile file(DataFiles::pathOf(fileName.trimmed()));
    if (!file.exists()) {
        dialogs.message(QStringLiteral("The ") + fileName.trimmed() +
                            QStringLiteral(" layout file is missing.\r\nUse the Adjust 1099 Forms "
                                           "printing option \r\nto create a new file from the "
                                           "SYStem file."),
                        Dialogs::Icon::Information, QStringLiteral("Oops..."));
        return Outcome::Missing;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        malformed(dialogs, fileName.trimmed(), file.errorString());
        return Outcome::Malformed;
    }
    // A layout is a few kilobytes; anything far larger is not one.
    const QByteArray bytes = file.read(1 << 20);
    return loadText(fileName.trimmed(), QString::fromLatin1(bytes), dialogs);
}

FormLayout::Outcome FormLayout::loadText(const QString &fileName, const QString &text,
                                         Dialogs &dialogs)
{
    LayoutRecords values(text);
    if (!values.error().isEmpty()) {
        malformed(dialogs, fileName, values.error());
        return Outcome::Malformed;
    }
    // Every record is read first, so that a bad one leaves the loaded layout as it was.
    std::vector<Record> records;
    bool tooLong = false;
    while (!values.atEnd()) {
        const int index = static_cast<int>(records.size());
        const int count = index == 0 ? 5 : 3;
        std::optional<QString> read[5];
        for (int i = 0; i < count; ++i)
            read[i] = values.next();
        for (int i = 1; i < count; ++i) {
            if (!read[i]) {
                malformed(dialogs, fileName,
                          QStringLiteral("it ends in the middle of element %1").arg(index));
                return Outcome::Malformed;
            }
            if (!number(*read[i])) {
                malformed(dialogs, fileName,
                          QStringLiteral("line %1 has \"%2\" where a number belongs")
                              .arg(values.line())
                              .arg(read[i]->left(40)));
                return Outcome::Malformed;
            }
        }
        Record record{*read[0], static_cast<float>(*number(*read[1])),
                      static_cast<float>(*number(*read[2]))};
        if (index == 0) {
            record.spacing = static_cast<float>(*number(*read[3]));
            record.extra = *number(*read[4]);
        }
        records.push_back(record);
        if (static_cast<int>(records.size()) > elementLimit) {
            tooLong = true;
            break;
        }
    }

    if (records.empty()) {
        malformed(dialogs, fileName, QStringLiteral("it holds no elements"));
        return Outcome::Malformed;
    }
    for (size_t i = 0; i < records.size(); ++i) {
        const Record &r = records[i];
        this->text[i] = r.text;
        xInches[i] = r.x;
        yInches[i] = r.y;
        x[i] = toTwips(r.x);
        y[i] = toTwips(r.y);
        if (i == 0) {
            formSpacing = r.spacing;
            extra = r.extra;
        }
    }
    if (tooLong) {
        dialogs.message(QStringLiteral("Limit of 100 elements exceeded.\nCall Velmora Data."),
                        Dialogs::Icon::Critical, QStringLiteral("Uh-oh..."));
        return Outcome::TooLong;
    }
    int counter = static_cast<int>(records.size());
    if (this->text[static_cast<size_t>(counter)].isEmpty())
        --counter;
    lastIndex = counter;
    formSpacingTwips = static_cast<int>(std::floor(static_cast<double>(formSpacing) * 1440.0));
    return Outcome::Loaded;
}
