// Tells a test what the program's windows say to a screen reader, and where: a plugin that the toolkit loads into the
// program when the environment asks for it (QT_QPA_GENERIC_PLUGINS=tarvikprobe:SOCKET and QT_PLUGIN_PATH).
//
// On the socket, one line of JSON answers one line: "tree" the windows with everything in them, "block N" an empty
// object after the main thread has slept for N milliseconds.

#include <QAccessible>
#include <QFile>
#include <QGenericPlugin>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMetaEnum>
#include <QSocketNotifier>
#include <QThread>
#include <QWindow>

#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

QJsonObject described(QAccessibleInterface& item, qsizetype parent) {
    const auto state = item.state();
    const auto frame = item.rect();
    QJsonArray states;
    const auto add = [&states](bool holds, const char* name) {
        if (holds)
            states.append(name);
    };
    // The views of Qt 6.4 do not say it; their property does.
    const auto enabled = item.object() ? item.object()->property("enabled") : QVariant();
    add(state.disabled || (enabled.isValid() && !enabled.toBool()), "disabled");
    add(state.invisible, "invisible");
    add(state.focused, "focused");
    add(state.checked, "checked");
    add(state.selected, "selected");
    add(state.focusable, "focusable");
    QJsonObject object{
        {"role", QMetaEnum::fromType<QAccessible::Role>().valueToKey(item.role())},
        {"name", item.text(QAccessible::Name)},
        {"description", item.text(QAccessible::Description)},
        {"text", item.text(QAccessible::Value)},
        {"frame", QJsonArray{frame.x(), frame.y(), frame.width(), frame.height()}},
        {"states", states},
        {"parent", parent},
    };
    if (auto* value = item.valueInterface())
        object["value"] = value->currentValue().toDouble();
    return object;
}

/// Each item after the one that it stands in, whose place in the list is its "parent"; -1 for the window.
void addTree(QJsonArray& all, QAccessibleInterface& item, qsizetype parent = -1) {
    const auto place = all.size();
    all.append(described(item, parent));
    for (int i = 0; i < item.childCount(); ++i) {
        if (auto* child = item.child(i))
            addTree(all, *child, place);
    }
}

QJsonObject tree() {
    QJsonArray windows;
    for (auto* window : QGuiApplication::topLevelWindows()) {
        auto* root = QAccessible::queryAccessibleInterface(window);
        if (!root || !window->isVisible() || window->title().isEmpty())
            continue;
        QJsonArray items;
        addTree(items, *root);
        windows.append(QJsonObject{{"title", window->title()}, {"active", window->isActive()}, {"items", items}});
    }
    return {{"windows", windows}};
}

QJsonObject answer(const QByteArray& line) {
    if (line == "tree")
        return tree();
    if (line.startsWith("block "))
        QThread::msleep(line.mid(6).toULong());
    return {};
}

class Probe : public QObject {
public:
    explicit Probe(const QString& path) : socket_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_un address{AF_UNIX, {}};
        std::strncpy(address.sun_path, path.toLocal8Bit().constData(), sizeof(address.sun_path) - 1);
        if (bind(socket_, reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0 || listen(socket_, 1) != 0)
            qFatal("the probe cannot listen");
        auto* notifier = new QSocketNotifier(socket_, QSocketNotifier::Read, this);
        connect(notifier, &QSocketNotifier::activated, this, [this] { serve(); });
        QAccessible::setActive(true);
    }
    ~Probe() override { close(socket_); }

private:
    /// One question for each connection.
    void serve() const {
        const int connection = accept4(socket_, nullptr, nullptr, SOCK_CLOEXEC);
        QFile file;
        if (!file.open(connection, QIODevice::ReadWrite | QIODevice::Unbuffered, QFile::AutoCloseHandle))
            return;
        const auto line = file.readLine().trimmed();
        file.write(QJsonDocument(answer(line)).toJson(QJsonDocument::Compact) + '\n');
    }

    const int socket_;
};

class ProbePlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "window_probe.json")

public:
    QObject* create(const QString& key, const QString& path) override {
        return key.compare("tarvikprobe", Qt::CaseInsensitive) == 0 ? new Probe(path) : nullptr;
    }
};

} // namespace

#include "window_probe.moc"
