#include "runtime/artifact_web_view.h"

#include "runtime/artifact_web_context.h"
#include "runtime/artifact_web_view_coordinator.h"
#include "runtime/package_fetcher.h"
#include "runtime/save_dialog.h"
#include "runtime/scheme_support.h"
#include "runtime/web_view_schemes.h"

#include <algorithm>
#include <cmath>
#include <glibmm/main.h>
#include <gtkmm/binlayout.h>
#include <gtkmm/eventcontrollerscroll.h>
#include <gtkmm/filechoosernative.h>
#include <gtkmm/window.h>
#include <memory>
#include <optional>
#include <string>

namespace kelmo {

namespace {

constexpr double minimumZoom = 0.25;
constexpr double maximumZoom = 5.0;
constexpr double zoomStep = 1.1; // per wheel notch

// The script put at the start of the artifact's page: its door to the application.
std::optional<std::string> bridgeScript(const ResourceLocator& resources) {
    const auto file = resources.url("page-bridge", "js");
    auto script = file ? readWholeFile(*file) : std::nullopt;
    if (!script || !isValidUtf8(*script))
        return std::nullopt;
    return script;
}

} // namespace

ArtifactWebView::ArtifactWebView(ResourceLocator resources, std::filesystem::path storageDirectory,
                                 std::filesystem::path stylesDirectory,
                                 std::shared_ptr<const ArtifactCompiler> compiler)
    : coordinator_{std::make_unique<Coordinator>(*this)} {
    set_layout_manager(Gtk::BinLayout::create());
    set_hexpand(true);
    set_vexpand(true);

    coordinator_->compiler = std::move(compiler);
    coordinator_->stylesCache = std::make_shared<StylesCache>(
        std::move(stylesDirectory), StylesCache::fingerprintOf(resources));
    coordinator_->bridgeScript = bridgeScript(resources);
    coordinator_->schemeHandler = std::make_shared<ArtifactSchemeHandler>(std::move(resources));
    coordinator_->schemeHandler->downloadedPackages = PackageFetcher::defaultFolder();
    coordinator_->fileSchemeHandler = std::make_shared<ArtifactFileSchemeHandler>();
    coordinator_->storage = ArtifactStorage::shared(storageDirectory);
    coordinator_->openInBrowser = [this](const std::string& uri) { openInBrowser(uri); };
    coordinator_->chooseWhereToSave = [this](const std::string& suggestedName, auto chosen) {
        chooseWhereToSave(suggestedName, std::move(chosen));
    };

    auto contentManager =
        GObjectRef<WebKitUserContentManager>::adopt(webkit_user_content_manager_new());
    coordinator_->listenTo(contentManager.get());

    webView_ = GObjectRef<WebKitWebView>::retain(
        WEBKIT_WEB_VIEW(g_object_new(WEBKIT_TYPE_WEB_VIEW, "web-context", artifactWebContext(),
                                     "user-content-manager", contentManager.get(), nullptr)));
    WebKitSettings* settings = webkit_web_view_get_settings(webView_.get());
    // Always on, so a running artifact can be inspected from its context menu.
    webkit_settings_set_enable_developer_extras(settings, TRUE);

    attachSchemeHandlers(webView_.get(),
                         {coordinator_->schemeHandler, coordinator_->fileSchemeHandler});
    coordinator_->follow(webView_.get());

    GtkWidget* child = GTK_WIDGET(webView_.get());
    gtk_widget_set_hexpand(child, TRUE);
    gtk_widget_set_vexpand(child, TRUE);
    gtk_widget_set_parent(child, GTK_WIDGET(gobj()));

    // Pinch-to-zoom is WebKit's own gesture; Ctrl+scroll zooms the page as well.
    auto scroll = Gtk::EventControllerScroll::create();
    scroll->set_flags(Gtk::EventControllerScroll::Flags::VERTICAL);
    scroll->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    scroll->signal_scroll().connect(
        [this, controller = scroll.get()](double, double dy) {
            const auto state = controller->get_current_event_state();
            if ((state & Gdk::ModifierType::CONTROL_MASK) != Gdk::ModifierType::CONTROL_MASK)
                return false;
            return zoomByScroll(dy);
        },
        false);
    add_controller(scroll);

    destroyed_ = signal_destroy().connect([this] { release(); });
}

ArtifactWebView::~ArtifactWebView() {
    destroyed_.disconnect();
    release();
}

// GTK finalizes a widget before gtkmm deletes its C++ object, and it wants the
// children gone by then: the web view leaves when the widget is destroyed.
void ArtifactWebView::release() {
    if (!webView_)
        return;
    delivery_.disconnect();
    posted_.clear();
    coordinator_.reset();
    detachSchemeHandlers(webView_.get());
    webkit_web_view_stop_loading(webView_.get());
    gtk_widget_unparent(GTK_WIDGET(webView_.get()));
    webView_.reset();
}

void ArtifactWebView::loadIfNeeded(const Artifact& artifact, const Uuid& reloadToken) {
    if (coordinator_)
        coordinator_->loadIfNeeded(artifact, reloadToken, webView_.get());
}

std::vector<std::filesystem::path> ArtifactWebView::servedFiles() const {
    if (!coordinator_ || !coordinator_->fileSchemeHandler)
        return {};
    const auto& served = coordinator_->fileSchemeHandler->servedFiles();
    return {served.begin(), served.end()};
}

void ArtifactWebView::setLoadTimeout(std::chrono::milliseconds timeout) {
    if (coordinator_)
        coordinator_->loadTimeout = timeout;
}

void ArtifactWebView::setBrowserOpener(BrowserOpener opener) {
    if (coordinator_)
        coordinator_->openInBrowser = std::move(opener);
}

void ArtifactWebView::setSaveChooser(SaveChooser chooser) {
    if (coordinator_)
        coordinator_->chooseWhereToSave = std::move(chooser);
}

void ArtifactWebView::openInBrowser(const std::string& uri) {
    auto* root = GTK_WINDOW(gtk_widget_get_root(GTK_WIDGET(gobj())));
    gtk_show_uri(root, uri.c_str(), GDK_CURRENT_TIME);
}

// A save dialog over the window, in the Downloads folder, with the page's name for the
// file; the dialog confirms before it replaces a file.
void ArtifactWebView::chooseWhereToSave(
    const std::string& suggestedName,
    std::function<void(std::optional<std::filesystem::path>)> chosen) {
    std::optional<std::filesystem::path> downloads;
    if (const char* folder = g_get_user_special_dir(G_USER_DIRECTORY_DOWNLOAD))
        downloads = folder;
    askWhereToSave(*this, "Save File", downloads, suggestedName, std::move(chosen));
}

void ArtifactWebView::post(std::function<void()> change) {
    posted_.push_back(std::move(change));
    if (!delivery_.connected())
        // At the default priority, above redrawing: a page that animates without pause
        // on a slow renderer must not hold its own reports back.
        delivery_ = Glib::signal_idle().connect(
            [this] {
                deliverPosted();
                return false;
            },
            Glib::PRIORITY_DEFAULT);
}

void ArtifactWebView::deliverPosted() {
    while (!posted_.empty()) {
        auto change = std::move(posted_.front());
        posted_.pop_front();
        change();
    }
}

void ArtifactWebView::setIsLoading(bool loading) {
    post([this, loading] { isLoadingChanged_.emit(loading); });
}

void ArtifactWebView::setErrorMessage(std::string message) {
    post([this, message = std::move(message)] { errorMessageChanged_.emit(message); });
}

void ArtifactWebView::setPageEnded(std::string why) {
    post([this, why = std::move(why)] { pageEnded_.emit(why); });
}

bool ArtifactWebView::zoomByScroll(double dy) {
    if (dy == 0)
        return false;
    const double zoom = webkit_web_view_get_zoom_level(webView_.get()) * std::pow(zoomStep, -dy);
    webkit_web_view_set_zoom_level(webView_.get(), std::clamp(zoom, minimumZoom, maximumZoom));
    return true;
}

} // namespace kelmo
