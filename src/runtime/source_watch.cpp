#include "runtime/source_watch.h"

#include <giomm/file.h>
#include <glibmm/checksum.h>
#include <glibmm/fileutils.h>
#include <glibmm/main.h>

namespace kelmo {

SourceWatch::~SourceWatch() {
    clear();
}

void SourceWatch::clear() {
    pendingCheck_.disconnect();
    for (auto& [path, folder] : folders_) {
        folder.connection.disconnect();
        folder.monitor->cancel();
    }
    folders_.clear();
    digests_.clear();
}

void SourceWatch::watch(const std::vector<std::filesystem::path>& files) {
    for (const auto& file : files) {
        if (digests_.count(file) == 0)
            digests_.emplace(file, contentDigest(file));
        const auto folder = file.parent_path();
        if (folders_.count(folder) != 0)
            continue;
        Glib::RefPtr<Gio::FileMonitor> monitor;
        try {
            monitor = Gio::File::create_for_path(folder.string())
                          ->monitor_directory(Gio::FileMonitorFlags::WATCH_MOVES);
        } catch (const Glib::Error&) {
            continue; // a folder that cannot be watched: its files just do not reload
        }
        // The monitor is cancelled before this watch goes away.
        auto connection = monitor->signal_changed().connect(
            [this](const Glib::RefPtr<Gio::File>& file, const Glib::RefPtr<Gio::File>& other,
                   Gio::FileMonitor::Event event) {
                if (file)
                    noteEvent(file->get_path(), event);
                if (other)
                    noteEvent(other->get_path(), event);
            });
        folders_.emplace(folder, Folder{monitor, connection});
    }
}

void SourceWatch::noteEvent(const std::filesystem::path& file, Gio::FileMonitor::Event event) {
    if (digests_.count(file) == 0)
        return;
    using Event = Gio::FileMonitor::Event;
    // A finished write or a rename into place is complete: it is looked at on the next
    // turn. A write under way, or a file just created, waits for quiet first.
    const bool complete =
        event == Event::CHANGES_DONE_HINT || event == Event::RENAMED || event == Event::MOVED_IN;
    checkSoon(std::chrono::milliseconds{complete ? 0 : 50});
}

void SourceWatch::checkSoon(std::chrono::milliseconds delay) {
    // Writes that keep coming are looked at every 200 ms at most.
    constexpr auto longestWait = std::chrono::milliseconds{200};
    const auto now = std::chrono::steady_clock::now();
    if (pendingCheck_.connected()) {
        if (now - firstPendingEvent_ >= longestWait)
            return;
        pendingCheck_.disconnect();
    } else {
        firstPendingEvent_ = now;
    }
    pendingCheck_ = Glib::signal_timeout().connect(
        [this] {
            check();
            return false;
        },
        static_cast<unsigned>(delay.count()));
}

void SourceWatch::check() {
    bool changed = false;
    for (auto& [file, digest] : digests_) {
        auto now = contentDigest(file);
        if (!now || now == digest)
            continue;
        digest = std::move(now);
        changed = true;
    }
    if (changed)
        changed_.emit();
}

std::optional<std::string> SourceWatch::contentDigest(const std::filesystem::path& file) {
    try {
        return Glib::Checksum::compute_checksum(Glib::Checksum::Type::SHA256,
                                                Glib::file_get_contents(file.string()));
    } catch (const Glib::Error&) {
        return std::nullopt;
    }
}

} // namespace kelmo
