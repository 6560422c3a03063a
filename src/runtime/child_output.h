#pragma once

#include <string>
#include <sys/types.h>

namespace kelmo {

// Everything left to read from the descriptor, up to its end or an error.
std::string readToEnd(int descriptor);

// Waits for the child process to end: whether it exited with status 0.
bool exitedWithSuccess(pid_t process);

} // namespace kelmo
