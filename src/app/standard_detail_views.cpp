#include "app/detail_views.h"
#include "library/library_view.h"
#include "runtime/artifact_detail_view.h"

namespace kelmo {

DetailViews DetailViews::standard() {
    DetailViews views;
    // Grid or list lasts for as long as these views do, the application's run.
    auto presentation = std::make_shared<LibraryPresentation>();
    views.makeLibraryView = [presentation](ArtifactStore& store) {
        return kelmo::makeLibraryView(store, presentation);
    };
    views.makePlayerView = [](ArtifactStore& store, const Artifact& artifact) -> Gtk::Widget* {
        return Gtk::make_managed<ArtifactDetailView>(store, artifact);
    };
    views.showArtifact = [](Gtk::Widget& playerView, const Artifact& artifact) {
        if (auto* player = dynamic_cast<ArtifactDetailView*>(&playerView))
            player->showArtifact(artifact);
    };
    return views;
}

} // namespace kelmo
