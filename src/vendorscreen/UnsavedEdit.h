#pragma once

#include <QString>

#include <functional>
#include <utility>

class Dialogs;

// Before the screen lets go of a vendor being added or modified (a move, Cancel, the lookup, a
// menu entry that clears the screen, closing the window), a changed vendor is not dropped
// unasked: the user saves it, drops it, or stays.
class UnsavedEdit {
public:
    enum class Outcome {
        GoOn,  // nothing was changed, or the user drops the changes: the action goes on
        Saved, // the vendor was saved, and the save has put the screen back in the lookup
        Stay   // the user stays with the edit (Cancel, or a save that did not get through)
    };

    // unsaved: whether the screen holds an edit not yet saved; save: the Save button's work,
    // true when the save went through.
    UnsavedEdit(std::function<bool()> unsaved, Dialogs &dialogs, std::function<bool()> save) :
        m_unsaved(std::move(unsaved)), m_dialogs(dialogs), m_save(std::move(save))
    {
    }

    static QString question() { return QStringLiteral("Save the changes to this vendor?"); }
    static QString title() { return QStringLiteral("Save Changes?"); }

    Outcome ask();

private:
    std::function<bool()> m_unsaved;
    Dialogs &m_dialogs;
    std::function<bool()> m_save;
};
