#include "app/start_artifact.h"

#include <giomm/dbusconnection.h>
#include <giomm/init.h>

namespace kelmo {
namespace {

// A bus that does not answer within this long is taken as no bus: GApplication then
// finds out for itself.
constexpr int busCallTimeoutMilliseconds = 1000;

} // namespace

bool isNameOwnedOnSessionBus(const std::string& name) {
    try {
        Gio::init();
        const auto bus = Gio::DBus::Connection::get_sync(Gio::DBus::BusType::SESSION);
        const auto arguments =
            Glib::VariantContainerBase::create_tuple(Glib::Variant<Glib::ustring>::create(name));
        const auto reply =
            bus->call_sync("/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner",
                           arguments, "org.freedesktop.DBus", busCallTimeoutMilliseconds);
        Glib::Variant<bool> owned;
        reply.get_child(owned, 0);
        return owned.get();
    } catch (const Glib::Error&) {
        return false;
    }
}

std::optional<std::filesystem::path> artifactToCompileAhead(const ArtifactStore& store,
                                                            const std::vector<std::string>& files) {
    std::string shown;
    std::error_code error;
    if (!files.empty())
        shown = std::filesystem::absolute(files.back(), error).string();
    else if (store.selectedArtifact())
        shown = store.selectedArtifact()->url;
    if (shown.empty() || detectType(shown).kind == ArtifactType::Kind::html)
        return std::nullopt;
    return shown;
}

} // namespace kelmo
