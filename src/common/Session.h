#pragma once

#include <QString>
#include <QVariant>

#include <array>
#include <vector>

// The fields of the last record loaded by the record helpers, by position from 0.
struct RecordArrays {
    struct Field {
        QString name;
        int typeCode = 0; // the OLE DB type number of the column (3 integer, 5 double, 6 currency,
                          // 202 text, 203 memo)
        QVariant value;
    };
    std::vector<Field> fields;
    int count() const { return static_cast<int>(fields.size()); }
};

// The values that live for the whole run and that every area shares.
struct Session {
    // From the launcher's argument and the module's settings.
    QString moduleCode;
    int userLevel = 0;
    QString userName;
    std::array<int, 4> accessLevel{};
    std::array<QString, 13> functionKeyText{}; // 1..12; index 0 unused
    QString pnetYesNoRead;                     // the setting as read (null reads as "Y")
    QString pnetYesNo = QStringLiteral("N");   // what the module acts on: always "N"
    bool canadianAddresses = false;

    // From the staff record.
    QString staffLocation;
    QString staffWork;       // never set by this module, so always ""
    QString workDescription; // set to "none" when empty by the location write
    int sysUser = 0;
    QString localDrive;
    int memLevel = 0, arLevel = 0, glLevel = 0, prLevel = 0, faLevel = 0, evLevel = 0, inLevel = 0,
        posLevel = 0, cfLevel = 0;
    int memoMail = 0;
    int staffFlag = 0; // tested against 99 by the staff routines; never set here

    // The job handed to the vendor-number utility ("CVN05JSMITH").
    QString jobArgument;

    // The one text through which common steps take input and give their answer.
    QString messageText;
    QString promptTitle;
    int lastYesNo = 0; // 6 = Yes, 7 = No

    // The account the G/L check found last.
    QString accountName;
    int accountType = 0;
    int accountLevel = 0;

    // The record helpers' last record.
    RecordArrays record;

    static constexpr const char *version = "21.12.28a";
};
