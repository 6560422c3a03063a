#pragma once

#include "child_process.h"
#include "process_memory.h"
#include "temporary_folder.h"

#include <chrono>
#include <filesystem>
#include <gio/gio.h>
#include <optional>
#include <string>
#include <vector>

namespace kelmo::bench {

// What the launch figures wait for: the artifact's first frame on screen. Every
// fixture logs this text then; the HTML one also requests paintedProbe, which the
// benchmark sees being opened.
inline constexpr char paintedMessage[] = "kelmo-bench: painted";
inline constexpr char paintedProbe[] = "kelmo-bench-painted.png";

inline constexpr auto runTimeout = std::chrono::seconds{60};

// A home of its own for one start, or for a first and a second start: HOME and the
// XDG folders point into it, and its Downloads holds the artifact alone. Kelmo starts
// there as on its first start ever, with the first-run guide open in front of the
// player, unless the home is a returning user's, whose settings say the guide was seen.
class Home {
public:
    enum class User { first, returning };

    explicit Home(const std::filesystem::path& artifact, User user = User::first);

    const std::filesystem::path& artifact() const { return artifact_; }
    const std::filesystem::path& downloads() const { return downloads_; }
    // This process's environment with HOME and the XDG folders moved here.
    const std::vector<std::string>& environment() const { return environment_; }

private:
    TemporaryFolder root_;
    std::filesystem::path downloads_;
    std::filesystem::path artifact_;
    std::vector<std::string> environment_;
};

// The outcome of one start: milliseconds to the painted marker, and the memory of the
// whole process tree when asked for.
struct LaunchResult {
    std::optional<double> milliseconds;
    std::optional<Footprint> memory;
    std::string failure;
    std::vector<double> reloads; // milliseconds of each reload, when asked for
    std::vector<double> opens;   // milliseconds of each file handed over, in order
};

struct LaunchRequest {
    bool sampleMemory = false;
    int reloads = 0;
    // Files handed one after the other to the running Kelmo, each by a second
    // `kelmo FILE`, as a file manager or a terminal does; each is timed from that
    // command's start to the file's first frame.
    std::vector<std::filesystem::path> opens;
};

// Starts programs under the benchmark and measures them. Holds the session bus, over
// which Kelmo is asked to quit and on which its name must be free before each start.
class Launcher {
public:
    Launcher(std::filesystem::path kelmo, std::filesystem::path floorHost);
    ~Launcher();
    Launcher(const Launcher&) = delete;
    Launcher& operator=(const Launcher&) = delete;

    // Why no Kelmo can be measured in this session, if so: another one holds its name.
    std::optional<std::string> obstacle() const;

    LaunchResult floorHost(const Home& home, const LaunchRequest& request = {});
    LaunchResult kelmo(const Home& home, const LaunchRequest& request = {});

private:
    LaunchResult measure(bool isKelmo, const Home& home, const LaunchRequest& request);
    bool quitKelmo();
    void waitForKelmoNameToGo();
    bool kelmoNameOwned() const;
    std::optional<std::string> reload(ChildProcess& kelmo, std::size_t& markers,
                                      std::vector<double>& times, int count);
    std::optional<std::string> open(ChildProcess& kelmo, const Home& home, std::size_t& markers,
                                    std::vector<double>& times,
                                    const std::vector<std::filesystem::path>& files);

    std::filesystem::path kelmo_;
    std::filesystem::path floorHost_;
    GDBusConnection* bus_ = nullptr;
};

} // namespace kelmo::bench
