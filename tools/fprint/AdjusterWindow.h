#pragma once

#include "LayoutDocument.h"
#include "LayoutFiles.h"

#include <QImage>
#include <QMainWindow>
#include <QSizeF>

#include <functional>

class Dialogs;
class LayoutPageView;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;

// The 1099 layout adjuster's window: the form's elements in a table (number, text, X and Y in
// inches; row 0 holds the caption and the origin) beside the drawn page, the form spacing, and
// the commands: another form, a new layout from the system copy, a scanned form under the page,
// a test page and Save. A typed value that is no number or that sends an element off the paper is
// refused with a message and the old value stays; nothing reaches the file before Save.
class AdjusterWindow : public QMainWindow {
    Q_OBJECT
public:
    // Chooses the picture of a scanned form; an empty name when the user cancelled.
    using ImageChooser = std::function<QString()>;

    AdjusterWindow(Dialogs &dialogs, LayoutFiles files, QSizeF paperInches,
                   const QString &fileName);

    void setImageChooser(ImageChooser chooser) { m_chooseImage = std::move(chooser); }

    // The form shown: opens the file, first offering to save changes to the one shown.
    bool open(const QString &fileName);
    bool save();
    void newFromSystem();
    void printTestPage();
    void chooseScan();

    const LayoutDocument &document() const { return m_document; }
    bool unsaved() const { return m_loaded && (m_document.changed() || m_replaced); }
    QString fileName() const { return m_file; }
    LayoutPageView *page() const { return m_page; }

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void build();
    void fill();
    void showPage();
    void refreshTitle();
    void cellChanged(int row, int column);
    void spacingTyped();
    void dragged(const QList<int> &elements, double acrossInches, double downInches);
    void selectionChanged();
    void spacingDragged(double inches);
    // Keeps `after` as the document unless it sends an element off the paper (then says so).
    bool propose(const LayoutDocument &after, const QString &refused);
    // Offers to save the changes; false when the user cancels.
    bool settle();
    void restoreScan();
    void message(const QString &text, bool problem = true);

    Dialogs &m_dialogs;
    LayoutFiles m_files;
    QSizeF m_paper;
    QString m_file;
    int m_kind = 0;
    LayoutDocument m_document;
    bool m_loaded = false;
    bool m_replaced = false; // the system copy is shown in place of the file
    bool m_filling = false;
    ImageChooser m_chooseImage;

    QComboBox *m_form = nullptr;
    QTableWidget *m_table = nullptr;
    QLineEdit *m_spacing = nullptr;
    QLabel *m_paperLabel = nullptr;
    LayoutPageView *m_page = nullptr;
    QCheckBox *m_showScan = nullptr;
    QPushButton *m_save = nullptr;
    QPushButton *m_testPage = nullptr;
    QImage m_scan;
};
