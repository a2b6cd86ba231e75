#pragma once
// A board without widgets and a site the status engine writes to, for the tests
// of the status writes, the log and the settings.

#include "dao/dao.h"
#include "database/moddatabase.h"
#include "start/globals.h"
#include "start/mainscreen.h"
#include "tempsite.h"
#include "testgateways.h"

#include <QTimer>

// ListViewMain, its toolbar button and the group tabs as plain lists.
class FakeBoard : public MainScreen
{
public:
    QStringList headers = {QStringLiteral("Status"), QStringLiteral("Name"), QStringLiteral("Phone")};
    QList<QStringList> rows; // sub-item texts of each row
    QList<int> selected;     // row indexes, in list order
    int current = -1;        // the list's current item
    bool groupButton = false;
    QList<ListColumn> columns;
    QStringList groups;
    QString selectedGroup;
    int statusScreens = 0;
    int groupScreens = 0;

    // Rows of the given names, with the Name sub-item in the second column.
    void list(const QStringList& names)
    {
        rows.clear();
        for (const QString& name : names) {
            rows << QStringList{QStringLiteral("In"), name, QString()};
        }
    }

    QStringList listHeaders() const override
    {
        return headers;
    }
    int listRowCount() const override
    {
        return int(rows.size());
    }
    bool selectedItemIsSelected() const override
    {
        return selected.contains(current);
    }
    QString selectedItemText(int subItem) const override
    {
        return current >= 0 ? rows.at(current).value(subItem) : QString();
    }
    QStringList selectedRowTexts(int subItem) const override
    {
        QStringList texts;
        for (int row : selected) {
            texts << rows.at(row).value(subItem);
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
    void clearGroups() override
    {
        groups = {QStringLiteral("Everyone")};
    }
    void addGroup(const QString& group) override
    {
        groups << group;
    }
    bool selectGroup(const QString& group) override
    {
        if (!groups.contains(group)) {
            return false;
        }
        selectedGroup = group;
        return true;
    }
    void showStatusScreen() override
    {
        ++statusScreens;
    }
    void showGroupScreen() override
    {
        ++groupScreens;
    }
};

// The gateways, a site with Ann Lee (this client's person), Bob Ray and Cy Dee,
// the board, and the database regime pointed at the site with the log on.
struct StatusFixture
{
    TestGateways gw;
    TempSite site;
    FakeBoard board;

    StatusFixture()
    {
        site.person(QStringLiteral("Ann Lee"), QStringLiteral("alee"))
            .person(QStringLiteral("Bob Ray"))
            .person(QStringLiteral("Cy Dee"));
        setMainScreen(&board);
        gstrDatabasePath = site.path();
        gstrCurrentDatabasePath = site.path();
        gblnDatabaseClosed = true;
        gstrDefaultUser = QStringLiteral("Ann Lee");
        gstrLoginName = QStringLiteral("alee");
        gstrComputerName = QStringLiteral("DESK-07");
        gstrIPAddress = QStringLiteral("10.0.0.5");
        gblnTransactionLog = true;
    }
    ~StatusFixture()
    {
        TimerCloseDatabase().stop();
        if (gdbDatabase) {
            gdbDatabase->Close();
        }
        gdbDatabase.reset();
    }

    // The first row's fields of a statement, as trimmed texts, or {} when none.
    QStringList row(const QString& sql) const
    {
        auto rs = site.openDb()->OpenRecordset(sql, dao::dbOpenSnapshot);
        QStringList texts;
        if (!rs->isEOF()) {
            for (int i = 0; i < rs->FieldCount(); ++i) {
                texts << rs->Fields(i).Text();
            }
        }
        return texts;
    }
    QString value(const QString& sql) const
    {
        return row(sql).value(0);
    }
    long long count(const QString& table) const
    {
        return value(QStringLiteral("SELECT COUNT(*) FROM ") + table).toLongLong();
    }
    QString statusOf(const QString& name) const
    {
        return value(QStringLiteral("SELECT Status FROM EmployeeTable WHERE Name = ") + dao::quote(name));
    }
};
