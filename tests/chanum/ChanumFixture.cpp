#include "ChanumFixture.h"

#include <QFile>
#include <QTest>

void ChanumProgram::SetUp()
{
    const QString ap = QStringLiteral("ap.mdb");
    folder.exec(ap, QStringLiteral("insert into vendors (vendnumber, vendname, vendbalcurrent, "
                                   "vendytd, vendbal60, vendbal90) values "
                                   "(120, 'Acme Paper', 345.75, 300.30, 10.00, 5.00), "
                                   "(130, 'Brook Supply', 300.30, 199.99, 1.00, 2.00), "
                                   "(140, 'Cedar Office', 999.99, 0, 0, 0)"));
    const QString invoice = QStringLiteral(
        "insert into invoices (vendnumber, invnumber, invdate, invamount, invstatus, "
        "invchecknumber, invcheckdate, invcheckamount) values (%1, '%2', %3, %4, %5, %6, %7, %8)");
    auto addInvoice = [&](int vendor, const char *number, qlonglong date, const char *amount,
                          int status, int check, qlonglong checkDate, const char *paid) {
        folder.exec(ap, invoice.arg(vendor)
                            .arg(QLatin1String(number))
                            .arg(date)
                            .arg(QLatin1String(amount))
                            .arg(status)
                            .arg(check)
                            .arg(checkDate)
                            .arg(QLatin1String(paid)));
    };
    addInvoice(120, "A1", thisYear(115), "300.30", 4, 501, thisYear(120), "300.30");
    addInvoice(120, "A2", thisYear(210), "45.45", 1, 0, 0, "0");
    addInvoice(120, "A3", lastYear(1220), "50.05", 4, 490, lastYear(1228), "50.05");
    addInvoice(130, "B1", thisYear(301), "100.10", 1, 0, 0, "0");
    addInvoice(130, "B2", thisYear(305), "200.20", 4, 502, thisYear(310), "199.99");
    addInvoice(140, "C1", thisYear(101), "999.99", 1, 0, 0, "0");
    folder.exec(ap, QStringLiteral("insert into checks (chkpayeenum, chkpayeename, chknum, "
                                   "chkdate, chkamount) values "
                                   "(120, 'Acme Paper', 501, %1, 300.30), "
                                   "(120, 'Acme Paper', 490, %2, 50.05), "
                                   "(130, 'Brook Supply', 502, %3, 199.99), "
                                   "(140, 'Cedar Office', 503, %3, 1.00)")
                        .arg(thisYear(120))
                        .arg(lastYear(1228))
                        .arg(thisYear(310)));
    folder.exec(ap, QStringLiteral("insert into vendnotes (vendnumber, notes) values "
                                   "(120, 'Call before delivery'), (130, 'Net 30 only'), "
                                   "(140, 'Cedar notes')"));
    folder.exec(ap, QStringLiteral("update miscinfo set miscdesc1 = 'Region', miscdesc2 = 'Rep'"));
    folder.exec(ap, QStringLiteral("insert into miscdata (acctid, miscvalue1, miscvalue2, "
                                   "miscvalue3) values (120, 'West', 'Sam', 'Blue'), "
                                   "(130, 'East', '', null), (140, 'North', 'Kim', '')"));
}

void ChanumProgram::TearDown()
{
    if (holder.state() != QProcess::NotRunning && !holder.waitForFinished(20000))
        holder.kill();
}

void ChanumProgram::start(QProcess &process, const QString &argument, const QStringList &answers,
                          const QStringList &options)
{
    const QString answersFile = folder.file(QStringLiteral("answers.txt"));
    QFile file(answersFile);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(answers.join(QLatin1Char('\n')).toUtf8() + "\n");
    file.close();
    process.setWorkingDirectory(folder.path());
    process.start(QStringLiteral(CHANUM_PROGRAM),
                  options + QStringList{QStringLiteral("--answers"), answersFile, argument});
}

ChanumProgram::Run ChanumProgram::run(const QString &argument, const QStringList &answers,
                                      const QStringList &options)
{
    QProcess process;
    start(process, argument, answers, options);
    Run result;
    EXPECT_TRUE(process.waitForFinished(60000)) << "chanum did not end";
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.output = QString::fromUtf8(process.readAllStandardOutput());
    result.errors = QString::fromUtf8(process.readAllStandardError());
    return result;
}

QString ChanumProgram::everything() const
{
    return read(QStringLiteral(
               "select vendnumber, vendname, cast(round(vendbalcurrent * 100) as integer), "
               "cast(round(vendytd * 100) as integer), cast(round(vendbal60 * 100) as integer), "
               "cast(round(vendbal90 * 100) as integer) from vendors order by vendnumber")) +
           "\n" +
           read(QStringLiteral("select vendnumber, invnumber, invdate, cast(round(invamount * "
                               "100) as integer), cast(round(invcheckamount * 100) as integer) "
                               "from invoices order by vendnumber, invnumber")) +
           "\n" +
           read(QStringLiteral("select chkpayeenum, chknum, cast(round(chkamount * 100) as "
                               "integer) from checks order by chkpayeenum, chknum")) +
           "\n" +
           read(QStringLiteral("select vendnumber, notes from vendnotes order by vendnumber")) +
           "\n" +
           read(QStringLiteral("select acctid, miscvalue1, miscvalue2, miscvalue3 from miscdata "
                               "order by acctid"));
}

bool ChanumProgram::holdVendor(qlonglong vendor, int seconds)
{
    holder.setWorkingDirectory(folder.path());
    QByteArray script;
    if (DataFolder::onPostgres()) {
        holder.start(QStringLiteral("psql"),
                     {"-X", "-q", "-h", qEnvironmentVariable("APMASTER_TEST_POSTGRES_HOST"), "-U",
                      "postgres", "-d", folder.serverDatabase()});
        script = "set search_path to ap_mdb, public;\nbegin;\nselect vendnumber from vendors "
                 "where vendnumber = " +
                 QByteArray::number(vendor) +
                 " for update;\n\\! touch held.flag\nselect pg_sleep(" +
                 QByteArray::number(seconds) + ");\ncommit;\n\\q\n";
    } else {
        holder.start(QStringLiteral("sqlite3"), {QStringLiteral("ap.mdb")});
        script = "begin immediate;\n.shell touch held.flag\n.shell sleep " +
                 QByteArray::number(seconds) + "\ncommit;\n.quit\n";
    }
    if (!holder.waitForStarted())
        return false;
    holder.write(script);
    return QTest::qWaitFor([&] { return QFile::exists(folder.file("held.flag")); }, 10000);
}
