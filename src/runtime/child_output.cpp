#include "runtime/child_output.h"

#include <cerrno>
#include <sys/wait.h>
#include <unistd.h>

namespace kelmo {

std::string readToEnd(int descriptor) {
    std::string text;
    char buffer[65536];
    for (;;) {
        const ssize_t count = ::read(descriptor, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return text;
        text.append(buffer, static_cast<std::size_t>(count));
    }
}

bool exitedWithSuccess(pid_t process) {
    int status = 0;
    while (::waitpid(process, &status, 0) < 0)
        if (errno != EINTR)
            return false;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace kelmo
