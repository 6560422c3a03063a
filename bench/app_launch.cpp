#include "app_launch.h"

#include "store/settings_keys.h"
#include "store/settings_store.h"

#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>
#include <algorithm>
#include <climits>
#include <csignal>
#include <fstream>
#include <sys/inotify.h>
#include <unistd.h>

extern char** environ;

namespace kelmo::bench {
namespace {

constexpr char appId[] = KELMO_APP_ID;
// How long Kelmo gets to quit when asked, and the floor host after SIGTERM.
constexpr auto quitGrace = std::chrono::seconds{10};
// Between a paint and the next Ctrl+R.
constexpr auto pauseBeforeReload = std::chrono::milliseconds{750};

std::string objectPathOf(std::string id) {
    std::replace(id.begin(), id.end(), '.', '/');
    return "/" + id;
}

double millisecondsBetween(Clock::time_point from, Clock::time_point to) {
    return std::chrono::duration<double, std::milli>(to - from).count();
}

void copyFile(const std::filesystem::path& from, const std::filesystem::path& to) {
    std::ifstream in{from, std::ios::binary};
    std::ofstream out{to, std::ios::binary};
    out << in.rdbuf();
    if (!in || !out)
        throw std::runtime_error{"cannot copy " + from.string()};
}

// Presses key chords on the X display through the XTEST extension. A key press
// reaches the server as soon as press() returns, so a time taken just before it is
// the time of the press itself, without a helper program's start in it.
class KeyPresser {
public:
    KeyPresser() : display_{XOpenDisplay(nullptr)} {
        int event, error, major, minor;
        if (display_ && !XTestQueryExtension(display_, &event, &error, &major, &minor)) {
            XCloseDisplay(display_);
            display_ = nullptr;
        }
    }
    ~KeyPresser() {
        if (display_)
            XCloseDisplay(display_);
    }
    KeyPresser(const KeyPresser&) = delete;
    KeyPresser& operator=(const KeyPresser&) = delete;

    bool usable() const { return display_ != nullptr; }

    void press(KeySym modifier, KeySym key) {
        const KeyCode modifierCode = XKeysymToKeycode(display_, modifier);
        const KeyCode keyCode = XKeysymToKeycode(display_, key);
        XTestFakeKeyEvent(display_, modifierCode, True, CurrentTime);
        XTestFakeKeyEvent(display_, keyCode, True, CurrentTime);
        XTestFakeKeyEvent(display_, keyCode, False, CurrentTime);
        XTestFakeKeyEvent(display_, modifierCode, False, CurrentTime);
        XFlush(display_);
    }

private:
    Display* display_;
};

// Counts opens of one file in a folder through inotify.
class OpenCounter {
public:
    OpenCounter(const std::filesystem::path& folder, std::string name) : name_{std::move(name)} {
        fd_ = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
        if (fd_ < 0 || ::inotify_add_watch(fd_, folder.c_str(), IN_OPEN) < 0)
            throw std::runtime_error{"cannot watch " + folder.string()};
    }
    ~OpenCounter() { ::close(fd_); }
    OpenCounter(const OpenCounter&) = delete;
    OpenCounter& operator=(const OpenCounter&) = delete;

    int fd() const { return fd_; }
    std::size_t count() const { return count_; }

    void read() {
        alignas(inotify_event) char buffer[sizeof(inotify_event) + NAME_MAX + 1];
        for (;;) {
            const ssize_t length = ::read(fd_, buffer, sizeof buffer);
            if (length <= 0)
                return;
            for (ssize_t at = 0; at < length;) {
                const auto* event = reinterpret_cast<const inotify_event*>(buffer + at);
                if (event->len > 0 && name_ == event->name)
                    ++count_;
                at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
            }
        }
    }

private:
    int fd_ = -1;
    std::string name_;
    std::size_t count_ = 0;
};

std::vector<std::string>
environmentWith(const std::vector<std::pair<std::string, std::string>>& set) {
    std::vector<std::string> environment;
    for (char** entry = environ; *entry; ++entry) {
        const std::string_view text{*entry};
        const auto name = text.substr(0, text.find('='));
        const bool replaced = std::any_of(set.begin(), set.end(),
                                          [&name](const auto& pair) { return pair.first == name; });
        if (!replaced)
            environment.emplace_back(text);
    }
    for (const auto& [name, value] : set)
        environment.push_back(name + "=" + value);
    return environment;
}

std::vector<std::string> currentEnvironment() {
    return environmentWith({});
}

} // namespace

Home::Home(const std::filesystem::path& artifact, User user) {
    const auto home = root_.path();
    downloads_ = home / "Downloads";
    std::filesystem::create_directories(downloads_);
    artifact_ = downloads_ / artifact.filename();
    copyFile(artifact, artifact_);
    // The page's probe request finds a file, so that it is opened.
    std::ofstream{downloads_ / paintedProbe};
    if (user == User::returning) {
        SettingsStore settings{home / ".config/kelmo/settings"};
        settings.setBool(settings_keys::hasSeenOnboarding, true);
    }
    environment_ = environmentWith({{"HOME", home.string()},
                                    {"XDG_CONFIG_HOME", (home / ".config").string()},
                                    {"XDG_DATA_HOME", (home / ".local/share").string()},
                                    {"XDG_CACHE_HOME", (home / ".cache").string()}});
}

Launcher::Launcher(std::filesystem::path kelmo, std::filesystem::path floorHost)
    : kelmo_{std::move(kelmo)}, floorHost_{std::move(floorHost)} {
    // Only an existing session bus: connecting must not start one.
    if (g_getenv("DBUS_SESSION_BUS_ADDRESS"))
        bus_ = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
}

Launcher::~Launcher() {
    if (bus_)
        g_object_unref(bus_);
}

bool Launcher::kelmoNameOwned() const {
    if (!bus_)
        return false;
    GVariant* reply = g_dbus_connection_call_sync(
        bus_, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "NameHasOwner", g_variant_new("(s)", appId), G_VARIANT_TYPE("(b)"), G_DBUS_CALL_FLAGS_NONE,
        5000, nullptr, nullptr);
    if (!reply)
        return false;
    gboolean owned = FALSE;
    g_variant_get(reply, "(b)", &owned);
    g_variant_unref(reply);
    return owned;
}

std::optional<std::string> Launcher::obstacle() const {
    if (kelmoNameOwned())
        return std::string{"a Kelmo is already running on this session bus (it would receive "
                           "the benchmark's starts); quit it or run under dbus-run-session"};
    return std::nullopt;
}

// Quits the way the Quit menu item does, through the application's action; false when
// that cannot be asked for.
bool Launcher::quitKelmo() {
    if (!bus_)
        return false;
    GVariant* reply = g_dbus_connection_call_sync(
        bus_, appId, objectPathOf(appId).c_str(), "org.gtk.Actions", "Activate",
        g_variant_new("(sava{sv})", "quit", nullptr, nullptr), nullptr, G_DBUS_CALL_FLAGS_NONE,
        5000, nullptr, nullptr);
    if (!reply)
        return false;
    g_variant_unref(reply);
    return true;
}

// The bus drops a dead client's name on its own time; a Kelmo started before that
// would hand its start to the old name and exit.
void Launcher::waitForKelmoNameToGo() {
    if (!bus_)
        return;
    struct Wait {
        bool gone = false;
        bool timedOut = false;
    } wait;
    GMainContext* context = g_main_context_new();
    g_main_context_push_thread_default(context);
    const guint watch = g_bus_watch_name_on_connection(
        bus_, appId, G_BUS_NAME_WATCHER_FLAGS_NONE, nullptr,
        [](GDBusConnection*, const gchar*, gpointer data) {
            static_cast<Wait*>(data)->gone = true;
        },
        &wait, nullptr);
    GSource* timeout = g_timeout_source_new_seconds(10);
    g_source_set_callback(
        timeout,
        [](gpointer data) {
            static_cast<Wait*>(data)->timedOut = true;
            return G_SOURCE_REMOVE;
        },
        &wait, nullptr);
    g_source_attach(timeout, context);
    while (!wait.gone && !wait.timedOut)
        g_main_context_iteration(context, TRUE);
    g_source_destroy(timeout);
    g_source_unref(timeout);
    g_bus_unwatch_name(watch);
    g_main_context_pop_thread_default(context);
    // Lets the watch's last callbacks run before its context goes.
    while (g_main_context_iteration(context, FALSE)) {
    }
    g_main_context_unref(context);
}

LaunchResult Launcher::floorHost(const Home& home, const LaunchRequest& request) {
    return measure(false, home, request);
}

LaunchResult Launcher::kelmo(const Home& home, const LaunchRequest& request) {
    return measure(true, home, request);
}

LaunchResult Launcher::measure(bool isKelmo, const Home& home, const LaunchRequest& request) {
    LaunchResult result;
    const bool html = home.artifact().extension() == ".html";
    // Kelmo shows a page's console lines on standard output; the floor host has WebKit
    // write them itself, on standard error. The HTML fixture's probe is seen for both.
    const std::string consoleMarker = std::string{"🔵 [JS] "} + paintedMessage;
    OpenCounter probe{home.downloads(), paintedProbe};
    std::size_t markers = 0;

    const std::vector<std::string> argv =
        isKelmo ? std::vector<std::string>{kelmo_.string()}
                : std::vector<std::string>{floorHost_.string(), home.artifact().string()};
    const std::string name = isKelmo ? "Kelmo" : "the floor host";

    const auto start = Clock::now();
    ChildProcess child{argv, home.environment()};
    const auto painted = [&] {
        if (html)
            return probe.count() > markers;
        return occurrences(child.output(), consoleMarker) > markers;
    };
    const auto seen =
        child.waitUntil(painted, start + runTimeout, {probe.fd(), [&probe] { probe.read(); }});
    if (seen) {
        ++markers;
        result.milliseconds = millisecondsBetween(start, *seen);
        if (request.sampleMemory) {
            // Both hosts get the same second after their first frame to settle.
            child.keepReadingUntil(Clock::now() + std::chrono::seconds{1});
            result.memory = footprintOf(child.pid());
        }
        if (request.reloads > 0) {
            if (auto failure = reload(child, markers, result.reloads, request.reloads))
                result.failure = *failure;
        }
        if (!request.opens.empty() && result.failure.empty()) {
            if (auto failure = open(child, home, markers, result.opens, request.opens))
                result.failure = *failure;
        }
    } else if (child.hasExited()) {
        result.failure = name + " exited before the artifact painted";
    } else {
        result.failure =
            name + " showed no painted marker within " + std::to_string(runTimeout.count()) + " s";
    }
    if (!result.failure.empty()) {
        const auto tail = child.errorTail();
        if (!tail.empty())
            result.failure += "; its last lines on standard error:\n" + tail;
    }

    if (isKelmo) {
        child.stop(quitGrace, [this, &child] {
            if (!quitKelmo())
                ::kill(-child.pid(), SIGTERM);
        });
        waitForKelmoNameToGo();
    } else {
        child.stop(quitGrace);
    }
    return result;
}

// Presses Ctrl+R in Kelmo's window, as a user does, count times; each reload is
// timed from the key press to the page's next painted marker. xdotool finds and
// focuses the window; the presses go straight to the X server, as xdotool itself
// takes 40-70 ms to start, which is no part of a reload.
std::optional<std::string> Launcher::reload(ChildProcess& kelmo, std::size_t& markers,
                                            std::vector<double>& times, int count) {
    gchar* xdotool = g_find_program_in_path("xdotool");
    if (!xdotool)
        return "xdotool is not installed (scripts/setup.sh installs it)";
    const std::string tool = xdotool;
    g_free(xdotool);
    const auto environment = currentEnvironment();
    const std::string pid = std::to_string(kelmo.pid());

    ChildProcess search{{tool, "search", "--sync", "--onlyvisible", "--pid", pid}, environment};
    if (!search.waitForExit(Clock::now() + std::chrono::seconds{10}))
        return "xdotool found no window of Kelmo";
    const std::string window = search.output().substr(0, search.output().find('\n'));
    if (window.empty())
        return "xdotool found no window of Kelmo";
    ChildProcess focus{{tool, "windowfocus", "--sync", window}, environment};
    if (!focus.waitForExit(Clock::now() + std::chrono::seconds{10}))
        return "xdotool could not focus Kelmo's window";

    KeyPresser keys;
    if (!keys.usable())
        return "no X display with the XTEST extension to press keys on";
    const std::string consoleMarker = std::string{"🔵 [JS] "} + paintedMessage;
    for (int i = 0; i < count; ++i) {
        // A person looks at the page before pressing again; by then the page has done
        // what it does after its first frame (loading Tailwind, keeping its rules).
        kelmo.waitUntil([] { return false; }, Clock::now() + pauseBeforeReload);
        if (kelmo.hasExited())
            return "Kelmo exited before a reload";
        const auto start = Clock::now();
        keys.press(XK_Control_L, XK_r);
        const auto seen =
            kelmo.waitUntil([&] { return occurrences(kelmo.output(), consoleMarker) > markers; },
                            start + runTimeout);
        if (!seen)
            return "the artifact did not paint again within " + std::to_string(runTimeout.count()) +
                   " s of Ctrl+R";
        ++markers;
        times.push_back(millisecondsBetween(start, *seen));
    }
    return std::nullopt;
}

std::optional<std::string> Launcher::open(ChildProcess& kelmo, const Home& home,
                                          std::size_t& markers, std::vector<double>& times,
                                          const std::vector<std::filesystem::path>& files) {
    const std::string consoleMarker = std::string{"🔵 [JS] "} + paintedMessage;
    for (const auto& file : files) {
        // As between reloads: the page before has settled.
        kelmo.waitUntil([] { return false; }, Clock::now() + pauseBeforeReload);
        if (kelmo.hasExited())
            return "Kelmo exited before " + file.filename().string() + " was handed to it";
        const auto start = Clock::now();
        ChildProcess second{{kelmo_.string(), file.string()}, home.environment()};
        const auto seen =
            kelmo.waitUntil([&] { return occurrences(kelmo.output(), consoleMarker) > markers; },
                            start + runTimeout);
        if (!second.waitForExit(Clock::now() + std::chrono::seconds{10}))
            return "the second kelmo did not hand " + file.filename().string() + " over and exit";
        if (!seen)
            return file.filename().string() + " did not paint within " +
                   std::to_string(runTimeout.count()) + " s of being handed over";
        ++markers;
        times.push_back(millisecondsBetween(start, *seen));
    }
    return std::nullopt;
}

} // namespace kelmo::bench
