#include "child_process.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <fstream>
#include <map>
#include <poll.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kelmo::bench {
namespace {

int openPidFd(pid_t pid) {
    return static_cast<int>(::syscall(SYS_pidfd_open, pid, 0));
}

void signalPidFd(int pidFd, int signal) {
    ::syscall(SYS_pidfd_send_signal, pidFd, signal, nullptr, 0);
}

int millisecondsUntil(Clock::time_point deadline) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    return static_cast<int>(std::clamp<long long>(left, 0, 60'000));
}

// Waits until every pidfd reports its process gone, up to the deadline; answers the
// ones still alive.
std::vector<int> waitForPidFds(std::vector<int> pidFds, Clock::time_point deadline) {
    while (!pidFds.empty()) {
        std::vector<pollfd> fds;
        for (int fd : pidFds)
            fds.push_back(pollfd{fd, POLLIN, 0});
        const int polled = ::poll(fds.data(), fds.size(), millisecondsUntil(deadline));
        if (polled < 0 && errno == EINTR)
            continue;
        if (polled <= 0)
            break;
        std::vector<int> alive;
        for (const auto& entry : fds) {
            if (entry.revents)
                ::close(entry.fd);
            else
                alive.push_back(entry.fd);
        }
        pidFds = std::move(alive);
    }
    return pidFds;
}

} // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& argv,
                           const std::vector<std::string>& environment) {
    int outputPipe[2];
    int errorsPipe[2];
    if (::pipe2(outputPipe, O_CLOEXEC) != 0)
        throw std::runtime_error{std::string{"pipe: "} + std::strerror(errno)};
    if (::pipe2(errorsPipe, O_CLOEXEC) != 0) {
        ::close(outputPipe[0]);
        ::close(outputPipe[1]);
        throw std::runtime_error{std::string{"pipe: "} + std::strerror(errno)};
    }

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, outputPipe[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errorsPipe[1], STDERR_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    posix_spawnattr_setpgroup(&attributes, 0);

    std::vector<char*> args;
    for (const auto& argument : argv)
        args.push_back(const_cast<char*>(argument.c_str()));
    args.push_back(nullptr);
    std::vector<char*> env;
    for (const auto& entry : environment)
        env.push_back(const_cast<char*>(entry.c_str()));
    env.push_back(nullptr);

    const int failed =
        ::posix_spawn(&pid_, args[0], &actions, &attributes, args.data(), env.data());
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
    ::close(outputPipe[1]);
    ::close(errorsPipe[1]);
    if (failed) {
        ::close(outputPipe[0]);
        ::close(errorsPipe[0]);
        throw std::runtime_error{"cannot start " + argv[0] + ": " + std::strerror(failed)};
    }
    outputFd_ = outputPipe[0];
    errorsFd_ = errorsPipe[0];
    ::fcntl(outputFd_, F_SETFL, O_NONBLOCK);
    ::fcntl(errorsFd_, F_SETFL, O_NONBLOCK);
    pidFd_ = openPidFd(pid_);
}

ChildProcess::~ChildProcess() {
    if (!exited_)
        stop(std::chrono::milliseconds{0});
    for (int fd : {outputFd_, errorsFd_, pidFd_}) {
        if (fd >= 0)
            ::close(fd);
    }
}

void ChildProcess::readPipe(int& fd, std::string& into) {
    char buffer[16384];
    while (fd >= 0) {
        const ssize_t count = ::read(fd, buffer, sizeof buffer);
        if (count > 0) {
            into.append(buffer, static_cast<std::size_t>(count));
        } else if (count == 0 || (errno != EINTR && errno != EAGAIN)) {
            ::close(fd);
            fd = -1;
        } else if (errno == EAGAIN) {
            return;
        }
    }
}

void ChildProcess::reap() {
    if (exited_)
        return;
    int status = 0;
    while (::waitpid(pid_, &status, 0) < 0 && errno == EINTR) {
    }
    exited_ = true;
}

std::optional<Clock::time_point> ChildProcess::waitUntil(const std::function<bool()>& ready,
                                                         Clock::time_point deadline,
                                                         const ExtraSource& extra) {
    for (;;) {
        if (ready())
            return Clock::now();
        if (exited_ || Clock::now() >= deadline)
            return std::nullopt;
        pollfd fds[4] = {{outputFd_, POLLIN, 0},
                         {errorsFd_, POLLIN, 0},
                         {pidFd_, POLLIN, 0},
                         {extra.fd, POLLIN, 0}};
        const int polled = ::poll(fds, 4, millisecondsUntil(deadline));
        if (polled < 0 && errno != EINTR)
            return std::nullopt;
        if (fds[0].revents)
            readPipe(outputFd_, output_);
        if (fds[1].revents)
            readPipe(errorsFd_, errors_);
        if (fds[3].revents && extra.onReadable)
            extra.onReadable();
        if (fds[2].revents) {
            // Whatever it wrote before exiting is still in the pipes.
            readPipe(outputFd_, output_);
            readPipe(errorsFd_, errors_);
            reap();
        }
    }
}

bool ChildProcess::keepReadingUntil(Clock::time_point deadline) {
    waitUntil([] { return false; }, deadline);
    return !exited_;
}

bool ChildProcess::waitForExit(Clock::time_point deadline) {
    waitUntil([this] { return exited_; }, deadline);
    return exited_;
}

void ChildProcess::stop(std::chrono::milliseconds grace, const std::function<void()>& askToQuit) {
    // The family is found while the parent links still lead to it.
    std::vector<int> family;
    if (!exited_) {
        for (pid_t descendant : descendantsOf(pid_)) {
            const int fd = openPidFd(descendant);
            if (fd >= 0)
                family.push_back(fd);
        }
    }
    const auto deadline = Clock::now() + grace;
    if (!exited_) {
        if (askToQuit)
            askToQuit();
        else
            ::kill(-pid_, SIGTERM);
        waitForExit(deadline);
    }
    if (!exited_) {
        ::kill(-pid_, SIGKILL);
        reap();
    }
    family = waitForPidFds(std::move(family), deadline);
    for (int fd : family)
        signalPidFd(fd, SIGKILL);
    ::kill(-pid_, SIGKILL);
    family = waitForPidFds(std::move(family), Clock::now() + std::chrono::seconds{10});
    for (int fd : family)
        ::close(fd);
}

std::string ChildProcess::errorTail(std::size_t lines) const {
    std::size_t start = errors_.size();
    std::size_t found = 0;
    while (start > 0 && found <= lines) {
        start = errors_.rfind('\n', start - 1);
        if (start == std::string::npos) {
            start = 0;
            break;
        }
        ++found;
    }
    return errors_.substr(start);
}

std::size_t occurrences(const std::string& haystack, const std::string& text) {
    std::size_t count = 0;
    for (auto at = haystack.find(text); at != std::string::npos;
         at = haystack.find(text, at + text.size()))
        ++count;
    return count;
}

std::vector<pid_t> descendantsOf(pid_t pid) {
    std::multimap<pid_t, pid_t> children;
    if (DIR* proc = ::opendir("/proc")) {
        while (const dirent* entry = ::readdir(proc)) {
            char* end = nullptr;
            const long child = std::strtol(entry->d_name, &end, 10);
            if (*end != '\0' || child <= 0)
                continue;
            std::ifstream stat{std::string{"/proc/"} + entry->d_name + "/stat"};
            std::string line;
            std::getline(stat, line);
            // The command name may hold spaces; the parent follows its closing bracket.
            const auto close = line.rfind(')');
            if (close == std::string::npos)
                continue;
            char state = 0;
            long parent = 0;
            if (std::sscanf(line.c_str() + close + 1, " %c %ld", &state, &parent) == 2)
                children.emplace(static_cast<pid_t>(parent), static_cast<pid_t>(child));
        }
        ::closedir(proc);
    }
    std::vector<pid_t> found;
    std::vector<pid_t> pending{pid};
    while (!pending.empty()) {
        const pid_t parent = pending.back();
        pending.pop_back();
        const auto [begin, end] = children.equal_range(parent);
        for (auto it = begin; it != end; ++it) {
            found.push_back(it->second);
            pending.push_back(it->second);
        }
    }
    return found;
}

} // namespace kelmo::bench
