#include "library/library_view.h"

#include <gdk/gdk.h>
#include <glibmm/main.h>
#include <gtkmm/droptarget.h>

namespace kelmo {
namespace {

// The files of a dropped GdkFileList value.
std::vector<Glib::RefPtr<Gio::File>> droppedFiles(const Glib::ValueBase& value) {
    std::vector<Glib::RefPtr<Gio::File>> files;
    if (!G_VALUE_HOLDS(value.gobj(), GDK_TYPE_FILE_LIST))
        return files;
    auto* list = static_cast<GdkFileList*>(g_value_get_boxed(value.gobj()));
    if (!list)
        return files;
    GSList* entries = gdk_file_list_get_files(list);
    for (GSList* entry = entries; entry; entry = entry->next)
        files.push_back(Glib::wrap(G_FILE(entry->data), true));
    g_slist_free(entries);
    return files;
}

} // namespace

void LibraryView::installDropTarget() {
    auto target = Gtk::DropTarget::create(GDK_TYPE_FILE_LIST, Gdk::DragAction::COPY);
    target->signal_enter().connect(
        [this](double, double) {
            setDraggingOver(true);
            return Gdk::DragAction::COPY;
        },
        false);
    target->signal_leave().connect([this] { setDraggingOver(false); });
    target->signal_drop().connect(
        [this](const Glib::ValueBase& value, double, double) {
            setDraggingOver(false);
            return handleDrop(droppedFiles(value));
        },
        false);
    add_controller(target);
}

bool LibraryView::handleDrop(const std::vector<Glib::RefPtr<Gio::File>>& files) {
    for (const auto& file : files) {
        if (!file)
            continue;
        const std::string path = file->get_path();
        if (path.empty() || !hasSupportedExtension(path))
            continue;
        // The store outlives every view, and adding a file may well replace this one
        // with the player before the next file's turn comes.
        ArtifactStore& store = store_;
        Glib::signal_idle().connect_once([&store, path] { store.addArtifact(path); },
                                         Glib::PRIORITY_DEFAULT);
    }
    return true;
}

void LibraryView::setDraggingOver(bool draggingOver) {
    if (isDraggingOver_ == draggingOver)
        return;
    isDraggingOver_ = draggingOver;
    if (draggingOver)
        dropZone_.add_css_class("dragging-over");
    else
        dropZone_.remove_css_class("dragging-over");
}

} // namespace kelmo
