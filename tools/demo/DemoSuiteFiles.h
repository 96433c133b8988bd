#pragma once

#include <QString>
#include <QStringList>

class QDir;

namespace Demo {

// The organisation the demo books belong to.
struct Company {
    QString name, addr1, addr2, city, state, zip, federalId, phone;
};
const Company &organisation();

// The suite's other database files, each written anew; each returns how many rows its main
// table got.
int writeConfig(const QDir &folder); // config.mdb: the module's settings and the company
int writeStaff(const QDir &folder);  // user.mdb: DEMO, CLERK and MANAGER
QStringList staffNames();
int writeLedger(const QDir &folder);     // gl.mdb: the chart of accounts
int writeArAccounts(const QDir &folder); // ar.mdb: the inventory accounts
int writeEmployees(const QDir &folder);  // emp.mdb, with user-defined fields
int writeMembers(const QDir &folder);    // master.mdb, with user-defined fields

} // namespace Demo
