#pragma once
// frmServers: the other sites' database folders that ServersTable lists, and the
// switch of the whole client to the one chosen. Every refusal leaves the client
// on the database it was using. A modal screen of the board.

#include <QDialog>

class QLabel;
class QPushButton;
class QStatusBar;
class QTreeWidget;
class QTreeWidgetItem;

class frmServers : public QDialog
{
    Q_OBJECT

public:
    explicit frmServers(QWidget* parent = nullptr);
    ~frmServers() override;

    // Made, loaded, centred and shown modally; gone when it closes.
    static void showModal(QWidget* parent);

    void Form_Load();
    void subGetRemoteServers();
    void ListViewServers_ItemClick();
    void cmdOKServers_Click();
    void cmdCancelServers_Click();
    void cmdHelpServers_Click();

    QLabel* lblRemoteServer;
    QTreeWidget* ListViewServers;
    QPushButton* cmdOKServers;
    QPushButton* cmdCancelServers;
    QPushButton* cmdHelpServers;
    QStatusBar* StatusBarServers;
    QLabel* Image1;

    QString statusText() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QTreeWidgetItem* selectedRow() const;
    void setStatusText(const QString& text);
    // The steps of OK once the folder is known; false when it was refused.
    bool connectTo(const QString& folder);
    void refuse(const QString& prompt, int flags, const QString& title = QString());

    QLabel* m_panel;
};
