#pragma once

#include <QDialog>

#include "yearend/YearEndCheck.h"

class Clock;
class Databases;
class Dialogs;
class QComboBox;
class QLabel;
class QPushButton;
class QSpinBox;
class QTableWidget;

// The 1099 year-end check in a window: a form and a tax year are chosen, the vendors that get the
// form are listed with their amounts and then every problem, one row each; a row leads to its
// vendor on the vendor screen, and the list prints as the apmaster-1099 command writes it.
class YearEndCheckWindow : public QDialog {
    Q_OBJECT

public:
    struct Services {
        Databases &databases;
        Dialogs &dialogs;
        const Clock &clock;
    };
    explicit YearEndCheckWindow(Services services, QWidget *parent = nullptr);

    // Runs the check for the chosen form and year and fills the list.
    void check();
    // Prints the check (to the PDF file the print setting names, when it names one).
    void print();

    const YearEndCheck::Result &result() const { return m_result; }

signals:
    // A row was opened: its vendor is to be shown on the vendor screen.
    void vendorChosen(long long number);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void fill();
    void openRow(int row);

    Services m_s;
    QComboBox *m_form = nullptr;
    QSpinBox *m_year = nullptr;
    QPushButton *m_check = nullptr;
    QPushButton *m_print = nullptr;
    QLabel *m_summary = nullptr;
    QTableWidget *m_grid = nullptr;
    YearEndCheck::Result m_result;
    bool m_checked = false;
};
