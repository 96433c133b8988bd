#pragma once

#include "lists/ListWidgets.h"

#include <QString>

#include <functional>

class CurrentVendor;
class Dialogs;
class QGroupBox;
class QListWidget;
class QSqlRecord;
class RecordSource;

// The split distribution of the invoice in the selected row: account numbers, names, amounts.
class SplitDetail {
public:
    // The panel and its three lists, filled in step with one another.
    struct Panel {
        QGroupBox *frasplit = nullptr;
        QListWidget *List1 = nullptr; // account numbers
        QListWidget *List3 = nullptr; // account names
        QListWidget *List2 = nullptr; // amounts
    };

    // listCursor: the recordset of the invoice list shown, which the panel searches for the
    // selected row's invoice; accounts: the read-only snapshot of the chart of accounts (number
    // and name).
    SplitDetail(const ListWidgets &widgets, const CurrentVendor &vendor, const Panel &panel,
                std::function<RecordSource &()> listCursor, RecordSource &accounts,
                Dialogs &dialogs) :
        m_w(widgets),
        m_current(vendor), m_panel(panel), m_listCursor(std::move(listCursor)),
        m_accounts(accounts), m_dialogs(dialogs)
    {
    }

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

    ListWidgets m_w;
    const CurrentVendor &m_current;
    Panel m_panel;
    std::function<RecordSource &()> m_listCursor;
    RecordSource &m_accounts;
    Dialogs &m_dialogs;
};
