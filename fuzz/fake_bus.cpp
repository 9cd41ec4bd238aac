#include "fake_bus.h"

#include "require.h"

#include <QtCore/QCoreApplication>
#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusMetaType>
#include <QtDBus/QDBusServer>
#include <QtDBus/QDBusVariant>
#include <QtDBus/QDBusVirtualObject>

#include <sys/mman.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>

namespace tarvik::fuzz {

struct FakeBus::Input {
    std::array<std::uint8_t, 4096> bytes;
    std::size_t size;
    std::size_t used;
};

namespace {

using Settings = QMap<QString, QVariantMap>;

/// Makes values of the input.
class Values {
public:
    explicit Values(FakeBus::Input& input) : input_(input) {}

    unsigned next() {
        std::uint8_t byte = 0;
        take(&byte, 1);
        return byte;
    }

    QVariant value(int depth = 0) {
        switch (next() % (depth < 4 ? 12 : 7)) {
        case 0:
            return next() % 2 == 1;
        case 1:
            return next();
        case 2:
            return static_cast<int>(number<std::int32_t>());
        case 3:
            return static_cast<qlonglong>(number<std::int64_t>());
        case 4:
            return number<double>();
        case 5:
            return text();
        case 6:
            return take(next());
        case 7:
            return QStringList{text(), text()};
        case 8:
            return QVariant::fromValue(QDBusVariant(value(depth + 1)));
        case 9:
            return map(depth);
        case 10:
            return QVariant::fromValue(Settings{{word(), map(depth)}, {word(), map(depth)}});
        default:
            return triple();
        }
    }

private:
    void take(void* target, std::size_t size) {
        size = std::min(size, input_.size - input_.used);
        std::memcpy(target, input_.bytes.data() + input_.used, size);
        input_.used += size;
    }
    QByteArray take(std::size_t size) {
        QByteArray bytes(static_cast<qsizetype>(size), 0);
        take(bytes.data(), size);
        return bytes;
    }
    template <class Number> Number number() {
        Number result = 0;
        take(&result, sizeof result);
        return result;
    }
    QString text() { return QString::fromUtf8(take(next())).remove(QChar(0)); }
    /// Names that are looked for, and others.
    QString word() {
        static const char* const words[] = {"org.freedesktop.appearance",
                                            "org.gnome.desktop.interface",
                                            "color-scheme",
                                            "accent-color",
                                            "reduced-motion",
                                            "enable-animations"};
        const auto choice = next() % 7;
        return choice < 6 ? QString::fromLatin1(words[choice]) : text();
    }
    QVariantMap map(int depth) {
        QVariantMap result;
        for (auto size = next() % 4; size > 0; --size)
            result[word()] = value(depth + 1);
        return result;
    }
    QVariant triple() {
        QDBusArgument argument;
        argument.beginStructure();
        const bool sensible = next() % 2 == 1;
        for (int i = 0; i < 3; ++i)
            argument << (sensible ? next() / 255.0 : number<double>());
        argument.endStructure();
        return QVariant::fromValue(argument);
    }

    FakeBus::Input& input_;
};

class Object final : public QDBusVirtualObject {
public:
    explicit Object(FakeBus::Input& input) : values_(input) {}

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override {
        return call.type() != QDBusMessage::MethodCallMessage || connection.send(answer(call));
    }

private:
    QDBusMessage answer(const QDBusMessage& call) {
        if (call.member() == QLatin1String("Hello"))
            return call.createReply(QStringLiteral(":1.1"));
        if (call.member() == QLatin1String("AddMatch"))
            return call.createReply();
        if (call.member() == QLatin1String("NameHasOwner"))
            return call.createReply(values_.next() % 4 != 0);
        // Who speaks for the bus itself is believed: the toolkit does not survive an owner without a name.
        if (call.member() == QLatin1String("GetNameOwner") && values_.next() % 4 != 0)
            return call.createReply(QStringLiteral(":1.2"));
        if (call.member() == QLatin1String("GetNameOwner"))
            return call.createErrorReply(QStringLiteral("org.freedesktop.DBus.Error.NameHasNoOwner"), QString());
        switch (values_.next() % 8) {
        case 0:
            return call.createErrorReply(QStringLiteral("org.example.Error"), values_.value().toString());
        case 1:
            return call.createReply();
        case 2:
            return call.createReply(QVariantList{values_.value(), values_.value()});
        default:
            return call.createReply(values_.value());
        }
    }

    Values values_;
};

[[noreturn]] void serve(FakeBus::Input& input, int addressPipe) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    int argc = 1;
    char name[] = "bus";
    char* argv[] = {name, nullptr};
    const QCoreApplication application(argc, argv);
    qDBusRegisterMetaType<Settings>();
    Object object(input);
    QDBusServer server(QStringLiteral("unix:tmpdir=/tmp"));
    QObject::connect(&server, &QDBusServer::newConnection, &object, [&object](QDBusConnection connection) {
        connection.registerVirtualObject(QStringLiteral("/"), &object, QDBusConnection::SubPath);
    });
    const auto address = server.address().toUtf8();
    require(write(addressPipe, address.constData(), static_cast<std::size_t>(address.size())) == address.size(),
            "nobody wants to know the bus");
    close(addressPipe);
    std::_Exit(QCoreApplication::exec());
}

} // namespace

FakeBus::FakeBus()
    : input_(static_cast<Input*>(
          mmap(nullptr, sizeof(Input), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))) {
    int ends[2] = {};
    require(input_ != MAP_FAILED && pipe(ends) == 0, "no memory, or no pipe");
    if (fork() == 0)
        serve(*input_, ends[1]);
    close(ends[1]);
    char address[256] = {};
    require(read(ends[0], address, sizeof address - 1) > 0, "no bus");
    close(ends[0]);
    setenv("DBUS_SESSION_BUS_ADDRESS", address, 1);
}

void FakeBus::setInput(const std::uint8_t* data, std::size_t size) {
    input_->size = std::min(size, input_->bytes.size());
    input_->used = 0;
    std::copy_n(data, input_->size, input_->bytes.data());
}

} // namespace tarvik::fuzz
