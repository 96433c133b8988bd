#include "RecordedPages.h"

#include <algorithm>
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
    m_recording->append(reinterpret_cast<const char *>(&value), sizeof value);
}

void RecordedPages::beginPage()
{
    if (m_open)
        endPage();
    ++m_current;
    m_open = true;
    if (m_begun)
        m_begun(m_current); // may move the window
    m_recording = nullptr;
    if (m_current >= m_first && m_current <= m_last) {
        QByteArray &page = m_kept[m_current];
        page.clear();
        m_recording = &page;
    }
}

void RecordedPages::endPage()
{
    if (!m_open)
        return;
    if (m_recording)
        m_recording->squeeze();
    m_recording = nullptr;
    m_open = false;
    m_laidOut = std::max(m_laidOut, m_current);
}

bool RecordedPages::has(int page) const
{
    return m_kept.count(page) > 0 && !(m_open && page == m_current);
}

void RecordedPages::keep(int first, int last)
{
    m_first = first;
    m_last = last;
    m_kept.erase(m_kept.begin(), m_kept.lower_bound(first));
    m_kept.erase(m_kept.upper_bound(last), m_kept.end());
    if (m_open && (m_current < first || m_current > last))
        m_recording = nullptr;
}

void RecordedPages::continueAfter(int page)
{
    m_current = page;
    m_open = page > 0;
    m_recording = nullptr;
}

void RecordedPages::text(TextStyle style, double x, double baseline, double room,
                         Qt::Alignment align, const QString &s)
{
    if (!m_recording || s.isEmpty())
        return;
    put(TextItem);
    put(char(style));
    put(int(align));
    put(float(x));
    put(float(baseline));
    put(float(room));
    put(qint32(s.size()));
    m_recording->append(reinterpret_cast<const char *>(s.constData()),
                        s.size() * qsizetype(sizeof(QChar)));
}

void RecordedPages::line(QPointF from, QPointF to)
{
    if (!m_recording)
        return;
    put(LineItem);
    put(float(from.x()));
    put(float(from.y()));
    put(float(to.x()));
    put(float(to.y()));
}

void RecordedPages::pageCount(double x, double baseline)
{
    if (!m_recording)
        return;
    put(CountItem);
    put(float(x));
    put(float(baseline));
}

void RecordedPages::replay(int page, PagePainter &onto) const
{
    if (!has(page))
        return;
    const QByteArray &items = m_kept.at(page);
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
