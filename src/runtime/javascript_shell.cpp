#include "runtime/javascript_shell.h"

#include "runtime/child_output.h"
#include "runtime/resource_locator.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <glib.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

extern char** environ;

namespace kelmo {
namespace {

// What the driver prints when Babel throws on the source.
constexpr std::string_view sourceRejectedLine = "null";

class FileDescriptor {
public:
    explicit FileDescriptor(int descriptor = -1) : descriptor_{descriptor} {}
    FileDescriptor(FileDescriptor&& other) noexcept
        : descriptor_{std::exchange(other.descriptor_, -1)} {}
    FileDescriptor& operator=(FileDescriptor&&) = delete;
    ~FileDescriptor() { reset(); }

    int get() const { return descriptor_; }
    explicit operator bool() const { return descriptor_ >= 0; }
    void reset() {
        if (descriptor_ >= 0)
            ::close(descriptor_);
        descriptor_ = -1;
    }

private:
    int descriptor_;
};

bool writeAll(int descriptor, const std::string& text) {
    std::size_t written = 0;
    while (written < text.size()) {
        const ssize_t count = ::write(descriptor, text.data() + written, text.size() - written);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        written += static_cast<std::size_t>(count);
    }
    return true;
}

// The source as the shell's standard input. The shell reads a file whole by its size,
// so a pipe will not do: an anonymous file in memory instead.
FileDescriptor sourceFile(const std::string& source) {
    FileDescriptor file{::memfd_create("kelmo-source", MFD_CLOEXEC)};
    if (!file || !writeAll(file.get(), source) || ::lseek(file.get(), 0, SEEK_SET) != 0)
        return FileDescriptor{};
    return file;
}

std::uintmax_t sizeOfFiles(const std::filesystem::path& folder) {
    std::uintmax_t total = 0;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator{folder, error}) {
        const auto size = entry.file_size(error);
        if (!error)
            total += size;
    }
    return total;
}

} // namespace

ShellBytecodeCache::ShellBytecodeCache(std::filesystem::path root, std::filesystem::path seedRoot,
                                       std::string shellIdentity, std::uintmax_t sizeLimit)
    : root_{std::move(root)}, seedRoot_{std::move(seedRoot)}, identity_{std::move(shellIdentity)},
      sizeLimit_{sizeLimit} {}

std::filesystem::path ShellBytecodeCache::defaultRoot() {
    return std::filesystem::path{g_get_user_cache_dir()} / "kelmo" / "javascript-bytecode";
}

std::filesystem::path ShellBytecodeCache::installedSeedRoot() {
    return installationPrefix() / "share" / "kelmo" / "javascript-bytecode";
}

std::string ShellBytecodeCache::identityOf(const std::filesystem::path& shell) {
    struct stat status {};
    if (::stat(shell.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    char identity[64];
    std::snprintf(identity, sizeof identity, "%llx-%llx.%lx",
                  static_cast<unsigned long long>(status.st_size),
                  static_cast<unsigned long long>(status.st_mtim.tv_sec),
                  static_cast<unsigned long>(status.st_mtim.tv_nsec));
    return identity;
}

std::optional<std::filesystem::path> ShellBytecodeCache::prepare() const {
    if (identity_.empty())
        return std::nullopt;
    std::error_code error;
    const auto target = folder();
    if (std::filesystem::is_directory(target, error) && sizeOfFiles(target) > sizeLimit_)
        discard();
    if (!std::filesystem::is_directory(target, error)) {
        removeOtherBuilds();
        if (!seed() && !std::filesystem::create_directories(target, error) &&
            !std::filesystem::is_directory(target, error))
            return std::nullopt;
    }
    return target;
}

void ShellBytecodeCache::discard() const {
    std::error_code error;
    std::filesystem::remove_all(folder(), error);
}

// Copies the build-time folder in under a temporary name and renames it into place, so
// that a shell running beside this one never maps a file cut short: it would crash.
bool ShellBytecodeCache::seed() const {
    std::error_code error;
    const auto seedFolder = seedRoot_ / identity_;
    if (seedRoot_.empty() || !std::filesystem::is_directory(seedFolder, error))
        return false;
    std::filesystem::create_directories(root_, error);
    const std::string pattern = (root_ / ".seeding-XXXXXX").string();
    std::vector<char> name{pattern.begin(), pattern.end()};
    name.push_back('\0');
    if (!::mkdtemp(name.data()))
        return false;
    const std::filesystem::path scratch{name.data()};
    bool copied = true;
    for (const auto& entry : std::filesystem::directory_iterator{seedFolder, error})
        if (entry.is_regular_file(error))
            copied = std::filesystem::copy_file(entry.path(), scratch / entry.path().filename(),
                                                error) &&
                     copied;
    if (copied && !error)
        std::filesystem::rename(scratch, folder(), error);
    std::filesystem::remove_all(scratch, error);
    return copied && std::filesystem::is_directory(folder(), error);
}

// Also removes what a seeding cut short by the end of its process left behind; one
// under way (younger than a minute) is left to finish.
void ShellBytecodeCache::removeOtherBuilds() const {
    std::error_code error;
    const auto longAgo = std::filesystem::file_time_type::clock::now() - std::chrono::minutes{1};
    for (const auto& entry : std::filesystem::directory_iterator{root_, error}) {
        const auto name = entry.path().filename().string();
        const bool seeding = name.starts_with(".seeding-");
        if (name == identity_ || (seeding && entry.last_write_time(error) > longAgo))
            continue;
        if (seeding || name[0] != '.')
            std::filesystem::remove_all(entry.path(), error);
    }
}

ShellCompile compileInShell(const std::filesystem::path& shell,
                            const std::filesystem::path& bytecodeFolder,
                            const std::filesystem::path& driver, const std::filesystem::path& babel,
                            const std::filesystem::path& compiler, const std::string& source) {
    ShellCompile result;
    const FileDescriptor input = sourceFile(source);
    int outputEnds[2];
    if (!input || ::pipe2(outputEnds, O_CLOEXEC) != 0)
        return result;
    FileDescriptor outputReader{outputEnds[0]};
    FileDescriptor outputWriter{outputEnds[1]};

    // Only the engine's interpreter and baseline compiler, and not for Babel's module
    // scope (see keepJavaScriptToQuickTiers).
    std::vector<std::string> arguments{shell.string(), "--useDFGJIT=false",
                                       "--bytecodeRangeToJITCompile=0:100000"};
    if (!bytecodeFolder.empty())
        arguments.push_back("--diskCachePath=" + bytecodeFolder.string());
    arguments.insert(arguments.end(), {driver.string(), "--", babel.string(), compiler.string()});
    std::vector<char*> argv;
    for (auto& argument : arguments)
        argv.push_back(argument.data());
    argv.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input.get(), STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, outputWriter.get(), STDOUT_FILENO);
    pid_t process = -1;
    const int spawned =
        posix_spawn(&process, shell.c_str(), &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (spawned != 0)
        return result;
    outputWriter.reset();
    std::string output = readToEnd(outputReader.get());
    if (!exitedWithSuccess(process))
        return result;
    if (!output.empty() && output.back() == '\n')
        output.pop_back();
    if (output == sourceRejectedLine) {
        result.outcome = ShellCompile::Outcome::sourceRejected;
    } else if (!output.empty()) {
        result.outcome = ShellCompile::Outcome::compiled;
        result.module = std::move(output);
    }
    return result;
}

} // namespace kelmo
