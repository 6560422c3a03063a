#include "library/card_pictures.h"

#include <algorithm>
#include <cairomm/context.h>
#include <glibmm/checksum.h>
#include <glibmm/fileutils.h>
#include <glibmm/main.h>
#include <glibmm/miscutils.h>
#include <optional>
#include <sys/stat.h>
#include <vector>

namespace kelmo {
namespace {

// Size and modification time: cheap to read, and enough to tell that a remembered
// picture still belongs to the file.
std::string stampOf(const std::string& path) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0)
        return {};
    return std::to_string(info.st_size) + ":" + std::to_string(info.st_mtim.tv_sec) + "." +
           std::to_string(info.st_mtim.tv_nsec);
}

// The picture's name: the path and the content of the file, hashed.
std::optional<std::string> keyOf(const std::string& path) {
    try {
        const auto content = Glib::file_get_contents(path);
        return Glib::Checksum::compute_checksum(
            Glib::Checksum::Type::SHA256,
            path + '\0' + Glib::Checksum::compute_checksum(Glib::Checksum::Type::SHA256, content));
    } catch (const Glib::Error&) {
        return std::nullopt;
    }
}

} // namespace

std::filesystem::path CardPictures::defaultFolder() {
    return std::filesystem::path{Glib::get_user_cache_dir()} / "kelmo" / "pictures";
}

CardPictures& CardPictures::shared() {
    static CardPictures pictures{defaultFolder()};
    return pictures;
}

CardPictures::CardPictures(std::filesystem::path folder)
    : folder_{std::move(folder)}, worker_{[this] { work(); }} {}

CardPictures::~CardPictures() {
    *alive_ = false;
    {
        std::lock_guard lock{mutex_};
        stopping_ = true;
    }
    wake_.notify_one();
    worker_.join();
}

void CardPictures::post(std::function<void()> job) {
    {
        std::lock_guard lock{mutex_};
        queue_.push_back(std::move(job));
    }
    wake_.notify_one();
}

void CardPictures::work() {
    for (;;) {
        std::function<void()> job;
        {
            std::unique_lock lock{mutex_};
            wake_.wait(lock, [this] { return stopping_ || !queue_.empty(); });
            if (stopping_)
                return;
            job = std::move(queue_.front());
            queue_.pop_front();
        }
        job();
    }
}

// A library scrolled end to end asks for every picture once: only the latest stay.
void CardPictures::remember(const std::string& artifactPath, Remembered remembered) {
    if (remembered_.size() >= remembering && remembered_.count(artifactPath) == 0)
        remembered_.clear();
    remembered_[artifactPath] = std::move(remembered);
}

void CardPictures::find(const std::string& artifactPath, std::function<void(Picture)> done) {
    const auto stamp = stampOf(artifactPath);
    if (const auto found = remembered_.find(artifactPath);
        found != remembered_.end() && found->second.stamp == stamp && !stamp.empty()) {
        done(found->second.picture);
        return;
    }
    post([this, alive = std::weak_ptr<bool>{alive_}, artifactPath, stamp,
          done = std::move(done)]() mutable {
        Picture picture;
        if (const auto key = keyOf(artifactPath)) {
            const auto file = folder_ / (*key + ".png");
            if (std::filesystem::exists(file)) {
                try {
                    picture = Cairo::ImageSurface::create_from_png(file.string());
                } catch (const std::exception&) {
                    picture.reset(); // a damaged file is as good as none
                }
            }
        }
        Glib::MainContext::get_default()->invoke(
            [this, alive, artifactPath, stamp, picture, done = std::move(done)] {
                if (alive.expired())
                    return false;
                remember(artifactPath, Remembered{stamp, picture});
                done(picture);
                return false;
            });
    });
}

void CardPictures::showIn(sigc::trackable& view, sigc::connection& kept,
                          std::function<std::optional<std::string>()> shownPath,
                          std::function<void(Picture)> show) {
    show({});
    const auto path = shownPath();
    if (!path)
        return;
    if (!kept.connected())
        kept = signalKept().connect(sigc::track_object(
            [this, &view, &kept, shownPath, show](const std::string& changed) {
                if (shownPath() == changed)
                    showIn(view, kept, shownPath, show);
            },
            view));
    find(*path, sigc::track_object(
                    [shownPath, show, path = *path](Picture picture) {
                        if (picture && shownPath() == path)
                            show(picture);
                    },
                    view));
}

void CardPictures::keep(const std::string& artifactPath,
                        const Glib::RefPtr<Gdk::Texture>& picture) {
    if (!picture || picture->get_width() <= 0 || picture->get_height() <= 0)
        return;
    // Read out here, where the texture belongs; scaled and written on the worker.
    const int sourceWidth = picture->get_width();
    const int sourceHeight = picture->get_height();
    auto source =
        Cairo::ImageSurface::create(Cairo::Surface::Format::ARGB32, sourceWidth, sourceHeight);
    source->flush();
    picture->download(source->get_data(), static_cast<gsize>(source->get_stride()));
    source->mark_dirty();
    const auto stamp = stampOf(artifactPath);
    post([this, alive = std::weak_ptr<bool>{alive_}, artifactPath, stamp, source, sourceWidth,
          sourceHeight] {
        const auto key = keyOf(artifactPath);
        if (!key)
            return;
        // The top of the page, as the card shows it.
        const double scale = static_cast<double>(width) / sourceWidth;
        const int shown = std::clamp(static_cast<int>(sourceHeight * scale), 1, height);
        auto scaled = Cairo::ImageSurface::create(Cairo::Surface::Format::ARGB32, width, shown);
        auto cr = Cairo::Context::create(scaled);
        cr->scale(scale, scale);
        cr->set_source(source, 0, 0);
        cr->paint();
        scaled->flush();
        std::error_code ignored;
        std::filesystem::create_directories(folder_, ignored);
        const auto file = folder_ / (*key + ".png");
        const auto partial = folder_ / (*key + ".png.part");
        try {
            scaled->write_to_png(partial.string());
            std::filesystem::rename(partial, file);
        } catch (const std::exception&) {
            std::filesystem::remove(partial, ignored);
            return;
        }
        Glib::MainContext::get_default()->invoke([this, alive, artifactPath, stamp, scaled] {
            if (alive.expired())
                return false;
            remember(artifactPath, Remembered{stamp, scaled});
            kept_.emit(artifactPath);
            return false;
        });
    });
}

} // namespace kelmo
