#include "platform/linux/common/program_watch.h"

#include "platform/linux/common/paths.h"

#include <QStringList>

#include <sys/stat.h>
#include <system_error>
#include <utility>

namespace tarvik {

ProgramWatch::Places ProgramWatch::places() {
    const auto program = executable();
    return {program, (program.parent_path() / TARVIK_LIBRARY_FOLDER).lexically_normal()};
}

ProgramWatch::ProgramWatch(Places places, LogSink& log, std::function<void()> replaced, Pace pace)
    : places_(std::move(places))
    , log_(log)
    , replaced_(std::move(replaced))
    , pace_(pace)
    , running_(identity(places_.running)) {
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, [this] { look(); });
    connect(&folders_, &QFileSystemWatcher::directoryChanged, this, [this] { timer_.start(pace_.quiet); });
    connect(&linker_, &QProcess::finished, this, [this](int exitCode, QProcess::ExitStatus status) {
        const auto text = linker_.readAll();
        // What is missing does not always show in the exit code.
        answered(status == QProcess::NormalExit && exitCode == 0 && !text.contains("not found") &&
                 !text.contains("undefined symbol"));
    });
    connect(&linker_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            answered(false);
    });
    linker_.setProcessChannelMode(QProcess::MergedChannels);
    linker_.setStandardInputFile(QProcess::nullDevice());
    watch();
    if (identity(places_.program) != running_)
        timer_.start(pace_.quiet); // it was quick
}

ProgramWatch::~ProgramWatch() {
    linker_.disconnect(this);
    linker_.kill();
    linker_.waitForFinished(1000);
}

std::optional<ProgramWatch::Identity> ProgramWatch::identity(const std::filesystem::path& file) {
    struct stat status {};
    if (stat(file.c_str(), &status) != 0)
        return std::nullopt;
    return Identity(status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec);
}

/// Folders are watched, not files: a file that runs stays as it is, and a new one takes its name.
void ProgramWatch::watch() {
    for (const auto& folder : {places_.program.parent_path(), places_.libraries}) {
        // A folder that was removed and made again needs a new watch.
        const auto name = QString::fromStdString(folder.native());
        std::error_code ignored;
        if (std::filesystem::is_directory(folder, ignored) && !folders_.directories().contains(name))
            folders_.addPath(name);
    }
}

void ProgramWatch::look() {
    watch();
    if (linker_.state() != QProcess::NotRunning) {
        linker_.kill(); // it has had its time; `answered` is next
        return;
    }
    const auto there = identity(places_.program);
    if (!there)
        say("the program was removed; going on without it");
    else if (there == running_)
        said_.clear();
    else if (there != told_)
        askLinker();
}

/// What the linker finds missing today may be unpacked tomorrow. Nothing of the new program is executed.
void ProgramWatch::askLinker() {
    asked_ = identity(places_.program);
    auto environment = QProcessEnvironment::systemEnvironment();
    for (const auto* variable : {"LD_TRACE_LOADED_OBJECTS", "LD_BIND_NOW", "LD_WARN"}) // see ld.so(8)
        environment.insert(variable, "1");
    linker_.setProcessEnvironment(environment);
    timer_.start(pace_.again);
    linker_.start(QString::fromStdString(places_.program.native()), QStringList());
}

void ProgramWatch::answered(bool complete) {
    if (identity(places_.program) != asked_) {
        timer_.start(pace_.quiet);
        return;
    }
    timer_.stop();
    if (!complete) {
        say("the program was replaced by one that cannot be started; going on without it");
        timer_.start(pace_.again);
        return;
    }
    say("the program was replaced");
    told_ = asked_;
    replaced_();
}

void ProgramWatch::say(const std::string& state) {
    if (state != said_)
        log_.write(state);
    said_ = state;
}

} // namespace tarvik
