#include "shell_fixture.h"

#include <algorithm>
#include <stdexcept>

namespace kelmo::testing {

bool isShown(Gtk::Widget& widget) {
    return widget.is_visible();
}

void click(Gtk::Button& button) {
    ASSERT_TRUE(button.is_sensitive());
    g_signal_emit_by_name(button.gobj(), "clicked");
}

std::vector<std::string> shownTexts(Gtk::Widget& root) {
    std::vector<std::string> texts;
    for (auto* label : findAll<Gtk::Label>(root, [](Gtk::Label& l) { return isShown(l); }))
        texts.push_back(label->get_text());
    return texts;
}

bool showsText(Gtk::Widget& root, const std::string& text) {
    const auto texts = shownTexts(root);
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

std::vector<MenuItem> menuItems(GMenuModel* menu) {
    std::vector<MenuItem> items;
    for (int index = 0; index < g_menu_model_get_n_items(menu); ++index) {
        MenuItem& item = items.emplace_back();
        for (auto [attribute, text] : {std::pair{G_MENU_ATTRIBUTE_LABEL, &item.label},
                                       std::pair{G_MENU_ATTRIBUTE_ACTION, &item.action}}) {
            gchar* value = nullptr;
            if (g_menu_model_get_item_attribute(menu, index, attribute, "s", &value))
                *text = value;
            g_free(value);
        }
        for (const char* link : {G_MENU_LINK_SUBMENU, G_MENU_LINK_SECTION}) {
            if (GMenuModel* inner = g_menu_model_get_item_link(menu, index, link)) {
                const auto more = menuItems(inner);
                items.insert(items.end(), more.begin(), more.end());
                g_object_unref(inner);
            }
        }
    }
    return items;
}

Gtk::Button* findButton(Gtk::Widget& root, const std::string& text) {
    const auto buttons = findAll<Gtk::Button>(root, [&text](Gtk::Button& button) {
        return !findAll<Gtk::Label>(button, [&](Gtk::Label& l) {
                    return l.get_text().raw() == text;
                }).empty();
    });
    return buttons.empty() ? nullptr : buttons.front();
}

void press(Gtk::Widget& root, const std::string& text) {
    auto* button = findButton(root, text);
    ASSERT_TRUE(button && isShown(*button)) << text;
    click(*button);
}

void ShellTest::TearDown() {
    if (window) {
        window->unset_child();
        window.reset();
    }
    drainMainLoop();
}

void ShellTest::show(Gtk::Widget& content) {
    window = std::make_unique<Gtk::Window>();
    window->set_default_size(1100, 700);
    window->set_child(content);
    window->present();
    ASSERT_TRUE(runMainLoopUntil([&] { return content.get_mapped(); }));
    drainMainLoop();
}

const Artifact& ShellTest::artifactNamed(const std::string& name) const {
    for (const auto& artifact : store->allArtifacts())
        if (artifact.name == name)
            return artifact;
    throw std::runtime_error{"no artifact " + name};
}

void ShellTest::watchFolder(const std::filesystem::path& folder) {
    ASSERT_NE(store, nullptr);
    const auto before = store->watchedFolders().size();
    store->addWatchedFolder();
    panel->answer(folder);
    ASSERT_TRUE(runMainLoopUntil([&] { return store->watchedFolders().size() > before; }));
    drainMainLoop();
}

} // namespace kelmo::testing
