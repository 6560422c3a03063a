#include "app/file_chooser_open_panel.h"
#include "store/artifact_store.h"

#include <gtkmm/application.h>
#include <gtkmm/applicationwindow.h>
#include <memory>

int main(int argc, char* argv[]) {
    auto app = Gtk::Application::create("org.kelmo.Kelmo");
    std::unique_ptr<kelmo::ArtifactStore> store;
    Gtk::ApplicationWindow* window = nullptr;
    app->signal_activate().connect([&] {
        if (!store)
            store = std::make_unique<kelmo::ArtifactStore>();
        if (!window) {
            window = new Gtk::ApplicationWindow;
            window->set_title("Kelmo");
            window->set_default_size(1100, 700);
            app->add_window(*window);
            store->setOpenPanel(
                std::make_shared<kelmo::FileChooserOpenPanel>([&] { return window; }));
        }
        window->present();
    });
    return app->run(argc, argv);
}
