#pragma once

#include "runtime/artifact_detail_view.h"
#include "store/artifact_store.h"
#include "test_support.h"

#include <functional>
#include <gtkmm/button.h>
#include <gtkmm/window.h>
#include <string>

namespace kelmo::testing {

// A store of its own and a 1100 by 700 window that shows one player at a time, with
// the application's stylesheet and symbols.
class PlayerFixture {
public:
    PlayerFixture();
    ~PlayerFixture();

    ArtifactStore& store() { return *store_; }
    ArtifactDetailView& player() { return *player_; }

    // Replaces the shown player with a new one for the artifact, and waits until it is
    // on screen.
    ArtifactDetailView& show(const Artifact& artifact);

    // Does the action and waits until a load it started has ended; false when no load
    // began or the deadline passed.
    bool loadAfter(const std::function<void()>& action);

    // Activates one of the player's actions ("player.reload", …).
    void activate(const std::string& action);
    void pickViewport(ViewportMode mode);

    // The player's button showing this tooltip, or null.
    Gtk::Button* buttonWithTooltip(const std::string& tooltip);

private:
    TemporaryDirectory home_;
    std::unique_ptr<ArtifactStore> store_;
    Gtk::Window window_;
    ArtifactDetailView* player_ = nullptr;
    int loadsStarted_ = 0;
    sigc::connection stateChanged_;
};

} // namespace kelmo::testing
