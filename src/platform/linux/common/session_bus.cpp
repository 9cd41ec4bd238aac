#include "platform/linux/common/session_bus.h"

#include <QtCore/QString>
#include <QtDBus/QDBusError>
#include <QtDBus/QDBusVariant>

#include <sys/stat.h>

#include <cstdlib>
#include <string>

namespace tarvik {
namespace {

constexpr int patience = 1000; // milliseconds
constexpr auto propertiesInterface = "org.freedesktop.DBus.Properties";

QString connectionName(const SessionBus* bus) {
    return QStringLiteral("tarvik-%1").arg(reinterpret_cast<quintptr>(bus), 0, 16);
}

BusReply::Outcome outcomeOf(const QDBusMessage& reply) {
    if (reply.type() == QDBusMessage::ReplyMessage)
        return BusReply::Outcome::answered;
    switch (QDBusError(reply).type()) {
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        return BusReply::Outcome::silent;
    default:
        return BusReply::Outcome::refused;
    }
}

} // namespace

bool sessionBusHasAddress() {
    if (std::getenv("DBUS_SESSION_BUS_ADDRESS"))
        return true;
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    struct stat status = {};
    return folder && stat((std::string(folder) + "/bus").c_str(), &status) == 0 && S_ISSOCK(status.st_mode);
}

SessionBus::~SessionBus() { disconnect(); }

void SessionBus::disconnect() {
    if (!connection_)
        return; // the bus library starts a thread at its first use, even to disconnect
    connection_.reset();
    QDBusConnection::disconnectFromBus(connectionName(this));
}

bool SessionBus::connect() {
    if (connection_ && connection_->isConnected())
        return true;
    disconnect();
    if (!sessionBusHasAddress())
        return false;
    connection_ = QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName(this));
    return connection_->isConnected();
}

bool SessionBus::runs(const char* service) {
    constexpr BusObject bus = {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus"};
    return call(bus, "NameHasOwner", {QString::fromLatin1(service)}).value.toBool();
}

BusReply SessionBus::call(const BusObject& object, const char* method, const QVariantList& arguments) {
    if (!connect())
        return {};
    auto message = QDBusMessage::createMethodCall(QString::fromLatin1(object.service), QString::fromLatin1(object.path),
                                                  QString::fromLatin1(object.interface), QString::fromLatin1(method));
    message.setArguments(arguments);
    message.setAutoStartService(false);
    const auto reply = connection_->call(message, QDBus::Block, patience);
    const auto outcome = outcomeOf(reply);
    return {outcome, outcome == BusReply::Outcome::answered ? reply.arguments().value(0) : QVariant()};
}

BusReply SessionBus::property(const BusObject& object, const char* name) {
    auto reply = call({object.service, object.path, propertiesInterface}, "Get",
                      {QString::fromLatin1(object.interface), QString::fromLatin1(name)});
    reply.value = reply.value.value<QDBusVariant>().variant();
    return reply;
}

BusReply SessionBus::setProperty(const BusObject& object, const char* name, const QVariant& value) {
    return call(
        {object.service, object.path, propertiesInterface}, "Set",
        {QString::fromLatin1(object.interface), QString::fromLatin1(name), QVariant::fromValue(QDBusVariant(value))});
}

} // namespace tarvik
