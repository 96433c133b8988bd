#pragma once

#include "support/VendorScreen.h"

#include <QStringList>
#include <QVariant>

#include <gtest/gtest.h>

class QPushButton;
class QTableView;

// One invoice row; a null date is written as null.
struct InvoiceRow {
    int vendor = 12;
    QString number;
    QVariant date = 20260101;
    QString product = QStringLiteral("Paper");
    double amount = 10.0;
    int status = 1;
    int check = 0;
    QVariant checkDate = 0;
    double checkAmount = 0.0;
    int period = 1;
    QVariant due = 20260131;
};

// The vendor screen's fixture with vendors 12 and 13 on file, ending on the lookup panel; the
// vendor number is typed into the first vendor field directly.
class ListsFixture : public VendorScreen {
protected:
    void addVendors() override;

    VendorWindow &window() { return *module.window; }
    const VendorWindow::Controls &controls() { return module.window->controls(); }
    void setVendor(const QString &text);
    void oldToNew();
    void newToOld();

    void addInvoice(const InvoiceRow &row);
    // Sets split line `line` (1 to 10) of the invoices with that number.
    void setSplit(const QString &invoice, int line, double account, double amount);
    void addCheck(int number, int date, double amount, const QString &ref = QStringLiteral("R"),
                  int status = 1, int vendor = 12);

    void click(QPushButton *button);
    void clickHeader(QTableView *grid, int section);
    void doubleClickRow(QTableView *grid, int row);
    // The texts of one column, every row of the list read.
    QStringList column(QTableView *grid, int section);
    QString cell(QTableView *grid, int row, int section);
};
