#pragma once

#include "../store/store_fixture.h"

#include <gio/gio.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>
#include <gtkmm/widget.h>
#include <gtkmm/window.h>
#include <string>
#include <vector>

namespace kelmo::testing {

// Every widget below the root (the root included) of the given type that the
// predicate accepts, in tree order.
template <typename T, typename Predicate>
std::vector<T*> findAll(Gtk::Widget& root, Predicate accept) {
    std::vector<T*> found;
    if (auto* widget = dynamic_cast<T*>(&root); widget && accept(*widget))
        found.push_back(widget);
    for (auto* child = root.get_first_child(); child; child = child->get_next_sibling()) {
        auto more = findAll<T>(*child, accept);
        found.insert(found.end(), more.begin(), more.end());
    }
    return found;
}

template <typename T>
std::vector<T*> findAll(Gtk::Widget& root) {
    return findAll<T>(root, [](T&) { return true; });
}

// The one widget below the root of the given type that the predicate accepts; a
// failure when there are several, an exception when there is none.
template <typename T, typename Predicate>
T& theOnly(Gtk::Widget& root, Predicate accept) {
    auto found = findAll<T>(root, accept);
    EXPECT_EQ(found.size(), 1u);
    return *found.at(0);
}

template <typename T>
T& theOnly(Gtk::Widget& root) {
    return theOnly<T>(root, [](T&) { return true; });
}

// The texts of the labels that are on screen (they and their ancestors are visible).
std::vector<std::string> shownTexts(Gtk::Widget& root);

// Whether a label on screen reads the text.
bool showsText(Gtk::Widget& root, const std::string& text);

struct MenuItem {
    std::string label;
    std::string action;
};

// Every item of the menu and its submenus and sections, depth first (a section's or a
// submenu's own item comes first, without a label).
std::vector<MenuItem> menuItems(GMenuModel* menu);

// The button whose own label, or a label inside it, reads the text; null when none.
Gtk::Button* findButton(Gtk::Widget& root, const std::string& text);

// Clicks the button as the pointer would.
void click(Gtk::Button& button);

// Clicks the button that findButton finds for the text, which must be on screen.
void press(Gtk::Widget& root, const std::string& text);

// Whether the widget and all its ancestors are visible.
bool isShown(Gtk::Widget& widget);

// A store on temporary settings, with a window to put views in and helpers that
// add folders and files the way the user would.
class ShellTest : public StoreTest {
protected:
    void TearDown() override;

    // Shows the widget in a fresh window and waits until it is on screen.
    void show(Gtk::Widget& content);

    // Adds a watched folder through the store's chooser and waits for its scan.
    void watchFolder(const std::filesystem::path& folder);

    // The store's record of that name; throws when there is none.
    const Artifact& artifactNamed(const std::string& name) const;

    std::unique_ptr<Gtk::Window> window;
};

} // namespace kelmo::testing
