#include "floor_page.h"

#include "runtime/artifact_compiler.h"
#include "runtime/icon_table.h"
#include "runtime/resource_locator.h"
#include "runtime/scheme_support.h"

#include <fstream>
#include <glib.h>
#include <stdexcept>

namespace kelmo::bench {
namespace {

std::string contentsOf(const std::optional<std::filesystem::path>& file, const char* what) {
    auto contents = file ? readWholeFile(*file) : std::nullopt;
    if (!contents)
        throw std::runtime_error{std::string{"cannot read "} + what};
    return *contents;
}

void replace(std::string& text, const std::string& placeholder, const std::string& value) {
    const auto at = text.find(placeholder);
    if (at == std::string::npos)
        throw std::runtime_error{"the floor page template has no " + placeholder};
    text.replace(at, placeholder.size(), value);
}

} // namespace

void writeFloorPage(const std::filesystem::path& component,
                    const std::filesystem::path& pageTemplate, const std::filesystem::path& page) {
    const auto& resources = ResourceLocator::application();
    const auto compiled = ArtifactCompiler{}.compileNow(contentsOf(component, component.c_str()));
    const auto* compiledModule = std::get_if<CompiledModule>(&compiled);
    const auto module = compiledModule ? pageJsonOf(compiled) : std::nullopt;
    if (!module)
        throw std::runtime_error{"cannot compile " + component.string()};
    // The icons the player would load for it: those it names, or all of them.
    const auto iconsFile = page.parent_path() / "lucide-icons.js";
    auto icons = contentsOf(resources.url("lucide-icons", "js"), "the lucide icons");
    if (compiledModule->icons)
        icons = iconLinesNaming(icons, *compiledModule->icons);
    std::ofstream{iconsFile} << icons;

    std::string text = contentsOf(pageTemplate, pageTemplate.c_str());
    gchar* folder = g_filename_to_uri(resources.directory().c_str(), nullptr, nullptr);
    if (!folder)
        throw std::runtime_error{"no URI for the resource folder"};
    const std::string folderUri = folder;
    g_free(folder);
    // Both script sources name the folder; the module is JSON, a literal in the page.
    while (text.find("{{RESOURCES}}") != std::string::npos)
        replace(text, "{{RESOURCES}}", folderUri);
    replace(text, "{{COMPILED_MODULE}}", *module);
    gchar* iconsUri = g_filename_to_uri(iconsFile.c_str(), nullptr, nullptr);
    if (!iconsUri)
        throw std::runtime_error{"no URI for the icons"};
    replace(text, "{{LUCIDE_ICONS}}", iconsUri);
    g_free(iconsUri);
    std::ofstream{page} << text;
}

} // namespace kelmo::bench
