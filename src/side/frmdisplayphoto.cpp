// frmDisplayPhoto: the list of people and their picture files, and the picture
// of the one selected, scrolled or scaled into its frame.
#include "side/frmdisplayphoto.h"

#include "database/moddatabase.h"
#include "database/objectref.h"
#include "kernel/globals.h"
#include "platform/gui/spoken.h"
#include "platform/mounts.h"
#include "platform/msgbox.h"
#include "platform/shell.h"
#include "status/statuscommon.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace {

const QString kProcedure = QStringLiteral("frmDisplayPhoto - Form_Load event");

// The folder as the administrator wrote it, closed with the separator of its
// kind: a backslash for a Windows path, else a slash.
QString withSeparator(const QString& folder)
{
    if (folder.isEmpty() || folder.endsWith(QLatin1Char('/')) || folder.endsWith(QLatin1Char('\\'))) {
        return folder;
    }
    return folder + (folder.contains(QLatin1Char('\\')) ? QLatin1Char('\\') : QLatin1Char('/'));
}

} // namespace

frmDisplayPhoto::frmDisplayPhoto(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmDisplayPhoto"));
    setModal(true);
    setWindowTitle(gRun.gstrProgramTitle + QStringLiteral(" - Display Photo"));

    lblSelect = named(new QLabel(QStringLiteral("Select User or Item :"), this), "lblSelect",
                      QStringLiteral("Select User or Item :"));
    ListViewPhoto = named(new QTreeWidget(this), "ListViewPhoto", QStringLiteral("Select User or Item"));
    ListViewPhoto->setHeaderLabels({QStringLiteral("Name"), QStringLiteral("Picture File Name")});
    ListViewPhoto->setRootIsDecorated(false);
    lblSelect->setBuddy(ListViewPhoto);
    picPhoto = named(new QLabel, "picPhoto", QStringLiteral("Photo"));
    picPortal = named(new QScrollArea(this), "picPortal", QStringLiteral("Photo frame"));
    picPortal->setWidget(picPhoto);
    picPortal->setAlignment(Qt::AlignCenter);
    picPortal->setMinimumSize(320, 320);
    chkSizeToFit =
        named(new QCheckBox(QStringLiteral("Size to fit"), this), "chkSizeToFit", QStringLiteral("Size to fit"));
    // Read out by its text, the file's path or "No Photo on File.".
    Label12 = new QLabel(this);
    Label12->setObjectName(QStringLiteral("Label12"));
    Label12->setAccessibleDescription(QStringLiteral("Picture file"));
    Label12->setTextInteractionFlags(Qt::TextSelectableByKeyboard | Qt::TextSelectableByMouse);
    cmdCancel_Photo =
        named(new QPushButton(QStringLiteral("&Close"), this), "cmdCancel_Photo", QStringLiteral("Close"));
    cmdHelp_Photo = named(new QPushButton(QStringLiteral("&Help"), this), "cmdHelp_Photo", QStringLiteral("Help"));

    auto* left = new QVBoxLayout;
    left->addWidget(lblSelect);
    left->addWidget(ListViewPhoto);
    auto* right = new QVBoxLayout;
    right->addWidget(picPortal, 1);
    right->addWidget(Label12);
    right->addWidget(chkSizeToFit);
    auto* panes = new QHBoxLayout;
    panes->addLayout(left);
    panes->addLayout(right, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdCancel_Photo);
    buttons->addWidget(cmdHelp_Photo);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(panes, 1);
    layout->addLayout(buttons);

    // The row chosen by a click, the keys or a screen reader: the selected one.
    connect(ListViewPhoto, &QTreeWidget::itemSelectionChanged, this,
            [this] { ListViewPhoto_Click(ListViewPhoto->selectedItems().value(0)); });
    connect(chkSizeToFit, &QCheckBox::clicked, this, &frmDisplayPhoto::chkSizeToFit_Click);
    connect(cmdCancel_Photo, &QPushButton::clicked, this, &QDialog::reject);
    const auto help = [] {
        platform::shell().showHelp(gRun.gstrHelpFile, 0);
    };
    connect(cmdHelp_Photo, &QPushButton::clicked, this, help);
    connect(new QShortcut(QKeySequence(Qt::Key_F1), this), &QShortcut::activated, this, help);
}

void frmDisplayPhoto::Form_Load()
{
    subOpenDatabase();
    readPhotoPath();
    readPeople();
    subCloseDatabase();
    if (ListViewPhoto->topLevelItemCount() > 0) {
        ListViewPhoto->resizeColumnToContents(0);
    }
    chkSizeToFit->setChecked(gPerson.gblnPhotoSizeToFit);
    const QList<QTreeWidgetItem*> own = ListViewPhoto->findItems(gRun.gstrDefaultUser, Qt::MatchFixedString);
    ListViewPhoto->setCurrentItem(own.isEmpty() ? ListViewPhoto->topLevelItem(0) : own.first());
}

// A failure to read is shown, and the screen goes on without what it could not read.
void frmDisplayPhoto::readPhotoPath()
{
    status::Trap trap([](const VbError&) {
        platform::MsgBox(status::errorHead(kProcedure));
        return status::Resume::Exit;
    });
    trap([this] {
        const auto rs = fnOpenSQL(QStringLiteral("SELECT PhotoPath FROM GlobalSettingsTable "));
        if (rs->RecordCount() > 0) {
            rs->MoveFirst();
            mstrPhotoPath = withSeparator(rs->Fields(QStringLiteral("PhotoPath")).Text());
        }
        rs->Close();
    });
}

void frmDisplayPhoto::readPeople()
{
    status::Trap trap([](const VbError&) {
        platform::MsgBox(status::errorHead(kProcedure));
        return status::Resume::Exit;
    });
    trap([this] {
        const auto rs =
            fnOpenSQL(QStringLiteral("SELECT Name, PictureFileName FROM EmployeeSettingsTable ORDER BY Name"));
        for (; !rs->isEOF(); rs->MoveNext()) {
            new QTreeWidgetItem(ListViewPhoto, {rs->Fields(QStringLiteral("Name")).Text(),
                                                rs->Fields(QStringLiteral("PictureFileName")).Text()});
        }
        rs->Close();
    });
}

// A file that is missing or not a picture leaves the frame empty, without a word.
void frmDisplayPhoto::ListViewPhoto_Click(QTreeWidgetItem* item)
{
    Image1 = QPixmap();
    picPhoto->clear();
    picPortal->horizontalScrollBar()->setValue(0);
    picPortal->verticalScrollBar()->setValue(0);
    const QString fileName = item ? item->text(1) : QString();
    if (fileName.isEmpty()) {
        Label12->setText(QStringLiteral("No Photo on File."));
        picPhoto->resize(0, 0);
        return;
    }
    const QString file = mstrPhotoPath + fileName;
    Label12->setText(file);
    Image1.load(platform::nativePathOf(file));
    showPicture();
}

void frmDisplayPhoto::chkSizeToFit_Click()
{
    gPerson.gblnPhotoSizeToFit = chkSizeToFit->isChecked();
    showPicture();
}

// Scaled into the frame with no bars, or at true size with the bars it needs.
void frmDisplayPhoto::showPicture()
{
    if (Image1.isNull()) {
        picPhoto->resize(0, 0);
        return;
    }
    if (chkSizeToFit->isChecked()) {
        picPortal->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        picPortal->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        const QSize frame = picPortal->maximumViewportSize();
        picPhoto->setPixmap(Image1.scaled(frame, Qt::KeepAspectRatio, Qt::SmoothTransformation));
        picPhoto->resize(picPhoto->pixmap().size());
        return;
    }
    picPhoto->setPixmap(Image1);
    picPhoto->resize(Image1.size());
    subSetPictureBoxScrollBars();
}

// Each bar only when the picture is larger than the frame that way; a page is
// the frame's size and a step a tenth of it.
void frmDisplayPhoto::subSetPictureBoxScrollBars()
{
    const QSize frame = picPortal->maximumViewportSize();
    picPortal->setHorizontalScrollBarPolicy(Image1.width() > frame.width() ? Qt::ScrollBarAlwaysOn
                                                                           : Qt::ScrollBarAlwaysOff);
    picPortal->setVerticalScrollBarPolicy(Image1.height() > frame.height() ? Qt::ScrollBarAlwaysOn
                                                                           : Qt::ScrollBarAlwaysOff);
    picPortal->horizontalScrollBar()->setSingleStep(std::max(1, frame.width() / 10));
    picPortal->verticalScrollBar()->setSingleStep(std::max(1, frame.height() / 10));
}

void frmDisplayPhoto::resizeEvent(QResizeEvent* event)
{
    QDialog::resizeEvent(event);
    showPicture();
}
