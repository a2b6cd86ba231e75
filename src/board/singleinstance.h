#pragma once
// One board per person on a desktop. The first copy for a person listens on a
// local socket named after the desktop's user and the person; a later copy for
// the same person finds it, asks it to come to the front, and leaves. A copy for
// another person uses another name and goes on.
//
// The name also holds the site's database folder: a person may keep boards of
// two sites open side by side.
//
// The socket lies in a folder that only this account can enter (the user's
// runtime directory), and each end checks that the other runs under this account
// too, so no other account on the machine can stop or steer a person's board.
//
// A lock file beside the socket makes "am I first" a single atomic test, so two
// copies started at the same moment cannot both become first; a lock left by a
// copy that crashed is taken over.

#include <QLocalServer>
#include <QLockFile>
#include <QObject>
#include <QString>

class SingleInstance : public QObject
{
    Q_OBJECT

public:
    // The socket name for a person: the desktop user and the person's name, made
    // safe for a socket name and short enough for one, yet different for every name.
    static QString serverName(const QString& loginName, const QString& site, const QString& person);
    // The folder of the sockets: XDG_RUNTIME_DIR when it is this account's own and
    // closed to others, else a folder made for this account in the temporary
    // folder, on the same terms. Empty when neither can be had: then there is no
    // socket, and every copy goes on.
    static QString privateFolder();
    // Where the person's socket lies; empty when there is no private folder.
    static QString socketPath(const QString& loginName, const QString& site, const QString& person);

    SingleInstance(const QString& loginName, const QString& site, const QString& person, QObject* parent = nullptr);
    ~SingleInstance() override;

    // True when this copy is the first for the person and now listens (or when the
    // first is a board of this same process). False when another copy answered:
    // it has been asked to come to the front.
    bool claim();
    bool isListening() const;

signals:
    // A later copy for the same person asked this one to come to the front.
    void raiseRequested();

private:
    bool askOtherToRaise();
    void answerLaterCopy();

    QString m_path;
    QLockFile m_lock;
    QLocalServer m_server;
};
