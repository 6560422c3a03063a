#include "app/settings_view.h"

#include "library/color.h"
#include "library/palette.h"
#include "library/symbols.h"
#include "model/artifact.h"
#include "runtime/package_fetcher.h"
#include "store/settings_keys.h"

#include <gtkmm/button.h>
#include <gtkmm/cssprovider.h>
#include <gtkmm/listboxrow.h>
#include <gtkmm/stylecontext.h>
#include <gtkmm/switch.h>

namespace kelmo {
namespace {

// A one-off text colour that is not part of the palette.
void tint(Gtk::Widget& widget, const Color& color) {
    auto provider = Gtk::CssProvider::create();
    provider->load_from_data("* { color: " + color.css() + "; }");
    widget.get_style_context()->add_provider(provider, GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
}

Gtk::Button* makeSmallButton(const char* label) {
    auto* button = Gtk::make_managed<Gtk::Button>(label);
    button->add_css_class("settings-small-button");
    button->set_valign(Gtk::Align::CENTER);
    return button;
}

Gtk::Widget* makeSpacer() {
    auto* spacer = Gtk::make_managed<Gtk::Box>();
    spacer->set_hexpand(true);
    return spacer;
}

void appendRow(Gtk::ListBox& list, Gtk::Widget& content) {
    auto* row = Gtk::make_managed<Gtk::ListBoxRow>();
    row->set_activatable(false);
    row->set_selectable(false);
    row->set_focusable(false);
    row->set_child(content);
    list.append(*row);
}

// A row with its label on the leading side and a fixed value on the trailing side.
Gtk::Widget* makeLabelledRow(const char* label, const char* value) {
    auto* row = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 8);
    auto* title = Gtk::make_managed<Gtk::Label>(label);
    title->add_css_class("settings-row-label");
    title->set_halign(Gtk::Align::START);
    title->set_hexpand(true);
    row->append(*title);
    auto* text = Gtk::make_managed<Gtk::Label>(value);
    text->add_css_class("settings-row-value");
    text->set_halign(Gtk::Align::END);
    text->set_selectable(false);
    row->append(*text);
    return row;
}

constexpr const char* clearMessage =
    "This will remove all artifacts loaded from this folder. Manually opened files are not "
    "affected.";

} // namespace

SettingsView::SettingsView(ArtifactStore& store)
    : Gtk::Box{Gtk::Orientation::VERTICAL, 0}, store_{store} {
    add_css_class("settings-view");
    set_size_request(width, height);
    buildFolderSection();
    buildRuntimeSection();
    buildPackagesSection();
    buildHelpSection();
    update();
    storeChanged_ = store_.signalChanged().connect([this] { update(); });
}

SettingsView::~SettingsView() {
    storeChanged_.disconnect();
    if (clearConfirm_)
        clearConfirm_->hide();
}

Gtk::ListBox& SettingsView::appendSection(const char* title) {
    auto* header = Gtk::make_managed<Gtk::Label>(title);
    header->add_css_class("settings-section-header");
    header->set_halign(Gtk::Align::START);
    append(*header);
    auto* list = Gtk::make_managed<Gtk::ListBox>();
    list->add_css_class("settings-group");
    list->set_selection_mode(Gtk::SelectionMode::NONE);
    append(*list);
    return *list;
}

void SettingsView::buildFolderSection() {
    auto& list = appendSection("Artifacts Folder");
    auto* content = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 0);

    // A folder is set: its icon, name and path, "Change…" and "Clear".
    folderRow_.add_css_class("settings-folder-row");
    auto* icon = Gtk::make_managed<Gtk::Image>();
    icon->set_from_icon_name(symbolIconName("folder.fill"));
    icon->add_css_class("settings-folder-icon");
    folderRow_.append(*icon);
    auto* texts = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 2);
    texts->set_valign(Gtk::Align::CENTER);
    texts->set_hexpand(true);
    folderName_.add_css_class("settings-folder-name");
    folderPath_.add_css_class("settings-folder-path");
    for (auto* label : {&folderName_, &folderPath_}) {
        label->set_halign(Gtk::Align::FILL);
        label->set_xalign(0);
        label->set_single_line_mode(true);
        label->set_ellipsize(Pango::EllipsizeMode::END);
        // Take the room that is left, never ask for more.
        label->set_max_width_chars(1);
        label->set_hexpand(true);
        texts->append(*label);
    }
    folderRow_.append(*texts);
    auto* change = makeSmallButton("Change…");
    change->signal_clicked().connect([this] { store_.addWatchedFolder(); });
    folderRow_.append(*change);
    auto* clear = makeSmallButton("Clear");
    clear->add_css_class("settings-clear-button");
    tint(*clear, Color::hex(0xf87171));
    clear->signal_clicked().connect([this] { setShowClearConfirm(true); });
    folderRow_.append(*clear);
    content->append(folderRow_);

    // No folder: the hint and "Choose Folder…".
    auto* none = Gtk::make_managed<Gtk::Label>("No folder configured");
    none->add_css_class("settings-no-folder");
    noFolderRow_.append(*none);
    noFolderRow_.append(*makeSpacer());
    auto* choose = makeSmallButton("Choose Folder…");
    choose->signal_clicked().connect([this] { store_.addWatchedFolder(); });
    noFolderRow_.append(*choose);
    content->append(noFolderRow_);

    appendRow(list, *content);
}

void SettingsView::buildRuntimeSection() {
    auto& list = appendSection("Runtime");
    appendRow(list, *makeLabelledRow("Supported formats", ".html  .htm  .jsx  .tsx"));
    appendRow(list, *makeLabelledRow("JSX/TSX engine", "esbuild + React 18"));
    appendRow(list, *makeLabelledRow("Networking", "Sandboxed — no outbound server"));
}

// Packages artifacts import that Kelmo lacks: downloaded only when asked, unless the
// user allows it once for all.
void SettingsView::buildPackagesSection() {
    auto& list = appendSection("Packages");
    auto* allow = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 8);
    auto* texts = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 2);
    texts->set_hexpand(true);
    auto* title = Gtk::make_managed<Gtk::Label>("Always allow downloads");
    title->add_css_class("settings-row-label");
    title->set_xalign(0);
    texts->append(*title);
    auto* detail = Gtk::make_managed<Gtk::Label>(
        "Packages that artifacts import and Kelmo lacks are then fetched from the npm "
        "registry without asking.");
    detail->add_css_class("settings-row-value");
    detail->set_xalign(0);
    detail->set_wrap(true);
    detail->set_max_width_chars(40);
    texts->append(*detail);
    allow->append(*texts);
    auto* always = Gtk::make_managed<Gtk::Switch>();
    always->set_valign(Gtk::Align::CENTER);
    always->set_active(store_.settings().boolValue(settings_keys::fetchMissingPackages));
    always->property_active().signal_changed().connect([this, always] {
        store_.settings().setBool(settings_keys::fetchMissingPackages, always->get_active());
    });
    allow->append(*always);
    appendRow(list, *allow);

    auto* clearRow = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 8);
    auto* count = Gtk::make_managed<Gtk::Label>();
    count->add_css_class("settings-row-value");
    count->set_hexpand(true);
    count->set_xalign(0);
    const auto showCount = [count] {
        const auto packages = PackageFetcher{PackageFetcher::defaultFolder(), {}}.downloaded();
        count->set_text(packages.empty() ? "No packages downloaded"
                                         : std::to_string(packages.size()) +
                                               (packages.size() == 1 ? " package downloaded"
                                                                     : " packages downloaded"));
    };
    showCount();
    clearRow->append(*count);
    auto* clear = makeSmallButton("Clear Downloaded Packages");
    clear->signal_clicked().connect([showCount] {
        PackageFetcher{PackageFetcher::defaultFolder(), {}}.clear();
        showCount();
    });
    clearRow->append(*clear);
    appendRow(list, *clearRow);
}

void SettingsView::buildHelpSection() {
    auto& list = appendSection("Help");
    auto* onboarding = Gtk::make_managed<Gtk::Button>("Show Onboarding Again");
    onboarding->add_css_class("settings-help-button");
    onboarding->set_halign(Gtk::Align::START);
    onboarding->signal_clicked().connect([this] { store_.setIsShowingOnboarding(true); });
    appendRow(list, *onboarding);
}

void SettingsView::update() {
    const auto folder = store_.watchedFolderURL();
    folderRow_.set_visible(folder.has_value());
    noFolderRow_.set_visible(!folder);
    if (!folder)
        return;
    const std::string path = displayName(folder->native());
    folderName_.set_text(displayName(folder->filename().native()));
    folderPath_.set_text(path);
    folderPath_.set_tooltip_text(path);
}

void SettingsView::setShowClearConfirm(bool show) {
    showClearConfirm_ = show;
    if (!show) {
        if (clearConfirm_)
            clearConfirm_->hide();
        return;
    }
    if (!clearConfirm_) {
        clearConfirm_ = std::make_unique<Gtk::MessageDialog>(
            "Clear Folder", false, Gtk::MessageType::WARNING, Gtk::ButtonsType::NONE, true);
        clearConfirm_->set_secondary_text(clearMessage);
        clearConfirm_->set_hide_on_close(true);
        auto* clear = clearConfirm_->add_button("Clear", Gtk::ResponseType::ACCEPT);
        clear->add_css_class("destructive-action");
        clearConfirm_->add_button("Cancel", Gtk::ResponseType::CANCEL);
        clearConfirm_->set_default_response(Gtk::ResponseType::CANCEL);
        clearConfirm_->signal_response().connect(
            [this](int response) { answerClearConfirm(response); });
    }
    if (auto* parent = dynamic_cast<Gtk::Window*>(get_root()))
        clearConfirm_->set_transient_for(*parent);
    clearConfirm_->present();
}

void SettingsView::answerClearConfirm(int response) {
    // Any way the dialog closes ends the confirmation; only "Clear" acts.
    setShowClearConfirm(false);
    if (response == Gtk::ResponseType::ACCEPT)
        store_.clearWatchedFolder();
}

} // namespace kelmo
