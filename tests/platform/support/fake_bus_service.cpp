#include "platform/support/fake_bus_service.h"

#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusVariant>

#include <stdexcept>
#include <utility>

namespace tarvik {
namespace {

QString text(const QVariant& value) {
    return value.canConvert<QDBusVariant>() ? text(value.value<QDBusVariant>().variant()) : value.toString();
}

} // namespace

class FakeBusService::Object final : public QDBusVirtualObject {
public:
    explicit Object(Answers answers) : answers_(std::move(answers)) {}

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        auto call = message.member();
        for (const auto& argument : message.arguments())
            call += " " + text(argument);
        const std::lock_guard lock(mutex_);
        calls_.push_back((message.path() + " " + message.interface() + "." + call).toStdString());
        for (const auto& key : {call.toStdString(), message.member().toStdString()}) {
            const auto answer = answers_.find(key);
            if (answer == answers_.end())
                continue;
            if (answer->second == QVariant("never"))
                return true;
            return connection.send(answer->second.isValid() ? message.createReply(answer->second)
                                                            : message.createErrorReply(QDBusError::AccessDenied, "no"));
        }
        return connection.send(message.createReply());
    }

    std::vector<std::string> calls() const {
        const std::lock_guard lock(mutex_);
        return calls_;
    }

private:
    const Answers answers_;
    mutable std::mutex mutex_;
    std::vector<std::string> calls_;
};

FakeBusService::FakeBusService(const char* name, Answers answers)
    : object_(std::make_unique<Object>(std::move(answers))), connection_(std::string("fake ") + name) {
    auto bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QString::fromStdString(connection_));
    if (!bus.registerVirtualObject("/", object_.get(), QDBusConnection::SubPath) || !bus.registerService(name))
        throw std::runtime_error("no session bus");
    object_->moveToThread(&thread_);
    thread_.start();
}

FakeBusService::~FakeBusService() {
    QDBusConnection::disconnectFromBus(QString::fromStdString(connection_));
    thread_.quit();
    thread_.wait();
}

std::vector<std::string> FakeBusService::calls() const { return object_->calls(); }

} // namespace tarvik
