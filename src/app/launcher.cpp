// kelmo: starts the application, and beside it a head start on its first compile.
//
// The application links GTK and WebKit, whose 170-odd libraries take the dynamic
// linker about a tenth of a second to load before its main() runs. This launcher
// links neither. It forks the compile helper in its head-start mode, which finds the
// JSX or TSX artifact that the window will open into and starts compiling it at once,
// and becomes the application (libexec/kelmo/kelmo-app) in its own process, which
// takes that compile over when it starts (HeadStart). The helper's output reaches the
// application through a pipe named in its environment.

#include "app/command_line.h"
#include "runtime/handed_over_compile.h"
#include "runtime/resource_locator.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

// Starts the helper with its standard output on a pipe, and names the pipe's read end
// and the helper in this process's environment for the application. Without a pipe
// or a child, the application compiles for itself.
void startHeadStart(const std::filesystem::path& helper, int argc, char* argv[]) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return;
    std::vector<char*> arguments{const_cast<char*>("kelmo-compile"),
                                 const_cast<char*>("--head-start"),
                                 const_cast<char*>(KELMO_APP_ID)};
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    arguments.push_back(nullptr);

    const pid_t child = ::fork();
    if (child == 0) {
        if (::dup2(ends[1], STDOUT_FILENO) >= 0)
            ::execv(helper.c_str(), arguments.data());
        _exit(0); // wrote nothing: nothing to take over
    }
    ::close(ends[1]);
    if (child < 0 || ::fcntl(ends[0], F_SETFD, 0) != 0) {
        ::close(ends[0]);
        return;
    }
    const std::string value = std::to_string(ends[0]) + " " + std::to_string(child);
    ::setenv(kelmo::handedOverCompileVariable, value.c_str(), 1);
}

} // namespace

int main(int argc, char* argv[]) {
    const auto prefix = kelmo::installationPrefix();
    const auto application = prefix / "libexec" / "kelmo" / "kelmo-app";
    // Help and version are answered by the application at once; nothing is opened.
    if (!kelmo::informationRequested({argv, argv + argc}, {}))
        startHeadStart(prefix / "libexec" / "kelmo" / "kelmo-compile", argc, argv);
    ::execv(application.c_str(), argv);
    std::fprintf(stderr, "kelmo: cannot start %s: %s\n", application.c_str(), std::strerror(errno));
    return 127;
}
