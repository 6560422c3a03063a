#pragma once

#include "store/artifact_store.h"

#include <gtkmm/box.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/listbox.h>
#include <gtkmm/messagedialog.h>
#include <memory>
#include <sigc++/connection.h>

namespace kelmo {

// The content of the settings window: a grouped form with the watched folder (the
// first one only: choose, change or clear it), what the runtime supports (fixed
// texts) and a way to see the first-run guide again. It acts only through the store
// and its own "Clear Folder" confirmation.
class SettingsView : public Gtk::Box {
public:
    static constexpr int width = 460;
    static constexpr int height = 470;

    explicit SettingsView(ArtifactStore& store);
    ~SettingsView() override;
    SettingsView(const SettingsView&) = delete;
    SettingsView& operator=(const SettingsView&) = delete;

    // Whether the "Clear Folder" confirmation is showing.
    bool showClearConfirm() const { return showClearConfirm_; }

private:
    Gtk::ListBox& appendSection(const char* title);
    void buildFolderSection();
    void buildRuntimeSection();
    void buildPackagesSection();
    void buildHelpSection();
    void update();
    void setShowClearConfirm(bool show);
    void answerClearConfirm(int response);

    ArtifactStore& store_;
    sigc::connection storeChanged_;
    bool showClearConfirm_ = false;

    Gtk::Box folderRow_{Gtk::Orientation::HORIZONTAL, 8};
    Gtk::Box noFolderRow_{Gtk::Orientation::HORIZONTAL, 8};
    Gtk::Label folderName_;
    Gtk::Label folderPath_;
    std::unique_ptr<Gtk::MessageDialog> clearConfirm_;
};

} // namespace kelmo
