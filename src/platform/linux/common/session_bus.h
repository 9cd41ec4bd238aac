// Blocking calls on the session bus.
#pragma once

#include <QtCore/QVariant>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>

#include <cstdint>
#include <optional>

namespace tarvik {

/// Without an address the bus library would start a bus of its own, which nobody else is on.
bool sessionBusHasAddress();

/// An object that a service offers, and the interface of it that is meant.
struct BusObject {
    const char* service;
    const char* path;
    const char* interface;
};

struct BusReply {
    enum class Outcome : std::uint8_t { answered, refused, silent } outcome = Outcome::refused;
    /// The first result, where there is one.
    QVariant value;
};

/// A connection of its own, made at the first use and again after the bus went away. Used by one thread at a time;
/// needs no event loop. Services are never started by a call.
class SessionBus {
public:
    SessionBus() = default;
    ~SessionBus();
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;

    /// Whether somebody owns the name.
    bool runs(const char* service);
    /// Waits for the answer, at most a second.
    BusReply call(const BusObject& object, const char* method, const QVariantList& arguments = {});
    BusReply property(const BusObject& object, const char* name);
    BusReply setProperty(const BusObject& object, const char* name, const QVariant& value);

private:
    bool connect();
    void disconnect();

    std::optional<QDBusConnection> connection_;
};

} // namespace tarvik
