#pragma once

#include <cairomm/surface.h>
#include <condition_variable>
#include <deque>
#include <filesystem>
#include <functional>
#include <gdkmm/texture.h>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <sigc++/connection.h>
#include <sigc++/signal.h>
#include <sigc++/trackable.h>
#include <string>
#include <thread>

namespace kelmo {

// Pictures of artifacts' first screens, for their cards and rows. A picture is kept in
// a folder of the user's cache as a PNG the shape of a card's picture, named after the artifact's
// path and the content of its file, so that a changed file has none until it runs
// again. Reading, hashing, scaling and writing happen on a worker thread; answers come
// on the main context.
class CardPictures {
public:
    // As wide as two cards side by side, and as tall as a card's picture is for its width.
    static constexpr int width = 480;
    static constexpr int height = width * 150 / 260;
    // How many pictures stay in memory.
    static constexpr std::size_t remembering = 64;

    // $XDG_CACHE_HOME/kelmo/pictures
    static std::filesystem::path defaultFolder();
    static CardPictures& shared();

    explicit CardPictures(std::filesystem::path folder);
    ~CardPictures();
    CardPictures(const CardPictures&) = delete;
    CardPictures& operator=(const CardPictures&) = delete;

    using Picture = Cairo::RefPtr<Cairo::ImageSurface>;
    // The artifact's picture for its file as it is now; `done` gets nothing when there
    // is none. A picture asked for before answers at once while its file is unchanged.
    void find(const std::string& artifactPath, std::function<void(Picture)> done);

    // Shows the picture of the artifact a recycled card or row shows now (`shownPath`):
    // `show` gets nothing at once, then the picture if there is one, and again whenever
    // one is kept for that artifact. Answers for an artifact the view no longer shows,
    // or after the view is gone, are dropped. `kept` holds the view's subscription.
    void showIn(sigc::trackable& view, sigc::connection& kept,
                std::function<std::optional<std::string>()> shownPath,
                std::function<void(Picture)> show);

    // Keeps the picture for the file as it is now, and tells who watches.
    void keep(const std::string& artifactPath, const Glib::RefPtr<Gdk::Texture>& picture);

    // A picture was kept for the artifact at this path.
    sigc::signal<void(const std::string&)>& signalKept() { return kept_; }

    const std::filesystem::path& folder() const { return folder_; }

private:
    void post(std::function<void()> work);
    void work();

    // What makes an answer from memory right: the file's size and modification time.
    struct Remembered {
        std::string stamp;
        Picture picture;
    };
    void remember(const std::string& artifactPath, Remembered remembered);

    std::filesystem::path folder_;
    std::map<std::string, Remembered> remembered_;
    sigc::signal<void(const std::string&)> kept_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);

    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<std::function<void()>> queue_;
    bool stopping_ = false;
    std::thread worker_;
};

} // namespace kelmo
