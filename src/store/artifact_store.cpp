#include "store/artifact_store.h"

#include "store/settings_keys.h"

#include <algorithm>
#include <giomm/init.h>
#include <glib.h>
#include <unistd.h>

namespace kelmo {
namespace {

constexpr std::size_t maximumRecentCount = 20;

} // namespace

std::optional<std::filesystem::path> ArtifactStore::userDownloadsDirectory() {
    if (const char* configured = g_get_user_special_dir(G_USER_DIRECTORY_DOWNLOAD))
        return withoutTrailingSlash(configured);
    const char* home = g_get_home_dir();
    if (!home || !*home)
        return std::nullopt;
    return withoutTrailingSlash(std::filesystem::path{home} / "Downloads");
}

ArtifactStore::ArtifactStore() : ArtifactStore(Environment{}) {}

ArtifactStore::ArtifactStore(Environment environment)
    : environment_{(Gio::init(), std::move(environment))}, settings_{environment_.settingsFile},
      openPanel_{environment_.openPanel}, lifetime_{std::make_shared<ArtifactStore*>(this)} {
    loadPersistedData();

    NotificationCenter& center = *environment_.notifications;
    observers_.push_back(
        center.addObserver(notification_names::openArtifactFile, [this] { openArtifactFile(); }));
    observers_.push_back(
        center.addObserver(notification_names::openFolder, [this] { addWatchedFolder(); }));

    if (!settings_.boolValue(settings_keys::hasSeenOnboarding))
        setIsShowingOnboarding(true);

    tryLoadDownloadsFolder();
}

ArtifactStore::~ArtifactStore() {
    for (const auto id : observers_)
        environment_.notifications->removeObserver(id);
    for (auto& [id, watcher] : monitorSources_)
        watcher.stop();
}

void ArtifactStore::setAllArtifacts(std::vector<Artifact> artifacts) {
    allArtifacts_ = std::move(artifacts);
    announceChange();
}

void ArtifactStore::setSelectedArtifact(std::optional<Artifact> artifact) {
    selectedArtifact_ = std::move(artifact);
    announceChange();
}

void ArtifactStore::setWatchedFolders(std::vector<WatchedFolder> folders) {
    watchedFolders_ = std::move(folders);
    announceChange();
}

void ArtifactStore::setSelectedSection(const SidebarItem& section) {
    selectedSection_ = section;
    announceChange();
}

void ArtifactStore::setIsShowingOnboarding(bool showing) {
    isShowingOnboarding_ = showing;
    announceChange();
}

void ArtifactStore::setIsFocusMode(bool focusMode) {
    isFocusMode_ = focusMode;
    announceChange();
}

std::vector<Artifact> ArtifactStore::artifacts() const {
    switch (selectedSection_.kind()) {
    case SidebarItem::Kind::library:
        return allArtifacts_;
    case SidebarItem::Kind::recents:
        return recentArtifacts();
    case SidebarItem::Kind::favorites: {
        std::vector<Artifact> favorites;
        std::copy_if(allArtifacts_.begin(), allArtifacts_.end(), std::back_inserter(favorites),
                     [this](const Artifact& artifact) { return isFavorite(artifact); });
        return favorites;
    }
    case SidebarItem::Kind::folder: {
        const auto folder = std::find_if(
            watchedFolders_.begin(), watchedFolders_.end(),
            [this](const WatchedFolder& f) { return f.id == selectedSection_.folderId(); });
        if (folder == watchedFolders_.end())
            return {};
        std::vector<Artifact> contents;
        std::copy_if(allArtifacts_.begin(), allArtifacts_.end(), std::back_inserter(contents),
                     [&folder](const Artifact& artifact) { return folder->contains(artifact); });
        return contents;
    }
    }
    return {};
}

std::vector<Artifact> ArtifactStore::recentArtifacts() const {
    std::unordered_map<std::string_view, const Artifact*> byPath;
    byPath.reserve(allArtifacts_.size());
    for (const auto& artifact : allArtifacts_)
        byPath.emplace(artifact.path(), &artifact); // emplace keeps the first record of a path
    std::vector<Artifact> recents;
    for (const auto& path : recentPaths_) {
        const auto found = byPath.find(path);
        if (found != byPath.end())
            recents.push_back(*found->second);
    }
    return recents;
}

std::size_t ArtifactStore::favoritesCount() const {
    return static_cast<std::size_t>(
        std::count_if(allArtifacts_.begin(), allArtifacts_.end(),
                      [this](const Artifact& artifact) { return isFavorite(artifact); }));
}

std::optional<std::filesystem::path> ArtifactStore::watchedFolderURL() const {
    if (watchedFolders_.empty())
        return std::nullopt;
    return watchedFolders_.front().url;
}

bool ArtifactStore::isFavorite(const Artifact& artifact) const {
    return favoritedPaths_.contains(artifact.path());
}

bool ArtifactStore::isWatching(const WatchedFolder& folder) const {
    const auto found = monitorSources_.find(folder.id);
    return found != monitorSources_.end() && !found->second.monitor->is_cancelled();
}

void ArtifactStore::openArtifactFile() {
    if (!openPanel_)
        return;
    OpenPanelRequest request;
    request.title = "Open File";
    request.message = "Select a file to run (.html, .jsx, or .tsx)";
    request.canChooseFiles = true;
    request.canChooseDirectories = false;
    request.allowsMultipleSelection = false;
    std::weak_ptr<ArtifactStore*> alive = lifetime_;
    openPanel_->run(request, [alive](std::optional<std::filesystem::path> chosen) {
        const auto store = alive.lock();
        if (!store || !chosen)
            return;
        (*store)->addArtifact(*chosen);
        (*store)->setSelectedSection(SidebarItem::library());
    });
}

void ArtifactStore::addArtifact(const std::filesystem::path& url) {
    if (!isRegularFile(url))
        return;
    const auto existing =
        std::find_if(allArtifacts_.begin(), allArtifacts_.end(),
                     [&url](const Artifact& artifact) { return artifact.path() == url.native(); });
    if (existing != allArtifacts_.end()) {
        setSelectedArtifact(*existing);
        return;
    }
    Artifact artifact = Artifact::from(url);
    std::vector<Artifact> artifacts;
    artifacts.reserve(allArtifacts_.size() + 1);
    artifacts.push_back(artifact);
    artifacts.insert(artifacts.end(), allArtifacts_.begin(), allArtifacts_.end());
    setAllArtifacts(std::move(artifacts));
    setSelectedArtifact(artifact);
    markRecent(artifact);
}

void ArtifactStore::removeArtifact(const Artifact& artifact) {
    const Uuid id = artifact.id; // the argument may live in the list being replaced
    std::vector<Artifact> remaining = allArtifacts_;
    std::erase_if(remaining, [&id](const Artifact& a) { return a.id == id; });
    setAllArtifacts(std::move(remaining));
    if (selectedArtifact_ && selectedArtifact_->id == id)
        setSelectedArtifact(std::nullopt);
}

void ArtifactStore::markRecent(const Artifact& artifact) {
    const std::string& path = artifact.path();
    std::erase(recentPaths_, path);
    recentPaths_.insert(recentPaths_.begin(), path);
    if (recentPaths_.size() > maximumRecentCount)
        recentPaths_.resize(maximumRecentCount);
    settings_.setStringArray(settings_keys::recentPaths, recentPaths_);
    announceChange();
}

void ArtifactStore::toggleFavorite(const Artifact& artifact) {
    const std::string& path = artifact.path();
    if (!favoritedPaths_.erase(path))
        favoritedPaths_.insert(path);
    settings_.setStringArray(settings_keys::favoritedPaths,
                             {favoritedPaths_.begin(), favoritedPaths_.end()});
    announceChange();
}

void ArtifactStore::addWatchedFolder() {
    if (!openPanel_)
        return;
    OpenPanelRequest request;
    request.title = "Add Folder";
    request.message = "Choose a folder containing your files";
    request.canChooseFiles = false;
    request.canChooseDirectories = true;
    request.allowsMultipleSelection = false;
    std::weak_ptr<ArtifactStore*> alive = lifetime_;
    openPanel_->run(request, [alive](std::optional<std::filesystem::path> chosen) {
        const auto store = alive.lock();
        if (!store || !chosen)
            return;
        (*store)->addFolderInternal(*chosen);
    });
}

void ArtifactStore::addFolderInternal(const std::filesystem::path& chosen) {
    const std::filesystem::path url = withoutTrailingSlash(chosen);
    const bool alreadyWatched =
        std::any_of(watchedFolders_.begin(), watchedFolders_.end(),
                    [&url](const WatchedFolder& folder) { return folder.path() == url.native(); });
    if (alreadyWatched)
        return;
    const std::string name = url.native() == "/" ? "/" : displayName(url.filename().native());
    WatchedFolder folder{Uuid::random(), name, url};
    std::vector<WatchedFolder> folders = watchedFolders_;
    folders.push_back(folder);
    setWatchedFolders(std::move(folders));
    loadArtifacts(folder);
    startWatching(folder);
    persistBookmarks();
}

void ArtifactStore::tryLoadDownloadsFolder() {
    if (!watchedFolders_.empty() || !environment_.downloadsDirectory)
        return;
    const auto downloads = environment_.downloadsDirectory();
    if (!downloads || downloads->empty())
        return;
    if (::access(downloads->c_str(), R_OK) != 0)
        return;
    addFolderInternal(*downloads);
}

void ArtifactStore::removeFolder(const WatchedFolder& removed) {
    const WatchedFolder folder = removed; // the argument may live in the list being replaced
    stopWatching(folder.id);
    monitorSources_.erase(folder.id);

    std::vector<WatchedFolder> folders = watchedFolders_;
    std::erase_if(folders, [&folder](const WatchedFolder& f) { return f.id == folder.id; });
    setWatchedFolders(std::move(folders));

    std::vector<Artifact> remaining = allArtifacts_;
    std::erase_if(remaining, [&folder](const Artifact& a) { return folder.contains(a); });
    setAllArtifacts(std::move(remaining));

    if (selectedSection_.isFolder() && selectedSection_.folderId() == folder.id)
        setSelectedSection(SidebarItem::library());
    persistBookmarks();
}

void ArtifactStore::clearWatchedFolder() {
    for (auto& [id, watcher] : monitorSources_)
        watcher.stop();
    monitorSources_.clear();
    setWatchedFolders({});
    setAllArtifacts({});
    setSelectedArtifact(std::nullopt);
    setSelectedSection(SidebarItem::library());
    settings_.removeObject(settings_keys::watchedFolderBookmarks);
}

} // namespace kelmo
