#pragma once

#include "data/RecordSource.h"

// An edit or a new record of a record source for one scope: the source takes the file's write
// lock when the edit starts, and unless update() was reached the scope's end cancels the edit,
// which rolls back and lets go of the lock, also when the scope is left by an error.
class RecordEdit {
public:
    enum class Start { Edit, AddNew };

    explicit RecordEdit(RecordSource &source, Start start = Start::Edit,
                        RecordSource::Commit commit = RecordSource::Commit::Durable);
    ~RecordEdit();
    RecordEdit(const RecordEdit &) = delete;
    RecordEdit &operator=(const RecordEdit &) = delete;

    void setValue(const QString &column, const QVariant &value)
    {
        m_source.setValue(column, value);
    }
    // Writes the record; from then on the scope's end leaves it alone.
    void update();

private:
    RecordSource &m_source;
    bool m_updated = false;
};
