#include "data/RecordEdit.h"

RecordEdit::RecordEdit(RecordSource &source, Start start, RecordSource::Commit commit) :
    m_source(source)
{
    if (start == Start::AddNew)
        m_source.addNew(commit);
    else
        m_source.edit(commit);
}

RecordEdit::~RecordEdit()
{
    if (!m_updated)
        m_source.cancelUpdate();
}

void RecordEdit::update()
{
    m_source.update();
    m_updated = true;
}
