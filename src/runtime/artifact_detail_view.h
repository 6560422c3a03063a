#pragma once

#include "model/artifact.h"
#include "model/uuid.h"
#include "runtime/export_dialog.h"
#include "runtime/source_watch.h"
#include "runtime/viewport_mode.h"
#include "store/artifact_store.h"

#include <filesystem>
#include <functional>
#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/menubutton.h>
#include <gtkmm/overlay.h>
#include <gtkmm/spinner.h>
#include <memory>
#include <optional>
#include <sigc++/signal.h>
#include <string>

namespace kelmo {

class ArtifactWebView;
class ScriptDialog;
class TypeBadge;

// The player: a toolbar for one artifact (back to the library, its type and name, the
// last load error, the device-width picker, reload, favourite, reveal) above a
// checkerboard stage on which the artifact runs, filling the stage (Desktop) or in a
// device window 768 (Tablet) or 390 (Phone) wide.
//
// The view owns the four values of a run. A new view starts not loading, without an
// error, with a fresh reload token, in Desktop. The main window keeps the same view
// while the selection moves between artifacts and hands it each one through
// showArtifact; going back to the library drops the view.
//
// Its controls act through the actions of the "player" group, which tests and
// shortcuts may activate too:
//   player.back             leaves for the library (clears the store's selection)
//   player.reload           clears the error, then loads again (also Ctrl+R while shown)
//   player.viewport(s)      picks a mode by raw value, then loads again, every time
//   player.toggle-favorite  toggles the artifact's favourite in the store
//   player.reveal           shows the file in the file manager
//   player.export-html      saves the artifact as one HTML file (JSX and TSX)
//   player.save-picture     saves a picture of the page as it is now
class ArtifactDetailView : public Gtk::Box {
public:
    ArtifactDetailView(ArtifactStore& store, const Artifact& artifact);
    ~ArtifactDetailView() override;
    ArtifactDetailView(const ArtifactDetailView&) = delete;
    ArtifactDetailView& operator=(const ArtifactDetailView&) = delete;

    // Shows another artifact. When its id differs from the current one the error is
    // cleared and it loads with a fresh token; the viewport stays as it is.
    void showArtifact(const Artifact& artifact);

    const Artifact& artifact() const { return artifact_; }
    bool isLoading() const { return isLoading_; }
    const std::optional<std::string>& errorMessage() const { return errorMessage_; }
    const Uuid& reloadToken() const { return reloadToken_; }
    ViewportMode viewport() const { return viewport_; }

    // Emitted after any of the four values above, or the artifact, changed.
    sigc::signal<void()>& signalStateChanged() { return stateChanged_; }

    // Asks where Export as HTML… and Save Picture… write; a save dialog by default.
    void setSaveChooser(SaveChooser chooser) { chooseWhereToSave_ = std::move(chooser); }

    // The web view that runs the artifact now. Moving between Desktop and a device mode
    // replaces it; moving between the two device modes keeps it.
    ArtifactWebView& hostedWebView() { return *webView_; }

private:
    Gtk::Widget& detailToolbar();
    Gtk::Widget& viewportPicker();
    Gtk::Widget& toolbarDivider();
    Gtk::Button& iconButton(const char* symbol, const char* tooltip, const char* action);
    void installActions();

    void setViewport(ViewportMode mode);
    void reload();
    void placeRunArea();
    Gtk::Widget& runArea();
    Gtk::Widget& deviceWindow(Gtk::Widget& area, int width);
    Gtk::Widget& loadingOverlay();
    Gtk::Widget& endedOverlay();
    void showScriptDialog(const std::shared_ptr<ScriptDialog>& dialog, Gtk::Overlay& area);
    Gtk::Widget& packageOffer();
    void offerPackage(const std::string& name);
    void fetchPackage();
    void load();
    void reloadFromDisk();
    void flashNotice(const std::string& text);
    void exportAsHtml();
    void savePicture();
    void keepPicture();
    Gtk::Widget& diskNotice();
    Gtk::Widget& arrivalNotice();
    void offerArrival(const Artifact& arrival);
    void hideArrival();

    void setIsLoading(bool loading);
    void setErrorMessage(std::optional<std::string> message);
    void showPageEnded(const std::string& why);
    void showArtifactTexts();
    void showFavorite();
    void showViewport();

    ArtifactStore& store_;
    Artifact artifact_;
    bool isLoading_ = false;
    std::optional<std::string> errorMessage_;
    Uuid reloadToken_ = Uuid::random();
    ViewportMode viewport_ = ViewportMode::desktop;
    sigc::signal<void()> stateChanged_;
    sigc::connection storeChanged_;
    sigc::connection artifactArrived_;
    SourceWatch sourceWatch_;

    TypeBadge* typeBadge_ = nullptr;
    Gtk::Label name_;
    Gtk::Box errorLabel_{Gtk::Orientation::HORIZONTAL, 4};
    Gtk::Label errorText_;
    std::vector<Gtk::Button*> viewportButtons_;
    Gtk::Button* favorite_ = nullptr;
    Gtk::Image favoriteIcon_;

    Gtk::Overlay noticeLayer_; // the stage, with notices over it
    Gtk::Overlay stage_;
    Gtk::Widget* stageContent_ = nullptr; // the run area, or the device window holding it
    Gtk::Widget* deviceFrame_ = nullptr;  // the device window's frame, while one is shown
    Gtk::Label* deviceName_ = nullptr;    // the device window's title, while one is shown
    ArtifactWebView* webView_ = nullptr;
    Gtk::Widget* loadingOverlay_ = nullptr;
    Gtk::Widget* endedOverlay_ = nullptr; // while the page's process has ended
    // Offers to download a package the artifact imports and Kelmo lacks.
    Gtk::Box* packageOffer_ = nullptr;
    Gtk::Label* packageText_ = nullptr;
    Gtk::Button* packageButton_ = nullptr;
    Gtk::Spinner* packageSpinner_ = nullptr;
    std::string missingPackage_;
    // "Updated from disk", for a moment after the file changed and ran again.
    Gtk::Label diskNotice_;
    sigc::connection diskNoticeTimer_;
    // "<name> — Open": a file that arrived in a watched folder meanwhile.
    Gtk::Box arrivalNotice_{Gtk::Orientation::HORIZONTAL, 8};
    Gtk::Label arrivalText_;
    std::optional<Artifact> arrival_;
    sigc::connection arrivalTimer_;
    Gtk::MenuButton shareButton_; // Export as HTML…, Save Picture…
    sigc::connection pictureTimer_;
    SaveChooser chooseWhereToSave_;
    // Answers that arrive after the view is gone (dialogs, snapshots) check this.
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

} // namespace kelmo
