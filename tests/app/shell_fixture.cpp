#include "shell_fixture.h"

namespace kelmo::testing {
namespace {

std::string labelOf(Gtk::Widget& widget) {
    if (auto* label = dynamic_cast<Gtk::Label*>(&widget))
        return label->get_text();
    return {};
}

} // namespace

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

Gtk::Button* findButton(Gtk::Widget& root, const std::string& text) {
    auto buttons = findAll<Gtk::Button>(root, [&text](Gtk::Button& button) {
        if (std::string{button.get_label()} == text)
            return true;
        for (auto* label : findAll<Gtk::Label>(button))
            if (labelOf(*label) == text)
                return true;
        return false;
    });
    return buttons.empty() ? nullptr : buttons.front();
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

void ShellTest::watchFolder(const std::filesystem::path& folder) {
    ASSERT_NE(store, nullptr);
    const auto before = store->watchedFolders().size();
    store->addWatchedFolder();
    ASSERT_FALSE(panel->pending.empty());
    EXPECT_TRUE(panel->pending.back().request.canChooseDirectories);
    panel->answer(folder);
    ASSERT_TRUE(runMainLoopUntil([&] { return store->watchedFolders().size() > before; }));
    drainMainLoop();
}

} // namespace kelmo::testing
