#pragma once

#include <QString>

class Databases;

// The company record of config.mdb as the payer of the 1099 forms: trimmed and in capitals.
struct PayerRecord {
    QString name;
    QString address1;
    QString address2;
    QString city;
    QString state;
    QString zip;
    QString federalId;
    QString phone; // the company record keeps none; "" until it does

    // Reads the first row of `company`; DbError when it cannot be read.
    static PayerRecord read(Databases &databases);
};
