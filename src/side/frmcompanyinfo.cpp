// frmCompanyInfo: the site's company text, with hints in the status bar.
#include "side/frmcompanyinfo.h"

#include "database/moddatabase.h"
#include "database/objectref.h"
#include "kernel/globals.h"
#include "platform/gui/screenplace.h"
#include "platform/msgbox.h"
#include "platform/shell.h"
#include "status/statuscommon.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QStatusBar>
#include <QStatusTipEvent>
#include <QVBoxLayout>

frmCompanyInfo::frmCompanyInfo(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmCompanyInfo"));
    setModal(true);
    setWindowTitle(gRun.gstrProgramTitle + QStringLiteral(" - YOUR Company Information"));
    lblCompanyInfo = new QLabel(QStringLiteral("This area is intended to display general information about your "
                                               "company or organization ( policies, phone / fax numbers, office "
                                               "hours etc. )"),
                                this);
    lblCompanyInfo->setObjectName(QStringLiteral("lblCompanyInfo"));
    lblCompanyInfo->setWordWrap(true);
    txtCompanyInfo = new QPlainTextEdit(this);
    txtCompanyInfo->setObjectName(QStringLiteral("txtCompanyInfo"));
    txtCompanyInfo->setAccessibleName(QStringLiteral("Company information"));
    txtCompanyInfo->setMinimumSize(480, 260);
    lblCompanyInfo->setBuddy(txtCompanyInfo);
    cmdOKCompanyInfo = new QPushButton(QStringLiteral("OK"), this);
    cmdOKCompanyInfo->setObjectName(QStringLiteral("cmdOKCompanyInfo"));
    cmdOKCompanyInfo->setAccessibleName(QStringLiteral("OK"));
    cmdOKCompanyInfo->setStatusTip(QStringLiteral(" Press OK to return to Main VESK-OR screen. "));
    cmdOKCompanyInfo->setDefault(true);
    cmdHelpCompanyInfo = new QPushButton(QStringLiteral("&Help"), this);
    cmdHelpCompanyInfo->setObjectName(QStringLiteral("cmdHelpCompanyInfo"));
    cmdHelpCompanyInfo->setAccessibleName(QStringLiteral("Help"));
    cmdHelpCompanyInfo->setStatusTip(QStringLiteral(" Display Help."));
    StatusBarCompanyInfo = new QStatusBar(this);
    StatusBarCompanyInfo->setObjectName(QStringLiteral("StatusBarCompanyInfo"));
    StatusBarCompanyInfo->setAccessibleName(QStringLiteral("Hints"));
    StatusBarCompanyInfo->setSizeGripEnabled(false);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOKCompanyInfo);
    buttons->addWidget(cmdHelpCompanyInfo);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblCompanyInfo);
    layout->addWidget(txtCompanyInfo, 1);
    layout->addLayout(buttons);
    layout->addWidget(StatusBarCompanyInfo);

    connect(txtCompanyInfo, &QPlainTextEdit::textChanged, cmdOKCompanyInfo,
            [this] { cmdOKCompanyInfo->setEnabled(true); });
    connect(cmdOKCompanyInfo, &QPushButton::clicked, this, &QDialog::accept);
    const auto help = [] {
        platform::shell().showHelp(gRun.gstrHelpFile, 0);
    };
    connect(cmdHelpCompanyInfo, &QPushButton::clicked, this, help);
    connect(new QShortcut(QKeySequence(Qt::Key_F1), this), &QShortcut::activated, this, help);
}

// A Null, or a failed read (its box shown), leaves the text empty.
void frmCompanyInfo::Form_Load()
{
    status::Trap trap([](const VbError&) {
        platform::MsgBox(status::errorHead(QStringLiteral("frmCompanyInfo - Form_Load event")));
        return status::Resume::Exit;
    });
    trap([this] {
        subOpenDatabase();
        const auto rs = fnOpenSQL(QStringLiteral("Select * from GlobalSettingsTable "));
        if (rs->RecordCount() > 0) {
            rs->MoveFirst();
            txtCompanyInfo->setPlainText(
                rs->Fields(QStringLiteral("CompanyInfo")).Text().replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
        }
        rs->Close();
    });
    subCloseDatabase();
    adjustSize();
    centreOnScreen(this);
}

bool frmCompanyInfo::event(QEvent* event)
{
    if (event->type() == QEvent::StatusTip) {
        StatusBarCompanyInfo->showMessage(static_cast<QStatusTipEvent*>(event)->tip());
        return true;
    }
    return QDialog::event(event);
}
