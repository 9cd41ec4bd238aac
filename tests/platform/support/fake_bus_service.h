// A service on the session bus that records what it is asked.
#pragma once

#include <QtCore/QThread>
#include <QtCore/QVariant>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusVirtualObject>

#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace tarvik {

/// Owns a name and answers every method of every object, on a thread of its own, until it is destroyed.
class FakeBusService {
public:
    /// What a method answers, by "method" or "method argument"; methods without an entry answer nothing. An invalid
    /// variant is an error, a string "never" is no answer at all.
    using Answers = std::map<std::string, QVariant>;

    FakeBusService(const char* name, Answers answers);
    ~FakeBusService();

    /// For example "/org/gnome/Shell org.gnome.Shell.ShowApplications" followed by the arguments.
    std::vector<std::string> calls() const;

private:
    class Object;

    QThread thread_;
    std::unique_ptr<Object> object_;
    std::string connection_;
};

} // namespace tarvik
