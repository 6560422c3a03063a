#include "runtime/artifact_detail_view.h"

#include "library/accessible_name.h"
#include "library/app_style.h"
#include "library/card_pictures.h"
#include "library/file_manager.h"
#include "library/symbols.h"
#include "library/type_badge.h"
#include "runtime/artifact_compiler.h"
#include "runtime/artifact_web_view.h"
#include "runtime/export_dialog.h"
#include "runtime/package_fetcher.h"
#include "runtime/page_snapshot.h"
#include "runtime/player_background.h"
#include "runtime/script_dialog.h"
#include "store/settings_keys.h"

#include <giomm/menu.h>
#include <giomm/simpleactiongroup.h>
#include <glibmm/fileutils.h>
#include <glibmm/main.h>
#include <gtkmm/entry.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/messagedialog.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/separator.h>
#include <gtkmm/shortcutcontroller.h>
#include <gtkmm/spinner.h>

namespace kelmo {
namespace {

constexpr const char* actionGroup = "player";

// The device window's width; Desktop has none and fills the stage.
std::optional<int> deviceWidth(ViewportMode mode) {
    switch (mode) {
    case ViewportMode::desktop:
        return std::nullopt;
    case ViewportMode::tablet:
        return 768;
    case ViewportMode::phone:
        return 390;
    }
    return std::nullopt;
}

Gtk::Image& symbolImage(const char* symbol, int size) {
    auto& image = *Gtk::make_managed<Gtk::Image>();
    image.set_from_icon_name(symbolIconName(symbol));
    image.set_pixel_size(size);
    return image;
}

} // namespace

ArtifactDetailView::ArtifactDetailView(ArtifactStore& store, const Artifact& artifact)
    : Gtk::Box{Gtk::Orientation::VERTICAL, 0}, store_{store}, artifact_{artifact} {
    add_css_class("artifact-detail-view");
    chooseWhereToSave_ = saveDialogOver(*this);
    installActions();

    append(detailToolbar());
    auto& divider = *Gtk::make_managed<Gtk::Separator>(Gtk::Orientation::HORIZONTAL);
    divider.add_css_class("player-divider");
    append(divider);

    stage_.add_css_class("player-stage");
    stage_.set_hexpand(true);
    stage_.set_vexpand(true);
    stage_.set_overflow(Gtk::Overflow::HIDDEN);
    stage_.set_child(*Gtk::make_managed<PlayerBackground>());
    noticeLayer_.set_child(stage_);
    noticeLayer_.add_overlay(diskNotice());
    noticeLayer_.add_overlay(arrivalNotice());
    append(noticeLayer_);

    showArtifactTexts();
    showFavorite();
    showViewport();
    placeRunArea();
    load();
    storeChanged_ = store_.signalChanged().connect([this] { showFavorite(); });
    artifactArrived_ = store_.signalArtifactArrived().connect(
        sigc::mem_fun(*this, &ArtifactDetailView::offerArrival));
    sourceWatch_.signalChanged().connect(sigc::mem_fun(*this, &ArtifactDetailView::reloadFromDisk));
}

ArtifactDetailView::~ArtifactDetailView() {
    storeChanged_.disconnect();
    artifactArrived_.disconnect();
    diskNoticeTimer_.disconnect();
    arrivalTimer_.disconnect();
    pictureTimer_.disconnect();
}

void ArtifactDetailView::installActions() {
    auto group = Gio::SimpleActionGroup::create();
    group->add_action("back", [this] { store_.setSelectedArtifact(std::nullopt); });
    group->add_action("reload", [this] { reload(); });
    group->add_action("toggle-favorite", [this] { store_.toggleFavorite(artifact_); });
    group->add_action("reveal", [this] { revealInFileManager(artifact_.url); });
    group->add_action("export-html", [this] { exportAsHtml(); });
    group->add_action("save-picture", [this] { savePicture(); });
    group->add_action_with_parameter(
        "viewport", Glib::VARIANT_TYPE_STRING, [this](const Glib::VariantBase& parameter) {
            const auto text =
                Glib::VariantBase::cast_dynamic<Glib::Variant<Glib::ustring>>(parameter).get();
            if (const auto mode = viewportModeFromRawValue(text.raw()))
                setViewport(*mode);
        });
    insert_action_group(actionGroup, group);

    // Ctrl+R reloads wherever the focus is in the window, for as long as the player is
    // in it; caught before the page sees the key.
    auto shortcuts = Gtk::ShortcutController::create();
    shortcuts->set_scope(Gtk::ShortcutScope::GLOBAL);
    shortcuts->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    shortcuts->add_shortcut(Gtk::Shortcut::create(
        Gtk::KeyvalTrigger::create(GDK_KEY_r, Gdk::ModifierType::CONTROL_MASK),
        Gtk::NamedAction::create("player.reload")));
    add_controller(shortcuts);
}

Gtk::Widget& ArtifactDetailView::detailToolbar() {
    auto& toolbar = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 8);
    toolbar.add_css_class("detail-toolbar");

    auto& back = *Gtk::make_managed<Gtk::Button>();
    back.add_css_class("player-back-button");
    auto& backLabel = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 3);
    backLabel.append(symbolImage("chevron.left", 11));
    auto& library = *Gtk::make_managed<Gtk::Label>("Library");
    backLabel.append(library);
    back.set_child(backLabel);
    setTooltipAndName(back, "Back to Library");
    back.set_action_name("player.back");
    back.set_valign(Gtk::Align::CENTER);
    toolbar.append(back);

    toolbar.append(toolbarDivider());
    typeBadge_ = Gtk::make_managed<TypeBadge>(artifact_.type);
    toolbar.append(*typeBadge_);

    // The name takes the free space, which also pushes the controls to the right end.
    name_.add_css_class("player-artifact-name");
    name_.set_single_line_mode(true);
    name_.set_ellipsize(Pango::EllipsizeMode::END);
    name_.set_xalign(0);
    name_.set_hexpand(true);
    toolbar.append(name_);

    errorLabel_.add_css_class("player-error");
    errorLabel_.append(symbolImage("exclamationmark.triangle", 11));
    errorText_.set_single_line_mode(true);
    errorText_.set_ellipsize(Pango::EllipsizeMode::END);
    errorText_.set_max_width_chars(60);
    errorLabel_.append(errorText_);
    errorLabel_.set_visible(false);
    toolbar.append(errorLabel_);

    toolbar.append(viewportPicker());
    toolbar.append(toolbarDivider());
    toolbar.append(iconButton("arrow.clockwise", "Reload (Ctrl+R)", "player.reload"));
    favorite_ = &iconButton("star", "Add to Favorites", "player.toggle-favorite");
    favoriteIcon_.set_pixel_size(12);
    favorite_->set_child(favoriteIcon_);
    favorite_->add_css_class("player-favorite");
    toolbar.append(*favorite_);
    toolbar.append(iconButton("arrow.up.right.square", "Show in Files", "player.reveal"));
    shareButton_.add_css_class("player-share");
    shareButton_.set_has_frame(false);
    shareButton_.set_child(symbolImage("arrow.up.doc", 12));
    shareButton_.set_valign(Gtk::Align::CENTER);
    setTooltipAndName(shareButton_, "Share");
    toolbar.append(shareButton_);
    return toolbar;
}

Gtk::Widget& ArtifactDetailView::toolbarDivider() {
    auto& divider = *Gtk::make_managed<Gtk::Separator>(Gtk::Orientation::VERTICAL);
    divider.add_css_class("player-toolbar-divider");
    divider.set_size_request(-1, 14);
    divider.set_valign(Gtk::Align::CENTER);
    return divider;
}

Gtk::Button& ArtifactDetailView::iconButton(const char* symbol, const char* tooltip,
                                            const char* action) {
    auto& button = *Gtk::make_managed<Gtk::Button>();
    setButtonStyle(button, button_style::appIcon);
    button.set_child(symbolImage(symbol, 12));
    setTooltipAndName(button, tooltip);
    button.set_action_name(action);
    button.set_valign(Gtk::Align::CENTER);
    return button;
}

Gtk::Widget& ArtifactDetailView::viewportPicker() {
    auto& picker = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 0);
    picker.add_css_class("viewport-picker");
    picker.set_valign(Gtk::Align::CENTER);
    for (const ViewportMode mode : allViewportModes) {
        auto& button = *Gtk::make_managed<Gtk::Button>();
        button.add_css_class("viewport-button");
        if (mode == ViewportMode::desktop) {
            button.set_child(symbolImage("desktopcomputer", 12));
        } else {
            auto& label = *Gtk::make_managed<Gtk::Label>(std::string{rawValue(mode)});
            button.set_child(label);
        }
        // GTK 4.8 names no button after its label: each is named after its mode.
        setAccessibleName(button, std::string{rawValue(mode)});
        button.set_action_name("player.viewport");
        button.set_action_target_value(
            Glib::Variant<Glib::ustring>::create(std::string{rawValue(mode)}));
        picker.append(button);
        viewportButtons_.push_back(&button);
    }
    return picker;
}

void ArtifactDetailView::showArtifact(const Artifact& artifact) {
    const bool changed = !(artifact.id == artifact_.id);
    artifact_ = artifact;
    showArtifactTexts();
    showFavorite();
    if (!changed)
        return;
    errorMessage_.reset();
    reloadToken_ = Uuid::random();
    errorLabel_.set_visible(false);
    sourceWatch_.clear();
    if (arrival_ && arrival_->path() == artifact_.path())
        hideArrival();
    load();
    stateChanged_.emit();
}

void ArtifactDetailView::setViewport(ViewportMode mode) {
    const bool sameWebView = deviceWidth(mode).has_value() == deviceWidth(viewport_).has_value();
    viewport_ = mode;
    if (sameWebView) {
        if (const auto width = deviceWidth(mode))
            deviceFrame_->set_size_request(*width, -1);
    } else {
        placeRunArea();
    }
    showViewport();
    reloadToken_ = Uuid::random();
    load();
    stateChanged_.emit();
}

void ArtifactDetailView::reload() {
    errorMessage_.reset();
    errorLabel_.set_visible(false);
    reloadToken_ = Uuid::random();
    load();
    stateChanged_.emit();
}

void ArtifactDetailView::load() {
    endedOverlay_->set_visible(false);
    packageOffer_->set_visible(false);
    sourceWatch_.watch({artifact_.url});
    webView_->loadIfNeeded(artifact_, reloadToken_);
}

// The file changed on disk (an editor saved it): it runs again as it is now, in the
// same device width.
void ArtifactDetailView::reloadFromDisk() {
    reload();
    flashNotice("Updated from disk");
}

void ArtifactDetailView::flashNotice(const std::string& text) {
    diskNotice_.set_text(text);
    diskNotice_.set_visible(true);
    diskNoticeTimer_.disconnect();
    diskNoticeTimer_ = Glib::signal_timeout().connect(
        [this] {
            diskNotice_.set_visible(false);
            return false;
        },
        2000);
}

Gtk::Widget& ArtifactDetailView::diskNotice() {
    diskNotice_.set_text("Updated from disk");
    diskNotice_.add_css_class("disk-notice");
    diskNotice_.set_halign(Gtk::Align::END);
    diskNotice_.set_valign(Gtk::Align::START);
    diskNotice_.set_can_target(false);
    diskNotice_.set_visible(false);
    return diskNotice_;
}

namespace {

std::string withExtension(const Artifact& artifact, const char* extension) {
    return std::filesystem::path{artifact.url}.stem().string() + extension;
}

} // namespace

// One HTML file beside the artifact by default; written whole or not at all.
void ArtifactDetailView::exportAsHtml() {
    kelmo::exportAsHtml(*this, artifact_.url, chooseWhereToSave_,
                        [this](const std::string& name) { flashNotice("Exported " + name); });
}

// What the player shows now, the whole page at the current width.
void ArtifactDetailView::savePicture() {
    const auto source = std::filesystem::path{artifact_.url};
    chooseWhereToSave_(
        "Save Picture", source.parent_path(), withExtension(artifact_, ".png"),
        [this, alive = std::weak_ptr<bool>{alive_}](std::optional<std::filesystem::path> file) {
            if (!file || alive.expired() || !webView_->webView())
                return;
            page_snapshot::saveAsPng(webView_->webView(), *file,
                                     [this, alive, name = file->filename().string()](
                                         std::optional<std::string> problem) {
                                         if (alive.expired())
                                             return;
                                         if (problem)
                                             showProblem(*this, "The picture could not be saved",
                                                         *problem);
                                         else
                                             flashNotice("Saved " + name);
                                     });
        });
}

// What the page shows now becomes the picture on the artifact's card, unless it shows
// the error panel or has not rendered.
void ArtifactDetailView::keepPicture() {
    WebKitWebView* view = webView_->webView();
    if (!view)
        return;
    struct Asked {
        std::weak_ptr<bool> alive;
        std::string path;
        WebKitWebView* view;
    };
    const char* state = "document.documentElement.dataset.kelmoState || 'page'";
    webkit_web_view_evaluate_javascript(
        view, state, -1, nullptr, nullptr, nullptr,
        [](GObject* source, GAsyncResult* result, gpointer data) {
            std::unique_ptr<Asked> asked{static_cast<Asked*>(data)};
            g_autoptr(GError) error = nullptr;
            g_autoptr(JSCValue) value =
                webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(source), result, &error);
            g_autofree char* text = value ? jsc_value_to_string(value) : nullptr;
            const std::string shown = text ? text : "";
            if (asked->alive.expired() || (shown != "rendered" && shown != "page"))
                return;
            page_snapshot::takeVisible(
                asked->view, [path = asked->path](Glib::RefPtr<Gdk::Texture> picture, auto) {
                    if (picture)
                        CardPictures::shared().keep(path, picture);
                });
        },
        new Asked{alive_, artifact_.path(), view});
}

// Another file arrived in a watched folder while this one plays: offered, not opened.
Gtk::Widget& ArtifactDetailView::arrivalNotice() {
    arrivalNotice_.add_css_class("arrival-notice");
    arrivalNotice_.set_halign(Gtk::Align::CENTER);
    arrivalNotice_.set_valign(Gtk::Align::START);
    arrivalNotice_.set_visible(false);
    arrivalText_.set_ellipsize(Pango::EllipsizeMode::MIDDLE);
    arrivalText_.set_max_width_chars(40);
    arrivalNotice_.append(arrivalText_);
    auto& open = *Gtk::make_managed<Gtk::Button>("Open");
    open.add_css_class("arrival-open");
    open.signal_clicked().connect([this] {
        if (!arrival_)
            return;
        const Artifact arrival = *arrival_;
        hideArrival();
        store_.markRecent(arrival);
        store_.setSelectedArtifact(arrival);
    });
    arrivalNotice_.append(open);
    auto& close = *Gtk::make_managed<Gtk::Button>();
    close.add_css_class("arrival-close");
    close.set_child(symbolImage("xmark.circle.fill", 12));
    setTooltipAndName(close, "Dismiss");
    close.signal_clicked().connect(sigc::mem_fun(*this, &ArtifactDetailView::hideArrival));
    arrivalNotice_.append(close);
    return arrivalNotice_;
}

void ArtifactDetailView::offerArrival(const Artifact& arrival) {
    arrival_ = arrival;
    arrivalText_.set_text(displayName(std::filesystem::path{arrival.url}.filename().native()) +
                          " \u2014");
    arrivalNotice_.set_visible(true);
    arrivalTimer_.disconnect();
    arrivalTimer_ = Glib::signal_timeout().connect_seconds(
        [this] {
            hideArrival();
            return false;
        },
        20);
}

void ArtifactDetailView::hideArrival() {
    arrivalTimer_.disconnect();
    arrival_.reset();
    arrivalNotice_.set_visible(false);
}

// Puts a new run area on the stage: filling it in Desktop, inside a device window
// otherwise. The web view it held goes with the old one, but only once the new one is
// in place: tearing the old web view down first left the new one's first load waiting
// for seconds, at times for over a minute.
void ArtifactDetailView::placeRunArea() {
    Gtk::Widget* const previous = stageContent_;
    deviceName_ = nullptr;
    deviceFrame_ = nullptr;
    Gtk::Widget& area = runArea();
    const auto width = deviceWidth(viewport_);
    stageContent_ = width ? &deviceWindow(area, *width) : &area;
    stage_.add_overlay(*stageContent_);
    if (previous)
        stage_.remove_overlay(*previous);
    showArtifactTexts();
}

Gtk::Widget& ArtifactDetailView::runArea() {
    auto& area = *Gtk::make_managed<Gtk::Overlay>();
    area.add_css_class("player-run-area");
    area.set_hexpand(true);
    area.set_vexpand(true);
    webView_ = Gtk::make_managed<ArtifactWebView>();
    webView_->set_hexpand(true);
    webView_->set_vexpand(true);
    webView_->signalIsLoading().connect(sigc::mem_fun(*this, &ArtifactDetailView::setIsLoading));
    webView_->signalErrorMessage().connect(
        [this](const std::string& message) { setErrorMessage(message); });
    webView_->signalPageEnded().connect(sigc::mem_fun(*this, &ArtifactDetailView::showPageEnded));
    webView_->signalPackageMissing().connect(
        sigc::mem_fun(*this, &ArtifactDetailView::offerPackage));
    webView_->signalScriptDialogOpened().connect(
        [this, &area](const std::shared_ptr<ScriptDialog>& dialog) {
            showScriptDialog(dialog, area);
        });
    area.set_child(*webView_);
    loadingOverlay_ = &loadingOverlay();
    loadingOverlay_->set_visible(isLoading_);
    area.add_overlay(*loadingOverlay_);
    endedOverlay_ = &endedOverlay();
    endedOverlay_->set_visible(false);
    area.add_overlay(*endedOverlay_);
    area.add_overlay(packageOffer());
    return area;
}

// The device window, centred on the stage; a stage narrower than the device scrolls
// sideways rather than cut the window off.
Gtk::Widget& ArtifactDetailView::deviceWindow(Gtk::Widget& area, int width) {
    auto& frame = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 0);
    deviceFrame_ = &frame;
    frame.add_css_class("device-frame");
    frame.set_overflow(Gtk::Overflow::HIDDEN);
    frame.set_size_request(width, -1);
    frame.set_halign(Gtk::Align::CENTER);
    frame.set_valign(Gtk::Align::FILL);

    auto& titleBar = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 5);
    titleBar.add_css_class("device-title-bar");
    for (const char* light : {"close", "minimize", "zoom"}) {
        auto& circle = *Gtk::make_managed<Gtk::Box>();
        circle.add_css_class("device-light");
        circle.add_css_class(light);
        circle.set_size_request(10, 10);
        circle.set_valign(Gtk::Align::CENTER);
        titleBar.append(circle);
    }
    deviceName_ = Gtk::make_managed<Gtk::Label>();
    deviceName_->add_css_class("device-title");
    deviceName_->set_hexpand(true);
    deviceName_->set_ellipsize(Pango::EllipsizeMode::END);
    // Asks for no width of its own, so that a long name never widens the window.
    deviceName_->set_max_width_chars(1);
    titleBar.append(*deviceName_);
    // As wide as the three lights, so that the name stays centred.
    auto& balance = *Gtk::make_managed<Gtk::Box>();
    balance.set_size_request(44, 10);
    titleBar.append(balance);
    frame.append(titleBar);

    frame.append(area);

    auto& scroller = *Gtk::make_managed<Gtk::ScrolledWindow>();
    scroller.add_css_class("device-scroller");
    scroller.set_policy(Gtk::PolicyType::AUTOMATIC, Gtk::PolicyType::NEVER);
    scroller.set_child(frame);
    return scroller;
}

namespace {

// A layer over the run area with its content centred: answers the layer and the content.
std::pair<Gtk::Box&, Gtk::Box&> centredLayer(const char* cssClass, int spacing) {
    auto& layer = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 0);
    layer.add_css_class(cssClass);
    auto& content = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, spacing);
    content.set_halign(Gtk::Align::CENTER);
    content.set_valign(Gtk::Align::CENTER);
    content.set_vexpand(true);
    layer.append(content);
    return {layer, content};
}

} // namespace

Gtk::Widget& ArtifactDetailView::loadingOverlay() {
    auto [overlay, content] = centredLayer("loading-overlay", 12);
    auto& spinner = *Gtk::make_managed<Gtk::Spinner>();
    spinner.set_size_request(26, 26);
    spinner.set_halign(Gtk::Align::CENTER);
    spinner.start();
    content.append(spinner);
    auto& text = *Gtk::make_managed<Gtk::Label>("Loading artifact…");
    text.add_css_class("loading-text");
    content.append(text);
    return overlay;
}

// Shown over what the page last drew, which no longer answers: why, and the way back.
Gtk::Widget& ArtifactDetailView::endedOverlay() {
    auto [overlay, content] = centredLayer("page-ended-overlay", 10);
    auto& title = *Gtk::make_managed<Gtk::Label>("This artifact stopped running");
    title.add_css_class("page-ended-title");
    content.append(title);
    auto& detail = *Gtk::make_managed<Gtk::Label>(
        "Its page ended unexpectedly, so what you see no longer responds.");
    detail.add_css_class("page-ended-detail");
    detail.set_wrap(true);
    detail.set_max_width_chars(40);
    detail.set_justify(Gtk::Justification::CENTER);
    content.append(detail);
    auto& again = *Gtk::make_managed<Gtk::Button>("Reload");
    again.add_css_class("page-ended-reload");
    again.set_halign(Gtk::Align::CENTER);
    again.set_action_name("player.reload");
    content.append(again);
    return overlay;
}

// The page's alert, confirm or prompt: a card over the run area, above the loading
// layer so that it can be answered while the page loads. The rest of the window stays
// usable; leaving the artifact closes the dialog.
void ArtifactDetailView::showScriptDialog(const std::shared_ptr<ScriptDialog>& dialog,
                                          Gtk::Overlay& area) {
    auto [layer, card] = centredLayer("script-dialog-layer", 10);
    card.add_css_class("script-dialog");
    card.set_size_request(320, -1);
    auto& title = *Gtk::make_managed<Gtk::Label>(artifact_.name);
    title.add_css_class("script-dialog-title");
    title.set_xalign(0);
    title.set_ellipsize(Pango::EllipsizeMode::END);
    title.set_max_width_chars(1);
    title.set_hexpand(true);
    card.append(title);
    auto& message = *Gtk::make_managed<Gtk::Label>(dialog->message());
    message.add_css_class("script-dialog-message");
    message.set_halign(Gtk::Align::START);
    message.set_xalign(0);
    message.set_wrap(true);
    message.set_wrap_mode(Pango::WrapMode::WORD_CHAR);
    message.set_max_width_chars(48);
    message.set_selectable(true);
    card.append(message);

    Gtk::Entry* field = nullptr;
    if (dialog->kind() == ScriptDialog::Kind::prompt) {
        field = Gtk::make_managed<Gtk::Entry>();
        field->set_text(dialog->defaultText());
        field->set_activates_default(true);
        card.append(*field);
    }
    auto& buttons = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 8);
    buttons.set_halign(Gtk::Align::END);
    if (dialog->kind() != ScriptDialog::Kind::alert) {
        auto& cancel = *Gtk::make_managed<Gtk::Button>("Cancel");
        cancel.signal_clicked().connect([dialog] { dialog->cancel(); });
        buttons.append(cancel);
    }
    auto& ok = *Gtk::make_managed<Gtk::Button>("OK");
    ok.add_css_class("suggested-action");
    ok.signal_clicked().connect(
        [dialog, field] { dialog->accept(field ? field->get_text() : ""); });
    buttons.append(ok);
    card.append(buttons);

    // Escape cancels, Enter answers OK.
    auto keys = Gtk::EventControllerKey::create();
    keys->signal_key_pressed().connect(
        [dialog, &ok](guint key, guint, Gdk::ModifierType) {
            if (key == GDK_KEY_Escape) {
                dialog->cancel();
                return true;
            }
            if (key == GDK_KEY_Return || key == GDK_KEY_KP_Enter) {
                ok.activate();
                return true;
            }
            return false;
        },
        false);
    layer.add_controller(keys);

    area.add_overlay(layer);
    dialog->signalClosed().connect(
        sigc::track_object([&area, &layer] { area.remove_overlay(layer); }, area, layer));
    if (field)
        field->grab_focus();
    else
        ok.grab_focus();
}

namespace {

// One fetcher for every player: downloaded packages serve every artifact.
PackageFetcher& sharedPackageFetcher() {
    static PackageFetcher fetcher{PackageFetcher::defaultFolder(),
                                  ArtifactCompiler::bundledEsbuild()};
    return fetcher;
}

} // namespace

// A bar at the foot of the run area, under the page's own message about the import.
Gtk::Widget& ArtifactDetailView::packageOffer() {
    packageOffer_ = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 10);
    packageOffer_->add_css_class("package-offer");
    packageOffer_->set_halign(Gtk::Align::CENTER);
    packageOffer_->set_valign(Gtk::Align::END);
    packageOffer_->set_visible(false);
    packageSpinner_ = Gtk::make_managed<Gtk::Spinner>();
    packageSpinner_->set_visible(false);
    packageOffer_->append(*packageSpinner_);
    packageText_ = Gtk::make_managed<Gtk::Label>();
    packageText_->set_wrap(true);
    packageText_->set_max_width_chars(60);
    packageText_->set_xalign(0);
    packageOffer_->append(*packageText_);
    packageButton_ = Gtk::make_managed<Gtk::Button>("Download from npm");
    packageButton_->add_css_class("suggested-action");
    packageButton_->signal_clicked().connect(
        sigc::mem_fun(*this, &ArtifactDetailView::fetchPackage));
    packageOffer_->append(*packageButton_);
    return *packageOffer_;
}

void ArtifactDetailView::offerPackage(const std::string& name) {
    missingPackage_ = name;
    packageText_->set_text("This artifact imports \u201c" + name +
                           "\u201d, which Kelmo does not have. It can be downloaded from the npm "
                           "registry.");
    packageButton_->set_label("Download from npm");
    packageButton_->set_sensitive(true);
    packageSpinner_->set_visible(false);
    packageOffer_->set_visible(true);
    if (store_.settings().boolValue(settings_keys::fetchMissingPackages))
        fetchPackage();
}

void ArtifactDetailView::fetchPackage() {
    packageButton_->set_sensitive(false);
    packageSpinner_->set_visible(true);
    packageSpinner_->start();
    packageText_->set_text("Starting npm…");
    // The answers come later: they reach this view only while it lives.
    sigc::slot<void(const std::string&)> progress = sigc::track_object(
        [this](const std::string& step) { packageText_->set_text(step); }, *this);
    sigc::slot<void(PackageFetcher::Result)> done = sigc::track_object(
        [this](PackageFetcher::Result result) {
            packageSpinner_->stop();
            packageSpinner_->set_visible(false);
            if (result.ok) {
                packageOffer_->set_visible(false);
                reload();
                return;
            }
            packageText_->set_text(result.message);
            packageButton_->set_label("Try Again");
            packageButton_->set_sensitive(true);
        },
        *this);
    sharedPackageFetcher().fetch(
        missingPackage_, [progress](const std::string& step) { progress(step); },
        [done](PackageFetcher::Result result) { done(std::move(result)); });
}

void ArtifactDetailView::showPageEnded(const std::string& why) {
    endedOverlay_->set_visible(true);
    setErrorMessage(why);
}

void ArtifactDetailView::setIsLoading(bool loading) {
    if (isLoading_ == loading)
        return;
    isLoading_ = loading;
    loadingOverlay_->set_visible(loading);
    pictureTimer_.disconnect();
    if (!loading) {
        sourceWatch_.watch(webView_->servedFiles());
        // The card's picture, once the first frame has settled.
        if (!errorMessage_ && viewport_ == ViewportMode::desktop)
            pictureTimer_ = Glib::signal_timeout().connect(
                [this] {
                    keepPicture();
                    return false;
                },
                1000);
    }
    stateChanged_.emit();
}

void ArtifactDetailView::setErrorMessage(std::optional<std::string> message) {
    errorMessage_ = std::move(message);
    errorText_.set_text(errorMessage_.value_or(""));
    errorLabel_.set_visible(errorMessage_.has_value());
    stateChanged_.emit();
}

void ArtifactDetailView::showArtifactTexts() {
    typeBadge_->setType(artifact_.type);
    // An HTML artifact is a page already: only its picture is offered.
    auto menu = Gio::Menu::create();
    if (artifact_.type.kind != ArtifactType::Kind::html)
        menu->append("Export as HTML\u2026", "player.export-html");
    menu->append("Save Picture\u2026", "player.save-picture");
    shareButton_.set_menu_model(menu);
    name_.set_text(artifact_.name);
    if (deviceName_)
        deviceName_->set_text(artifact_.name);
}

void ArtifactDetailView::showFavorite() {
    const bool favorite = store_.isFavorite(artifact_);
    favoriteIcon_.set_from_icon_name(symbolIconName(favorite ? "star.fill" : "star"));
    setTooltipAndName(*favorite_, favorite ? "Remove from Favorites" : "Add to Favorites");
    if (favorite)
        favorite_->add_css_class("favorite");
    else
        favorite_->remove_css_class("favorite");
}

void ArtifactDetailView::showViewport() {
    for (std::size_t index = 0; index < viewportButtons_.size(); ++index) {
        if (allViewportModes[index] == viewport_)
            viewportButtons_[index]->add_css_class("current");
        else
            viewportButtons_[index]->remove_css_class("current");
    }
}

} // namespace kelmo
