#include "vendorscreen/UnsavedEdit.h"

#include "common/Dialogs.h"

UnsavedEdit::Outcome UnsavedEdit::ask()
{
    if (!m_unsaved())
        return Outcome::GoOn;
    // Enter saves: the answer that loses nothing.
    switch (m_dialogs.yesNoCancel(question(), title(), Dialogs::Yes)) {
    case Dialogs::Yes:
        return m_save() ? Outcome::Saved : Outcome::Stay;
    case Dialogs::No:
        return Outcome::GoOn;
    default:
        return Outcome::Stay;
    }
}
