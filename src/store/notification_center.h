#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace kelmo {

// Names of the notifications that menu commands post and the store answers.
namespace notification_names {
inline constexpr const char* openArtifactFile = "openArtifactFile";
inline constexpr const char* openFolder = "openFolder";
} // namespace notification_names

// Named notifications without payload. Deliveries run on the GLib main loop after
// the posting call has returned, one per observer registered at posting time; an
// observer removed before its delivery runs is not called.
class NotificationCenter {
public:
    using ObserverId = std::uint64_t;

    NotificationCenter();
    ~NotificationCenter();
    NotificationCenter(const NotificationCenter&) = delete;
    NotificationCenter& operator=(const NotificationCenter&) = delete;

    // The process-wide centre that menu commands post to.
    static NotificationCenter& defaultCenter();

    ObserverId addObserver(std::string name, std::function<void()> callback);
    void removeObserver(ObserverId id);
    void post(const std::string& name);

private:
    struct State;
    std::shared_ptr<State> state_;
};

} // namespace kelmo
