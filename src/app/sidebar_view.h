#pragma once

#include "library/file_manager.h"
#include "model/sidebar_item.h"
#include "model/watched_folder.h"
#include "store/artifact_store.h"

#include <functional>
#include <giomm/simpleactiongroup.h>
#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/popovermenu.h>
#include <gtkmm/text.h>
#include <optional>
#include <sigc++/connection.h>
#include <sigc++/signal.h>
#include <string>
#include <vector>

namespace kelmo {

// Shows a folder in the desktop's file manager (openInFileManager).
using FolderOpener = std::function<void(const std::string& folderPath)>;

// One fixed section of the library (Library, Recents, Favorites): clicking it
// selects the section and returns the detail column to the library.
class SidebarNavItem : public Gtk::Button {
public:
    SidebarNavItem(ArtifactStore& store, std::string icon, std::string selectedIcon,
                   const std::string& label, SidebarItem section);

    // Redraws the selection look and the badge (none when count is empty).
    void update(std::optional<std::size_t> count);

private:
    ArtifactStore& store_;
    std::string icon_;
    std::string selectedIcon_;
    SidebarItem section_;
    Gtk::Box content_{Gtk::Orientation::HORIZONTAL, 8};
    Gtk::Image image_;
    Gtk::Label label_;
    Gtk::Label badge_;
};

// One watched folder: clicking selects it; its context menu removes the folder or
// opens it in the file manager.
class SidebarFolderItem : public Gtk::Button {
public:
    SidebarFolderItem(ArtifactStore& store, const WatchedFolder& folder, FolderOpener openFolder);
    ~SidebarFolderItem() override;

    const WatchedFolder& folder() const { return folder_; }
    void update(const WatchedFolder& folder);

private:
    void showContextMenu(double x, double y);

    ArtifactStore& store_;
    WatchedFolder folder_;
    FolderOpener openFolder_;
    Gtk::Box content_{Gtk::Orientation::HORIZONTAL, 8};
    Gtk::Image image_;
    Gtk::Label label_;
    Gtk::Label badge_;
    Glib::RefPtr<Gio::SimpleActionGroup> actions_;
    Gtk::PopoverMenu menu_;
};

// The left column of the main window: the mark and name, a search field, the three
// sections with their counts, the watched folders with "Add Folder...", and a footer
// with "How to use" and "About" (which opens the About window through app.about).
//
// The search field's text belongs to the sidebar alone and filters nothing.
class SidebarView : public Gtk::Box {
public:
    static constexpr int minimumWidth = 220;
    static constexpr int idealWidth = 260;
    static constexpr int maximumWidth = 320;

    explicit SidebarView(ArtifactStore& store, FolderOpener openFolder = openInFileManager);
    ~SidebarView() override;
    SidebarView(const SidebarView&) = delete;
    SidebarView& operator=(const SidebarView&) = delete;

    // Puts the keyboard focus in the search field.
    void focusSearch();
    // Escape in the search field: the focus should leave it; its text stays.
    sigc::signal<void()>& signalSearchLeft() { return searchLeft_; }

private:
    Gtk::Widget& makeHeader();
    Gtk::Widget& makeSearchBar();
    Gtk::Widget& makeScrollingContent();
    Gtk::Widget& makeFooter();
    void update();
    void updateFolderRows();
    void updateSearchAccessory();

    ArtifactStore& store_;
    FolderOpener openFolder_;
    Gtk::Text searchField_;
    Gtk::Label searchHint_;
    Gtk::Button clearSearchButton_;
    std::vector<SidebarNavItem*> navItems_;
    Gtk::Box folderRows_{Gtk::Orientation::VERTICAL, 2};
    std::vector<SidebarFolderItem*> folderItems_;
    std::vector<sigc::connection> connections_;
    sigc::signal<void()> searchLeft_;
};

} // namespace kelmo
