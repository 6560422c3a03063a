#include "app/detail_views.h"
#include "library/app_style.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>
#include <gtkmm/scrolledwindow.h>
#include <sigc++/connection.h>

namespace kelmo {
namespace {

// The artifacts of the selected section, by name.
class PlaceholderLibraryView : public Gtk::Box {
public:
    explicit PlaceholderLibraryView(ArtifactStore& store)
        : Gtk::Box{Gtk::Orientation::VERTICAL, 6}, store_{store} {
        add_css_class("placeholder-library");
        heading_.set_xalign(0);
        heading_.add_css_class("placeholder-heading");
        append(heading_);
        scroller_.set_vexpand(true);
        scroller_.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
        scroller_.set_child(names_);
        append(scroller_);
        changed_ = store_.signalChanged().connect([this] { update(); });
        update();
    }
    ~PlaceholderLibraryView() override { changed_.disconnect(); }

private:
    void update() {
        const auto& section = store_.selectedSection();
        switch (section.kind()) {
        case SidebarItem::Kind::library:
            heading_.set_text("Library");
            break;
        case SidebarItem::Kind::recents:
            heading_.set_text("Recents");
            break;
        case SidebarItem::Kind::favorites:
            heading_.set_text("Favorites");
            break;
        case SidebarItem::Kind::folder:
            heading_.set_text("Folder");
            for (const auto& folder : store_.watchedFolders()) {
                if (folder.id == section.folderId())
                    heading_.set_text(folder.name);
            }
            break;
        }
        while (auto* child = names_.get_first_child())
            names_.remove(*child);
        for (const auto& artifact : store_.artifacts()) {
            auto* row = Gtk::make_managed<Gtk::Button>(artifact.name);
            row->set_has_frame(false);
            row->set_halign(Gtk::Align::START);
            row->add_css_class("placeholder-artifact");
            row->signal_clicked().connect([this, artifact] {
                store_.setSelectedArtifact(artifact);
                store_.markRecent(artifact);
            });
            names_.append(*row);
        }
    }

    ArtifactStore& store_;
    Gtk::Label heading_;
    Gtk::ScrolledWindow scroller_;
    Gtk::Box names_{Gtk::Orientation::VERTICAL, 2};
    sigc::connection changed_;
};

// The selected artifact's name and a way back to the library.
class PlaceholderPlayerView : public Gtk::Box {
public:
    PlaceholderPlayerView(ArtifactStore& store, const Artifact& artifact)
        : Gtk::Box{Gtk::Orientation::VERTICAL, 12}, store_{store} {
        add_css_class("placeholder-player");
        back_.set_label("Back to Library");
        back_.set_halign(Gtk::Align::START);
        setButtonStyle(back_, button_style::appSecondary);
        back_.signal_clicked().connect([this] { store_.setSelectedArtifact(std::nullopt); });
        append(back_);
        name_.add_css_class("placeholder-heading");
        name_.set_vexpand(true);
        append(name_);
        showArtifact(artifact);
    }

    void showArtifact(const Artifact& artifact) { name_.set_text(artifact.name); }

private:
    ArtifactStore& store_;
    Gtk::Button back_;
    Gtk::Label name_;
};

} // namespace

DetailViews DetailViews::placeholders() {
    DetailViews views;
    views.makeLibraryView = [](ArtifactStore& store) -> Gtk::Widget* {
        return Gtk::make_managed<PlaceholderLibraryView>(store);
    };
    views.makePlayerView = [](ArtifactStore& store, const Artifact& artifact) -> Gtk::Widget* {
        return Gtk::make_managed<PlaceholderPlayerView>(store, artifact);
    };
    views.showArtifact = [](Gtk::Widget& player, const Artifact& artifact) {
        if (auto* placeholder = dynamic_cast<PlaceholderPlayerView*>(&player))
            placeholder->showArtifact(artifact);
    };
    return views;
}

} // namespace kelmo
