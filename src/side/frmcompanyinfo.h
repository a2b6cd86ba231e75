#pragma once
// frmCompanyInfo: the free text about the person's organisation that the
// administrator keeps in GlobalSettingsTable.CompanyInfo. Nothing typed here is
// saved. A modal screen of the board.

#include <QDialog>

class QLabel;
class QPlainTextEdit;
class QPushButton;
class QStatusBar;

class frmCompanyInfo : public QDialog
{
    Q_OBJECT

public:
    explicit frmCompanyInfo(QWidget* parent = nullptr);

    void Form_Load();

    QLabel* lblCompanyInfo;
    QPlainTextEdit* txtCompanyInfo;
    QPushButton* cmdOKCompanyInfo;
    QPushButton* cmdHelpCompanyInfo;
    QStatusBar* StatusBarCompanyInfo;

protected:
    // The hint of the control under the mouse, in the status bar.
    bool event(QEvent* event) override;
};
