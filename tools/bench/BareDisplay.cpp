#include "BareDisplay.h"

#include "data/Databases.h"
#include "data/DbError.h"
#include "vendorscreen/VendorFields.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSqlError>
#include <QSqlQuery>
#include <QWidget>

namespace {
const QString apFile = QStringLiteral("ap.mdb");

// The column of a box; the two computed totals stand in the columns they are stamped into.
QString columnOf(int box)
{
    return QString::fromLatin1(VendorFields::info(box).column);
}

bool isMoney(int box)
{
    return box >= 13 && box <= 15;
}

QString updateStatement()
{
    QString sql = QStringLiteral("update vendors set ");
    for (int i = 1; i < 24; ++i)
        sql += columnOf(i) + (i < 23 ? QStringLiteral(" = ?, ") : QStringLiteral(" = ?"));
    return sql + QStringLiteral(" where vendnumber = ?");
}

void run(QSqlQuery &query)
{
    if (!query.exec())
        throw Databases::errorFrom(query.lastError(), query.lastQuery());
}
} // namespace

BareDisplay::BareDisplay(const QWidget &like, const std::array<QString, 24> &captions) :
    m_dbs(std::make_unique<Databases>()), m_window(std::make_unique<QWidget>())
{
    m_window->setWindowTitle(QStringLiteral("bare display"));
    m_window->setFont(like.font());
    auto *grid = new QGridLayout(m_window.get());
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(3);
    for (int i = 0; i < 24; ++i) {
        auto *caption = new QLabel(captions[static_cast<size_t>(i)], m_window.get());
        m_boxes[static_cast<size_t>(i)] = new QLineEdit(m_window.get());
        m_boxes[static_cast<size_t>(i)]->setAutoFillBackground(true);
        grid->addWidget(caption, i % 8, (i / 8) * 2);
        grid->addWidget(m_boxes[static_cast<size_t>(i)], i % 8, (i / 8) * 2 + 1);
    }
    m_window->resize(like.size());
    m_window->show();
}

BareDisplay::~BareDisplay() = default;

void BareDisplay::show(const QString &number)
{
    QSqlQuery &read =
        m_dbs->prepared(apFile, QStringLiteral("select * from vendors where vendnumber = ?"));
    read.bindValue(0, number.toLongLong());
    run(read);
    if (read.next()) {
        for (int i = 0; i < 24; ++i) {
            const QVariant value = read.value(columnOf(i));
            m_boxes[static_cast<size_t>(i)]->setText(
                isMoney(i) ? QString::number(value.toDouble(), 'f', 2) : value.toString());
        }
    }
    read.finish();
    m_window->repaint();
}

void BareDisplay::clear()
{
    for (QLineEdit *box : m_boxes)
        box->setText(QString());
}

void BareDisplay::setText(int box, const QString &text)
{
    m_boxes[static_cast<size_t>(box)]->setText(text);
}

void BareDisplay::save(const QString &number)
{
    {
        WriteTransaction tx(*m_dbs, apFile);
        QSqlQuery &write = m_dbs->prepared(apFile, updateStatement());
        for (int i = 1; i < 24; ++i) {
            const QString text = m_boxes[static_cast<size_t>(i)]->text();
            write.bindValue(i - 1, isMoney(i) || i == 16 ? QVariant(text.toDouble())
                                   : i == 11 || i == 12  ? QVariant(text.toLongLong())
                                                         : QVariant(text));
        }
        write.bindValue(23, number.toLongLong());
        run(write);
        tx.commit();
    }
    for (QLineEdit *box : m_boxes)
        box->setText(QString());
    m_window->repaint();
}
