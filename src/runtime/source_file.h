#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace kelmo {

// A JSX or TSX source as read for running.
struct SourceFile {
    enum class Problem { unreadable, tooLarge, notText };
    // The largest source Kelmo runs.
    static constexpr std::size_t largestSource = 10 * 1024 * 1024;

    std::optional<std::string> code; // UTF-8 text; nothing when there is a problem
    std::optional<Problem> problem;

    // Reads only a regular file (links followed) of at most `largest` bytes: a named
    // pipe would wait for a writer. Blocks; readInBackground does not.
    static SourceFile read(const std::filesystem::path& file, std::size_t largest);

    // Reads on a worker thread and hands the result to `done` on the main context.
    static void readInBackground(std::filesystem::path file, std::size_t largest,
                                 std::function<void(SourceFile)> done);
};

} // namespace kelmo
