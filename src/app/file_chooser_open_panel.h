#pragma once

#include "store/open_panel.h"

#include <functional>
#include <gtkmm/dialog.h>
#include <gtkmm/filechoosernative.h>
#include <gtkmm/window.h>

namespace kelmo {

// Runs the desktop's native file chooser (the portal's where one runs), modal over
// the window that getParent returns at the moment it opens.
class FileChooserOpenPanel : public OpenPanel {
public:
    explicit FileChooserOpenPanel(std::function<Gtk::Window*()> getParent);
    void run(const OpenPanelRequest& request, Completion completion) override;

private:
    std::function<Gtk::Window*()> getParent_;
};

} // namespace kelmo
