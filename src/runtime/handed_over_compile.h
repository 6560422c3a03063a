#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <sys/types.h>

namespace kelmo {

// The launcher's environment variable that hands the application a compile begun
// before it: "<descriptor> <process id>", the read end of the helper's output and
// the helper itself, a child of the application once the launcher has become it.
inline constexpr char handedOverCompileVariable[] = "KELMO_HANDED_OVER_COMPILE";

// A compile helper started by the launcher in its head-start mode. The helper first
// writes the compile key of the source it compiles and a newline, then the module,
// and exits with 0 when it compiled; it writes nothing when there was nothing to
// compile ahead. Whoever holds this owns the descriptor and the child: unless
// readModule() has read the one to its end and reaped the other, the destructor
// closes the one and ends and reaps the other.
class HandedOverCompile {
public:
    HandedOverCompile(int descriptor, pid_t helper);
    ~HandedOverCompile();
    HandedOverCompile(HandedOverCompile&& other) noexcept;
    HandedOverCompile& operator=(HandedOverCompile&& other) noexcept;
    HandedOverCompile(const HandedOverCompile&) = delete;
    HandedOverCompile& operator=(const HandedOverCompile&) = delete;

    // The compile the launcher handed over, taken out of the environment so that no
    // process started later inherits it.
    static std::optional<HandedOverCompile> fromEnvironment();

    // The key the helper announces, waiting for it at most `wait`; nothing when the
    // helper has nothing to compile, fails or takes longer.
    std::optional<std::string> readKey(std::chrono::milliseconds wait);

    // Reads the module to the end and reaps the helper: the module when the helper
    // compiled. Blocks; for a worker thread.
    std::optional<std::string> readModule();

private:
    int descriptor_;
    pid_t helper_;
};

} // namespace kelmo
