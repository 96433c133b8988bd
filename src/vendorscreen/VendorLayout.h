#pragma once

#include <QSize>
#include <QString>

#include <array>
#include <vector>

class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QListWidget;
class QWidget;

// Where the vendor screen's controls sit.
namespace VendorLayout {

inline constexpr QSize windowSize{1024, 740};

void arrange(QWidget *central, QWidget *buttons, QWidget *vendorFrame, QWidget *lists,
             QWidget *statusLine);
// The status line and, at its right end, the progress bar of a long pass.
void arrangeStatusRow(QWidget *row, QWidget *statusLine, QWidget *progress);
void arrangeButtons(QWidget *strip, const std::vector<QPushButton *> &buttons);
void arrangeFields(QGroupBox *frame, const std::array<QLabel *, 24> &labels,
                   const std::array<QLineEdit *, 24> &fields);
// The list buttons and sort options in a row, and under them the pane the lists sit in.
void arrangeLists(QWidget *area, const std::vector<QPushButton *> &buttons,
                  const std::array<QRadioButton *, 2> &sortOptions, QWidget *pane);
void arrangeListPane(QWidget *pane, QLabel *caption, const std::vector<QWidget *> &stacked);
void arrangeLookup(QGroupBox *panel, const std::array<QRadioButton *, 7> &options, QLineEdit *input,
                   QPushButton *go, QPushButton *cancel);
void arrangeSplit(QGroupBox *panel, QListWidget *numbers, QListWidget *names, QListWidget *amounts);
// The lookup panel opens at the top left of the given widget (the list pane), so that it
// covers no caption of the vendor fields and no button.
void placeLookup(QGroupBox *panel, QWidget *over);

} // namespace VendorLayout
