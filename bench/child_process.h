#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace kelmo::bench {

using Clock = std::chrono::steady_clock;

// Another descriptor to watch while waiting for a child, with what to do when it is
// readable.
struct ExtraSource {
    int fd = -1;
    std::function<void()> onReadable;
};

// A program the benchmark started, in a process group of its own, with its
// standard output and error read into memory as they arrive.
class ChildProcess {
public:
    // Starts argv[0] (a path) with exactly the given environment. Throws
    // std::runtime_error when it cannot be started.
    ChildProcess(const std::vector<std::string>& argv, const std::vector<std::string>& environment);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    pid_t pid() const { return pid_; }
    const std::string& output() const { return output_; }
    const std::string& errors() const { return errors_; }
    bool hasExited() const { return exited_; }

    // Reads the child's output until ready() holds and answers when that was seen,
    // or nothing once the deadline passes or the child has exited without it.
    std::optional<Clock::time_point> waitUntil(const std::function<bool()>& ready,
                                               Clock::time_point deadline,
                                               const ExtraSource& extra = {});

    // Keeps reading the child's output until the deadline; false if it exited.
    bool keepReadingUntil(Clock::time_point deadline);

    // Waits for the child to exit by itself, reading its output, up to the deadline.
    bool waitForExit(Clock::time_point deadline);

    // Ends the child and every process it started: askToQuit, or SIGTERM to its group
    // without one; after the grace period SIGKILL to whatever is left. Returns once
    // all of them are gone.
    void stop(std::chrono::milliseconds grace, const std::function<void()>& askToQuit = {});

    // The last few lines of its standard error, for messages about a failed run.
    std::string errorTail(std::size_t lines = 8) const;

private:
    void readPipe(int& fd, std::string& into);
    void reap();

    pid_t pid_ = -1;
    int outputFd_ = -1;
    int errorsFd_ = -1;
    int pidFd_ = -1;
    bool exited_ = false;
    std::string output_;
    std::string errors_;
};

// How many times text occurs in haystack.
std::size_t occurrences(const std::string& haystack, const std::string& text);

// The processes below pid, found through the parent links in /proc.
std::vector<pid_t> descendantsOf(pid_t pid);

} // namespace kelmo::bench
