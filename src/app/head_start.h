#pragma once

#include "runtime/background_compiler.h"
#include "runtime/compile_cache.h"
#include "runtime/handed_over_compile.h"
#include "runtime/resource_locator.h"
#include "store/artifact_store.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kelmo {

// The part of a start that needs no display, begun before GTK initialises (which
// takes a tenth of a second or more). When no other Kelmo holds the application's
// name on the session bus, this process is the one that will show the window: its
// store is made at once, and the compile of the JSX or TSX artifact that the window
// opens into starts on a worker thread, so that Babel loads on a second core while
// GTK starts on this one. When the launcher began that compile before this process
// (see launcher.cpp), this start takes it over instead. A launch that hands its files
// to a running Kelmo does neither.
class HeadStart {
public:
    // Where the store, the compiler's resources and its cache live; tests point them at
    // temporary places.
    struct Places {
        ArtifactStore::Environment store;
        ResourceLocator resources = ResourceLocator::application();
        std::filesystem::path compileCache = CompileCache::defaultDirectory();
        // The compile the launcher began, if it did.
        std::optional<HandedOverCompile> handedOver;
    };

    HeadStart(const std::string& applicationId, const std::vector<std::string>& files);
    HeadStart(const std::string& applicationId, const std::vector<std::string>& files,
              Places places);

    // The store made ahead, the first time; null when none was made.
    std::unique_ptr<ArtifactStore> takeStore() { return std::move(store_); }
    // The compiler running the compile ahead; null when none was started. Held for the
    // whole start, so that the page's load finds the same compile running.
    const std::shared_ptr<BackgroundCompiler>& compiler() const { return compiler_; }

private:
    std::unique_ptr<ArtifactStore> store_;
    std::shared_ptr<BackgroundCompiler> compiler_;
};

} // namespace kelmo
