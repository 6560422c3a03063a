#pragma once

#include <chrono>
#include <filesystem>
#include <giomm/filemonitor.h>
#include <map>
#include <optional>
#include <sigc++/connection.h>
#include <sigc++/signal.h>
#include <string>
#include <vector>

namespace kelmo {

// Tells when the files a running artifact was made from change on disk: written in
// place, or replaced by rename as editors save. Only a change of content counts: a
// file written again with the same bytes does not, and neither does one that is gone
// (until it comes back different). The folders holding the files are watched, since a
// rename puts a new file in the old one's place.
class SourceWatch {
public:
    SourceWatch() = default;
    ~SourceWatch();
    SourceWatch(const SourceWatch&) = delete;
    SourceWatch& operator=(const SourceWatch&) = delete;

    // Watches these files from now on. A file already watched keeps the content it is
    // compared with; a new one is compared with what it holds now.
    void watch(const std::vector<std::filesystem::path>& files);
    void clear();

    // Emitted once for changes that come close together, after they have settled.
    sigc::signal<void()>& signalChanged() { return changed_; }

private:
    void noteEvent(const std::filesystem::path& file, Gio::FileMonitor::Event event);
    void checkSoon(std::chrono::milliseconds delay);
    void check();
    static std::optional<std::string> contentDigest(const std::filesystem::path& file);

    struct Folder {
        Glib::RefPtr<Gio::FileMonitor> monitor;
        sigc::connection connection;
    };
    std::map<std::filesystem::path, std::optional<std::string>> digests_;
    std::map<std::filesystem::path, Folder> folders_;
    sigc::connection pendingCheck_;
    std::chrono::steady_clock::time_point firstPendingEvent_;
    sigc::signal<void()> changed_;
};

} // namespace kelmo
