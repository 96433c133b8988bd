// venlookp: the suite's vendor picker. The module runs it from the vendor number field and the
// lookup (F5) in the company's data folder and waits; the number picked goes into the field.
#include "PickerProgram.h"
#include "StillThere.h"
#include "VendorRows.h"

int main(int argc, char *argv[])
{
    const PickerProgram program{
        "venlookp",
        "Usage: venlookp\n"
        "Shows the vendors of the company in the current folder in a list that narrows as you\n"
        "type: the start of the vendor number, or the start of any word of the name, contact,\n"
        "city or telephone, without regard to case or accents. Enter picks the highlighted\n"
        "vendor and hands its number to the module that started the program; Escape closes\n"
        "without picking. A click on a column heading sorts by it, a second click the other\n"
        "way.\n"
        "  APMASTER_PICKER_KEYS  keys typed into the window once it shows, in the keystroke\n"
        "                        sender's notation (\"harb{DOWN}{ENTER}\"), for a scripted run\n",
        {QStringLiteral("Find a vendor"),
         QStringLiteral("Type part of the number, name, contact, city or telephone"),
         QStringLiteral("vendors"), QStringLiteral("This company has no vendors yet.")},
        VendorRows::columns(),
        &VendorRows::load,
        QStringLiteral("The vendor file ap.mdb cannot be read: %1"),
        [](const QString &folder, const QString &number) {
            return stillThere(folder, QStringLiteral("ap.mdb"), QStringLiteral("vendors"),
                              QStringLiteral("vendnumber"), number);
        },
        QStringLiteral("Vendor %1 is no longer in the company: another user has deleted it "
                       "since the list was made. Pick another, or Escape.")};
    return runPicker(argc, argv, program);
}
