// gllookup: the suite's G/L account picker. The module runs it from the G/L account field (F5)
// in the company's data folder and waits; the account picked goes into the field.
#include "AccountRows.h"
#include "PickerProgram.h"
#include "StillThere.h"

int main(int argc, char *argv[])
{
    const PickerProgram program{
        "gllookup",
        "Usage: gllookup\n"
        "Shows the chart of accounts (gl.mdb) of the company in the current folder in a list\n"
        "that narrows as you type: the start of the account number, or the start of any word\n"
        "of the name or statement description, without regard to case or accents. Enter picks\n"
        "the highlighted account and hands its number to the module that started the program;\n"
        "Escape closes without picking. A click on a column heading sorts by it, a second\n"
        "click the other way.\n"
        "  APMASTER_PICKER_KEYS  keys typed into the window once it shows, in the keystroke\n"
        "                        sender's notation (\"supp{ENTER}\"), for a scripted run\n",
        {QStringLiteral("Find a G/L account"),
         QStringLiteral("Type part of the account number, name or statement description"),
         QStringLiteral("accounts"), QStringLiteral("The chart of accounts holds no accounts.")},
        AccountRows::columns(),
        &AccountRows::load,
        QStringLiteral("The chart of accounts gl.mdb cannot be read: %1"),
        [](const QString &folder, const QString &number) {
            return stillThere(folder, QStringLiteral("gl.mdb"), QStringLiteral("gl0"),
                              QStringLiteral("glacctnum"), number);
        },
        QStringLiteral("Account %1 is no longer in the chart of accounts: another user has "
                       "deleted it since the list was made. Pick another, or Escape.")};
    return runPicker(argc, argv, program);
}
