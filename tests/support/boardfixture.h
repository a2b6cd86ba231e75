#pragma once
// Ann Lee's board on a temporary site, offscreen, for the tests of frmMain:
//
//   BoardFixture b;                       // gateways faked, the site empty but for its standing rows
//   b.site.person("Ann Lee").group("Sales");
//   frmMain& f = b.open();                // made, settings and groups read, as Load leaves it
//   f.subRefreshUserList("Everyone");
//   QCOMPARE(b.texts("Name"), ...);
//
// Header only: the support library has no widgets, and only the board's tests
// link the client.

#include "board/frmmain.h"
#include "dao/dao.h"
#include "database/moddatabase.h"
#include "kernel/globals.h"
#include "status/settings.h"
#include "tempsite.h"
#include "testgateways.h"

#include <QAction>
#include <QCoreApplication>
#include <QPointer>
#include <QToolBar>
#include <QTreeWidget>

struct BoardFixture
{
    TestGateways gw;
    TempSite site;
    QPointer<frmMain> form;

    BoardFixture()
    {
        gRun.gstrDatabasePath = gRun.gstrCurrentDatabasePath = site.path();
        gRun.gstrApplicationPath = "/opt/veskor/";
        gRun.gblnDatabaseClosed = true;
        gRun.gstrDefaultUser = "Ann Lee";
        gRun.gstrCurrentGroup = "Everyone";
    }
    ~BoardFixture()
    {
        delete form.data();
        TimerCloseDatabase().stop();
        gRun.gdbDatabase.reset();
    }
    BoardFixture(const BoardFixture&) = delete;
    BoardFixture& operator=(const BoardFixture&) = delete;

    // A new window, neither loaded nor activated: the test drives the steps.
    frmMain& make()
    {
        delete form.data();
        form = new frmMain;
        form->setAttribute(Qt::WA_ShowWithoutActivating);
        return *form;
    }
    // A new board with the settings and groups read, as Load leaves it before the first Activate.
    frmMain& open()
    {
        make();
        subReadOptions();
        subReadUserSettings(gRun.gstrDefaultUser);
        subReadGroups();
        return *form;
    }
    // open(), then the list drawn for Everyone.
    frmMain& openOnEveryone()
    {
        open().subRefreshUserList("Everyone");
        return *form;
    }
    // The window on screen at a size, laid out.
    void show(int width, int height)
    {
        form->resize(width, height);
        form->show();
        QCoreApplication::processEvents();
    }

    // A control of the board by its name, as a screen reader's script finds it.
    template <class T = QWidget> T* child(const char* name) const
    {
        return form->findChild<T*>(QLatin1String(name));
    }
    QTreeWidget* list() const
    {
        return child<QTreeWidget>("ListViewMain");
    }
    // A button on the toolbar by its key, else a menu entry by its name.
    QAction* action(const QString& name) const
    {
        for (QAction* button : child<QToolBar>("ToolbarMain")->actions()) {
            if (button->data().toString() == name) {
                return button;
            }
        }
        return form->findChild<QAction*>(name);
    }

    int column(const QString& header) const
    {
        return int(form->listHeaders().indexOf(header));
    }
    // A column's texts in the order shown.
    QStringList texts(const QString& header) const
    {
        QStringList result;
        for (int i = 0; i < list()->topLevelItemCount(); ++i) {
            result << list()->topLevelItem(i)->text(column(header));
        }
        return result;
    }
    QString ofAnn(const QString& field, const QString& table = "EmployeeTable") const
    {
        return site.value(QStringLiteral("SELECT %1 FROM %2 WHERE Name = \"Ann Lee\"").arg(field, table));
    }
    void setForAnn(const QString& assignments)
    {
        site.execute(QStringLiteral("UPDATE EmployeeSettingsTable SET %1 WHERE Name = \"Ann Lee\"").arg(assignments));
    }
    void raise(const QString& counter)
    {
        database::raiseCounter(*site.openDb(), counter);
    }
};
