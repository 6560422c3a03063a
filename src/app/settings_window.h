#pragma once

#include "app/settings_view.h"
#include "store/artifact_store.h"

#include <gtkmm/window.h>

namespace kelmo {

// The settings window, opened with Ctrl+comma: the settings view on the application's
// store, at the view's fixed size.
class SettingsWindow : public Gtk::Window {
public:
    static constexpr int defaultWidth = SettingsView::width;
    static constexpr int defaultHeight = SettingsView::height;

    explicit SettingsWindow(ArtifactStore& store);

private:
    SettingsView view_;
};

} // namespace kelmo
