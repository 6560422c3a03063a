#include "library/library_view.h"

#include "library/accessible_name.h"
#include "library/app_style.h"
#include "library/artifact_card_view.h"
#include "library/artifact_row_view.h"
#include "library/artifact_text.h"
#include "library/file_manager.h"
#include "library/library_rules.h"
#include "library/symbols.h"

#include <giomm/menu.h>
#include <giomm/themedicon.h>
#include <gtkmm/gestureclick.h>
#include <gtkmm/separator.h>
#include <gtkmm/shortcutcontroller.h>
#include <gtkmm/signallistitemfactory.h>

namespace kelmo {
namespace {

Gtk::Image* makeSymbol(const char* symbol, int size, const char* cssClass) {
    auto* image = Gtk::make_managed<Gtk::Image>();
    image->set_from_icon_name(symbolIconName(symbol));
    image->set_pixel_size(size);
    image->add_css_class(cssClass);
    return image;
}

Gtk::Label* makeLabel(const std::string& text, const char* cssClass) {
    auto* label = Gtk::make_managed<Gtk::Label>(text);
    label->set_xalign(0);
    label->add_css_class(cssClass);
    return label;
}

void setClass(Gtk::Widget& widget, const char* cssClass, bool on) {
    if (on)
        widget.add_css_class(cssClass);
    else
        widget.remove_css_class(cssClass);
}

struct EmptyStateText {
    const char* symbol;
    const char* title;
    const char* subtitle;
};

EmptyStateText emptyStateText(SidebarItem::Kind section) {
    switch (section) {
    case SidebarItem::Kind::recents:
        return {"clock", "No Recent Files", "Files you open will appear here."};
    case SidebarItem::Kind::favorites:
        return {"star", "No Favorites Yet", "Star a file to add it to Favorites."};
    case SidebarItem::Kind::folder:
        return {"folder", "Empty Folder", "No supported files found in this folder."};
    case SidebarItem::Kind::library:
        break;
    }
    return {"tray", "No Files Yet", "Open a file or add a folder to get started."};
}

// The artifact a card or row shows, for the cell widget that holds it or any widget
// inside it.
std::optional<Artifact> artifactShownBy(Gtk::Widget* widget) {
    for (; widget; widget = widget->get_parent()) {
        if (auto* card = dynamic_cast<ArtifactCardView*>(widget))
            return card->artifact();
        if (auto* row = dynamic_cast<ArtifactRowView*>(widget))
            return row->artifact();
        if (auto* child = widget->get_first_child()) {
            if (auto* card = dynamic_cast<ArtifactCardView*>(child))
                return card->artifact();
            if (auto* row = dynamic_cast<ArtifactRowView*>(child))
                return row->artifact();
        }
    }
    return std::nullopt;
}

// A factory of recycled item views of type View, each shown the artifact of the
// cell it currently fills.
template <typename View>
Glib::RefPtr<Gtk::SignalListItemFactory> makeItemFactory(ArtifactStore& store) {
    auto factory = Gtk::SignalListItemFactory::create();
    factory->signal_setup().connect([&store](const Glib::RefPtr<Gtk::ListItem>& item) {
        item->set_child(*Gtk::make_managed<View>(store));
    });
    factory->signal_bind().connect([](const Glib::RefPtr<Gtk::ListItem>& item) {
        auto* view = dynamic_cast<View*>(item->get_child());
        auto artifact = std::dynamic_pointer_cast<ArtifactItem>(item->get_item());
        if (view && artifact)
            view->show(artifact->artifact());
    });
    factory->signal_unbind().connect([](const Glib::RefPtr<Gtk::ListItem>& item) {
        if (auto* view = dynamic_cast<View*>(item->get_child()))
            view->clear();
    });
    return factory;
}

} // namespace

LibraryView::LibraryView(ArtifactStore& store, std::shared_ptr<LibraryPresentation> presentation)
    : Gtk::Box{Gtk::Orientation::VERTICAL, 0}, store_{store},
      presentation_{std::move(presentation)}, items_{Gio::ListStore<ArtifactItem>::create()},
      selection_{Gtk::NoSelection::create(items_)}, menuActions_{Gio::SimpleActionGroup::create()} {
    add_css_class("library-view");
    set_hexpand(true);
    set_vexpand(true);

    append(makeLibraryToolbar());
    auto* divider = Gtk::make_managed<Gtk::Separator>(Gtk::Orientation::HORIZONTAL);
    divider->add_css_class("library-divider");
    append(*divider);
    append(makeEmptyState());

    makeDropZone();
    makeArtifactGrid();
    makeArtifactList();
    scroller_.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    scroller_.set_vexpand(true);
    scroller_.set_child(page_);
    append(scroller_);

    makeContextMenu();
    installDropTarget();
    setGridView(presentation_->gridView);

    connections_.push_back(store_.signalChanged().connect([this] { update(); }));
    update();
}

LibraryView::~LibraryView() {
    for (auto& connection : connections_)
        connection.disconnect();
    if (menu_.get_parent())
        menu_.unparent();
}

Gtk::Widget* makeLibraryView(ArtifactStore& store,
                             std::shared_ptr<LibraryPresentation> presentation) {
    return Gtk::make_managed<LibraryView>(store, std::move(presentation));
}

std::string LibraryView::sectionTitle() const {
    const SidebarItem& section = store_.selectedSection();
    switch (section.kind()) {
    case SidebarItem::Kind::library:
        return "Library";
    case SidebarItem::Kind::recents:
        return "Recents";
    case SidebarItem::Kind::favorites:
        return "Favorites";
    case SidebarItem::Kind::folder:
        break;
    }
    for (const auto& folder : store_.watchedFolders()) {
        if (folder.id == section.folderId())
            return folder.name;
    }
    return "Folder";
}

Gtk::Widget& LibraryView::makeLibraryToolbar() {
    auto* toolbar = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 12);
    toolbar->add_css_class("library-toolbar");

    auto* titles = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 2);
    titles->set_valign(Gtk::Align::CENTER);
    titles->set_hexpand(true);
    sectionTitle_.set_xalign(0);
    sectionTitle_.set_ellipsize(Pango::EllipsizeMode::END);
    sectionTitle_.add_css_class("library-section-title");
    count_.set_xalign(0);
    count_.add_css_class("library-count");
    titles->append(sectionTitle_);
    titles->append(count_);
    toolbar->append(*titles);

    auto* toggle = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 2);
    toggle->add_css_class("library-view-toggle");
    toggle->set_overflow(Gtk::Overflow::HIDDEN);
    toggle->set_valign(Gtk::Align::CENTER);
    gridButton_.set_child(*makeSymbol("square.grid.2x2", 13, "view-toggle-icon"));
    setTooltipAndName(gridButton_, "Grid view");
    gridButton_.signal_clicked().connect([this] { setGridView(true); });
    listButton_.set_child(*makeSymbol("list.bullet", 13, "view-toggle-icon"));
    setTooltipAndName(listButton_, "List view");
    listButton_.signal_clicked().connect([this] { setGridView(false); });
    toggle->append(gridButton_);
    toggle->append(listButton_);
    toolbar->append(*toggle);

    auto* open = Gtk::make_managed<Gtk::Button>();
    open->set_has_frame(false);
    open->add_css_class("library-open-button");
    open->set_valign(Gtk::Align::CENTER);
    auto* openLabel = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 5);
    openLabel->append(*makeSymbol("plus", 11, "library-open-icon"));
    auto* openText = makeLabel("Open File...", "library-open-text");
    openLabel->append(*openText);
    open->set_child(*openLabel);
    setAccessibleName(*open, openText->get_text());
    // The shortcut belongs to the menu command; the button only names it.
    open->set_tooltip_text("Open File… (Ctrl+O)");
    open->signal_clicked().connect([this] { store_.openArtifactFile(); });
    toolbar->append(*open);
    return *toolbar;
}

Gtk::Widget& LibraryView::makeEmptyState() {
    emptyState_.add_css_class("library-empty-state");
    emptyState_.set_vexpand(true);
    emptyState_.set_hexpand(true);

    auto* topSpace = Gtk::make_managed<Gtk::Box>();
    topSpace->set_vexpand(true);
    emptyState_.append(*topSpace);

    // The symbol sits centred on its round plate, which the stylesheet sizes.
    emptySymbol_.set_pixel_size(28);
    emptySymbol_.add_css_class("library-empty-badge");
    emptySymbol_.set_halign(Gtk::Align::CENTER);
    emptyState_.append(emptySymbol_);

    auto* texts = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 6);
    texts->set_halign(Gtk::Align::CENTER);
    emptyTitle_.add_css_class("library-empty-title");
    emptySubtitle_.add_css_class("library-empty-subtitle");
    emptySubtitle_.set_justify(Gtk::Justification::CENTER);
    emptySubtitle_.set_wrap(true);
    texts->append(emptyTitle_);
    texts->append(emptySubtitle_);
    emptyState_.append(*texts);

    emptyButtons_.set_halign(Gtk::Align::CENTER);
    auto* openFile = Gtk::make_managed<Gtk::Button>("Open File…");
    setButtonStyle(*openFile, button_style::appPrimary);
    openFile->signal_clicked().connect([this] { store_.openArtifactFile(); });
    auto* addFolder = Gtk::make_managed<Gtk::Button>("Add Folder…");
    setButtonStyle(*addFolder, button_style::appSecondary);
    addFolder->signal_clicked().connect([this] { store_.addWatchedFolder(); });
    emptyButtons_.append(*openFile);
    emptyButtons_.append(*addFolder);
    emptyState_.append(emptyButtons_);

    auto* bottomSpace = Gtk::make_managed<Gtk::Box>();
    bottomSpace->set_vexpand(true);
    emptyState_.append(*bottomSpace);
    return emptyState_;
}

void LibraryView::makeDropZone() {
    dropZone_.set_has_frame(false);
    dropZone_.add_css_class("library-drop-zone");
    auto* content = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 12);

    auto* badge = makeSymbol("arrow.up.doc", 14, "drop-zone-badge");
    badge->set_valign(Gtk::Align::CENTER);
    content->append(*badge);

    auto* texts = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 2);
    texts->set_valign(Gtk::Align::CENTER);
    texts->set_hexpand(true);
    auto* title = makeLabel("Drop a file to run it", "drop-zone-title");
    setAccessibleName(dropZone_, title->get_text());
    texts->append(*title);
    texts->append(
        *makeLabel(".html · .jsx · .tsx · .svg · .md — or click to browse", "drop-zone-subtitle"));
    content->append(*texts);
    dropZone_.set_child(*content);
    dropZone_.signal_clicked().connect([this] { store_.openArtifactFile(); });
}

void LibraryView::makeArtifactGrid() {
    artifactGrid_.add_css_class("artifact-grid");
    setAccessibleName(artifactGrid_, "Artifacts");
    artifactGrid_.set_factory(makeItemFactory<ArtifactCardView>(store_));
    artifactGrid_.set_single_click_activate(true);
    artifactGrid_.signal_activate().connect([this](guint position) { select(position); });
}

void LibraryView::makeArtifactList() {
    artifactList_.add_css_class("artifact-list");
    setAccessibleName(artifactList_, "Artifacts");
    artifactList_.set_factory(makeItemFactory<ArtifactRowView>(store_));
    artifactList_.set_single_click_activate(true);
    artifactList_.signal_activate().connect([this](guint position) { select(position); });
}

void LibraryView::makeContextMenu() {
    menuActions_->add_action("toggle-favorite", [this] {
        if (menuArtifact_)
            store_.toggleFavorite(Artifact{*menuArtifact_});
    });
    menuActions_->add_action("remove", [this] {
        if (menuArtifact_)
            store_.removeArtifact(Artifact{*menuArtifact_});
    });
    menuActions_->add_action("reveal", [this] {
        if (menuArtifact_)
            revealInFileManager(menuArtifact_->path());
    });
    insert_action_group("artifact", menuActions_);

    menu_.add_css_class("artifact-menu");
    menu_.set_has_arrow(false);
    menu_.set_halign(Gtk::Align::START);
    menu_.set_parent(*this);
    // A managed view is finalized before its destructor runs; the menu leaves first.
    connections_.push_back(signal_destroy().connect([this] {
        if (menu_.get_parent())
            menu_.unparent();
    }));

    // Right click on a card or row, and the menu keys on the focused one.
    for (Gtk::Widget* itemsView :
         {static_cast<Gtk::Widget*>(&artifactGrid_), static_cast<Gtk::Widget*>(&artifactList_)}) {
        auto secondaryClick = Gtk::GestureClick::create();
        secondaryClick->set_button(GDK_BUTTON_SECONDARY);
        secondaryClick->signal_pressed().connect(
            [this, itemsView](int, double x, double y) { showContextMenuAt(*itemsView, x, y); });
        itemsView->add_controller(secondaryClick);

        auto keys = Gtk::ShortcutController::create();
        keys->add_shortcut(Gtk::Shortcut::create(
            Gtk::ShortcutTrigger::parse_string("<Shift>F10|Menu"),
            Gtk::CallbackAction::create([this, itemsView](Gtk::Widget&, const Glib::VariantBase&) {
                showContextMenuForFocus(*itemsView);
                return true;
            })));
        itemsView->add_controller(keys);
    }
}

void LibraryView::showContextMenu(const Artifact& artifact) {
    showContextMenu(artifact, *this, get_width() / 2.0, get_height() / 2.0);
}

void LibraryView::showContextMenuAt(Gtk::Widget& itemsView, double x, double y) {
    if (auto artifact = artifactShownBy(itemsView.pick(x, y)))
        showContextMenu(*artifact, itemsView, x, y);
}

void LibraryView::showContextMenuForFocus(Gtk::Widget& itemsView) {
    Gtk::Widget* cell = Glib::wrap(gtk_widget_get_focus_child(itemsView.gobj()));
    if (!cell)
        return;
    if (auto artifact = artifactShownBy(cell))
        showContextMenu(*artifact, *cell, cell->get_width() / 2.0, cell->get_height() / 2.0);
}

void LibraryView::showContextMenu(const Artifact& artifact, Gtk::Widget& at, double x, double y) {
    menuArtifact_ = artifact;
    const bool favorite = store_.isFavorite(artifact);

    auto favoriteSection = Gio::Menu::create();
    auto favoriteItem = Gio::MenuItem::create(
        favorite ? "Remove from Favorites" : "Add to Favorites", "artifact.toggle-favorite");
    favoriteItem->set_icon(
        Gio::ThemedIcon::create(symbolIconName(favorite ? "star.slash" : "star")));
    favoriteSection->append_item(favoriteItem);

    auto fileSection = Gio::Menu::create();
    auto removeItem = Gio::MenuItem::create("Remove from List", "artifact.remove");
    removeItem->set_icon(Gio::ThemedIcon::create(symbolIconName("trash")));
    fileSection->append_item(removeItem);
    // A page is one already; a component can become one (the window does the work).
    if (artifact.type.kind != ArtifactType::Kind::html) {
        auto exportItem = Gio::MenuItem::create("Export as HTML\u2026", "");
        exportItem->set_action_and_target("win.export-html",
                                          Glib::Variant<std::string>::create(artifact.path()));
        exportItem->set_icon(Gio::ThemedIcon::create(symbolIconName("arrow.up.doc")));
        fileSection->append_item(exportItem);
    }
    auto revealItem = Gio::MenuItem::create("Show in Files", "artifact.reveal");
    revealItem->set_icon(Gio::ThemedIcon::create(symbolIconName("folder")));
    fileSection->append_item(revealItem);

    auto model = Gio::Menu::create();
    model->append_section(favoriteSection);
    model->append_section(fileSection);
    menu_.set_menu_model(model);

    double menuX = x;
    double menuY = y;
    if (&at != this)
        at.translate_coordinates(*this, x, y, menuX, menuY);
    menu_.set_pointing_to(Gdk::Rectangle{static_cast<int>(menuX), static_cast<int>(menuY), 1, 1});
    menu_.popup();
}

void LibraryView::size_allocate_vfunc(int width, int height, int baseline) {
    Gtk::Box::size_allocate_vfunc(width, height, baseline);
    menu_.present();
}

bool LibraryView::grab_focus_vfunc() {
    // The cards or rows, where there are some, rather than the toolbar's first button.
    Gtk::Widget& items = isGridView() ? static_cast<Gtk::Widget&>(artifactGrid_) : artifactList_;
    if (scroller_.get_visible() && items.grab_focus())
        return true;
    return child_focus(Gtk::DirectionType::TAB_FORWARD);
}

void LibraryView::select(guint position) {
    const auto item = items_->get_item(position);
    if (!item)
        return;
    const Artifact artifact = item->artifact();
    store_.setSelectedArtifact(artifact);
    store_.markRecent(artifact);
}

void LibraryView::setGridView(bool grid) {
    presentation_->gridView = grid;
    setViewToggleStyle(gridButton_, grid);
    setViewToggleStyle(listButton_, !grid);
    // Only the view on screen holds the items, so the hidden one keeps no cells.
    artifactGrid_.set_model(grid ? selection_ : nullptr);
    artifactList_.set_model(grid ? nullptr : selection_);
    if (grid)
        page_.setItems(artifactGrid_);
    else
        page_.setItems(artifactList_);
}

void LibraryView::update() {
    const std::vector<Artifact> artifacts = store_.artifacts();
    updateItems(artifacts);

    const SidebarItem::Kind section = store_.selectedSection().kind();
    const bool empty = artifacts.empty();
    sectionTitle_.set_text(sectionTitle());
    count_.set_visible(!empty);
    if (!empty)
        count_.set_text(fileCountString(artifacts.size()));

    emptyState_.set_visible(empty);
    scroller_.set_visible(!empty);
    if (empty)
        updateEmptyState(section);
    const bool showsDropZone = !empty && section == SidebarItem::Kind::library;
    dropZone_.set_visible(showsDropZone);
    setClass(artifactGrid_, "under-drop-zone", showsDropZone);
    setClass(artifactList_, "under-drop-zone", showsDropZone);
}

void LibraryView::updateItems(const std::vector<Artifact>& artifacts) {
    std::vector<Uuid> wanted;
    wanted.reserve(artifacts.size());
    for (const auto& artifact : artifacts)
        wanted.push_back(artifact.id);
    const ListSplice change = spliceToMatch(shownIds_, wanted);
    if (change.empty())
        return;
    std::vector<Glib::RefPtr<ArtifactItem>> added;
    added.reserve(change.added);
    for (std::size_t index = 0; index < change.added; ++index)
        added.push_back(ArtifactItem::create(artifacts[change.position + index]));
    items_->splice(static_cast<guint>(change.position), static_cast<guint>(change.removed), added);
    shownIds_ = std::move(wanted);
}

void LibraryView::updateEmptyState(SidebarItem::Kind section) {
    const EmptyStateText text = emptyStateText(section);
    emptySymbol_.set_from_icon_name(symbolIconName(text.symbol));
    emptyTitle_.set_text(text.title);
    emptySubtitle_.set_text(text.subtitle);
    emptyButtons_.set_visible(section == SidebarItem::Kind::library);
}

} // namespace kelmo
