// Saving and restoring watched folders, scanning them and following them on disk.

#include "store/artifact_store.h"
#include "store/folder_bookmark.h"
#include "store/settings_keys.h"

#include <algorithm>
#include <dirent.h>
#include <fcntl.h>
#include <giomm/file.h>
#include <glibmm/main.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace kelmo {
namespace {

struct DirectoryCloser {
    void operator()(DIR* directory) const { ::closedir(directory); }
};

struct ListedFile {
    std::string name;
    std::optional<Clock::time_point> modifiedAt;
    bool regular = false; // a regular file, links followed
};

Clock::time_point toTimePoint(const struct timespec& time) {
    const auto sinceEpoch =
        std::chrono::seconds{time.tv_sec} + std::chrono::nanoseconds{time.tv_nsec};
    return Clock::time_point{std::chrono::duration_cast<Clock::duration>(sinceEpoch)};
}

// Reads the modification times of the named entries. Large folders are split
// across a few threads: the stat calls dominate a scan and are independent.
void readModificationTimes(int directory, std::vector<ListedFile>& files) {
    const auto statRange = [directory, &files](std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i) {
            struct stat info {};
            if (::fstatat(directory, files[i].name.c_str(), &info, 0) == 0) {
                files[i].modifiedAt = toTimePoint(info.st_mtim);
                files[i].regular = S_ISREG(info.st_mode);
            }
        }
    };
    constexpr std::size_t filesPerThread = 2048;
    const std::size_t threadCount = std::min<std::size_t>(
        {std::max(1u, std::thread::hardware_concurrency()), 4, files.size() / filesPerThread + 1});
    if (threadCount <= 1) {
        statRange(0, files.size());
        return;
    }
    std::vector<std::jthread> helpers;
    const std::size_t slice = (files.size() + threadCount - 1) / threadCount;
    for (std::size_t t = 1; t < threadCount; ++t)
        helpers.emplace_back(statRange, t * slice, std::min(files.size(), (t + 1) * slice));
    statRange(0, std::min(files.size(), slice));
}

// The folder's non-hidden direct entries with a supported extension that are regular
// files (links followed), in name order. An unlistable folder gives an empty listing.
std::vector<ListedFile> listSupportedFiles(const std::string& folder) {
    std::vector<ListedFile> files;
    std::unique_ptr<DIR, DirectoryCloser> directory{::opendir(folder.c_str())};
    if (!directory)
        return files;
    while (const dirent* entry = ::readdir(directory.get())) {
        const std::string_view name{entry->d_name};
        if (name.empty() || name.front() == '.' || !hasSupportedExtension(name))
            continue;
        files.push_back(ListedFile{std::string{name}, std::nullopt});
    }
    readModificationTimes(::dirfd(directory.get()), files);
    std::erase_if(files, [](const ListedFile& file) { return !file.regular; });
    std::sort(files.begin(), files.end(),
              [](const ListedFile& a, const ListedFile& b) { return a.name < b.name; });
    return files;
}

void sortNewestFirst(std::vector<Artifact>& artifacts) {
    std::stable_sort(artifacts.begin(), artifacts.end(), [](const Artifact& a, const Artifact& b) {
        return a.modifiedAt > b.modifiedAt;
    });
}

bool changesEntries(Gio::FileMonitor::Event event) {
    using Event = Gio::FileMonitor::Event;
    // Entries appearing, disappearing or being renamed (the folder itself among them).
    // Content changes of existing files leave the listing alone.
    switch (event) {
    case Event::CREATED:
    case Event::DELETED:
    case Event::MOVED:
    case Event::RENAMED:
    case Event::MOVED_IN:
    case Event::MOVED_OUT:
        return true;
    default:
        return false;
    }
}

} // namespace

void ArtifactStore::loadPersistedData() {
    if (auto favorites = settings_.stringArray(settings_keys::favoritedPaths))
        favoritedPaths_ = {favorites->begin(), favorites->end()};
    if (auto recents = settings_.stringArray(settings_keys::recentPaths))
        recentPaths_ = std::move(*recents);

    const auto records = settings_.array(settings_keys::watchedFolderBookmarks);
    if (!records)
        return;
    std::vector<std::map<std::string, Glib::VariantBase>> dictionaries;
    for (const auto& record : *records) {
        auto entries = dictionaryEntries(record);
        if (!entries)
            return; // one foreign element discards the whole list
        dictionaries.push_back(std::move(*entries));
    }

    for (const auto& entries : dictionaries) {
        const auto field = [&entries](const char* key) {
            const auto found = entries.find(key);
            return found == entries.end() ? Glib::VariantBase{} : found->second;
        };
        const auto idText = stringValue(field(settings_keys::folderId));
        const auto id = idText ? Uuid::parse(*idText) : std::nullopt;
        const auto name = stringValue(field(settings_keys::folderName));
        const auto bookmark = bytesValue(field(settings_keys::folderBookmark));
        if (!id || !name || !bookmark)
            continue;
        const auto url = folder_bookmark::resolve(*bookmark);
        if (!url)
            continue;
        WatchedFolder folder{*id, *name, *url};
        std::vector<WatchedFolder> folders = watchedFolders_;
        folders.push_back(folder);
        setWatchedFolders(std::move(folders));
        // A folder that cannot be read now (a drive that is not mounted) stays in the
        // list, empty, and is read and watched again at a later start; only the user
        // removes folders.
        if (!folder_bookmark::startAccessing(*url))
            continue;
        loadArtifacts(folder);
        startWatching(folder);
    }

    if (!watchedFolders_.empty())
        persistBookmarks();
}

void ArtifactStore::persistBookmarks() {
    std::vector<Glib::VariantBase> records;
    for (const auto& folder : watchedFolders_) {
        const auto bookmark = folder_bookmark::encode(folder.url);
        if (!bookmark)
            continue;
        records.push_back(makeDictionaryVariant({
            {settings_keys::folderId, makeStringVariant(folder.id.toString())},
            {settings_keys::folderName, makeStringVariant(folder.name)},
            {settings_keys::folderBookmark, makeBytesVariant(*bookmark)},
        }));
    }
    settings_.set(settings_keys::watchedFolderBookmarks, makeArrayVariant(records));
}

void ArtifactStore::loadArtifacts(const WatchedFolder& folder) {
    const std::string prefix = folder.path() == "/" ? "/" : folder.path() + "/";
    const auto now = Clock::now();
    std::vector<Artifact> scanned;
    for (const auto& file : listSupportedFiles(folder.url))
        scanned.push_back(Artifact::make(prefix + file.name, file.modifiedAt.value_or(now)));
    sortNewestFirst(scanned);

    // The old list is replaced below, so its records can be moved rather than copied.
    std::vector<Artifact> library;
    library.reserve(allArtifacts_.size() + scanned.size());
    for (auto& artifact : allArtifacts_) {
        if (!folder.contains(artifact))
            library.push_back(std::move(artifact));
    }
    std::move(scanned.begin(), scanned.end(), std::back_inserter(library));
    sortNewestFirst(library);
    setAllArtifacts(std::move(library));

    if (!selectedArtifact_ && !allArtifacts_.empty())
        setSelectedArtifact(allArtifacts_.front());
}

const WatchedFolder* ArtifactStore::watchedFolder(const Uuid& id) const {
    const auto found = std::find_if(watchedFolders_.begin(), watchedFolders_.end(),
                                    [&id](const WatchedFolder& folder) { return folder.id == id; });
    return found == watchedFolders_.end() ? nullptr : &*found;
}

void ArtifactStore::FolderWatcher::stop() {
    connection.disconnect();
    settleTimer.disconnect();
    monitor->cancel();
    changedNames.clear();
    wholeFolderChanged = false;
}

void ArtifactStore::stopWatching(const Uuid& folderId) {
    const auto found = monitorSources_.find(folderId);
    if (found != monitorSources_.end())
        found->second.stop();
}

void ArtifactStore::startWatching(const WatchedFolder& folder) {
    stopWatching(folder.id);
    // Only a folder that can be opened now is watched; a failure leaves it unwatched, without
    // retry.
    const int descriptor = ::open(folder.url.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    ::close(descriptor);

    Glib::RefPtr<Gio::FileMonitor> monitor;
    try {
        monitor = Gio::File::create_for_path(folder.url)
                      ->monitor_directory(Gio::FileMonitorFlags::WATCH_MOVES);
    } catch (const Glib::Error&) {
        return;
    }
    const Uuid folderId = folder.id;
    // The monitor belongs to the store and is cancelled before the store goes away,
    // so the handler never outlives it.
    auto connection = monitor->signal_changed().connect(
        [this, folderId](const Glib::RefPtr<Gio::File>& file,
                         const Glib::RefPtr<Gio::File>& otherFile, Gio::FileMonitor::Event event) {
            if (event == Gio::FileMonitor::Event::UNMOUNTED)
                noteFolderEvent(folderId, {}, {});
            else if (changesEntries(event))
                noteFolderEvent(folderId, file, otherFile);
        });
    FolderWatcher watcher;
    watcher.monitor = monitor;
    watcher.connection = connection;
    monitorSources_.insert_or_assign(folder.id, std::move(watcher));
}

void ArtifactStore::noteFolderEvent(const Uuid& folderId, const Glib::RefPtr<Gio::File>& file,
                                    const Glib::RefPtr<Gio::File>& otherFile) {
    const auto watcher = monitorSources_.find(folderId);
    const WatchedFolder* folder = watchedFolder(folderId);
    if (watcher == monitorSources_.end() || !folder)
        return;
    FolderWatcher& pending = watcher->second;
    const auto entryName = [&folder](const Glib::RefPtr<Gio::File>& changed) {
        const std::string path = changed ? changed->get_path() : std::string{};
        if (path.empty() || path == folder->path() ||
            containingDirectoryPath(path) != folder->path())
            return std::optional<std::string>{};
        return std::optional<std::string>{path.substr(path.rfind('/') + 1)};
    };
    // An event about anything but a direct entry (the folder itself, or no file at all)
    // lists the whole folder again. The other file of a move may lie elsewhere.
    if (const auto name = entryName(file))
        pending.changedNames.insert(*name);
    else
        pending.wholeFolderChanged = true;
    if (const auto name = entryName(otherFile))
        pending.changedNames.insert(*name);

    // A lone change (a download, a save) is applied in the next turn of the main loop,
    // with whatever else has arrived by then. Events that closely follow the application
    // of several entries at once are a burst (an archive unpacked, a folder synced, the
    // monitor handing a burst over in small batches): they are applied
    // together once they have been quiet for a moment, but never held back for long
    // while they keep coming.
    constexpr auto nextTurn = std::chrono::milliseconds{0};
    constexpr auto quietPeriod = std::chrono::milliseconds{100};
    constexpr auto longestWait = std::chrono::milliseconds{500};
    const auto now = Clock::now();
    if (pending.settleTimer.connected()) {
        if (!pending.inBurst || now - pending.firstPendingEvent >= longestWait)
            return;
        pending.settleTimer.disconnect();
    } else {
        pending.firstPendingEvent = now;
        pending.inBurst = (pending.lastAppliedCount > 1 || pending.lastAppliedWhole) &&
                          now - pending.lastApplied < quietPeriod;
    }
    const auto delay = pending.inBurst ? quietPeriod : nextTurn;
    pending.settleTimer = Glib::signal_timeout().connect(
        [this, folderId] {
            applyFolderEvents(folderId);
            return false;
        },
        static_cast<unsigned>(delay.count()));
}

void ArtifactStore::applyFolderEvents(const Uuid& folderId) {
    const auto watcher = monitorSources_.find(folderId);
    const WatchedFolder* current = watchedFolder(folderId);
    if (watcher == monitorSources_.end() || !current)
        return;
    const WatchedFolder folder = *current; // observers may change the list
    const std::set<std::string> names = std::exchange(watcher->second.changedNames, {});
    const bool wholeFolder = std::exchange(watcher->second.wholeFolderChanged, false);
    if (wholeFolder)
        loadArtifacts(folder);
    else
        applyEntryChanges(folder, names);
    // Observers may have removed the folder meanwhile.
    if (const auto still = monitorSources_.find(folderId); still != monitorSources_.end()) {
        still->second.lastApplied = Clock::now();
        still->second.lastAppliedCount = names.size();
        still->second.lastAppliedWhole = wholeFolder;
    }
}

// Brings the named entries of the folder up to date: a record whose file is gone, or
// is no artifact any more, leaves; a record whose file changed is replaced; a new file
// gets a record. Every other record is kept as it is, with its id.
void ArtifactStore::applyEntryChanges(const WatchedFolder& folder,
                                      const std::set<std::string>& names) {
    const std::string prefix = folder.path() == "/" ? "/" : folder.path() + "/";
    std::unordered_map<std::string, Clock::time_point> present;
    std::unordered_set<std::string> affected;
    for (const auto& name : names) {
        std::string path = prefix + name;
        struct stat info {};
        if (!name.empty() && name.front() != '.' && hasSupportedExtension(name) &&
            ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode))
            present.emplace(path, toTimePoint(info.st_mtim));
        affected.insert(std::move(path));
    }

    bool changed = false;
    std::unordered_set<std::string> known;
    std::vector<Artifact> library;
    library.reserve(allArtifacts_.size() + present.size());
    for (const auto& artifact : allArtifacts_) {
        if (affected.count(artifact.path()) == 0) {
            library.push_back(artifact);
            continue;
        }
        known.insert(artifact.path());
        const auto found = present.find(artifact.path());
        if (found != present.end() && found->second == artifact.modifiedAt) {
            library.push_back(artifact);
            present.erase(found); // unchanged: nothing to add
        } else {
            changed = true;
        }
    }
    // A path the library did not have is an arrival; a file rewritten in place or
    // replaced by rename (as editors save) is not.
    std::optional<Artifact> newestArrival;
    for (const auto& [path, modifiedAt] : present) {
        library.push_back(Artifact::make(path, modifiedAt));
        changed = true;
        if (known.count(path) == 0 && (!newestArrival || modifiedAt > newestArrival->modifiedAt))
            newestArrival = library.back();
    }
    if (changed) {
        sortNewestFirst(library);
        setAllArtifacts(std::move(library));
    }
    // Only an arrival moves the selection: entries that come and go without one (a
    // download's partial file, a deletion) leave the library where it is.
    if (!newestArrival)
        return;
    if (!selectedArtifact_)
        setSelectedArtifact(*newestArrival);
    else if (selectedArtifact_->path() != newestArrival->path())
        artifactArrived_.emit(*newestArrival);
}

} // namespace kelmo
