#pragma once

#include "runtime/artifact_compiler.h"
#include "runtime/resource_locator.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace kelmo {

// A JSX or TSX artifact as one self-contained HTML file that any browser runs
// offline: the player page with its compiled component, React, exactly the library
// bundles, ui components and package stylesheets the component imports, and the
// Tailwind generator, all inline. window.storage keeps its values in the browser's
// local storage there. The same source and Kelmo give the same bytes.
struct HtmlExportFailure {
    std::string message;
};
using HtmlExportResult = std::variant<std::string, HtmlExportFailure>;

class HtmlExport {
public:
    // resources: the player's runtime files; downloadedPackages: where packages
    // fetched from npm are kept, and which of them there are.
    HtmlExport(ResourceLocator resources, std::filesystem::path downloadedPackages,
               std::vector<std::string> downloaded);

    // The page for a source that compiled into this module; fails on an import that
    // Kelmo cannot answer, or a runtime file that is missing.
    HtmlExportResult page(const std::string& source, const CompiledModule& module,
                          const std::string& fileName) const;

    // Compiles the file and makes its page (for the command line). Fails on a file that
    // is no JSX or TSX, cannot be read or does not compile.
    static HtmlExportResult exportFile(const std::filesystem::path& source);
    // The same without waiting: `done` is called on the main context, unless the job
    // that is returned was dropped first.
    static std::unique_ptr<ArtifactCompiler::Job>
    exportFileLater(const std::filesystem::path& source,
                    std::function<void(HtmlExportResult)> done);

private:
    ResourceLocator resources_;
    std::filesystem::path downloadedPackages_;
    std::vector<std::string> downloaded_;
};

} // namespace kelmo
