#include "vendorscreen/Form1099Type.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QStringList>
#include <QWidget>

#include <algorithm>
#include <array>

namespace {
constexpr std::array<int, 5> codes{0, 1, 2, 3, 5};
} // namespace

QString Form1099Type::name(int code)
{
    switch (code) {
    case 0:
        return QStringLiteral("None");
    case 1:
        return QStringLiteral("1099-MISC");
    case 2:
        return QStringLiteral("1099-INT");
    case 3:
        return QStringLiteral("1099-DIV");
    case 5:
        return QStringLiteral("1099-NEC");
    default:
        return {};
    }
}

std::optional<int> Form1099Type::codeOf(const QString &text)
{
    static const QRegularExpression digits(QStringLiteral(R"(^\s*\d{1,9}\s*$)"));
    if (text.trimmed().isEmpty())
        return 0;
    if (!digits.match(text).hasMatch())
        return std::nullopt;
    const int code = text.trimmed().toInt();
    if (name(code).isEmpty())
        return std::nullopt;
    return code;
}

QString Form1099Type::allowedCodes()
{
    QStringList kinds;
    for (const int code : codes)
        kinds << QString::number(code) + QLatin1Char('=') + name(code);
    const QString last = kinds.takeLast();
    return kinds.join(QStringLiteral(", ")) + QStringLiteral(" or ") + last;
}

Form1099Type::Form1099Type(QLineEdit *field) :
    QObject(field), m_label(new QLabel(field->parentWidget()))
{
    m_label->setObjectName(QStringLiteral("lbl1099name"));
    m_label->setAccessibleName(tr("1099 form"));
    // A fixed size: a new name is painted in place without laying out the vendor frame again.
    m_label->setFixedSize(m_label->fontMetrics().horizontalAdvance(tr("not a 1099 type")),
                          std::max(m_label->sizeHint().height(), m_label->fontMetrics().height()));
    if (auto *grid = qobject_cast<QGridLayout *>(field->parentWidget()->layout())) {
        int row = 0, column = 0, rows = 0, columns = 0;
        grid->getItemPosition(grid->indexOf(field), &row, &column, &rows, &columns);
        grid->removeWidget(field);
        auto *beside = new QHBoxLayout;
        beside->setSpacing(6);
        beside->addWidget(field, 1);
        beside->addWidget(m_label);
        grid->addLayout(beside, row, column, rows, columns);
    }
    connect(field, &QLineEdit::textChanged, this, &Form1099Type::showName);
    showName(field->text());
}

void Form1099Type::showName(const QString &text)
{
    // An empty field is an empty screen, not a vendor of no kind.
    if (text.isEmpty()) {
        m_label->clear();
        return;
    }
    const std::optional<int> code = codeOf(text);
    m_label->setText(code ? name(*code) : tr("not a 1099 type"));
}
