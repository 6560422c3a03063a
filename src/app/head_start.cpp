#include "app/head_start.h"

#include "app/start_artifact.h"

#include <giomm/init.h>

namespace kelmo {
namespace {

// The launcher's helper announces its key within a few hundredths of a second,
// usually long before this process gets here; it may ask the session bus first,
// which gets a second to answer.
constexpr std::chrono::milliseconds handedOverKeyWait{1500};

} // namespace

HeadStart::HeadStart(const std::string& applicationId, const std::vector<std::string>& files)
    : HeadStart(applicationId, files, Places{}) {}

HeadStart::HeadStart(const std::string& applicationId, const std::vector<std::string>& files,
                     Places places) {
    Gio::init();
    std::optional<std::string> handedOverKey;
    if (places.handedOver)
        handedOverKey = places.handedOver->readKey(handedOverKeyWait);
    if (isNameOwnedOnSessionBus(applicationId))
        return;
    store_ = std::make_unique<ArtifactStore>(std::move(places.store));
    const auto file = artifactToCompileAhead(*store_, files);
    if (handedOverKey || file)
        compiler_ = BackgroundCompiler::shared(places.resources, places.compileCache);
    // The launcher's helper chose the artifact as this start does, from the same
    // settings and folders; should the two differ, its module is kept all the same.
    if (handedOverKey)
        compiler_->adopt(*handedOverKey, std::move(*places.handedOver));
    if (file)
        compiler_->compileAhead(*file);
}

} // namespace kelmo
