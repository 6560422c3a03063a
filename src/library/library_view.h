#pragma once

#include "library/artifact_item.h"
#include "library/card_grid_view.h"
#include "library/headered_scrollable.h"
#include "model/sidebar_item.h"
#include "store/artifact_store.h"

#include <giomm/file.h>
#include <giomm/liststore.h>
#include <giomm/simpleactiongroup.h>
#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/listview.h>
#include <gtkmm/noselection.h>
#include <gtkmm/popovermenu.h>
#include <gtkmm/scrolledwindow.h>
#include <memory>
#include <optional>
#include <sigc++/connection.h>
#include <string>
#include <vector>

namespace kelmo {

// How the user last chose to see the library. The detail column makes a new library
// view each time it returns to the library; views that share one of these start as the
// last one was left.
struct LibraryPresentation {
    bool gridView = true;
};

// The detail column while no artifact is selected: the artifacts of the sidebar's
// section as a grid of cards or a list of rows, under a header with the section's
// title, the grid/list toggle and an "Open File..." button. The Library section
// adds a drop zone above its items, which scrolls away with them; an empty section
// shows what it is for instead.
// Files may be dropped anywhere on the view, whatever the section.
//
// The view keeps only presentation state (grid or list, drag hover); everything it
// lists comes from the store and every change it makes is a store operation. Cards
// and rows are built lazily for the cells on screen and recycled as they scroll.
class LibraryView : public Gtk::Box {
public:
    explicit LibraryView(ArtifactStore& store, std::shared_ptr<LibraryPresentation> presentation =
                                                   std::make_shared<LibraryPresentation>());
    ~LibraryView() override;
    LibraryView(const LibraryView&) = delete;
    LibraryView& operator=(const LibraryView&) = delete;

    // "Library", "Recents", "Favorites", or the watched folder's name ("Folder" once
    // the folder is gone).
    std::string sectionTitle() const;

    bool isGridView() const { return presentation_->gridView; }
    bool isDraggingOver() const { return isDraggingOver_; }

    // Adds every file whose extension is supported, each with its own store call
    // made from the main loop; other files are skipped without a word. The drop is
    // accepted whatever it holds.
    bool handleDrop(const std::vector<Glib::RefPtr<Gio::File>>& files);

    // Opens the artifact's context menu, as a right click or the menu key does.
    void showContextMenu(const Artifact& artifact);

private:
    Gtk::Widget& makeLibraryToolbar();
    Gtk::Widget& makeEmptyState();
    void makeDropZone();
    void makeArtifactGrid();
    void makeArtifactList();
    void makeContextMenu();
    void installDropTarget();

    void update();
    void updateItems(const std::vector<Artifact>& artifacts);
    void updateEmptyState(SidebarItem::Kind section);
    void setGridView(bool grid);
    void setDraggingOver(bool draggingOver);
    void select(guint position);
    void showContextMenu(const Artifact& artifact, Gtk::Widget& at, double x, double y);
    void showContextMenuAt(Gtk::Widget& itemsView, double x, double y);
    void showContextMenuForFocus(Gtk::Widget& itemsView);

    void size_allocate_vfunc(int width, int height, int baseline) override;
    bool grab_focus_vfunc() override;

    ArtifactStore& store_;
    std::shared_ptr<LibraryPresentation> presentation_;
    bool isDraggingOver_ = false;

    Glib::RefPtr<Gio::ListStore<ArtifactItem>> items_;
    Glib::RefPtr<Gtk::NoSelection> selection_;
    std::vector<Uuid> shownIds_;

    Gtk::Label sectionTitle_;
    Gtk::Label count_;
    Gtk::Button gridButton_;
    Gtk::Button listButton_;

    Gtk::Box emptyState_{Gtk::Orientation::VERTICAL, 20};
    Gtk::Image emptySymbol_;
    Gtk::Label emptyTitle_;
    Gtk::Label emptySubtitle_;
    Gtk::Box emptyButtons_{Gtk::Orientation::HORIZONTAL, 10};

    Gtk::ScrolledWindow scroller_;
    Gtk::Button dropZone_;
    CardGridView artifactGrid_;
    Gtk::ListView artifactList_;
    // The drop zone above the grid or the list, scrolled with them.
    HeaderedScrollable page_{dropZone_};

    Gtk::PopoverMenu menu_;
    Glib::RefPtr<Gio::SimpleActionGroup> menuActions_;
    std::optional<Artifact> menuArtifact_;

    std::vector<sigc::connection> connections_;
};

// A new managed library view for the main window's detail column.
Gtk::Widget* makeLibraryView(
    ArtifactStore& store,
    std::shared_ptr<LibraryPresentation> presentation = std::make_shared<LibraryPresentation>());

} // namespace kelmo
