// Scanning a folder of 10,000 supported files into a library that already holds
// 10,000 artifacts from another folder. Each iteration adds the folder (a full
// listing, new records and a re-sort of all 20,000) and removes it untimed.

#include "store/artifact_store.h"

#include <benchmark/benchmark.h>
#include <fstream>
#include <giomm/init.h>
#include <glib.h>

namespace {

constexpr int filesPerFolder = 10'000;

class FixedPanel : public kelmo::OpenPanel {
public:
    std::filesystem::path answer;
    void run(const kelmo::OpenPanelRequest&, Completion completion) override { completion(answer); }
};

void fillFolder(const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    static const char* extensions[] = {".html", ".jsx", ".tsx", ".htm"};
    for (int i = 0; i < filesPerFolder; ++i) {
        std::ofstream{folder / ("artifact-" + std::to_string(i) + extensions[i % 4])};
        std::ofstream{folder / ("ignored-" + std::to_string(i) + ".png")};
    }
}

void BM_RescanTenThousandIntoTenThousand(benchmark::State& state) {
    gchar* made = g_dir_make_tmp("kelmo-bench-XXXXXX", nullptr);
    const std::filesystem::path root = made;
    g_free(made);
    fillFolder(root / "existing");
    fillFolder(root / "scanned");

    kelmo::NotificationCenter notifications;
    auto panel = std::make_shared<FixedPanel>();
    kelmo::ArtifactStore::Environment environment;
    environment.settingsFile = root / "settings";
    environment.notifications = &notifications;
    environment.downloadsDirectory = [] { return std::optional<std::filesystem::path>{}; };
    environment.openPanel = panel;
    kelmo::ArtifactStore store{environment};

    panel->answer = root / "existing";
    store.addWatchedFolder();

    panel->answer = root / "scanned";
    for (auto _ : state) {
        store.addWatchedFolder();
        state.PauseTiming();
        if (store.allArtifacts().size() != 2 * filesPerFolder)
            state.SkipWithError("scan did not list every file");
        store.removeFolder(store.watchedFolders().back());
        state.ResumeTiming();
    }
    state.counters["library"] = static_cast<double>(2 * filesPerFolder);
    std::filesystem::remove_all(root);
}
BENCHMARK(BM_RescanTenThousandIntoTenThousand)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    Gio::init();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
