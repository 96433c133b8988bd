#include "RecordedPages.h"

#include <cstring>

namespace {

enum Item : char { TextItem, LineItem, CountItem };

template <typename T> T take(const char *&at)
{
    T value;
    std::memcpy(&value, at, sizeof value);
    at += sizeof value;
    return value;
}

} // namespace

template <typename T> void RecordedPages::put(T value)
{
    m_pages.back().append(reinterpret_cast<const char *>(&value), sizeof value);
}

void RecordedPages::beginPage()
{
    if (m_open)
        endPage();
    m_pages.emplace_back();
    m_open = true;
}

void RecordedPages::endPage()
{
    if (!m_open)
        return;
    m_pages.back().squeeze();
    m_open = false;
}

void RecordedPages::text(TextStyle style, double x, double baseline, double room,
                         Qt::Alignment align, const QString &s)
{
    if (!m_open || s.isEmpty())
        return;
    put(TextItem);
    put(char(style));
    put(int(align));
    put(float(x));
    put(float(baseline));
    put(float(room));
    put(qint32(s.size()));
    m_pages.back().append(reinterpret_cast<const char *>(s.constData()),
                          s.size() * qsizetype(sizeof(QChar)));
}

void RecordedPages::line(QPointF from, QPointF to)
{
    if (!m_open)
        return;
    put(LineItem);
    put(float(from.x()));
    put(float(from.y()));
    put(float(to.x()));
    put(float(to.y()));
}

void RecordedPages::pageCount(double x, double baseline)
{
    if (!m_open)
        return;
    put(CountItem);
    put(float(x));
    put(float(baseline));
}

void RecordedPages::replay(int page, PagePainter &onto) const
{
    if (page < 1 || page > complete())
        return;
    const QByteArray &items = m_pages[size_t(page - 1)];
    const char *at = items.constData();
    const char *end = at + items.size();
    onto.beginPage();
    while (at < end) {
        const char item = take<char>(at);
        if (item == CountItem) {
            const float x = take<float>(at), baseline = take<float>(at);
            onto.text(TextStyle::Body, x, baseline, 100, Qt::AlignLeft,
                      m_allLaidOut ? QString::number(complete()) : QStringLiteral("..."));
            continue;
        }
        if (item == LineItem) {
            const float x1 = take<float>(at), y1 = take<float>(at);
            const float x2 = take<float>(at), y2 = take<float>(at);
            onto.line(QPointF(x1, y1), QPointF(x2, y2));
            continue;
        }
        const auto style = TextStyle(take<char>(at));
        const auto align = Qt::Alignment(take<int>(at));
        const float x = take<float>(at), baseline = take<float>(at), room = take<float>(at);
        const qint32 length = take<qint32>(at);
        QString s(length, Qt::Uninitialized);
        std::memcpy(s.data(), at, size_t(length) * sizeof(QChar));
        at += size_t(length) * sizeof(QChar);
        onto.text(style, x, baseline, room, align, s);
    }
    onto.endPage();
}
