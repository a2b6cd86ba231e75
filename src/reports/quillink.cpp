// The D-Bus side of the link to QUIL, and the board's command that uses it.
#include "reports/quillink.h"

#include "kernel/err.h"
#include "kernel/errorboxes.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "platform/msgbox.h"
#include "reports/sendmail.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <memory>

namespace reports {

namespace {

constexpr int kNameQueryMs = 500; // the bus daemon answers at once; more means the bus is in trouble
constexpr int kCallMs = 5000;

QDBusMessage quilCall(const QString& method, const QVariantList& arguments = {})
{
    QDBusMessage call = QDBusMessage::createMethodCall(kQuilService, kQuilPath, kQuilInterface, method);
    call.setArguments(arguments);
    return call;
}

// VB's numbers for a conversation that failed: nobody answered the link, no
// answer in time, or the other program would not do what was asked.
long long conversationError(const QDBusError& error)
{
    switch (error.type()) {
    case QDBusError::ServiceUnknown:
    case QDBusError::Disconnected:
        return 282;
    case QDBusError::NoReply:
    case QDBusError::Timeout:
        return 286;
    default:
        return 285;
    }
}

// The bus daemon's question whether QUIL's name has an owner.
QDBusMessage nameHasOwner()
{
    QDBusMessage ask =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                                       QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameHasOwner"));
    ask << kQuilService;
    return ask;
}

} // namespace

QuilLink::QuilLink(QDBusConnection bus) : m_bus(std::move(bus))
{
}

bool QuilLink::isRunning() const
{
    if (!m_bus.isConnected()) {
        return false;
    }
    const QDBusMessage ask = nameHasOwner();
    const QDBusMessage answer = m_bus.call(ask, QDBus::Block, kNameQueryMs);
    return answer.type() == QDBusMessage::ReplyMessage && answer.arguments().value(0).toBool();
}

void QuilLink::raise()
{
    m_bus.asyncCall(quilCall(QStringLiteral("Raise")), kCallMs);
}

void QuilLink::startMessage(const QString& to, const QString& operatorName)
{
    m_bus.asyncCall(quilCall(QStringLiteral("Create")), kCallMs);
    m_bus.asyncCall(quilCall(QStringLiteral("Clear")), kCallMs);
    // One box for the conversation, however many of its steps fail.
    auto reported = std::make_shared<bool>(false);
    const QDBusMessage steps[] = {
        quilCall(QStringLiteral("Poke"), {QStringLiteral("To"), to}),
        quilCall(QStringLiteral("Poke"), {QStringLiteral("Operator"), operatorName}),
        quilCall(QStringLiteral("OpenMessageScreen")),
    };
    for (const QDBusMessage& step : steps) {
        auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(step, kCallMs));
        QObject::connect(watcher, &QDBusPendingCallWatcher::finished, [watcher, reported] {
            watcher->deleteLater();
            if (!watcher->isError() || *reported) {
                return;
            }
            *reported = true;
            Err.Clear();
            Err.Number = conversationError(watcher->error());
            Err.Description = watcher->error().message();
            errorbox::showGeneral(QStringLiteral("frmMain - subSendQUILMessage event"), errorbox::Joined);
        });
    }
}

void QuilLink::watch(QObject* context, const std::function<void(bool)>& showCommand)
{
    if (!m_bus.isConnected()) {
        showCommand(false);
        return;
    }
    auto* watcher = new QDBusServiceWatcher(kQuilService, m_bus, QDBusServiceWatcher::WatchForOwnerChange, context);
    QObject::connect(
        watcher, &QDBusServiceWatcher::serviceOwnerChanged, context,
        [showCommand](const QString&, const QString&, const QString& owner) { showCommand(!owner.isEmpty()); });
    const QDBusMessage ask = nameHasOwner();
    auto* first = new QDBusPendingCallWatcher(m_bus.asyncCall(ask, kCallMs), context);
    QObject::connect(first, &QDBusPendingCallWatcher::finished, context, [first, showCommand] {
        first->deleteLater();
        const QDBusMessage answer = first->reply();
        showCommand(answer.type() == QDBusMessage::ReplyMessage && answer.arguments().value(0).toBool());
    });
}

QuilLink& quilLink()
{
    static QuilLink link(QDBusConnection::sessionBus());
    return link;
}

void subSendQUILMessage(QuilLink& link, const std::function<void(bool)>& showCommand)
{
    if (!link.isRunning()) {
        showCommand(false);
        platform::MsgBox(QStringLiteral("Sorry, 'QUIL' is no longer running. Please select the QUIL icon from "
                                        "Program Manager or Start Menu."),
                         platform::vbExclamation, QStringLiteral("QUIL Unavailable"));
        return;
    }
    showCommand(true);
    link.raise();
    const QStringList selected = mainScreen().selectedRowTexts(fnNameSubItem());
    const QString name = selected.isEmpty() ? QString() : selected.last().trimmed();
    mainScreen().subRefreshUserList(QString());
    if (selected.size() > 1) {
        platform::MsgBox(QStringLiteral("Please select just ONE person when sending a QUIL message. Additional users "
                                        "should be selected from within QUIL itself."));
    }
    link.startMessage(name, gRun.gstrDefaultUser);
}

} // namespace reports
