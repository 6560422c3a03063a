#include "app/sidebar_view.h"

#include "app/app_logo.h"
#include "app/sidebar_badges.h"
#include "library/accessible_name.h"
#include "library/app_style.h"
#include "library/symbols.h"

#include <giomm/menu.h>
#include <giomm/themedicon.h>
#include <glibmm/main.h>
#include <gtkmm/gestureclick.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/separator.h>
#include <gtkmm/shortcutcontroller.h>
#include <gtkmm/windowhandle.h>
#include <sigc++/adaptors/track_obj.h>

namespace kelmo {
namespace {

constexpr const char* selectedClass = "selected";

Gtk::Image* makeSymbol(const char* symbol, int size) {
    auto* image = Gtk::make_managed<Gtk::Image>();
    image->set_from_icon_name(symbolIconName(symbol));
    image->set_pixel_size(size);
    return image;
}

Gtk::Separator* makeDivider() {
    auto* divider = Gtk::make_managed<Gtk::Separator>(Gtk::Orientation::HORIZONTAL);
    divider->add_css_class("sidebar-divider");
    return divider;
}

Gtk::Widget* makeSpacer() {
    auto* spacer = Gtk::make_managed<Gtk::Box>();
    spacer->set_hexpand(true);
    return spacer;
}

// Icon, title, spacer and badge: the label of section and folder rows.
void layOutRow(Gtk::Box& content, Gtk::Image& image, Gtk::Label& label, Gtk::Label& badge) {
    image.set_pixel_size(14);
    image.set_size_request(18, -1);
    image.add_css_class("sidebar-row-icon");
    label.set_xalign(0);
    label.set_ellipsize(Pango::EllipsizeMode::END);
    label.add_css_class("sidebar-row-title");
    badge.add_css_class("sidebar-badge");
    badge.set_valign(Gtk::Align::CENTER);
    content.append(image);
    content.append(label);
    content.append(*makeSpacer());
    content.append(badge);
}

// The badge, and the row's name, which reads the count in words rather than as a
// bare number after the title.
void showCount(Gtk::Widget& row, const Gtk::Label& title, Gtk::Label& badge,
               std::optional<std::size_t> count) {
    badge.set_visible(count.has_value());
    if (count)
        badge.set_text(badgeText(*count));
    setAccessibleName(row, sidebarRowName(title.get_text(), count));
}

void setSelectedLook(Gtk::Widget& row, bool selected) {
    if (selected)
        row.add_css_class(selectedClass);
    else
        row.remove_css_class(selectedClass);
}

} // namespace

SidebarNavItem::SidebarNavItem(ArtifactStore& store, std::string icon, std::string selectedIcon,
                               const std::string& label, SidebarItem section)
    : store_{store}, icon_{std::move(icon)},
      selectedIcon_{std::move(selectedIcon)}, section_{section}, label_{label} {
    add_css_class("sidebar-row");
    set_has_frame(false);
    layOutRow(content_, image_, label_, badge_);
    set_child(content_);
    signal_clicked().connect([this] {
        store_.setSelectedSection(section_);
        store_.setSelectedArtifact(std::nullopt);
    });
}

void SidebarNavItem::update(std::optional<std::size_t> count) {
    const bool selected = store_.selectedSection() == section_;
    setSelectedLook(*this, selected);
    image_.set_from_icon_name(symbolIconName(selected ? selectedIcon_ : icon_));
    showCount(*this, label_, badge_, count);
}

SidebarFolderItem::SidebarFolderItem(ArtifactStore& store, const WatchedFolder& folder,
                                     FolderOpener openFolder)
    : store_{store}, folder_{folder},
      openFolder_{std::move(openFolder)}, actions_{Gio::SimpleActionGroup::create()} {
    add_css_class("sidebar-row");
    add_css_class("sidebar-folder-row");
    set_has_frame(false);
    layOutRow(content_, image_, label_, badge_);
    set_child(content_);
    signal_clicked().connect([this] {
        store_.setSelectedSection(SidebarItem::folder(folder_.id));
        store_.setSelectedArtifact(std::nullopt);
    });

    // The menu acts on the folder this row shows at the moment it is chosen.
    actions_->add_action("remove", [this] {
        // Removing the folder destroys this row and its menu, so it happens once the
        // menu has finished its own work.
        menu_.popdown();
        Glib::signal_idle().connect_once(sigc::track_object(
            [this] {
                const WatchedFolder folder = folder_;
                store_.removeFolder(folder);
            },
            *this));
    });
    actions_->add_action("open", [this] {
        if (openFolder_)
            openFolder_(folder_.path());
    });
    insert_action_group("folder", actions_);

    auto model = Gio::Menu::create();
    auto remove = Gio::MenuItem::create("Remove Folder", "folder.remove");
    remove->set_icon(Gio::ThemedIcon::create(symbolIconName("trash")));
    model->append_item(remove);
    auto open = Gio::MenuItem::create("Open in Files", "folder.open");
    open->set_icon(Gio::ThemedIcon::create(symbolIconName("folder")));
    model->append_item(open);
    menu_.set_menu_model(model);
    menu_.set_has_arrow(false);
    menu_.set_halign(Gtk::Align::START);
    menu_.set_parent(*this);
    // The menu must leave the row before GTK finalizes it, which comes before this
    // object's destructor for a managed row.
    signal_destroy().connect([this] {
        if (menu_.get_parent())
            menu_.unparent();
    });

    auto secondaryClick = Gtk::GestureClick::create();
    secondaryClick->set_button(GDK_BUTTON_SECONDARY);
    secondaryClick->signal_pressed().connect(
        [this](int, double x, double y) { showContextMenu(x, y); });
    add_controller(secondaryClick);

    // The keyboard opens the same menu: Shift+F10 or the Menu key.
    auto keys = Gtk::ShortcutController::create();
    keys->add_shortcut(Gtk::Shortcut::create(
        Gtk::ShortcutTrigger::parse_string("<Shift>F10|Menu"),
        Gtk::CallbackAction::create([this](Gtk::Widget&, const Glib::VariantBase&) {
            showContextMenu(get_width() / 2.0, get_height() / 2.0);
            return true;
        })));
    add_controller(keys);

    update(folder);
}

SidebarFolderItem::~SidebarFolderItem() {
    menu_.unparent();
}

void SidebarFolderItem::showContextMenu(double x, double y) {
    menu_.set_pointing_to(Gdk::Rectangle{static_cast<int>(x), static_cast<int>(y), 1, 1});
    menu_.popup();
}

void SidebarFolderItem::update(const WatchedFolder& folder) {
    folder_ = folder;
    const auto& section = store_.selectedSection();
    const bool selected = section.isFolder() && section.folderId() == folder_.id;
    setSelectedLook(*this, selected);
    image_.set_from_icon_name(symbolIconName(selected ? "folder.fill" : "folder"));
    label_.set_text(folder_.name);
    set_tooltip_text(displayName(folder_.path()));
    showCount(*this, label_, badge_,
              sidebarBadgeCount(SidebarItem::Kind::folder,
                                folderArtifactCount(folder_, store_.allArtifacts())));
}

SidebarView::SidebarView(ArtifactStore& store, FolderOpener openFolder)
    : Gtk::Box{Gtk::Orientation::VERTICAL, 0}, store_{store}, openFolder_{std::move(openFolder)} {
    add_css_class("sidebar");
    set_size_request(minimumWidth, -1);
    append(makeHeader());
    append(makeSearchBar());
    append(*makeDivider());
    append(makeScrollingContent());
    append(*makeDivider());
    append(makeFooter());

    connections_.push_back(store_.signalChanged().connect([this] { update(); }));
    update();
}

SidebarView::~SidebarView() {
    for (auto& connection : connections_)
        connection.disconnect();
}

Gtk::Widget& SidebarView::makeHeader() {
    // Dragging the header moves the window, as a title bar would.
    auto* handle = Gtk::make_managed<Gtk::WindowHandle>();
    auto* header = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 10);
    header->add_css_class("sidebar-header");
    header->append(*makeAppLogo(28));

    auto* titles = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 1);
    titles->set_valign(Gtk::Align::CENTER);
    auto* title = Gtk::make_managed<Gtk::Label>("Kelmo");
    title->set_xalign(0);
    title->add_css_class("sidebar-title");
    auto* maker = Gtk::make_managed<Gtk::Label>(KELMO_MAKER_NAME);
    maker->set_xalign(0);
    maker->set_ellipsize(Pango::EllipsizeMode::END);
    maker->add_css_class("sidebar-maker");
    titles->append(*title);
    titles->append(*maker);
    header->append(*titles);
    handle->set_child(*header);
    return *handle;
}

Gtk::Widget& SidebarView::makeSearchBar() {
    auto* bar = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 7);
    bar->add_css_class("sidebar-search");
    auto* glass = makeSymbol("magnifyingglass", 12);
    glass->add_css_class("sidebar-search-icon");
    bar->append(*glass);

    // A bare text field is no more than part of an entry to assistive technologies;
    // this one stands alone.
    searchField_.property_accessible_role() = Gtk::Accessible::Role::SEARCH_BOX;
    setAccessibleName(searchField_, "Search");
    gtk_accessible_update_property(GTK_ACCESSIBLE(searchField_.gobj()),
                                   GTK_ACCESSIBLE_PROPERTY_KEY_SHORTCUTS, "Control+F", -1);
    searchField_.set_placeholder_text("Search artifacts");
    searchField_.set_hexpand(true);
    searchField_.set_valign(Gtk::Align::CENTER);
    searchField_.add_css_class("sidebar-search-field");
    bar->append(searchField_);

    searchHint_.set_text("Ctrl+F");
    searchHint_.add_css_class("search-hint");
    searchHint_.set_valign(Gtk::Align::CENTER);
    bar->append(searchHint_);

    clearSearchButton_.set_icon_name(symbolIconName("xmark.circle.fill"));
    clearSearchButton_.set_has_frame(false);
    clearSearchButton_.add_css_class("search-clear");
    clearSearchButton_.set_valign(Gtk::Align::CENTER);
    setTooltipAndName(clearSearchButton_, "Clear");
    clearSearchButton_.signal_clicked().connect([this] { searchField_.set_text(""); });
    bar->append(clearSearchButton_);

    // The text only swaps the hint for the clear button; nothing reads it.
    searchField_.property_text().signal_changed().connect([this] { updateSearchAccessory(); });
    auto keys = Gtk::ShortcutController::create();
    keys->add_shortcut(Gtk::Shortcut::create(
        Gtk::KeyvalTrigger::create(GDK_KEY_Escape),
        Gtk::CallbackAction::create([this](Gtk::Widget&, const Glib::VariantBase&) {
            searchLeft_.emit();
            return true;
        })));
    searchField_.add_controller(keys);
    updateSearchAccessory();
    return *bar;
}

Gtk::Widget& SidebarView::makeScrollingContent() {
    auto* scroller = Gtk::make_managed<Gtk::ScrolledWindow>();
    scroller->set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::EXTERNAL);
    scroller->set_vexpand(true);

    auto* content = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 0);
    content->add_css_class("sidebar-content");

    auto* sections = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 1);
    sections->add_css_class("sidebar-sections");
    const auto addSection = [&](const char* icon, const char* selectedIcon, const char* label,
                                SidebarItem section) {
        auto* item = Gtk::make_managed<SidebarNavItem>(store_, icon, selectedIcon, label, section);
        sections->append(*item);
        navItems_.push_back(item);
    };
    addSection("square.grid.2x2", "square.grid.2x2.fill", "Library", SidebarItem::library());
    addSection("clock", "clock.fill", "Recents", SidebarItem::recents());
    addSection("star", "star.fill", "Favorites", SidebarItem::favorites());
    content->append(*sections);

    auto* sectionDivider = makeDivider();
    sectionDivider->add_css_class("sidebar-section-divider");
    content->append(*sectionDivider);

    auto* folders = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 2);
    auto* heading = Gtk::make_managed<Gtk::Label>("FOLDERS");
    heading->set_xalign(0);
    heading->add_css_class("sidebar-heading");
    folders->append(*heading);
    folders->append(folderRows_);

    auto* addFolder = Gtk::make_managed<Gtk::Button>();
    addFolder->set_has_frame(false);
    addFolder->add_css_class("sidebar-add-folder");
    auto* addLabel = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 7);
    auto* plus = makeSymbol("plus", 12);
    plus->set_size_request(16, -1);
    plus->add_css_class("sidebar-add-icon");
    addLabel->append(*plus);
    auto* addText = Gtk::make_managed<Gtk::Label>("Add Folder...");
    addText->set_xalign(0);
    addLabel->append(*addText);
    addFolder->set_child(*addLabel);
    setAccessibleName(*addFolder, addText->get_text());
    addFolder->signal_clicked().connect([this] { store_.addWatchedFolder(); });
    folders->append(*addFolder);
    content->append(*folders);

    scroller->set_child(*content);
    return *scroller;
}

Gtk::Widget& SidebarView::makeFooter() {
    auto* footer = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 0);
    footer->add_css_class("sidebar-footer");
    const auto makeFooterButton = [](const char* symbol, const char* text, const char* tooltip) {
        auto* button = Gtk::make_managed<Gtk::Button>();
        button->set_has_frame(false);
        button->add_css_class("sidebar-footer-button");
        button->set_tooltip_text(tooltip);
        auto* label = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 5);
        label->append(*makeSymbol(symbol, 12));
        label->append(*Gtk::make_managed<Gtk::Label>(text));
        button->set_child(*label);
        setAccessibleName(*button, text);
        return button;
    };
    auto* howTo = makeFooterButton("questionmark.circle", "How to use", "Show onboarding guide");
    howTo->signal_clicked().connect([this] { store_.setIsShowingOnboarding(true); });
    auto* about = makeFooterButton("info.circle", "About", "About Kelmo");
    about->signal_clicked().connect([about] { about->activate_action("app.about"); });
    footer->append(*howTo);
    footer->append(*makeSpacer());
    footer->append(*about);
    return *footer;
}

void SidebarView::update() {
    const std::size_t counts[] = {store_.allArtifacts().size(), 0, store_.favoritesCount()};
    const SidebarItem::Kind kinds[] = {SidebarItem::Kind::library, SidebarItem::Kind::recents,
                                       SidebarItem::Kind::favorites};
    for (std::size_t i = 0; i < navItems_.size(); ++i)
        navItems_[i]->update(sidebarBadgeCount(kinds[i], counts[i]));
    updateFolderRows();
}

void SidebarView::updateFolderRows() {
    const auto& folders = store_.watchedFolders();
    // Rows are keyed by folder id: kept rows are updated in place, the rest made anew.
    std::vector<SidebarFolderItem*> rows;
    rows.reserve(folders.size());
    for (const auto& folder : folders) {
        SidebarFolderItem* row = nullptr;
        for (auto*& existing : folderItems_) {
            if (existing && existing->folder().id == folder.id) {
                row = existing;
                existing = nullptr;
                break;
            }
        }
        if (row)
            row->update(folder);
        else
            row = Gtk::make_managed<SidebarFolderItem>(store_, folder, openFolder_);
        rows.push_back(row);
    }
    for (auto* gone : folderItems_) {
        if (gone)
            folderRows_.remove(*gone);
    }
    // Put the rows in the store's order.
    Gtk::Widget* previous = nullptr;
    for (auto* row : rows) {
        if (row->get_parent() == nullptr && previous)
            folderRows_.insert_child_after(*row, *previous);
        else if (row->get_parent() == nullptr)
            folderRows_.prepend(*row);
        else if (previous)
            folderRows_.reorder_child_after(*row, *previous);
        else
            folderRows_.reorder_child_at_start(*row);
        previous = row;
    }
    folderItems_ = std::move(rows);
}

void SidebarView::focusSearch() {
    searchField_.grab_focus();
}

void SidebarView::updateSearchAccessory() {
    const bool empty = searchField_.get_text().empty();
    searchHint_.set_visible(empty);
    clearSearchButton_.set_visible(!empty);
}

} // namespace kelmo
