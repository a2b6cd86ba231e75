#pragma once
// frmDisplayPhoto: the picture of a user or item picked from a list. The pictures
// are files in the folder GlobalSettingsTable.PhotoPath names; each person's row
// of EmployeeSettingsTable holds only the file's name. The picture shows at true
// size in a frame with scroll bars, or scaled into the frame ("Size to fit", the
// person's PhotoSizeToFit setting). A modal screen of the board.

#include <QDialog>
#include <QPixmap>

class QCheckBox;
class QLabel;
class QPushButton;
class QScrollArea;
class QTreeWidget;
class QTreeWidgetItem;

class frmDisplayPhoto : public QDialog
{
    Q_OBJECT

public:
    explicit frmDisplayPhoto(QWidget* parent = nullptr);

    // The folder and the list read; the person's own row (else the first) selected.
    void Form_Load();

    QLabel* lblSelect;
    QTreeWidget* ListViewPhoto;
    QScrollArea* picPortal; // its scroll bars are HScroll1 and VScroll1
    QLabel* picPhoto;
    QCheckBox* chkSizeToFit;
    QLabel* Label12;
    QPushButton* cmdCancel_Photo;
    QPushButton* cmdHelp_Photo;

    // The picture at true size; null when none is loaded.
    QPixmap Image1;
    // The folder of the pictures, with its closing separator; "" when the site names none.
    QString mstrPhotoPath;

    void ListViewPhoto_Click(QTreeWidgetItem* item);
    void chkSizeToFit_Click();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void readPhotoPath();
    void readPeople();
    void subSetPictureBoxScrollBars();
    void showPicture();
};
