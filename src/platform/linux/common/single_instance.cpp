#include "platform/linux/common/single_instance.h"

#include "platform/linux/common/session_bus.h"

#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusConnectionInterface>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusReply>

namespace tarvik {
namespace {

constexpr auto busName = "org.tarvik.Tarvik";
constexpr auto objectPath = "/org/tarvik/Tarvik";
constexpr auto interfaceName = "org.freedesktop.Application";
/// Showing the preferences for the first time loads a view toolkit.
constexpr int patience = 10'000; // milliseconds

} // namespace

SingleInstance::Role SingleInstance::claim() {
    if (!sessionBusHasAddress() || !QDBusConnection::sessionBus().isConnected()) {
        log_.write("no session bus; starting Tarvik again will not show its preferences");
        return Role::first;
    }
    auto bus = QDBusConnection::sessionBus();
    // The object before the name: whoever finds the name can call.
    bus.registerObject(objectPath, this, QDBusConnection::ExportScriptableSlots);
    // Twice: the owner of the name may have ended when it is asked.
    for (int i = 0; i < 2; ++i) {
        const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply = bus.interface()->registerService(
            busName, QDBusConnectionInterface::DontQueueService, QDBusConnectionInterface::DontAllowReplacement);
        if (!reply.isValid()) {
            log_.write("no name on the session bus: " + reply.error().message().toStdString());
            return Role::first;
        }
        owner_ = reply.value() == QDBusConnectionInterface::ServiceRegistered;
        if (owner_)
            return Role::first;
        auto call = QDBusMessage::createMethodCall(busName, objectPath, interfaceName, "Activate");
        call.setArguments({QVariantMap()});
        call.setAutoStartService(false);
        const auto answer = bus.call(call, QDBus::Block, patience);
        if (answer.type() == QDBusMessage::ReplyMessage || QDBusError(answer).type() != QDBusError::ServiceUnknown) {
            log_.write(answer.type() == QDBusMessage::ReplyMessage
                           ? "already running; its preferences were asked for"
                           : "already running, but it does not answer: " + answer.errorMessage().toStdString());
            return Role::second;
        }
    }
    return Role::first;
}

SingleInstance::~SingleInstance() {
    if (owner_)
        QDBusConnection::sessionBus().unregisterService(busName);
}

void SingleInstance::Activate(const QVariantMap&) {
    if (reopen_)
        reopen_();
}

void SingleInstance::Open(const QStringList&, const QVariantMap&) { Activate({}); }
void SingleInstance::ActivateAction(const QString&, const QVariantList&, const QVariantMap&) { Activate({}); }

} // namespace tarvik
