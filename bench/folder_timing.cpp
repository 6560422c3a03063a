#include "folder_timing.h"

#include "child_process.h"
#include "store/artifact_store.h"
#include "temporary_folder.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <glibmm/main.h>
#include <stdexcept>
#include <string>
#include <unistd.h>

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

} // namespace kelmo::bench
