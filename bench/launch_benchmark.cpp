// How long Kelmo takes to show an artifact, against the engine floor (a bare GTK
// window with one web view, kelmo_floor_host), and what it costs in memory; also
// folder scans and the watched folder's reaction, measured in-process on the store.
// Run on demand, under a display; see docs/performance.md.

#include "app_launch.h"
#include "floor_page.h"
#include "folder_timing.h"
#include "temporary_folder.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <giomm/init.h>
#include <optional>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using namespace kelmo::bench;

constexpr int reloadsPerRun = 5;
// How much later a never-seen artifact may paint than a seen one, in the running app.
constexpr double newArtifactAllowance = 50;

struct Options {
    int runs = 5;
    std::vector<std::string> only;
    std::filesystem::path kelmo;
    bool verbose = false;
};

void printUsage(FILE* to) {
    std::fputs("Usage: kelmo_launch_benchmark [--runs N] [--only TEXT]... [--kelmo PATH] "
               "[--verbose]\n"
               "  --runs N      repetitions of every case (default 5); figures are medians\n"
               "  --only TEXT   run only the cases whose name contains TEXT (repeatable)\n"
               "  --kelmo PATH  the Kelmo executable (default: kelmo beside this program)\n"
               "  --verbose     print every run's figure as it is measured\n"
               "Needs a display, for example:\n"
               "  xvfb-run -a -s \"-screen 0 1600x1000x24\" dbus-run-session -- \\\n"
               "    env WEBKIT_DISABLE_DMABUF_RENDERER=1 build/bin/kelmo_launch_benchmark\n",
               to);
}

std::optional<Options> parseOptions(int argc, char** argv) {
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        const bool hasValue = i + 1 < argc;
        if (argument == "--runs" && hasValue) {
            options.runs = std::atoi(argv[++i]);
            if (options.runs < 1)
                return std::nullopt;
        } else if (argument == "--only" && hasValue) {
            options.only.push_back(argv[++i]);
        } else if (argument == "--kelmo" && hasValue) {
            options.kelmo = argv[++i];
        } else if (argument == "--verbose") {
            options.verbose = true;
        } else if (argument == "--help" || argument == "-h") {
            printUsage(stdout);
            std::exit(0);
        } else {
            return std::nullopt;
        }
    }
    return options;
}

std::filesystem::path ownFolder() {
    std::error_code error;
    const auto self = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::current_path() : self.parent_path();
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

std::string lowercase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

// One line of the table. A target is either a ratio to the floor's figure or a limit
// in the row's own unit.
struct Row {
    std::string name;
    std::string unit;
    std::optional<double> ratioLimit;
    std::optional<double> absoluteLimit;
    bool strictLimit = false; // "<" rather than "≤"
    std::vector<double> samples;
    std::vector<double> residentSamples; // memory rows: RSS beside the PSS samples
    std::vector<std::string> failures;
};

enum RowId {
    floorHtml,
    kelmoHtml,
    jsxCold,
    jsxWarm,
    floorLibraries,
    librariesCold,
    librariesWarm,
    reloadRow,
    openSeen,
    openNew,
    scan10k,
    scan50k,
    watchedAdd,
    burstStall,
    burstSettled,
    scrollPlain,
    scrollPictures,
    liveReload,
    memoryFloor,
    memoryKelmoHtml,
    memoryKelmoJsx,
    rowCount
};

Row ratioRow(std::string name, std::string unit, std::optional<double> limit = {}) {
    Row row;
    row.name = std::move(name);
    row.unit = std::move(unit);
    row.ratioLimit = limit;
    return row;
}

Row limitRow(std::string name, std::optional<double> below = {}) {
    Row row;
    row.name = std::move(name);
    row.unit = "ms";
    row.absoluteLimit = below;
    row.strictLimit = true;
    return row;
}

std::vector<Row> makeRows() {
    std::vector<Row> rows(rowCount);
    rows[floorHtml] = ratioRow("floor HTML", "ms");
    rows[kelmoHtml] = ratioRow("Kelmo HTML", "ms", 1.10);
    rows[jsxCold] = ratioRow("Kelmo JSX cold", "ms", 1.10);
    rows[jsxWarm] = ratioRow("Kelmo JSX warm", "ms", 1.05);
    rows[floorLibraries] = ratioRow("floor JSX + libraries, precompiled", "ms");
    rows[librariesCold] = ratioRow("Kelmo JSX + libraries cold", "ms", 1.30);
    rows[librariesWarm] = ratioRow("Kelmo JSX + libraries warm", "ms", 1.20);
    rows[reloadRow] = limitRow("reload in the running app", 150);
    rows[openSeen] = limitRow("seen artifact opened in the running app");
    rows[openNew] = limitRow("new artifact opened in the running app");
    rows[scan10k] = limitRow("scan a folder of 10,000 files");
    rows[scan50k] = limitRow("scan a folder of 50,000 files");
    rows[watchedAdd] = limitRow("new file in a watched folder of 10,000", 100);
    rows[burstStall] = limitRow("burst in a folder of 10,000: longest stall", 100);
    rows[burstSettled] = limitRow("burst in a folder of 10,000: right after", 1000);
    rows[scrollPlain] = limitRow("scroll 2,000 cards: longest stall");
    rows[scrollPictures] = limitRow("scroll 2,000 cards with pictures: stall");
    rows[liveReload] = limitRow("save of the running file to its new page", 300);
    rows[memoryFloor] = ratioRow("memory: floor HTML", "MiB");
    rows[memoryKelmoHtml] = ratioRow("memory: Kelmo HTML", "MiB", 1.15);
    rows[memoryKelmoJsx] = ratioRow("memory: Kelmo JSX", "MiB", 1.10);
    return rows;
}

// Launch times and memory figures are shown against the floor's.
bool comparedToFloor(int id) {
    return id <= librariesWarm || (id >= memoryFloor && id <= memoryKelmoJsx);
}

std::string formatNumber(double value) {
    char text[32];
    std::snprintf(text, sizeof text, value >= 100 ? "%.0f" : "%.1f", value);
    return text;
}

void printTable(const std::vector<Row>& rows, const std::vector<bool>& shown) {
    const auto baseOf = [&rows](int id) -> std::optional<double> {
        const int base = rows[id].unit == "MiB" ? memoryFloor : floorHtml;
        if (rows[base].samples.empty())
            return std::nullopt;
        return median(rows[base].samples);
    };
    std::printf("\n%-40s %12s %9s   %-18s %s\n", "case", "median", "ratio", "target", "");
    for (int id = 0; id < rowCount; ++id) {
        if (!shown[id])
            continue;
        const Row& row = rows[id];
        std::string figure = "failed";
        std::string ratio = "";
        std::string target = "";
        std::string verdict = "";
        if (row.ratioLimit) {
            char text[32];
            std::snprintf(text, sizeof text, "≤ %.2f × floor", *row.ratioLimit);
            target = text;
        } else if (row.absoluteLimit) {
            target = std::string{row.strictLimit ? "< " : "≤ "} + formatNumber(*row.absoluteLimit) +
                     " " + row.unit;
        }
        if (!row.samples.empty()) {
            const double value = median(row.samples);
            figure = formatNumber(value) + " " + row.unit;
            const auto base = comparedToFloor(id) ? baseOf(id) : std::nullopt;
            if (base && *base > 0) {
                const double times = value / *base;
                const bool within = !row.ratioLimit || times <= *row.ratioLimit;
                // Two decimals, or three where two would round an excess away.
                char text[32];
                std::snprintf(text, sizeof text, "%.2f", times);
                if (!within && std::abs(std::atof(text) - *row.ratioLimit) < 1e-9)
                    std::snprintf(text, sizeof text, "%.3f", times);
                ratio = text;
                if (row.ratioLimit)
                    verdict = within ? "ok" : "over";
            }
            if (row.absoluteLimit) {
                const bool within =
                    row.strictLimit ? value < *row.absoluteLimit : value <= *row.absoluteLimit;
                verdict = within ? "ok" : "over";
            }
        }
        // The ratio and target columns hold multi-byte signs; pad by what shows.
        const auto padded = [](const std::string& text, std::size_t width) {
            std::size_t shownWidth = 0;
            for (unsigned char c : text)
                shownWidth += (c & 0xC0) != 0x80;
            return text + std::string(width > shownWidth ? width - shownWidth : 0, ' ');
        };
        std::printf("%-40s %12s %9s   %s %s\n", row.name.c_str(), figure.c_str(), ratio.c_str(),
                    padded(target, 18).c_str(), verdict.c_str());
    }

    if (shown[floorLibraries] && !rows[floorLibraries].samples.empty()) {
        std::string against;
        for (int id : {librariesCold, librariesWarm}) {
            if (shown[id] && !rows[id].samples.empty()) {
                char text[64];
                std::snprintf(text, sizeof text, "%s%s %.2f", against.empty() ? "" : ", ",
                              id == librariesCold ? "cold" : "warm",
                              median(rows[id].samples) / median(rows[floorLibraries].samples));
                against += text;
            }
        }
        if (!against.empty())
            std::printf("\nKelmo's libraries figures against the floor showing the same component, "
                        "compiled beforehand, with the same files: %s.\n",
                        against.c_str());
    }

    if (shown[openNew] && shown[openSeen] && !rows[openNew].samples.empty() &&
        !rows[openSeen].samples.empty()) {
        const double extra = median(rows[openNew].samples) - median(rows[openSeen].samples);
        std::printf("\nA new artifact in the running app against a seen one: %+.0f ms "
                    "(target ≤ +%.0f ms, %s).\n",
                    extra, newArtifactAllowance, extra <= newArtifactAllowance ? "ok" : "over");
    }

    std::string resident;
    for (int id : {memoryFloor, memoryKelmoHtml, memoryKelmoJsx}) {
        if (shown[id] && !rows[id].residentSamples.empty())
            resident += (resident.empty() ? "" : ", ") +
                        rows[id].name.substr(std::strlen("memory: ")) + " " +
                        formatNumber(median(rows[id].residentSamples)) + " MiB";
    }
    if (!resident.empty())
        std::printf("\nMemory: PSS of the process and all it started, one second after the first "
                    "paint.\nRSS medians, shared pages counted in each process: %s.\n",
                    resident.c_str());
}

LaunchRequest sampling(bool memory) {
    LaunchRequest request;
    request.sampleMemory = memory;
    return request;
}

LaunchRequest reloading(int count) {
    LaunchRequest request;
    request.reloads = count;
    return request;
}

LaunchRequest opening(std::vector<std::filesystem::path> files) {
    LaunchRequest request;
    request.opens = std::move(files);
    return request;
}

// A copy of the fixture beside the home's Downloads, with a line that no other copy has:
// a source that Kelmo has never compiled nor kept anything of.
std::filesystem::path newVariant(const std::filesystem::path& fixture, const Home& home, int run,
                                 int index) {
    const auto file = home.downloads().parent_path() /
                      ("new-" + std::to_string(run) + "-" + std::to_string(index) + ".jsx");
    std::ifstream in{fixture};
    std::ofstream out{file};
    out << in.rdbuf() << "\n// variant " << run << "." << index << " " << ::getpid() << "\n";
    return file;
}

void record(Row& row, const LaunchResult& result, int run, bool verbose) {
    if (result.milliseconds) {
        row.samples.push_back(*result.milliseconds);
        if (verbose)
            std::printf("  %s, run %d: %.0f ms\n", row.name.c_str(), run, *result.milliseconds);
    }
    if (!result.failure.empty()) {
        row.failures.push_back(result.failure);
        std::fprintf(stderr, "%s, run %d: %s\n", row.name.c_str(), run, result.failure.c_str());
    }
}

void recordMemory(Row& row, const LaunchResult& result, int run, bool verbose) {
    if (!result.memory)
        return;
    const double mebibytes = static_cast<double>(result.memory->pssKiB) / 1024;
    row.samples.push_back(mebibytes);
    row.residentSamples.push_back(static_cast<double>(result.memory->rssKiB) / 1024);
    if (verbose)
        std::printf("  %s, run %d: %.0f MiB PSS (%.0f MiB RSS) over %d processes\n",
                    row.name.c_str(), run, mebibytes,
                    static_cast<double>(result.memory->rssKiB) / 1024, result.memory->processes);
}

} // namespace

int main(int argc, char** argv) {
    // What the cases run in this process keep (the cards' pictures) stays out of the
    // user's cache; the launched applications have homes of their own.
    const kelmo::bench::TemporaryFolder cache;
    g_setenv("XDG_CACHE_HOME", cache.path().c_str(), TRUE);
    const auto parsed = parseOptions(argc, argv);
    if (!parsed) {
        printUsage(stderr);
        return 2;
    }
    const Options& options = *parsed;
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    Gio::init();

    std::vector<Row> rows = makeRows();
    std::vector<bool> selected(rowCount, options.only.empty());
    for (int id = 0; id < rowCount; ++id) {
        for (const auto& text : options.only) {
            if (lowercase(rows[id].name).find(lowercase(text)) != std::string::npos)
                selected[id] = true;
        }
    }
    if (std::none_of(selected.begin(), selected.end(), [](bool on) { return on; })) {
        std::fprintf(stderr, "No case matches --only; the cases are:\n");
        for (const auto& row : rows)
            std::fprintf(stderr, "  %s\n", row.name.c_str());
        return 2;
    }
    // Ratios need the floor's figures; the libraries' figures are also shown against
    // the same page in the floor.
    std::vector<bool> shown = selected;
    for (int id = 0; id < rowCount; ++id) {
        if (selected[id] && comparedToFloor(id))
            shown[rows[id].unit == "MiB" ? memoryFloor : floorHtml] = true;
    }
    if (selected[librariesCold] || selected[librariesWarm])
        shown[floorLibraries] = true;
    const auto wanted = [&shown](std::initializer_list<int> ids) {
        return std::any_of(ids.begin(), ids.end(), [&shown](int id) { return shown[id]; });
    };

    const bool launches =
        wanted({floorHtml, kelmoHtml, jsxCold, jsxWarm, librariesCold, librariesWarm, reloadRow,
                openSeen, openNew, memoryFloor, memoryKelmoHtml, memoryKelmoJsx});
    const std::filesystem::path folder = ownFolder();
    const std::filesystem::path kelmo = options.kelmo.empty() ? folder / "kelmo" : options.kelmo;
    const std::filesystem::path floorHost = folder / "kelmo_floor_host";
    const std::filesystem::path fixtures = KELMO_BENCH_FIXTURES;
    const auto typicalHtml = fixtures / "typical.html";
    const auto typicalJsx = fixtures / "typical.jsx";
    const auto librariesJsx = fixtures / "libraries.jsx";

    int status = 0;
    if (launches) {
        if (!g_getenv("DISPLAY") && !g_getenv("WAYLAND_DISPLAY")) {
            std::fputs("No display. ", stderr);
            printUsage(stderr);
            return 2;
        }
        for (const auto& program : {kelmo, floorHost}) {
            if (::access(program.c_str(), X_OK) != 0) {
                std::fprintf(stderr, "Cannot run %s\n", program.c_str());
                return 2;
            }
        }
        TemporaryFolder pages;
        const auto librariesPage = pages.path() / "libraries.html";
        if (wanted({floorLibraries})) {
            try {
                writeFloorPage(librariesJsx, fixtures / "libraries-floor.html", librariesPage);
            } catch (const std::exception& error) {
                std::fprintf(stderr, "Cannot make the floor's libraries page: %s\n", error.what());
                return 2;
            }
        }
        Launcher launcher{kelmo, floorHost};
        if (const auto obstacle = launcher.obstacle()) {
            std::fprintf(stderr, "Cannot measure: %s\n", obstacle->c_str());
            return 2;
        }
        std::printf("Kelmo: %s\nFloor: %s\nRuns: %d, each case's figure is the median\n",
                    kelmo.c_str(), floorHost.c_str(), options.runs);

        // One untimed start of each brings their files into the page cache and the
        // session's accessibility bus up, which a first start would otherwise pay.
        std::printf("Warming up…\n");
        launcher.floorHost(Home{typicalHtml});
        launcher.kelmo(Home{typicalJsx});

        const bool memoryOfFloor = wanted({memoryFloor});
        for (int run = 1; run <= options.runs; ++run) {
            std::printf("Run %d of %d\n", run, options.runs);
            if (wanted({floorHtml, memoryFloor})) {
                const auto result = launcher.floorHost(Home{typicalHtml}, sampling(memoryOfFloor));
                record(rows[floorHtml], result, run, options.verbose);
                recordMemory(rows[memoryFloor], result, run, options.verbose);
            }
            if (wanted({kelmoHtml, memoryKelmoHtml})) {
                const auto result =
                    launcher.kelmo(Home{typicalHtml}, sampling(wanted({memoryKelmoHtml})));
                record(rows[kelmoHtml], result, run, options.verbose);
                recordMemory(rows[memoryKelmoHtml], result, run, options.verbose);
            }
            if (wanted({jsxCold, jsxWarm, memoryKelmoJsx})) {
                // The warm start reuses the cold start's home, and so its caches.
                const Home home{typicalJsx};
                const auto cold = launcher.kelmo(home, sampling(wanted({memoryKelmoJsx})));
                record(rows[jsxCold], cold, run, options.verbose);
                recordMemory(rows[memoryKelmoJsx], cold, run, options.verbose);
                if (wanted({jsxWarm}))
                    record(rows[jsxWarm], launcher.kelmo(home), run, options.verbose);
            }
            if (wanted({floorLibraries}))
                record(rows[floorLibraries], launcher.floorHost(Home{librariesPage}), run,
                       options.verbose);
            if (wanted({librariesCold, librariesWarm})) {
                const Home home{librariesJsx};
                record(rows[librariesCold], launcher.kelmo(home), run, options.verbose);
                if (wanted({librariesWarm}))
                    record(rows[librariesWarm], launcher.kelmo(home), run, options.verbose);
            }
            if (wanted({openSeen, openNew})) {
                // A returning user's Kelmo showing the typical fixture is handed, in turn,
                // a copy of it with a line of its own, never seen before, and the
                // fixture itself again, seen at the start.
                const Home home{typicalJsx, Home::User::returning};
                std::vector<std::filesystem::path> files;
                for (int i = 0; i < reloadsPerRun; ++i) {
                    files.push_back(newVariant(typicalJsx, home, run, i));
                    files.push_back(home.artifact());
                }
                const auto result = launcher.kelmo(home, opening(files));
                for (std::size_t i = 0; i < result.opens.size(); ++i) {
                    Row& row = rows[i % 2 == 0 ? openNew : openSeen];
                    row.samples.push_back(result.opens[i]);
                    if (options.verbose)
                        std::printf("  %s, run %d: %.0f ms\n", row.name.c_str(), run,
                                    result.opens[i]);
                }
                if (!result.failure.empty()) {
                    rows[openNew].failures.push_back(result.failure);
                    std::fprintf(stderr, "open in the running app, run %d: %s\n", run,
                                 result.failure.c_str());
                }
            }
            if (wanted({reloadRow})) {
                // The first-run guide is modal: reloads are a returning user's.
                const auto result = launcher.kelmo(Home{typicalJsx, Home::User::returning},
                                                   reloading(reloadsPerRun));
                for (double milliseconds : result.reloads) {
                    rows[reloadRow].samples.push_back(milliseconds);
                    if (options.verbose)
                        std::printf("  reload, run %d: %.0f ms\n", run, milliseconds);
                }
                if (!result.failure.empty()) {
                    rows[reloadRow].failures.push_back(result.failure);
                    std::fprintf(stderr, "reload, run %d: %s\n", run, result.failure.c_str());
                }
            }
        }
    }

    const auto inProcess = [&](int id, const std::function<std::vector<double>()>& measure) {
        if (!shown[id])
            return;
        std::printf("%s…\n", rows[id].name.c_str());
        try {
            rows[id].samples = measure();
            if (options.verbose) {
                for (double milliseconds : rows[id].samples)
                    std::printf("  %.1f ms\n", milliseconds);
            }
        } catch (const std::exception& error) {
            rows[id].failures.push_back(error.what());
            std::fprintf(stderr, "%s: %s\n", rows[id].name.c_str(), error.what());
        }
    };
    inProcess(scan10k, [&] { return folderScanTimes(10'000, options.runs); });
    inProcess(scan50k, [&] { return folderScanTimes(50'000, options.runs); });
    inProcess(watchedAdd,
              [&] { return watchedFolderAddTimes(10'000, options.runs * reloadsPerRun); });
    if (shown[burstStall] || shown[burstSettled]) {
        // One burst gives both figures.
        std::printf("burst of 2,500 events in a watched folder of 10,000…\n");
        try {
            for (const auto& figure : folderBurstFigures(10'000, options.runs)) {
                rows[burstStall].samples.push_back(figure.longestStall);
                rows[burstSettled].samples.push_back(figure.settledAfterLastEvent);
                if (options.verbose)
                    std::printf("  stall %.1f ms, right %.1f ms after\n", figure.longestStall,
                                figure.settledAfterLastEvent);
            }
        } catch (const std::exception& error) {
            for (const int id : {burstStall, burstSettled})
                rows[id].failures.push_back(error.what());
            std::fprintf(stderr, "burst: %s\n", error.what());
        }
    }

    inProcess(scrollPlain, [&] { return libraryScrollStalls(2'000, false, options.runs); });
    inProcess(scrollPictures, [&] { return libraryScrollStalls(2'000, true, options.runs); });
    inProcess(liveReload, [&] { return liveReloadTimes(options.runs * 4); });

    printTable(rows, shown);
    for (int id = 0; id < rowCount; ++id) {
        if (shown[id] && !rows[id].failures.empty())
            status = 1;
    }
    return status;
}
