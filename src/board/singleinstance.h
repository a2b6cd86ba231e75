#pragma once
// One board per person on a desktop. The first copy for a person listens on a
// local socket named after the desktop's user and the person; a later copy for
// the same person finds it, asks it to come to the front, and leaves. A copy for
// another person uses another name and goes on.
//
// The name also holds the site's database folder: a person may keep boards of
// two sites open side by side.
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

    QString m_name;
    QLockFile m_lock;
    QLocalServer m_server;
};
