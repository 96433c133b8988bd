#pragma once

#include "common/StatusLine.h"
#include "frmmisc/UserFieldsWindow.h"
#include "keysend/KeySender.h"
#include "support/VendorScreen.h"

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTest>

#include <memory>

// The vendor screen on a few vendors, with user-defined fields in ap.mdb, in a member file and
// in an employee file. The report record goes to the user's local folder inside the data folder.
class UserFieldsFixture : public VendorScreen {
protected:
    void SetUp() override
    {
        VendorScreen::SetUp();
        // A new file holds one empty row of descriptions; these take its place.
        folder.exec("ap.mdb", "delete from miscinfo");
        folder.exec("ap.mdb", "insert into miscinfo (miscid, miscdesc1, miscdesc2, miscdesc3, "
                              "miscdesc30) values (1, 'Insurance expiry', 'W-9 on file', "
                              "'  Sales rep  ', 'Last field')");
        folder.exec("ap.mdb", "insert into miscdata (acctid, miscvalue1, miscvalue2, miscvalue3, "
                              "miscvalue30) values (100, '06/30/2027', 'Yes', 'Bill', 'thirty'), "
                              "(250, '12/31/2026', 'No', 'Mary', '')");
        for (const char *file : {"emp.mdb", "master.mdb"}) {
            folder.createDatabase(QString::fromLatin1(file));
            folder.exec(file, "delete from miscinfo");
            folder.exec(file, "insert into miscinfo (miscid, miscdesc1, miscdesc2) values "
                              "(1, 'Badge number', 'Parking space')");
        }
        folder.exec("emp.mdb", "insert into miscdata (acctid, miscvalue1, miscvalue2) values "
                               "(15, 'B-1015', 'P7'), (16, 'B-1016', 'P9')");
        folder.exec("emp.mdb",
                    "insert into empinfo (empid, empfname, emplname, empmainname, empaltname, "
                    "empaddr1a, empaddr1b, empcity1, empstate1, empzip1, empphone1, empaddr2a, "
                    "empaddr2b, empcity2, empstate2, empzip2, empphone2) values (15, 'Karen', "
                    "'Whitfield', 'Karen Whitfield', 'K. Whitfield', '1804 South Grand', "
                    "'Apt 2', 'Springfield', 'IL', '62703', '217-555-0161', 'PO Box 9', "
                    "'Suite 1', 'Chatham', 'IL', '62629', '217-555-0199')");
        folder.exec("master.mdb", "insert into miscdata (acctid, miscvalue1, miscvalue2) values "
                                  "(1001, 'M-1001', 'North lot')");
        folder.exec("master.mdb",
                    "insert into master (acctnumber, fname, lname, fullname1, addr1a, addr1b, "
                    "city1, state1, zip1, phone1a, fullname2, addr2a, addr2b, city2, state2, "
                    "zip2, phone2a) values (1000, 'Other', 'Member', 'Other Member', '', '', "
                    "'', '', '', '', '', '', '', '', '', '', ''), (1001, 'Harold', 'Jensen', "
                    "'Harold Jensen', '1200 North Fifth', 'Unit B', 'Springfield', 'IL', "
                    "'62702', '217-555-0171', 'Ruth Jensen', '55 Elm', 'Rear', 'Rochester', "
                    "'IL', '62563', '217-555-0172')");
        ASSERT_TRUE(QDir(folder.path()).mkpath("local"));
        module.session.localDrive = folder.file("local");
    }

    // Opens the window through the vendor screen for the vendor number typed into field 0.
    UserFieldsWindow *openFor(const QString &vendorNumber)
    {
        c().Text1[0]->setText(vendorNumber);
        c().cmdudf->click();
        QCoreApplication::processEvents();
        return module.window->userFields();
    }
    // Opens the window directly with a calling code (members and employees).
    UserFieldsWindow *openWith(const QString &code)
    {
        auto *window =
            new UserFieldsWindow(UserFieldsWindow::Services{
                                     module.services.dialogs, module.services.databases,
                                     module.session, module.services.clipboard,
                                     module.services.processes, status, module.assembly.programs(),
                                     [this](const QString &keys) { keys_.sendKeys(keys); }, [] {}},
                                 module.window);
        return window->open(code) ? window : nullptr;
    }

    static QStringList labels(const UserFieldsWindow &w)
    {
        QStringList texts;
        for (const QLabel *label : w.controls().lbldescrip)
            texts << label->text();
        return texts;
    }
    static QStringList values(const UserFieldsWindow &w)
    {
        QStringList texts;
        for (const QLineEdit *box : w.controls().txtinfo)
            texts << box->text();
        return texts;
    }
    // Runs a statement on a file as another user's program would, in a process of its own.
    void otherProgram(const QString &file, const QString &statement)
    {
        ASSERT_EQ(folder.otherProgram(file, statement), QString());
    }
    // A column of the report record's rows, in row order.
    QStringList recordColumn(const QString &path, const QString &column)
    {
        QStringList texts;
        {
            QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", "report-record-reader");
            db.setDatabaseName(path);
            EXPECT_TRUE(db.open());
            QSqlQuery q(db);
            EXPECT_TRUE(q.exec("select " + column + " from miscreport order by rowid"));
            while (q.next())
                texts << q.value(0).toString();
            db.close();
        }
        QSqlDatabase::removeDatabase("report-record-reader");
        return texts;
    }

    QLineEdit statusBox;
    StatusLine status{&statusBox};
    KeySender keys_;
};
