#pragma once

class QLabel;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QTableView;
class QWidget;

// The widgets under the vendor fields that the lists, the split panel and the notes work on.
// The window owns them; each area is handed this.
struct ListWidgets {
    QPushButton *cmdunpaid = nullptr;
    QPushButton *cmdpaid = nullptr;
    QPushButton *cmdchecks = nullptr;
    QPushButton *cmdnotes = nullptr;
    QPushButton *cmdsplit = nullptr;
    QRadioButton *oldToNew = nullptr; // the first of the two sort options
    QLabel *gridcaption = nullptr;
    QTableView *grid1 = nullptr; // invoices
    QTableView *grid2 = nullptr; // checks
    QPlainTextEdit *notes = nullptr;
    QWidget *frasplit = nullptr;
};
