#pragma once

#include "support/DataFolder.h"
#include "support/Module.h"

#include <QCoreApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <gtest/gtest.h>

// A data folder with a few vendors and the module started on it as a level-99 user.
class VendorScreen : public ::testing::Test {
protected:
    DataFolder folder;
    Module module{folder.path()};

    void SetUp() override
    {
        addVendors();
        ASSERT_EQ(module.start(argument()), std::nullopt);
    }
    virtual void addVendors()
    {
        folder.exec(
            "ap.mdb",
            "insert into vendors (vendnumber, vendname, vendcontact, vendglacct, vendytd, "
            "vend1099type, vendaddr1, vendcity, vendstate, vendzip, vendphone, vendterms, "
            "vendbal90) values "
            "(100, 'Acme Office Supply', 'Bill', 5000, 1234.5, 1, '1 Main St', 'Springfield', "
            "'IL', '62704', '217-555-0100', 'Net 30', 1234.5), "
            "(250, 'O''Brien Catering', 'Mary', 5100, 0, 0, null, null, null, null, null, null, "
            "0), "
            "(251, 'Northern Lights Printing', 'Zed', 5000, 600, 5, '9 King St', 'Toronto', "
            "'ON', 'M5V 2T6', '416-555-0199', '1', 0), "
            "(300, 'Zenith Hall Rentals', 'Anna', 5000, 0, 4, null, null, null, null, null, null, "
            "0)");
    }
    virtual QString argument() const { return QStringLiteral("VDR99DEMO"); }

    const VendorWindow::Controls &c() const { return module.window->controls(); }
    QString field(int i) const { return c().Text1[i]->text(); }
    void lookup(int method, const QString &entry)
    {
        c().Option1[method]->setChecked(true);
        c().lookupinput->setText(entry);
        c().cmdgo->click();
        QCoreApplication::processEvents();
    }
    QVariant vendorColumn(int number, const char *column)
    {
        return folder.scalar("ap.mdb",
                             QStringLiteral("select %1 from vendors where vendnumber = %2")
                                 .arg(QString::fromLatin1(column))
                                 .arg(number));
    }
};
