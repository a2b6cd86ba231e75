#include "board/singleinstance.h"

#include "platform/clock.h"
#include "platform/process.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QLocalSocket>
#include <QSet>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const QByteArray kRaise = QByteArrayLiteral("raise\n");
// How long a later copy waits for the first one's answer, and how often it asks
// while the first copy is between taking the lock and listening.
constexpr int kWaitMs = 1000;
constexpr int kTries = 10;
constexpr int kPauseMs = 100;

// Letters, digits, '.', '_' and '-' stand; anything else becomes '_'.
QString safePart(const QString& text, int length)
{
    QString safe;
    for (const QChar c : text.left(length)) {
        const bool plain = c.unicode() < 128 && (c.isLetterOrNumber() || c == u'.' || c == u'_' || c == u'-');
        safe += plain ? c : QChar(u'_');
    }
    return safe;
}

// The names this process listens on. Another board of this same process (tests
// make several) is no other copy of the program.
QSet<QString>& listenedHere()
{
    static QSet<QString> names;
    return names;
}

// A folder (not a link to one) of this account that no one else may enter.
bool isPrivateFolder(const QString& path)
{
    struct stat info = {};
    if (path.isEmpty() || ::lstat(QFile::encodeName(path).constData(), &info) != 0) {
        return false;
    }
    return S_ISDIR(info.st_mode) && info.st_uid == ::geteuid() && (info.st_mode & (S_IRWXG | S_IRWXO)) == 0;
}

// The other end of a local socket runs under this account.
bool peerIsThisAccount(qintptr descriptor)
{
    ucred peer = {};
    socklen_t size = sizeof(peer);
    return descriptor >= 0 && ::getsockopt(int(descriptor), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
           peer.uid == ::geteuid();
}

} // namespace

QString SingleInstance::privateFolder()
{
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (isPrivateFolder(runtime)) {
        return runtime;
    }
    const QString own = QDir(QDir::tempPath()).filePath(QStringLiteral("veskor-") + QString::number(::geteuid()));
    ::mkdir(QFile::encodeName(own).constData(), S_IRWXU); // there already is fine: it is checked next
    return isPrivateFolder(own) ? own : QString();
}

QString SingleInstance::socketPath(const QString& loginName, const QString& site, const QString& person)
{
    const QString folder = privateFolder();
    return folder.isEmpty() ? QString() : QDir(folder).filePath(serverName(loginName, site, person));
}

QString SingleInstance::serverName(const QString& loginName, const QString& site, const QString& person)
{
    // The readable parts may be cut or changed; the hash keeps every name distinct.
    const QByteArray whole = (loginName + QLatin1Char('\n') + site + QLatin1Char('\n') + person).toUtf8();
    const QString hash =
        QString::fromLatin1(QCryptographicHash::hash(whole, QCryptographicHash::Sha256).toHex().left(16));
    return QStringLiteral("veskor-") + safePart(loginName, 16) + QLatin1Char('-') + safePart(person, 24) +
           QLatin1Char('-') + hash;
}

SingleInstance::SingleInstance(const QString& loginName, const QString& site, const QString& person, QObject* parent)
    : QObject(parent), m_path(socketPath(loginName, site, person)), m_lock(m_path + QStringLiteral(".lock"))
{
    // Only a lock whose process is gone is stale; a long run keeps its lock.
    m_lock.setStaleLockTime(0);
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &SingleInstance::answerLaterCopy);
}

SingleInstance::~SingleInstance()
{
    if (m_server.isListening()) {
        listenedHere().remove(m_path);
    }
    m_server.close();
}

bool SingleInstance::claim()
{
    if (m_path.isEmpty() || listenedHere().contains(m_path)) {
        return true; // no private folder: a board for everyone rather than none
    }
    for (int attempt = 0; attempt < kTries; ++attempt) {
        if (askOtherToRaise()) {
            return false;
        }
        if (m_lock.tryLock(0)) {
            // A socket file left by a copy that crashed would stop the listen.
            QLocalServer::removeServer(m_path);
            if (m_server.listen(m_path)) {
                listenedHere().insert(m_path);
            }
            return true;
        }
        platform::DoEvents();
        platform::Sleep(kPauseMs);
    }
    // Someone holds the lock but never answers: start rather than refuse the person a board.
    return true;
}

bool SingleInstance::isListening() const
{
    return m_server.isListening();
}

bool SingleInstance::askOtherToRaise()
{
    QLocalSocket socket;
    socket.connectToServer(m_path);
    if (!socket.waitForConnected(kWaitMs) || !peerIsThisAccount(socket.socketDescriptor())) {
        return false; // only a board of this account is asked, and obeyed
    }
    socket.write(kRaise);
    const bool sent = socket.waitForBytesWritten(kWaitMs);
    socket.disconnectFromServer();
    return sent;
}

void SingleInstance::answerLaterCopy()
{
    while (QLocalSocket* socket = m_server.nextPendingConnection()) {
        if (!peerIsThisAccount(socket->socketDescriptor())) {
            socket->abort();
            socket->deleteLater();
            continue;
        }
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
            if (socket->canReadLine() && socket->readLine() == kRaise) {
                emit raiseRequested();
            }
        });
    }
}
