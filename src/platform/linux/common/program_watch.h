// Notices that another program lies where this one was started from.
#pragma once

#include "support/log.h"

#include <QFileSystemWatcher>
#include <QProcess>
#include <QTimer>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <tuple>

namespace tarvik {

/// A package manager, "make install" and a linker all put a new file in the place of one that runs. They do so with
/// several files one after the other, and the libraries that a new program needs may come after it: nothing is said
/// until the folders have been quiet for a moment and the dynamic linker has found all that the program needs. Asleep
/// while nothing changes. Main thread; needs a QCoreApplication.
class ProgramWatch final : public QObject {
public:
    struct Places {
        /// Absolute, where the program was started from.
        std::filesystem::path program;
        /// With its module and its companions; need not exist.
        std::filesystem::path libraries;
        /// Leads to the file that runs, wherever that is by now.
        std::filesystem::path running = "/proc/self/exe";
    };
    /// Of this process.
    static Places places();

    struct Pace {
        /// So long after the last change: packages are unpacked within milliseconds, an installation takes a second.
        std::chrono::milliseconds quiet{2000};
        /// The next look at a program that cannot be started yet.
        std::chrono::milliseconds again{10'000};
    };

    /// `replaced` is called for each new program that can be started. One that cannot, and one that was removed, is a
    /// line in the log, and this program goes on.
    ProgramWatch(Places places, LogSink& log, std::function<void()> replaced, Pace pace);
    ~ProgramWatch() override;

    const std::filesystem::path& program() const { return places_.program; }
    /// Whether what `replaced` told of last still lies there.
    bool successorReady() const { return told_ && identity(places_.program) == told_; }

private:
    /// Which file, and which of its contents: device, number, size, time of the last change.
    using Identity = std::tuple<std::uint64_t, std::uint64_t, std::int64_t, std::int64_t, std::int64_t>;

    static std::optional<Identity> identity(const std::filesystem::path& file);
    void watch();
    void look();
    void askLinker();
    void answered(bool complete);
    void say(const std::string& state);

    const Places places_;
    LogSink& log_;
    const std::function<void()> replaced_;
    const Pace pace_;
    const std::optional<Identity> running_;
    /// Whom the linker is asked about, and whom `replaced` was told of.
    std::optional<Identity> asked_;
    std::optional<Identity> told_;
    std::string said_;
    QFileSystemWatcher folders_;
    QTimer timer_;
    QProcess linker_;
};

} // namespace tarvik
