#include "FormPage.h"

#include "LayoutDocument.h"
#include "reports/FormLayout.h"

#include <QPageSize>
#include <QStringList>

#include <algorithm>

namespace {

// The sample payer and vendor of the drawn page and the test page.
void fillSample(FormLayout &layout)
{
    auto &text = layout.text;
    text[101] = QStringLiteral("SAMPLE PAYER COMPANY");
    text[102] = QStringLiteral("100 MAIN STREET");
    text[103] = QStringLiteral("SUITE 200");
    text[104] = QStringLiteral("SPRINGFIELD");
    text[105] = QStringLiteral("IL");
    text[106] = QStringLiteral("62701");
    text[107] = QStringLiteral("37-1234567");
    text[108] = QStringLiteral("SPRINGFIELD   IL   62701");
    text[121] = QStringLiteral("123456789");
    text[122] = QStringLiteral("SAMPLE VENDOR INC");
    text[123] = QStringLiteral("45 OAK AVENUE");
    text[124] = QStringLiteral("PEORIA   IL   61602");
    text[125] = QStringLiteral("UNIT 3");
    text[126] = QStringLiteral("1001");
}

constexpr double sampleAmount = 1234.56;

const char *const formWords[] = {"first", "second", "third"};

QString inches(int twips)
{
    return QString::number(twips / 1440.0, 'f', 2);
}

} // namespace

QSizeF FormPage::paperInches(const QString &paper)
{
    QPageSize::PageSizeId id = QPageSize::Letter;
    if (paper == QLatin1String("Legal"))
        id = QPageSize::Legal;
    else if (paper == QLatin1String("A4"))
        id = QPageSize::A4;
    return QPageSize(id).size(QPageSize::Inch);
}

FormPage::FormPage(const LayoutDocument &document, int kind, QSizeF paperInches) :
    m_document(document), m_kind(kind), m_paper(paperInches)
{
    FormLayout layout;
    document.loadInto(layout);
    fillSample(layout);
    for (int form = 0; form < formsPerPage(); ++form) {
        const int offset = form * layout.formSpacingTwips;
        std::vector<FormPlacement::Item> items = FormPlacement::items(
            m_kind, layout, offset, form + 1, m_kind == 1 ? 1 : m_kind, sampleAmount);
        if (m_kind == 1) {
            const auto misc4 =
                FormPlacement::items(m_kind, layout, offset, form + 1, 4, sampleAmount);
            items.push_back(misc4.back());
        }
        for (FormPlacement::Item &item : items) {
            m_items.push_back(std::move(item));
            m_formOf.push_back(form);
        }
    }
}

std::vector<FormPage::Outside> FormPage::outside() const
{
    FormLayout layout;
    m_document.loadInto(layout);
    const int width = static_cast<int>(m_paper.width() * 1440);
    const int height = static_cast<int>(m_paper.height() * 1440);
    const QString across = QStringLiteral("prints %1 inches across on the %2 form, ");
    const QString down = QStringLiteral("prints %1 inches down on the %2 form, ");
    std::vector<Outside> found;
    auto check = [&](int element, int x, int y, int form) {
        for (const Outside &o : found)
            if (o.element == element)
                return;
        const QString on = QString::fromLatin1(formWords[std::min(form, 2)]);
        QString why;
        if (x < 0)
            why = across.arg(inches(x), on) + QStringLiteral("left of the paper's edge");
        else if (x >= width)
            why = across.arg(inches(x), on) +
                  QStringLiteral("beyond the %1-inch width of the paper").arg(m_paper.width());
        else if (y < 0)
            why = down.arg(inches(y), on) + QStringLiteral("above the paper's edge");
        else if (y >= height)
            why = down.arg(inches(y), on) +
                  QStringLiteral("below the %1-inch length of the paper").arg(m_paper.height());
        if (!why.isEmpty())
            found.push_back({element, why});
    };
    check(0, layout.x[0], layout.y[0], 0);
    for (int form = 0; form < formsPerPage(); ++form) {
        const int offset = form * layout.formSpacingTwips;
        for (int element = 1; element < m_document.count(); ++element)
            check(element, layout.x[0] + layout.x[element],
                  layout.y[0] + layout.y[element] + offset, form);
    }
    for (size_t i = 0; i < m_items.size(); ++i)
        check(m_items[i].element, m_items[i].xTwips, m_items[i].yTwips, m_formOf[i]);
    std::sort(found.begin(), found.end(),
              [](const Outside &a, const Outside &b) { return a.element < b.element; });
    return found;
}

std::vector<FormPage::Outside> FormPage::newlyOutside(const std::vector<Outside> &before) const
{
    std::vector<Outside> added;
    for (const Outside &now : outside()) {
        const bool known = std::any_of(before.begin(), before.end(),
                                       [&](const Outside &o) { return o.element == now.element; });
        if (!known)
            added.push_back(now);
    }
    return added;
}

QString FormPage::describe(const LayoutDocument &document, const Outside &outside)
{
    const QString text = outside.element < document.count()
                             ? document.element(outside.element).text.trimmed()
                             : QString();
    QString name = outside.element == 0 ? QStringLiteral("The origin (element 0)")
                                        : QStringLiteral("Element %1").arg(outside.element);
    if (outside.element > 0 && !text.isEmpty())
        name += QStringLiteral(" (%1)").arg(text);
    return name + QLatin1Char(' ') + outside.why;
}

QString FormPage::changeProblem(const LayoutDocument &before, const LayoutDocument &after, int kind,
                                QSizeF paperInches)
{
    const std::vector<Outside> was = FormPage(before, kind, paperInches).outside();
    const std::vector<Outside> added = FormPage(after, kind, paperInches).newlyOutside(was);
    return added.empty() ? QString() : describe(after, added.front());
}

QString FormPage::problem() const
{
    const std::vector<Outside> found = outside();
    if (found.empty())
        return {};
    QStringList lines;
    for (const Outside &o : found)
        lines << describe(m_document, o) + QLatin1Char('.');
    return lines.join(QLatin1Char('\n'));
}
