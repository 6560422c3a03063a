#pragma once

#include "model/artifact.h"
#include "model/sidebar_item.h"
#include "model/watched_folder.h"
#include "store/notification_center.h"
#include "store/open_panel.h"
#include "store/settings_store.h"

#include <filesystem>
#include <functional>
#include <giomm/filemonitor.h>
#include <memory>
#include <optional>
#include <set>
#include <sigc++/signal.h>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace kelmo {

// The one state object of the application: the library, the selection, watched
// folders, favourites and recents, and the watchers that keep folders current.
//
// Views read its properties and subscribe to signalChanged(), which fires after
// every assignment to a published property and after each change that an
// operation announces (recents, favourites). Everything runs on the main loop.
class ArtifactStore {
public:
    // Where the store keeps its settings and finds the user's folders; tests point
    // these at temporary locations.
    struct Environment {
        std::filesystem::path settingsFile = SettingsStore::defaultFile();
        NotificationCenter* notifications = &NotificationCenter::defaultCenter();
        std::function<std::optional<std::filesystem::path>()> downloadsDirectory =
            userDownloadsDirectory;
        std::shared_ptr<OpenPanel> openPanel;
    };

    // The XDG Downloads directory, falling back to ~/Downloads when none is configured.
    static std::optional<std::filesystem::path> userDownloadsDirectory();

    ArtifactStore();
    explicit ArtifactStore(Environment environment);
    ~ArtifactStore();
    ArtifactStore(const ArtifactStore&) = delete;
    ArtifactStore& operator=(const ArtifactStore&) = delete;

    sigc::signal<void()>& signalChanged() { return signalChanged_; }
    // A new file arrived in a watched folder while another artifact is selected (a
    // finished download, a new export). With nothing selected, the arrival is selected.
    sigc::signal<void(const Artifact&)>& signalArtifactArrived() { return artifactArrived_; }

    // Published properties.
    const std::vector<Artifact>& allArtifacts() const { return allArtifacts_; }
    const std::optional<Artifact>& selectedArtifact() const { return selectedArtifact_; }
    void setSelectedArtifact(std::optional<Artifact> artifact);
    const std::vector<WatchedFolder>& watchedFolders() const { return watchedFolders_; }
    const SidebarItem& selectedSection() const { return selectedSection_; }
    void setSelectedSection(const SidebarItem& section);
    bool isShowingOnboarding() const { return isShowingOnboarding_; }
    void setIsShowingOnboarding(bool showing);
    bool isFocusMode() const { return isFocusMode_; }
    void setIsFocusMode(bool focusMode);

    // Derived lists, computed on every call.
    std::vector<Artifact> artifacts() const;
    std::vector<Artifact> recentArtifacts() const;
    std::size_t favoritesCount() const;
    std::optional<std::filesystem::path> watchedFolderURL() const;
    bool isFavorite(const Artifact& artifact) const;

    // Saved state, read-only (changed only through the operations below).
    const std::vector<std::string>& recentPaths() const { return recentPaths_; }
    const std::unordered_set<std::string>& favoritedPaths() const { return favoritedPaths_; }

    // Operations.
    void openArtifactFile();
    void addArtifact(const std::filesystem::path& url);
    void removeArtifact(const Artifact& artifact);
    void markRecent(const Artifact& artifact);
    void toggleFavorite(const Artifact& artifact);
    void addWatchedFolder();
    void removeFolder(const WatchedFolder& folder);
    void clearWatchedFolder();

    // The chooser that openArtifactFile() and addWatchedFolder() run; without one
    // they do nothing.
    void setOpenPanel(std::shared_ptr<OpenPanel> panel) { openPanel_ = std::move(panel); }

    // The settings the store persists to; the first-run guide records its flag here.
    SettingsStore& settings() { return settings_; }

    // Whether a folder currently has a live watcher.
    bool isWatching(const WatchedFolder& folder) const;

private:
    void setAllArtifacts(std::vector<Artifact> artifacts);
    void setWatchedFolders(std::vector<WatchedFolder> folders);
    void announceChange() { signalChanged_.emit(); }

    void loadPersistedData();
    void persistBookmarks();
    void addFolderInternal(const std::filesystem::path& url);
    void tryLoadDownloadsFolder();
    void loadArtifacts(const WatchedFolder& folder);
    void startWatching(const WatchedFolder& folder);
    void stopWatching(const Uuid& folderId);
    const WatchedFolder* watchedFolder(const Uuid& id) const;
    void noteFolderEvent(const Uuid& folderId, const Glib::RefPtr<Gio::File>& file,
                         const Glib::RefPtr<Gio::File>& otherFile);
    void applyFolderEvents(const Uuid& folderId);
    void applyEntryChanges(const WatchedFolder& folder, const std::set<std::string>& names);

    // A folder's monitor, and the events it delivered that wait to be applied, as
    // differences by path.
    struct FolderWatcher {
        Glib::RefPtr<Gio::FileMonitor> monitor;
        sigc::connection connection;
        std::set<std::string> changedNames; // entries created, deleted or renamed
        bool wholeFolderChanged = false;    // the folder itself went, moved or was unmounted
        Clock::time_point firstPendingEvent;
        Clock::time_point lastApplied;
        std::size_t lastAppliedCount = 0; // entries in the last application
        bool lastAppliedWhole = false;    // the last application listed the whole folder
        bool inBurst = false;             // the pending events belong to a burst
        sigc::connection settleTimer;

        void stop();
    };

    Environment environment_;
    SettingsStore settings_;
    std::shared_ptr<OpenPanel> openPanel_;
    sigc::signal<void()> signalChanged_;
    sigc::signal<void(const Artifact&)> artifactArrived_;

    std::vector<Artifact> allArtifacts_;
    std::optional<Artifact> selectedArtifact_;
    std::vector<WatchedFolder> watchedFolders_;
    SidebarItem selectedSection_ = SidebarItem::library();
    bool isShowingOnboarding_ = false;
    bool isFocusMode_ = false;

    std::unordered_set<std::string> favoritedPaths_;
    std::vector<std::string> recentPaths_;
    std::unordered_map<Uuid, FolderWatcher> monitorSources_;
    std::vector<NotificationCenter::ObserverId> observers_;
    // Lets chooser answers that arrive after the store is gone do nothing.
    std::shared_ptr<ArtifactStore*> lifetime_;
};

} // namespace kelmo
