#include "lists/ListsFixture.h"

#include <QAbstractItemModel>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTest>

namespace {
QString sqlValue(const QVariant &value)
{
    return value.isNull() ? QStringLiteral("null") : value.toString();
}
} // namespace

void ListsFixture::addVendors()
{
    folder.addVendor(12, QStringLiteral("Paper Co"));
    folder.addVendor(13, QStringLiteral("Hall Rentals"));
}

void ListsFixture::setVendor(const QString &text)
{
    controls().Text1[0]->setText(text);
}

void ListsFixture::oldToNew()
{
    controls().optsort[0]->setChecked(true);
}

void ListsFixture::newToOld()
{
    controls().optsort[1]->setChecked(true);
}

void ListsFixture::addInvoice(const InvoiceRow &row)
{
    folder.exec(QStringLiteral("ap.mdb"),
                QStringLiteral("insert into invoices (vendnumber, invnumber, invdate, invproduct, "
                               "invamount, invstatus, invchecknumber, invcheckdate, "
                               "invcheckamount, invglperiod, invduedate) values "
                               "(%1, '%2', %3, '%4', %5, %6, %7, %8, %9, %10, %11)")
                    .arg(row.vendor)
                    .arg(row.number, sqlValue(row.date), row.product)
                    .arg(row.amount)
                    .arg(row.status)
                    .arg(row.check)
                    .arg(sqlValue(row.checkDate))
                    .arg(row.checkAmount)
                    .arg(row.period)
                    .arg(sqlValue(row.due)));
}

void ListsFixture::setSplit(const QString &invoice, int line, double account, double amount)
{
    folder.exec(QStringLiteral("ap.mdb"),
                QStringLiteral("update invoices set splitgl%1 = %2, splitamt%1 = %3 "
                               "where invnumber = '%4'")
                    .arg(line)
                    .arg(account)
                    .arg(amount)
                    .arg(invoice));
}

void ListsFixture::addCheck(int number, int date, double amount, const QString &ref, int status,
                            int vendor)
{
    folder.exec(QStringLiteral("ap.mdb"),
                QStringLiteral("insert into checks (chkpayeenum, chkpayeename, chknum, chkdate, "
                               "chkamount, chkref, chkstatus) values (%1, 'Payee %1', %2, %3, "
                               "%4, '%5', %6)")
                    .arg(vendor)
                    .arg(number)
                    .arg(date)
                    .arg(amount)
                    .arg(ref)
                    .arg(status));
}

void ListsFixture::click(QPushButton *button)
{
    QTest::mouseClick(button, Qt::LeftButton);
}

void ListsFixture::clickHeader(QTableView *grid, int section)
{
    QHeaderView *header = grid->horizontalHeader();
    const int x = header->sectionViewportPosition(section) + header->sectionSize(section) / 2;
    ASSERT_GE(x, 0) << "section " << section << " is not in view";
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, QPoint(x, header->height() / 2));
}

void ListsFixture::doubleClickRow(QTableView *grid, int row)
{
    const QRect rect = grid->visualRect(grid->model()->index(row, 0));
    ASSERT_TRUE(rect.isValid()) << "row " << row << " is not in view";
    // As the window system delivers it: the second press of a double click comes as the
    // double-click event.
    QWidget *viewport = grid->viewport();
    QTest::mousePress(viewport, Qt::LeftButton, {}, rect.center());
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, rect.center());
    QTest::mouseDClick(viewport, Qt::LeftButton, {}, rect.center());
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, rect.center());
}

QStringList ListsFixture::column(QTableView *grid, int section)
{
    QAbstractItemModel *model = grid->model();
    while (model->canFetchMore({}))
        model->fetchMore({});
    QStringList texts;
    for (int row = 0; row < model->rowCount(); ++row)
        texts << model->index(row, section).data().toString();
    return texts;
}

QString ListsFixture::cell(QTableView *grid, int row, int section)
{
    return grid->model()->index(row, section).data().toString();
}
