#pragma once

#include <QString>

// The files of the company's data folder, which is the process's current folder.
namespace DataFiles {

// The file of that name in the data folder, matched without regard to case. Only the name is
// looked up (a directory listing); the file itself is not opened.
QString pathOf(const QString &fileName);

} // namespace DataFiles
