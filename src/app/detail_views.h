#pragma once

#include "model/artifact.h"
#include "store/artifact_store.h"

#include <functional>
#include <gtkmm/widget.h>

namespace kelmo {

// The two views of the main window's detail column and how the column drives them.
// ContentView makes a fresh library view whenever the detail turns to the library,
// and a fresh player view whenever it turns from the library to an artifact. While
// the player stays on screen and the selection moves to another artifact, the same
// player is kept and only handed the new artifact through showArtifact. Each make
// function returns a new managed widget, which the column owns from then on.
struct DetailViews {
    std::function<Gtk::Widget*(ArtifactStore& store)> makeLibraryView;
    std::function<Gtk::Widget*(ArtifactStore& store, const Artifact& artifact)> makePlayerView;
    std::function<void(Gtk::Widget& playerView, const Artifact& artifact)> showArtifact;

    // The library of cards and rows, which all start as grid or list as the last one
    // was left, and the player that runs the artifact.
    static DetailViews standard();

    // Light stand-ins for tests of the shell: the names of the selected section's
    // artifacts, and the selected artifact's name with a way back to the library.
    static DetailViews placeholders();
};

} // namespace kelmo
