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
void arrangeButtons(QWidget *strip, const std::vector<QPushButton *> &buttons);
void arrangeFields(QGroupBox *frame, const std::array<QLabel *, 24> &labels,
                   const std::array<QLineEdit *, 24> &fields);
void arrangeLists(QWidget *area, const std::vector<QPushButton *> &buttons,
                  const std::array<QRadioButton *, 2> &sortOptions, QLabel *caption,
                  const std::vector<QWidget *> &stacked);
void arrangeLookup(QGroupBox *panel, const std::array<QRadioButton *, 7> &options, QLineEdit *input,
                   QPushButton *go, QPushButton *cancel);
void arrangeSplit(QGroupBox *panel, QListWidget *numbers, QListWidget *names, QListWidget *amounts);
// The lookup panel sits over the vendor fields.
void placeLookup(QGroupBox *panel, QWidget *vendorFrame);

} // namespace VendorLayout
