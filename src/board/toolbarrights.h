#pragma once
// Who may do what on the board, decided without a screen: the right to change
// other people's rows (the Group button, and with it multiple selection), and
// the state of the other toolbar buttons and their menu entries by the server in
// use and the system's settings. The screen reads what the database holds, asks
// here, and applies the answer to its buttons and menu entries.

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

namespace rights {

enum Level : long long
{
    LOW = 0,
    MEDIUM = 1,
    HIGH = 2
};

// Toolbar positions the rights set; 15 to 17 are the first three status buttons.
enum Button : int
{
    btnChange = 2,
    btnGroup = 3,
    btnServers = 5,
    btnHome = 6,
    btnNewMessage = 7,
    btnPreview = 8,
    btnOptions = 11,
    btnFirstStatus = 15,
    btnLastDesignStatus = 17
};

// What the security levels leave to decide: nothing (granted or refused), or
// whether the person is a member, or a managing member, of the group shown.
enum class Test
{
    Granted,
    Refused,
    Member,
    Manager
};

Test changeOthersTest(long long systemLevel, long long userLevel);

// A group whose name ends in "*" is open to everyone; a "*" anywhere else opens nothing.
bool openToEveryone(const QString& group);

// The right to change others: the levels' answer, the membership read when they
// asked for one, and a group open to everyone granting it whatever they say.
bool mayChangeOthers(Test test, bool membershipHeld, const QString& group);

// A member row's GroupManager: set when its trimmed value is greater than 0, or
// a yes/no field's "True".
bool managerMark(const QString& text);

// A button's state; an empty part is left as it is.
struct ButtonRight
{
    int position;
    std::optional<bool> enabled;
    std::optional<bool> visible;
};

// What the other buttons depend on.
struct Site
{
    bool remote = false;           // a remote server's database is in use
    bool serversListed = false;    // ServersTable has rows (asked at home only)
    bool userOnThisServer = false; // the person has a row in this database
    long long userLevel = LOW;
    bool messaging = false;       // AllowMessaging
    bool messagesWaiting = false; // the new-messages pane has rows
};

// The states of Servers, Home, Change, Options, the status buttons, New
// Message and Preview, in the order they are set.
QList<ButtonRight> otherButtons(const Site& site);

// The menu entries that follow a toolbar button's state.
QStringList menuEntriesOf(int position);

} // namespace rights
