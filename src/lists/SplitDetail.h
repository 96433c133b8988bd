#pragma once

#include <QString>

class QSqlRecord;
class VendorWindow;

// The split distribution of the invoice in the selected row: account numbers, names, amounts.
class SplitDetail {
public:
    explicit SplitDetail(VendorWindow &window) : m_window(window) {}

    // The split button: opens the panel for the selected row, or closes it.
    void toggle();
    // A double click on a row of the invoice grid.
    void rowActivated(int row);

private:
    void run();
    void place();
    // Finds the selected row's invoice in the list cursor, from its first record.
    bool findSelected();
    QString selectedCriterion() const;
    void showLine(const QSqlRecord &invoice, int line);

    VendorWindow &m_window;
};
