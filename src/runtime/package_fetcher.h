#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kelmo {

// Fetches a package that an artifact imports and Kelmo does not ship: installs it with
// the user's npm (never running install scripts) into a folder of its own under the
// downloads folder, then bundles it with esbuild into "pkg~<name>.js" (every "/" a
// "~"), a script that registers the package on window.kelmoLibraries and uses the
// page's one React. Downloaded packages serve every artifact until cleared.
class PackageFetcher {
public:
    struct Result {
        bool ok = false;
        std::string message; // why it failed, in words for the user
    };

    // $XDG_CACHE_HOME/kelmo/packages
    static std::filesystem::path defaultFolder();

    PackageFetcher(std::filesystem::path folder, std::optional<std::filesystem::path> esbuild);
    ~PackageFetcher();
    PackageFetcher(const PackageFetcher&) = delete;
    PackageFetcher& operator=(const PackageFetcher&) = delete;

    // Whether the text is a plain npm package name ("left-pad", "@scope/name"): nothing
    // else (paths, URLs, options, versions) is ever handed to npm.
    static bool isPackageName(const std::string& name);
    // The package of an import specifier ("@scope/name/sub" -> "@scope/name").
    static std::string packageOf(const std::string& specifier);
    // The bundle file a package is served from.
    static std::string bundleFileName(const std::string& name);

    // The packages downloaded so far, by name.
    std::vector<std::string> downloaded() const;
    void clear();

    // Works on a worker thread; `progress` ("Downloading …", "Bundling …") and `done`
    // are called on the main context, and not at all once the fetcher is gone.
    void fetch(const std::string& name, std::function<void(const std::string&)> progress,
               std::function<void(Result)> done);

    const std::filesystem::path& folder() const { return folder_; }

private:
    std::filesystem::path folder_;
    std::optional<std::filesystem::path> esbuild_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

} // namespace kelmo
