#include "LayoutDocument.h"

#include "common/Dialogs.h"
#include "common/Numbers.h"
#include "reports/FormLayout.h"
#include "reports/LayoutRecords.h"

#include <cmath>
#include <optional>

namespace {

// The module's reader shows its messages; the adjuster has said what it found already.
class SilentDialogs : public Dialogs {
protected:
    void showMessage(const QString &, Icon, const QString &) override {}
    int askYesNo(const QString &, const QString &, int answer) override { return answer; }
    int askYesNoCancel(const QString &, const QString &, int answer) override { return answer; }
    QString askInput(const QString &, const QString &, const QString &) override { return {}; }
};

// Inches no layout needs; past them a position would not even fit the twips the runs count in.
constexpr double farthest = 1000;

// A number as the module reads it, within the inches a layout can use.
std::optional<double> number(const QString &value)
{
    bool ok = false;
    const double read = value.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(read) || std::abs(read) > farthest)
        return std::nullopt;
    return read;
}

QString quoted(const QString &text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

} // namespace

QStringList LayoutDocument::fileNames()
{
    return {QStringLiteral("1099misc.lof"), QStringLiteral("1099int.lof"),
            QStringLiteral("1099div.lof"), QStringLiteral("1099nec.lof")};
}

int LayoutDocument::kindOf(const QString &fileName)
{
    const int kinds[] = {1, 2, 3, 5};
    const int index = static_cast<int>(fileNames().indexOf(fileName.toLower()));
    return index < 0 ? 0 : kinds[index];
}

QString LayoutDocument::formName(const QString &fileName)
{
    return QStringLiteral("1099-") + fileName.mid(4).section(QLatin1Char('.'), 0, 0).toUpper();
}

bool LayoutDocument::read(const QByteArray &bytes, QString &why)
{
    LayoutRecords values(QString::fromLatin1(bytes));
    if (!values.error().isEmpty()) {
        why = values.error();
        return false;
    }
    std::vector<Element> elements;
    Number spacing;
    Number extra;
    while (!values.atEnd()) {
        const int index = static_cast<int>(elements.size());
        if (index >= FormLayout::elementLimit) {
            why = QStringLiteral("it holds more than the %1 elements the 1099 printing reads")
                      .arg(FormLayout::elementLimit);
            return false;
        }
        const int count = index == 0 ? 5 : 3;
        std::optional<QString> read[5];
        for (int i = 0; i < count; ++i)
            read[i] = values.next();
        Number numbers[4];
        for (int i = 1; i < count; ++i) {
            if (!read[i]) {
                why = QStringLiteral("it ends in the middle of element %1").arg(index);
                return false;
            }
            const std::optional<double> value = number(*read[i]);
            if (!value) {
                why = QStringLiteral("line %1 has \"%2\" where a number belongs")
                          .arg(values.line())
                          .arg(read[i]->left(40));
                return false;
            }
            numbers[i - 1] = {read[i]->trimmed(), *value};
        }
        elements.push_back({*read[0], numbers[0], numbers[1]});
        if (index == 0) {
            spacing = numbers[2];
            extra = numbers[3];
        }
    }
    if (elements.empty()) {
        why = QStringLiteral("it holds no elements");
        return false;
    }
    m_read = bytes;
    m_lineEnd = bytes.contains("\r\n") ? QStringLiteral("\r\n") : QStringLiteral("\n");
    m_elements = std::move(elements);
    m_spacing = spacing;
    m_extra = extra;
    m_changed = false;
    return true;
}

QByteArray LayoutDocument::bytes() const
{
    if (!m_changed)
        return m_read;
    const QChar comma = QLatin1Char(',');
    QString out;
    for (size_t i = 0; i < m_elements.size(); ++i) {
        const Element &e = m_elements[i];
        out += quoted(e.text) + comma + e.x.written + comma + e.y.written;
        if (i == 0)
            out += comma + m_spacing.written + comma + m_extra.written;
        out += m_lineEnd;
    }
    return out.toLatin1();
}

void LayoutDocument::set(Number &number, double inches)
{
    if (number.value == inches)
        return;
    number = {written(inches), inches};
    m_changed = true;
}

void LayoutDocument::setX(int index, double inches)
{
    set(m_elements.at(static_cast<size_t>(index)).x, inches);
}

void LayoutDocument::setY(int index, double inches)
{
    set(m_elements.at(static_cast<size_t>(index)).y, inches);
}

void LayoutDocument::setSpacing(double inches)
{
    set(m_spacing, inches);
}

void LayoutDocument::setText(int index, const QString &text)
{
    QString &current = m_elements.at(static_cast<size_t>(index)).text;
    if (current == text)
        return;
    current = text;
    m_changed = true;
}

QString LayoutDocument::textProblem(const QString &text)
{
    if (text.contains(QLatin1Char('"')))
        return QStringLiteral("a layout text cannot hold a double quote (\"); use two apostrophes "
                              "('') instead");
    if (text.contains(QLatin1Char('\n')) || text.contains(QLatin1Char('\r')))
        return QStringLiteral("a layout text is one line");
    for (const QChar c : text)
        if (c.unicode() > 0xff || c.unicode() < 0x20)
            return QStringLiteral("the character \"%1\" cannot be printed on the forms").arg(c);
    return {};
}

bool LayoutDocument::parseInches(const QString &typed, double &inches)
{
    // Read as the module reads the file, so that what is accepted here prints as typed.
    const std::optional<double> value = number(typed);
    if (!value)
        return false;
    inches = *value;
    return true;
}

QString LayoutDocument::written(double inches)
{
    return Numbers::plain(inches);
}

void LayoutDocument::loadInto(FormLayout &layout) const
{
    SilentDialogs quiet;
    layout.loadText(QStringLiteral("layout"), QString::fromLatin1(bytes()), quiet);
}
