#pragma once

#include <QDialog>
#include <QString>

#include <functional>

class PickerModel;
class QLabel;
class QLineEdit;
class QTableView;

// A picker's window: one search box over a list that narrows as the user types. Up, Down, Page
// Up and Page Down in the box move through the list; Enter or a double click picks the row,
// Escape cancels; a click on a column heading sorts by it, a second click the other way.
class PickerWindow : public QDialog {
    Q_OBJECT

public:
    struct Texts {
        QString title;
        QString placeholder; // in the empty search box: what may be typed
        QString what;        // the rows in the plural ("vendors"), for the note under the list
        QString emptyNote;   // the note when there is nothing at all to pick from
    };
    PickerWindow(PickerModel &model, const Texts &texts, QWidget *parent = nullptr);

    // The number of the picked row; "" until one is picked.
    QString picked() const { return m_picked; }

    // Asked before a row is picked whether its number is still in the company: the list is
    // made when the window opens, and another user may delete a row meanwhile. A number it
    // refuses is not picked; the note says so ("%1": the number) and the window stays open.
    using PickCheck = std::function<bool(const QString &number)>;
    void setPickCheck(PickCheck check, const QString &goneNote);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void searchChanged(const QString &text);
    void pick();
    void showNote();

    PickerModel &m_model;
    Texts m_texts;
    QLineEdit *m_search;
    QTableView *m_list;
    QLabel *m_note;
    QString m_picked;
    PickCheck m_check;
    QString m_goneNote;
};
