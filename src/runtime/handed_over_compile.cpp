#include "runtime/handed_over_compile.h"

#include "runtime/child_output.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>
#include <utility>

namespace kelmo {
namespace {

// A compile key: 64 hexadecimal digits.
constexpr std::size_t keyLength = 64;

} // namespace

HandedOverCompile::HandedOverCompile(int descriptor, pid_t helper)
    : descriptor_{descriptor}, helper_{helper} {}

HandedOverCompile::HandedOverCompile(HandedOverCompile&& other) noexcept
    : descriptor_{other.descriptor_}, helper_{other.helper_} {
    other.descriptor_ = -1;
    other.helper_ = -1;
}

HandedOverCompile& HandedOverCompile::operator=(HandedOverCompile&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    std::swap(helper_, other.helper_);
    return *this;
}

HandedOverCompile::~HandedOverCompile() {
    if (descriptor_ >= 0)
        ::close(descriptor_);
    if (helper_ > 0) {
        // Unreaped, the child keeps its process id, so this cannot reach another process.
        ::kill(helper_, SIGTERM);
        exitedWithSuccess(helper_);
    }
}

std::optional<HandedOverCompile> HandedOverCompile::fromEnvironment() {
    const char* value = std::getenv(handedOverCompileVariable);
    if (!value)
        return std::nullopt;
    char* end = nullptr;
    const long descriptor = std::strtol(value, &end, 10);
    const long helper = std::strtol(end, &end, 10);
    ::unsetenv(handedOverCompileVariable);
    if (descriptor < 0 || helper <= 0 || *end != '\0' || ::fcntl(descriptor, F_GETFD) < 0)
        return std::nullopt;
    ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    return HandedOverCompile{static_cast<int>(descriptor), static_cast<pid_t>(helper)};
}

std::optional<std::string> HandedOverCompile::readKey(std::chrono::milliseconds wait) {
    const auto deadline = std::chrono::steady_clock::now() + wait;
    std::string line;
    // One byte at a time, so that nothing of the module is read here.
    while (line.size() <= keyLength) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        pollfd readable{descriptor_, POLLIN, 0};
        const int ready = ::poll(&readable, 1, static_cast<int>(std::max<long>(left.count(), 0)));
        if (ready < 0 && errno == EINTR)
            continue;
        if (ready <= 0)
            return std::nullopt;
        char byte = 0;
        const auto count = ::read(descriptor_, &byte, 1);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return std::nullopt;
        if (byte == '\n')
            return line.size() == keyLength ? std::optional{line} : std::nullopt;
        line.push_back(byte);
    }
    return std::nullopt;
}

std::optional<std::string> HandedOverCompile::readModule() {
    const std::string module = readToEnd(descriptor_);
    ::close(std::exchange(descriptor_, -1));
    const bool compiled = exitedWithSuccess(std::exchange(helper_, -1));
    if (!compiled || module.empty())
        return std::nullopt;
    return module;
}

} // namespace kelmo
