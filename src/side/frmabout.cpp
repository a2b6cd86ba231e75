// frmAbout: the versions, the support lines, the minute's close, and the two
// hidden ways to the stress test.
#include "side/frmabout.h"

#include "kernel/globals.h"
#include "platform/gui/screenplace.h"
#include "side/buildinfo.h"
#include "side/frmcompanyinfo.h"
#include "side/frmtestharness.h"

#include <QGridLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace {

QLabel* label(QWidget* parent, const char* name, const QString& text)
{
    auto* lbl = new QLabel(text, parent);
    lbl->setObjectName(QString::fromLatin1(name));
    lbl->setAccessibleName(text);
    return lbl;
}

const QString kSupportDetails = QStringLiteral("For support, contact your VESK-OR Pro dealer or\n"
                                               "VESK-OR Support: support@vesk-or.example\n"
                                               "https://www.vesk-or.example/pro/support/");
const QString kTradeMark = QStringLiteral("VESK-OR is a trademark of its makers. All rights reserved.");

} // namespace

frmAbout::frmAbout(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmAbout"));
    setModal(true);
    setWindowTitle(gRun.gstrProgramTitle + QStringLiteral(" - About"));

    Picture1 = label(this, "Picture1", QStringLiteral("VESK-OR Pro"));
    Picture1->setTextFormat(Qt::PlainText);
    QFont banner = Picture1->font();
    banner.setPointSize(banner.pointSize() * 2);
    banner.setBold(true);
    Picture1->setFont(banner);
    Picture1->setAlignment(Qt::AlignCenter);
    Picture1->setMinimumSize(360, 72);
    Picture1->setStyleSheet(QStringLiteral("background: #1f4e79; color: white;"));
    Image1 = label(Picture1, "Image1", QString());
    Image1->setAccessibleName(QStringLiteral("VESK-OR"));
    Image1->setFixedSize(24, 24);

    Label2 = label(this, "Label2", QStringLiteral("DB Version"));
    lblDBVersion = label(this, "lblDBVersion", QString());
    lblBuild1 = label(this, "lblBuild1", QStringLiteral("Build Date"));
    lblBuild2 = label(this, "lblBuild2", QString());
    lblBuildNumber1 = label(this, "lblBuildNumber1", QStringLiteral("Build Number"));
    lblBuildNumber2 = label(this, "lblBuildNumber2", QString());
    lblVersion = label(this, "lblVersion", QString());
    lblSupportDetails = label(this, "lblSupportDetails", kSupportDetails);
    lblTradeMark = label(this, "lblTradeMark", kTradeMark);
    cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setAccessibleName(QStringLiteral("OK"));
    cmdOK->setDefault(true);

    auto* facts = new QGridLayout;
    int row = 0;
    for (auto [name, value] :
         {std::pair{Label2, lblDBVersion}, {lblBuild1, lblBuild2}, {lblBuildNumber1, lblBuildNumber2}}) {
        facts->addWidget(name, row, 0);
        facts->addWidget(value, row++, 1);
        name->setBuddy(value);
    }
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Picture1);
    layout->addWidget(lblVersion);
    layout->addLayout(facts);
    layout->addWidget(lblSupportDetails);
    layout->addWidget(lblTradeMark);
    layout->addWidget(cmdOK, 0, Qt::AlignRight);

    TimerAbout = new QTimer(this);
    TimerAbout->setObjectName(QStringLiteral("TimerAbout"));
    TimerAbout->setInterval(60000);
    TimerAbout->setSingleShot(true);
    connect(TimerAbout, &QTimer::timeout, this, &QDialog::reject);
    connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    Picture1->installEventFilter(this);
    Image1->installEventFilter(this);
}

void frmAbout::Form_Load()
{
    lblDBVersion->setText(gSite.gstrDatabaseReleaseVersion);
    lblBuild2->setText(QStringLiteral(VESKOR_BUILD_DATE));
    lblBuildNumber2->setText(QStringLiteral(VESKOR_BUILD_NUMBER));
    lblVersion->setText(gRun.gstrProgramTitle.trimmed() + QStringLiteral(" User Version"));
    for (QLabel* value : {lblDBVersion, lblBuild2, lblBuildNumber2, lblVersion}) {
        value->setAccessibleName(value->text());
    }
    adjustSize();
    centreOnScreen(this);
    Image1->move(Picture1->width() - Image1->width(), Picture1->height() - Image1->height());
    TimerAbout->start();
}

bool frmAbout::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress) {
        const auto* press = static_cast<QMouseEvent*>(event);
        if (watched == Image1) {
            subOpenStressTest(true);
            return true;
        }
        if (watched == Picture1 && press->modifiers() == Qt::ControlModifier) {
            subOpenStressTest(false);
            return true;
        }
    }
    if (event->type() == QEvent::Resize && watched == Picture1) {
        Image1->move(Picture1->width() - Image1->width(), Picture1->height() - Image1->height());
    }
    return QDialog::eventFilter(watched, event);
}

// The stress test takes About's place: About ends (hidden, its minute stopped)
// and the board waits until the stress screen is closed, then refreshes as after About.
void frmAbout::subOpenStressTest(bool start)
{
    TimerAbout->stop();
    hide();
    if (start) {
        gblnStressTest = true;
    }
    frmTestHarness harness(parentWidget());
    if (start) {
        QTimer::singleShot(0, &harness, &frmTestHarness::Command1_Click);
    }
    harness.exec();
}
