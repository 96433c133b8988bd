#pragma once

#include "PickerIndex.h"

#include <QString>

#include <functional>
#include <memory>

// Where a picker keeps its index between runs, and how a run gets an index true to the company.
//
// One file per company data folder and picker, in the user's cache folder (never in the data
// folder), named after a hash of the folder's path. Each run reads the company's rows again (a
// read is cheap; writing and indexing them is not) and compares them with the kept ones: only
// rows added, changed or deleted since are written. A file that is missing, cut short, foreign
// or not a database is made anew in a work file of the run's own and then put in place whole
// with a rename, so that a picker never sees half a file. Runs of the same user on one company
// take turns with a lock file while they bring the file up to date or put a new one in place.
namespace PickerCache {

// The folder the indexes are kept in, made when missing; "" when none can be made or the user's
// cache folder lies inside the data folder.
QString folder(const QString &dataFolder);
// The kept index file of the picker for the company in the data folder.
QString fileFor(const QString &cacheFolder, const QString &picker, const QString &dataFolder);
// What an index kept for the company in the data folder must have been made for.
QString identity(const QString &picker, const QString &dataFolder);

// An index of the company's rows as `fill` adds them (fill throws DbError, which is passed on):
// the kept file brought up to date, or a new one, which is then kept.
std::unique_ptr<PickerIndex> open(const QString &file, const QList<PickerColumn> &columns,
                                  const QString &identity,
                                  const std::function<void(PickerIndex &)> &fill);

} // namespace PickerCache
