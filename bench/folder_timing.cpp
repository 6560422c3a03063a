#include "folder_timing.h"

#include "app/sidebar_view.h"
#include "child_process.h"
#include "library/card_pictures.h"
#include "library/library_view.h"
#include "runtime/artifact_detail_view.h"
#include "runtime/artifact_web_view.h"
#include "store/artifact_store.h"
#include "temporary_folder.h"

#include <algorithm>
#include <atomic>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <glibmm/fileutils.h>
#include <glibmm/main.h>
#include <gtkmm/application.h>
#include <gtkmm/box.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/window.h>
#include <stdexcept>
#include <string>
#include <thread>
#include <unistd.h>
#include <unordered_set>

namespace kelmo::bench {
namespace {

class FixedPanel : public OpenPanel {
public:
    std::filesystem::path answer;
    void run(const OpenPanelRequest&, Completion completion) override { completion(answer); }
};

void writeFile(const std::filesystem::path& path, std::string_view text) {
    const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0)
        throw std::runtime_error{"cannot write " + path.string()};
    const bool written = ::write(fd, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    ::close(fd);
    if (!written)
        throw std::runtime_error{"cannot write " + path.string()};
}

// Artifacts and the other files a downloads folder collects, small like real ones.
void fillFolder(const std::filesystem::path& folder, int files) {
    std::filesystem::create_directories(folder);
    static const char* extensions[] = {".jsx", ".html", ".tsx", ".png", ".pdf"};
    for (int i = 0; i < files; ++i)
        writeFile(folder / ("file-" + std::to_string(i) + extensions[i % 5]), "<p>x</p>\n");
}

// A store of its own: settings under root, no Downloads, folders from the panel.
struct StoreUnderTest {
    explicit StoreUnderTest(const std::filesystem::path& root)
        : panel{std::make_shared<FixedPanel>()} {
        ArtifactStore::Environment environment;
        environment.settingsFile = root / "settings";
        environment.notifications = &notifications;
        environment.downloadsDirectory = [] { return std::optional<std::filesystem::path>{}; };
        environment.openPanel = panel;
        store = std::make_unique<ArtifactStore>(environment);
    }
    NotificationCenter notifications;
    std::shared_ptr<FixedPanel> panel;
    std::unique_ptr<ArtifactStore> store;
};

// The longest the main loop goes without answering while it is measured, by a timer that
// asks every 5 ms (and does `alsoOnEachTick` each time).
class StallMeter {
public:
    explicit StallMeter(std::function<void()> alsoOnEachTick = [] {}) {
        ticks_ = Glib::signal_timeout().connect(
            [this, alsoOnEachTick] {
                const auto now = Clock::now();
                longest_ = std::max(
                    longest_,
                    std::chrono::duration<double, std::milli>(now - lastTick_).count() - tick);
                lastTick_ = now;
                alsoOnEachTick();
                return true;
            },
            tick);
    }
    ~StallMeter() { stop(); }
    void stop() { ticks_.disconnect(); }
    double longest() const { return longest_; }

private:
    static constexpr int tick = 5;
    double longest_ = 0;
    Clock::time_point lastTick_ = Clock::now();
    sigc::connection ticks_;
};

double millisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

} // namespace

std::vector<double> folderScanTimes(int files, int runs) {
    TemporaryFolder root;
    const auto folder = root.path() / "folder";
    fillFolder(folder, files);
    StoreUnderTest underTest{root.path()};
    underTest.panel->answer = folder;

    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        const auto start = Clock::now();
        underTest.store->addWatchedFolder();
        times.push_back(millisecondsSince(start));
        if (underTest.store->allArtifacts().empty())
            throw std::runtime_error{"the scan listed no artifacts"};
        underTest.store->removeFolder(underTest.store->watchedFolders().back());
    }
    return times;
}

std::vector<double> watchedFolderAddTimes(int files, int runs) {
    TemporaryFolder root;
    const auto folder = root.path() / "folder";
    fillFolder(folder, files);
    StoreUnderTest underTest{root.path()};
    underTest.panel->answer = folder;
    underTest.store->addWatchedFolder();
    ArtifactStore& store = *underTest.store;

    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        const std::string added = (folder / ("added-" + std::to_string(run) + ".jsx")).string();
        const auto listed = [&store, &added] {
            const auto& all = store.allArtifacts();
            return std::any_of(all.begin(), all.end(), [&added](const Artifact& artifact) {
                return artifact.url == added;
            });
        };
        auto loop = Glib::MainLoop::create();
        bool seen = false;
        Clock::time_point seenAt;
        auto changed = store.signalChanged().connect([&] {
            if (!seen && listed()) {
                seen = true;
                seenAt = Clock::now();
                loop->quit();
            }
        });
        auto timeout = Glib::signal_timeout().connect_seconds(
            [&loop] {
                loop->quit();
                return false;
            },
            10);

        const auto start = Clock::now();
        writeFile(added, "export default function Added() { return <p>Added</p>; }\n");
        loop->run();
        changed.disconnect();
        timeout.disconnect();
        if (!seen)
            throw std::runtime_error{"the watched folder did not list a new file within 10 s"};
        times.push_back(std::chrono::duration<double, std::milli>(seenAt - start).count());
    }
    return times;
}

std::vector<FolderBurstFigures> folderBurstFigures(int files, int runs) {
    // gtkmm's wrappers are set up by its application object; gtk_init opens the display.
    static const auto application =
        Gtk::Application::create("org.kelmo.Kelmo.Benchmark", Gio::Application::Flags::NON_UNIQUE);
    gtk_init();
    constexpr int creates = 1'000;
    constexpr int renames = 500;
    constexpr int deletes = 1'000;
    if (files < 5 * (renames + deletes))
        throw std::runtime_error{"the folder is too small for the burst"};

    std::vector<FolderBurstFigures> figures;
    for (int run = 0; run < runs; ++run) {
        TemporaryFolder root;
        const auto folder = root.path() / "folder";
        fillFolder(folder, files);
        StoreUnderTest underTest{root.path()};
        underTest.panel->answer = folder;
        ArtifactStore& store = *underTest.store;
        store.addWatchedFolder();

        Gtk::Window window;
        window.set_default_size(1100, 700);
        Gtk::Box columns;
        columns.append(*Gtk::make_managed<SidebarView>(store));
        Gtk::Widget* library = makeLibraryView(store);
        library->set_hexpand(true);
        columns.append(*library);
        window.set_child(columns);
        window.present();
        auto context = Glib::MainContext::get_default();
        const auto shownBy = Clock::now() + std::chrono::seconds{2};
        while (Clock::now() < shownBy)
            context->iteration(false);

        // fillFolder's files: ".jsx", ".html", ".tsx", ".png", ".pdf" in turn. Renamed
        // are the first .jsx files, deleted the first .html files.
        std::unordered_set<std::string> expected;
        const auto path = [&folder](const std::string& name) { return (folder / name).string(); };
        for (int i = 0; i < files; ++i) {
            static const char* extensions[] = {".jsx", ".html", ".tsx"};
            if (i % 5 < 3)
                expected.insert(path("file-" + std::to_string(i) + extensions[i % 5]));
        }
        for (int k = 0; k < creates; ++k)
            expected.insert(path("burst-" + std::to_string(k) + ".jsx"));
        for (int k = 0; k < renames; ++k) {
            expected.erase(path("file-" + std::to_string(5 * k) + ".jsx"));
            expected.insert(path("renamed-" + std::to_string(k) + ".tsx"));
        }
        for (int k = 0; k < deletes; ++k)
            expected.erase(path("file-" + std::to_string(5 * k + 1) + ".html"));

        auto loop = Glib::MainLoop::create();
        std::atomic<bool> burstDone = false;
        Clock::time_point lastEvent;
        std::optional<Clock::time_point> settledAt;
        int libraryVersion = 0;
        int checkedVersion = -1;
        const auto checkSettled = [&] {
            if (!burstDone || settledAt || checkedVersion == libraryVersion)
                return;
            checkedVersion = libraryVersion;
            const auto& all = store.allArtifacts();
            const bool right = all.size() == expected.size() &&
                               std::all_of(all.begin(), all.end(), [&](const Artifact& a) {
                                   return expected.count(a.url) == 1;
                               });
            if (right) {
                settledAt = Clock::now();
                // The change that made it right may still be running: stalls are
                // measured a little longer.
                Glib::signal_timeout().connect_once([&loop] { loop->quit(); }, 300);
            }
        };
        auto changed = store.signalChanged().connect([&] {
            ++libraryVersion;
            checkSettled();
        });
        StallMeter stalls{checkSettled};
        auto giveUp = Glib::signal_timeout().connect_seconds(
            [&loop] {
                loop->quit();
                return false;
            },
            30);

        std::jthread burst{[&] {
            for (int k = 0; k < creates; ++k)
                writeFile(folder / ("burst-" + std::to_string(k) + ".jsx"), "<p>new</p>\n");
            for (int k = 0; k < renames; ++k)
                std::filesystem::rename(folder / ("file-" + std::to_string(5 * k) + ".jsx"),
                                        folder / ("renamed-" + std::to_string(k) + ".tsx"));
            for (int k = 0; k < deletes; ++k)
                std::filesystem::remove(folder / ("file-" + std::to_string(5 * k + 1) + ".html"));
            lastEvent = Clock::now();
            burstDone = true;
        }};
        loop->run();
        burst.join();
        changed.disconnect();
        stalls.stop();
        giveUp.disconnect();
        window.hide();
        if (!settledAt)
            throw std::runtime_error{"the library was not right 30 s after the burst"};
        figures.push_back(
            {stalls.longest(),
             std::chrono::duration<double, std::milli>(*settledAt - lastEvent).count()});
    }
    return figures;
}

std::vector<double> libraryScrollStalls(int files, bool withPictures, int runs) {
    static const auto application =
        Gtk::Application::create("org.kelmo.Kelmo.Benchmark", Gio::Application::Flags::NON_UNIQUE);
    gtk_init();
    // The pictures go to the benchmark's own cache (launch_benchmark.cpp), never the
    // user's: they are removed between runs.
    const auto pictures = CardPictures::shared().folder();
    if (const char* cache = g_getenv("XDG_CACHE_HOME");
        !cache || pictures.string().rfind(std::string{cache} + "/", 0) != 0 ||
        std::string{cache}.rfind(std::filesystem::temp_directory_path().string(), 0) != 0)
        throw std::runtime_error{"the pictures' folder is not the benchmark's own"};
    std::vector<double> stalls;
    for (int run = 0; run < runs; ++run) {
        TemporaryFolder root;
        const auto folder = root.path() / "folder";
        std::filesystem::create_directories(folder);
        for (int i = 0; i < files; ++i)
            writeFile(folder / ("card-" + std::to_string(i) + ".jsx"),
                      "export default () => <p>" + std::to_string(i) + "</p>;\n");
        StoreUnderTest underTest{root.path()};
        underTest.panel->answer = folder;
        ArtifactStore& store = *underTest.store;
        store.addWatchedFolder();
        store.setSelectedArtifact(std::nullopt);
        auto context = Glib::MainContext::get_default();

        // A page-sized picture for every card, kept as the player keeps them.
        std::filesystem::remove_all(pictures);
        if (withPictures) {
            std::vector<guchar> pixels(1024 * 700 * 4, 0xc0);
            auto bytes = Glib::Bytes::create(pixels.data(), pixels.size());
            auto picture = Glib::wrap(
                gdk_memory_texture_new(1024, 700, GDK_MEMORY_DEFAULT, bytes->gobj(), 1024 * 4));
            int kept = 0;
            auto counting = CardPictures::shared().signalKept().connect(
                [&kept](const std::string&) { ++kept; });
            for (const auto& artifact : store.allArtifacts())
                CardPictures::shared().keep(artifact.path(), picture);
            while (kept < files)
                context->iteration(true);
            counting.disconnect();
        }

        Gtk::Window window;
        window.set_default_size(1100, 700);
        Gtk::Widget* library = makeLibraryView(store);
        window.set_child(*library);
        window.present();
        const auto shownBy = Clock::now() + std::chrono::seconds{2};
        while (Clock::now() < shownBy)
            context->iteration(false);
        Gtk::ScrolledWindow* scroller = nullptr;
        std::function<void(Gtk::Widget&)> find = [&](Gtk::Widget& widget) {
            if (auto* found = dynamic_cast<Gtk::ScrolledWindow*>(&widget); found && !scroller)
                scroller = found;
            for (auto* child = widget.get_first_child(); child; child = child->get_next_sibling())
                find(*child);
        };
        find(*library);
        if (!scroller)
            throw std::runtime_error{"the library has no scrolled window"};
        auto adjustment = scroller->get_vadjustment();

        StallMeter meter;
        auto loop = Glib::MainLoop::create();
        bool down = true;
        auto steps = Glib::signal_timeout().connect(
            [&] {
                const double end = adjustment->get_upper() - adjustment->get_page_size();
                const double next = adjustment->get_value() + (down ? 120 : -120);
                adjustment->set_value(std::clamp(next, 0.0, end));
                if (down && next >= end)
                    down = false;
                else if (!down && next <= 0) {
                    loop->quit();
                    return false;
                }
                return true;
            },
            16);
        loop->run();
        meter.stop();
        steps.disconnect();
        window.hide();
        stalls.push_back(meter.longest());
    }
    return stalls;
}

namespace {

// The text of the page's #text element, read by the page itself.
std::string pageText(WebKitWebView* view) {
    std::optional<std::string> answer;
    webkit_web_view_evaluate_javascript(
        view, "String(document.getElementById('text')?.textContent)", -1, nullptr, nullptr, nullptr,
        [](GObject* object, GAsyncResult* result, gpointer data) {
            g_autoptr(JSCValue) value = webkit_web_view_evaluate_javascript_finish(
                WEBKIT_WEB_VIEW(object), result, nullptr);
            g_autofree char* text = value ? jsc_value_to_string(value) : nullptr;
            *static_cast<std::optional<std::string>*>(data) = text ? text : "";
        },
        &answer);
    auto context = Glib::MainContext::get_default();
    while (!answer)
        context->iteration(true);
    return *answer;
}

} // namespace

std::vector<double> liveReloadTimes(int saves) {
    static const auto application =
        Gtk::Application::create("org.kelmo.Kelmo.Benchmark", Gio::Application::Flags::NON_UNIQUE);
    gtk_init();
    TemporaryFolder root;
    const auto file = root.path() / "live.jsx";
    const auto source = [](int version) {
        return "export default () => <p id=\"text\">version " + std::to_string(version) + "</p>;\n";
    };
    writeFile(file, source(0));
    StoreUnderTest underTest{root.path()};
    Gtk::Window window;
    window.set_default_size(1100, 700);
    auto* player = Gtk::make_managed<ArtifactDetailView>(*underTest.store, Artifact::from(file));
    window.set_child(*player);
    window.present();
    const auto waitFor = [&](const std::string& text) {
        const auto deadline = Clock::now() + std::chrono::seconds{30};
        while (pageText(player->hostedWebView().webView()) != text)
            if (Clock::now() > deadline)
                throw std::runtime_error{"the page did not show \"" + text + "\""};
    };
    waitFor("version 0");
    std::vector<double> times;
    for (int save = 1; save <= saves; ++save) {
        const auto start = Clock::now();
        if (save % 2 == 0)
            Glib::file_set_contents(file.string(), source(save)); // by rename
        else
            writeFile(file, source(save)); // in place
        waitFor("version " + std::to_string(save));
        times.push_back(millisecondsSince(start));
    }
    window.hide();
    return times;
}

} // namespace kelmo::bench
