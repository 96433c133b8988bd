#include "vendorscreen/UnsavedEdit.h"

#include "common/Dialogs.h"
#include "vendorscreen/ScreenModes.h"

UnsavedEdit::Outcome UnsavedEdit::ask()
{
    if (!m_modes.hasUnsavedEdit())
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
