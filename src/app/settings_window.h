#pragma once

#include "store/artifact_store.h"

#include <gtkmm/window.h>

namespace kelmo {

// The settings window, opened with Ctrl+comma. It works on the application's store.
class SettingsWindow : public Gtk::Window {
public:
    static constexpr int defaultWidth = 460;
    static constexpr int defaultHeight = 340;

    explicit SettingsWindow(ArtifactStore& store);

private:
    ArtifactStore& store_;
};

} // namespace kelmo
