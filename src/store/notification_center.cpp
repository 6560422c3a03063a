#include "store/notification_center.h"

#include <glibmm/main.h>
#include <map>
#include <vector>

namespace kelmo {

struct NotificationCenter::State {
    struct Observer {
        std::string name;
        std::function<void()> callback;
    };
    std::map<ObserverId, Observer> observers;
    ObserverId nextId = 1;
};

NotificationCenter::NotificationCenter() : state_{std::make_shared<State>()} {}

NotificationCenter::~NotificationCenter() = default;

NotificationCenter& NotificationCenter::defaultCenter() {
    static NotificationCenter center;
    return center;
}

NotificationCenter::ObserverId NotificationCenter::addObserver(std::string name,
                                                               std::function<void()> callback) {
    const ObserverId id = state_->nextId++;
    state_->observers.emplace(id, State::Observer{std::move(name), std::move(callback)});
    return id;
}

void NotificationCenter::removeObserver(ObserverId id) {
    state_->observers.erase(id);
}

void NotificationCenter::post(const std::string& name) {
    std::vector<ObserverId> recipients;
    for (const auto& [id, observer] : state_->observers) {
        if (observer.name == name)
            recipients.push_back(id);
    }
    if (recipients.empty())
        return;
    std::weak_ptr<State> weakState = state_;
    // Delivered at the default priority, ahead of redraws, so that a busy window does
    // not hold the store's news back.
    Glib::signal_idle().connect_once(
        [weakState, recipients = std::move(recipients)] {
            for (const ObserverId id : recipients) {
                // Looked up afresh: an earlier callback may have removed this observer or the
                // centre.
                const auto state = weakState.lock();
                if (!state)
                    return;
                const auto found = state->observers.find(id);
                if (found == state->observers.end())
                    continue;
                const auto callback = found->second.callback;
                callback();
            }
        },
        Glib::PRIORITY_DEFAULT);
}

} // namespace kelmo
