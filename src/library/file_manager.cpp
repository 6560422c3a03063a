#include "library/file_manager.h"

#include "model/watched_folder.h"

#include <gio/gio.h>
#include <glib.h>
#include <memory>

namespace kelmo {
namespace {

void openContainingFolder(const std::string& filePath) {
    gchar* uri = g_filename_to_uri(containingDirectoryPath(filePath).c_str(), nullptr, nullptr);
    if (!uri)
        return;
    g_app_info_launch_default_for_uri_async(uri, nullptr, nullptr, nullptr, nullptr);
    g_free(uri);
}

struct RevealRequest {
    std::string filePath;
};

void showItemsAnswered(GObject* source, GAsyncResult* result, gpointer data) {
    std::unique_ptr<RevealRequest> request{static_cast<RevealRequest*>(data)};
    GError* error = nullptr;
    GVariant* reply = g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, &error);
    if (reply) {
        g_variant_unref(reply);
        return;
    }
    g_error_free(error);
    openContainingFolder(request->filePath);
}

} // namespace

void revealInFileManager(const std::string& filePath) {
    gchar* uri = g_filename_to_uri(filePath.c_str(), nullptr, nullptr);
    GDBusConnection* bus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
    if (!uri || !bus) {
        g_free(uri);
        if (bus)
            g_object_unref(bus);
        openContainingFolder(filePath);
        return;
    }
    const gchar* uris[] = {uri, nullptr};
    g_dbus_connection_call(bus, "org.freedesktop.FileManager1", "/org/freedesktop/FileManager1",
                           "org.freedesktop.FileManager1", "ShowItems",
                           g_variant_new("(^ass)", uris, ""), nullptr, G_DBUS_CALL_FLAGS_NONE, 5000,
                           nullptr, showItemsAnswered, new RevealRequest{filePath});
    g_free(uri);
    g_object_unref(bus);
}

} // namespace kelmo
