#pragma once
// A board without widgets and a site the status engine writes to.

#include "dao/dao.h"
#include "database/moddatabase.h"
#include "database/site.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "tempsite.h"
#include "testgateways.h"

#include <QByteArray>
#include <QTimer>

// ListViewMain with the headers "Status" and "Name", and the Group button.
class FakeBoard : public MainScreen
{
public:
    QStringList names;   // the Name sub-item of each row
    QList<int> selected; // row indexes, in list order
    int current = -1;    // the list's current item
    bool groupButton = false;
    bool minimized = false;
    int refreshes = 0; // calls of subRefreshUserList
    QList<ListColumn> columns;

    QStringList listHeaders() const override
    {
        return {"Status", "Name"};
    }
    int listRowCount() const override
    {
        return int(names.size());
    }
    bool selectedItemIsSelected() const override
    {
        return selected.contains(current);
    }
    QStringList selectedRowTexts(int subItem) const override
    {
        QStringList texts;
        for (int row : selected) {
            texts << (subItem == 1 ? names.at(row) : QString());
        }
        return texts;
    }
    bool groupButtonEnabled() const override
    {
        return groupButton;
    }
    QList<ListColumn> listColumns() const override
    {
        return columns;
    }
    void minimize() override
    {
        minimized = true;
    }
    void subRefreshUserList(const QString&) override
    {
        ++refreshes;
    }
    // Ann Lee, Bob Ray and Cy Dee listed, these rows selected and the first current.
    void select(const QList<int>& rows, bool button = true)
    {
        names = {"Ann Lee", "Bob Ray", "Cy Dee"};
        selected = rows;
        current = rows.value(0, -1);
        groupButton = button;
        gBoard.gintNameColumn = 1; // as the board finds its Name column
    }
};

// Breakages of one write of a status change, by SQLite's own statements on the file.
inline const QByteArray kNoLogRow =
    "CREATE TRIGGER NoLog BEFORE INSERT ON TransactionLogTable BEGIN SELECT RAISE(ABORT, 'no'); END";
inline const QByteArray kNoCounter =
    "CREATE TRIGGER NoRaise BEFORE UPDATE ON StatusCounterTable BEGIN SELECT RAISE(ABORT, 'no'); END";
inline const QByteArray kNoMirror = "ALTER TABLE EmployeeStatusTracking RENAME TO Gone";

// Ann Lee (this client's person), Bob Ray and Cy Dee on a site, the log on.
struct StatusFixture
{
    TestGateways gw;
    TempSite site;
    FakeBoard board;

    StatusFixture()
    {
        site.person("Ann Lee").person("Bob Ray").person("Cy Dee");
        setMainScreen(&board);
        gRun.gstrDatabasePath = gRun.gstrCurrentDatabasePath = site.path();
        gRun.gblnDatabaseClosed = true;
        gRun.gstrDefaultUser = "Ann Lee";
        gRun.gstrLoginName = "alee";
        gRun.gstrComputerName = "DESK-07";
        gRun.gstrIPAddress = "10.0.0.5";
        gSite.gblnTransactionLog = true;
    }
    ~StatusFixture()
    {
        TimerCloseDatabase().stop();
        gRun.gdbDatabase.reset();
    }

    // The first row of a statement as trimmed texts; {} when there is none.
    QStringList row(const QString& sql) const
    {
        auto rs = site.openDb()->OpenRecordset(sql, dao::dbOpenSnapshot);
        QStringList texts;
        for (int i = 0; !rs->isEOF() && i < rs->FieldCount(); ++i) {
            texts << rs->Fields(i).Text();
        }
        return texts;
    }
    QString statusOf(const QString& name) const
    {
        return site.value("SELECT Status FROM EmployeeTable WHERE Name = " + dao::quote(name));
    }
    long long counter() const
    {
        return database::readCounter(*site.openDb(), "Counter");
    }
    long long logRows() const
    {
        return site.value("SELECT COUNT(*) FROM TransactionLogTable").toLongLong();
    }
};
