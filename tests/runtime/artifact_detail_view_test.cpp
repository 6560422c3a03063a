#include "../app/shell_fixture.h"
#include "library/app_style.h"
#include "library/artifact_card_view.h"
#include "library/artifact_row_view.h"
#include "library/symbols.h"
#include "runtime/artifact_detail_view.h"
#include "web_view_fixture.h"

#include <csignal>
#include <cstdlib>
#include <glibmm/fileutils.h>
#include <gtkmm/entry.h>
#include <gtkmm/menubutton.h>
#include <unistd.h>

namespace kelmo::testing {
namespace {

const std::filesystem::path examples{KELMO_EXAMPLES_DIR};

// Kills the web processes this process started (they may run inside a sandbox of
// their own), as a crash would; answers how many.
int killWebProcesses() {
    const auto parentOf = [](pid_t pid) {
        const auto stat = readFile("/proc/" + std::to_string(pid) + "/stat");
        const auto close = stat.rfind(')');
        return close == std::string::npos ? 0 : std::atoi(stat.c_str() + close + 4); // ") S "
    };
    int killed = 0;
    for (const auto& entry : std::filesystem::directory_iterator{"/proc"}) {
        const auto name = entry.path().filename().string();
        if (name.find_first_not_of("0123456789") != std::string::npos ||
            readFile(entry.path() / "comm").rfind("WebKitWebProces", 0) != 0)
            continue;
        const pid_t pid = std::stoi(name);
        for (pid_t ancestor = parentOf(pid); ancestor > 1; ancestor = parentOf(ancestor))
            if (ancestor == ::getpid()) {
                killed += ::kill(pid, SIGKILL) == 0;
                break;
            }
    }
    return killed;
}

// Turns true once the widget is destroyed.
std::shared_ptr<bool> destroyed(Gtk::Widget& widget) {
    auto gone = std::make_shared<bool>(false); // addresses of destroyed widgets may be reused
    widget.signal_destroy().connect([gone] { *gone = true; });
    return gone;
}

// One player at a time in the shell's window, with the application's stylesheet and
// symbols, counting the loads it starts.
class PlayerTest : public ShellTest {
protected:
    void SetUp() override {
        makeStore();
        installSymbolIcons(Gdk::Display::get_default());
        loadApplicationStyle(Gdk::Display::get_default());
        window = std::make_unique<Gtk::Window>();
        window->set_default_size(1100, 700);
        window->present();
    }

    void TearDown() override {
        stateChanged.disconnect();
        ShellTest::TearDown();
    }

    ArtifactDetailView& showPlayer(const Artifact& artifact) {
        stateChanged.disconnect();
        player = Gtk::make_managed<ArtifactDetailView>(*store, artifact);
        stateChanged = player->signalStateChanged().connect([this, wasLoading = false]() mutable {
            loadsStarted += player->isLoading() && !wasLoading;
            wasLoading = player->isLoading();
        });
        window->set_child(*player);
        runMainLoopUntil([this] { return player->get_mapped(); });
        return *player;
    }

    // Does the action and waits until a load it started has ended; false when no load
    // began or the deadline passed.
    bool loadAfter(const std::function<void()>& action) {
        const int before = loadsStarted;
        action();
        return runMainLoopUntil([&] { return loadsStarted > before && !player->isLoading(); },
                                pageDeadline);
    }

    void pickViewport(ViewportMode mode) {
        player->activate_action("player.viewport",
                                Glib::Variant<Glib::ustring>::create(std::string{rawValue(mode)}));
    }

    Gtk::Button* buttonWithTooltip(const std::string& tooltip) {
        auto found = findAll<Gtk::Button>(*player, [&](Gtk::Button& button) {
            return button.get_tooltip_text().raw() == tooltip;
        });
        return found.empty() ? nullptr : found.front();
    }

    // The one widget of the player that has the style class.
    Gtk::Widget& withClass(const std::string& name) {
        return theOnly<Gtk::Widget>(
            *player, [&](Gtk::Widget& widget) { return widget.has_css_class(name); });
    }

    bool pageSays(const std::string& script, const std::string& answer) {
        return runMainLoopUntil(
            [&] { return evaluateIn(player->hostedWebView().webView(), script) == answer; },
            pageDeadline);
    }

    ArtifactDetailView* player = nullptr;
    int loadsStarted = 0;
    sigc::connection stateChanged;
};

TEST_F(PlayerTest, ViewportsReloadTheFavouriteFollowsTheStoreAndLeavingStartsAfresh) {
    const auto counter = Artifact::from(examples / "counter.jsx");
    store->setSelectedArtifact(counter);
    showPlayer(counter);
    EXPECT_EQ(player->viewport(), ViewportMode::desktop);
    const Uuid firstToken = player->reloadToken();
    ASSERT_TRUE(loadAfter([] {}));
    EXPECT_EQ(player->errorMessage(), std::nullopt);

    // Toggled elsewhere (a card, a row), the favourite button flips at once; a press
    // plays its pressed look before it acts.
    store->toggleFavorite(counter);
    EXPECT_EQ(buttonWithTooltip("Add to Favorites"), nullptr);
    ASSERT_NE(buttonWithTooltip("Remove from Favorites"), nullptr);
    buttonWithTooltip("Remove from Favorites")->activate();
    EXPECT_TRUE(runMainLoopUntil([&] { return !store->isFavorite(counter); }));
    EXPECT_NE(buttonWithTooltip("Add to Favorites"), nullptr);

    // Every viewport press reloads, the mode shown too; only Desktop swaps the web view.
    const auto widthBecomes = [&](auto accept) {
        return runMainLoopUntil([&] { return accept(player->hostedWebView().get_width()); });
    };
    const auto desktopViewGone = destroyed(player->hostedWebView());
    ASSERT_TRUE(loadAfter([&] { pickViewport(ViewportMode::tablet); }));
    EXPECT_TRUE(*desktopViewGone);
    const auto deviceViewGone = destroyed(player->hostedWebView());
    EXPECT_TRUE(widthBecomes([](int width) { return width == 768; }));
    ASSERT_TRUE(loadAfter([&] { pickViewport(ViewportMode::phone); }));
    EXPECT_FALSE(*deviceViewGone);
    EXPECT_TRUE(widthBecomes([](int width) { return width == 390; }));
    const Uuid token = player->reloadToken();
    ASSERT_TRUE(loadAfter([&] { pickViewport(ViewportMode::phone); }));
    EXPECT_NE(player->reloadToken(), token);
    ASSERT_TRUE(loadAfter([&] { pickViewport(ViewportMode::desktop); }));
    EXPECT_TRUE(*deviceViewGone);
    EXPECT_TRUE(widthBecomes([](int width) { return width > 768; }));

    ASSERT_TRUE(loadAfter([&] { pickViewport(ViewportMode::phone); }));
    player->activate_action("player.back");
    EXPECT_EQ(store->selectedArtifact(), std::nullopt);
    showPlayer(counter);
    EXPECT_EQ(player->viewport(), ViewportMode::desktop);
    EXPECT_NE(player->reloadToken(), firstToken);
    EXPECT_TRUE(loadAfter([] {}));
}

TEST_F(PlayerTest, AnErrorStaysUntilReloadOrAnotherArtifactAndACrashedPageSaysSo) {
    writeFile(root / "broken.jsx", "export default () => <p>caf\xe9</p>;");
    showPlayer(Artifact::from(root / "broken.jsx"));
    ASSERT_TRUE(loadAfter([] {}));
    ASSERT_EQ(player->errorMessage(), "Could not read file");
    EXPECT_NE(buttonWithTooltip("Back to Library"), nullptr);

    ASSERT_TRUE(loadAfter([&] { pickViewport(ViewportMode::tablet); }));
    ASSERT_TRUE(loadAfter([&] { pickViewport(ViewportMode::phone); }));
    EXPECT_EQ(player->errorMessage(), "Could not read file");
    player->activate_action("player.reload");
    EXPECT_EQ(player->errorMessage(), std::nullopt);
    ASSERT_TRUE(loadAfter([] {}));
    EXPECT_EQ(player->errorMessage(), "Could not read file");

    // Another artifact keeps the Phone window and its web view, and clears the error.
    const auto phoneViewGone = destroyed(player->hostedWebView());
    ASSERT_TRUE(loadAfter([&] { player->showArtifact(Artifact::from(examples / "counter.jsx")); }));
    EXPECT_EQ(player->errorMessage(), std::nullopt);
    EXPECT_EQ(player->viewport(), ViewportMode::phone);
    EXPECT_FALSE(*phoneViewGone);

    // A page whose process dies says so, and Reload runs it again.
    Gtk::Widget& overlay = withClass("page-ended-overlay");
    EXPECT_FALSE(overlay.get_visible());
    ASSERT_GT(killWebProcesses(), 0);
    ASSERT_TRUE(runMainLoopUntil([&] { return player->errorMessage().has_value(); }, pageDeadline));
    EXPECT_EQ(player->errorMessage(), "The artifact's page crashed");
    EXPECT_TRUE(overlay.get_visible());
    auto* reload = findButton(*player, "Reload");
    ASSERT_NE(reload, nullptr);
    ASSERT_TRUE(loadAfter([&] { reload->activate(); }));
    EXPECT_FALSE(overlay.get_visible());
    EXPECT_EQ(player->errorMessage(), std::nullopt);
}

TEST_F(PlayerTest, ThePagesDialogsAreAnsweredOverThePlayerWhileItLoadsAndLeavingClosesThem) {
    writeFile(root / "asks.html", R"(<p>asking</p><script>
        window.answers = [confirm("Keep going?"), prompt("Your name?", "Ada"),
                          confirm("Really?")];
        alert("Done");
      </script>)");
    showPlayer(Artifact::from(root / "asks.html"));
    const auto openDialog = [&]() -> Gtk::Widget* {
        auto cards = findAll<Gtk::Widget>(*player, [](Gtk::Widget& widget) {
            return widget.has_css_class("script-dialog") && widget.get_mapped();
        });
        return cards.size() == 1 ? cards.front() : nullptr;
    };
    // Answers the open dialog with the button of this label, typing the text first.
    const auto answer = [&](const std::string& message, const std::string& button,
                            std::optional<std::string> typed = std::nullopt) {
        ASSERT_TRUE(runMainLoopUntil([&] { return openDialog() != nullptr; }, pageDeadline))
            << message;
        Gtk::Widget& card = *openDialog();
        EXPECT_TRUE(showsText(card, message));
        if (typed) {
            auto& field = theOnly<Gtk::Entry>(card);
            EXPECT_EQ(field.get_text().raw(), "Ada");
            field.set_text(*typed);
        }
        auto* pressed = findButton(card, button);
        ASSERT_NE(pressed, nullptr) << button;
        pressed->activate();
        ASSERT_TRUE(runMainLoopUntil([&] { return openDialog() == nullptr; }));
    };
    answer("Keep going?", "OK");
    EXPECT_TRUE(player->isLoading()) << "the dialog is answered while the page loads";
    answer("Your name?", "OK", "Grace");
    answer("Really?", "Cancel");
    answer("Done", "OK");
    ASSERT_TRUE(runMainLoopUntil([&] { return !player->isLoading(); }, pageDeadline));
    EXPECT_EQ(evaluateIn(player->hostedWebView().webView(), "JSON.stringify(window.answers)"),
              R"([true,"Grace",false])");

    // Moving to another artifact closes an open dialog; the next page runs.
    player->activate_action("player.reload");
    ASSERT_TRUE(runMainLoopUntil([&] { return openDialog() != nullptr; }, pageDeadline));
    player->showArtifact(Artifact::from(examples / "counter.jsx"));
    EXPECT_EQ(openDialog(), nullptr);
    ASSERT_TRUE(runMainLoopUntil([&] { return !player->isLoading(); }, pageDeadline));
    EXPECT_TRUE(pageSays("String(document.getElementById('count')?.textContent)", "0"));
}

TEST_F(PlayerTest, APackageKelmoLacksIsOfferedForDownloadAndAFailureSaysWhy) {
    writeFile(root / "imports.jsx", "import pad from 'left-pad-for-kelmo-tests';\n"
                                    "export default () => <p>{pad('1', 3)}</p>;\n");
    showPlayer(Artifact::from(root / "imports.jsx"));
    Gtk::Widget& offer = withClass("package-offer");
    ASSERT_TRUE(runMainLoopUntil([&] { return offer.get_visible(); }, pageDeadline));
    const auto said = [&](const std::string& text) {
        return !findAll<Gtk::Label>(offer, [&](Gtk::Label& label) {
                    return label.get_text().raw().find(text) != std::string::npos;
                }).empty();
    };
    EXPECT_TRUE(said("\u201cleft-pad-for-kelmo-tests\u201d, which Kelmo does not have"));

    const std::string path = g_getenv("PATH");
    g_setenv("PATH", "/nonexistent", TRUE);
    auto& download = theOnly<Gtk::Button>(offer);
    download.activate();
    EXPECT_TRUE(runMainLoopUntil([&] { return said("npm was not found"); }));
    g_setenv("PATH", path.c_str(), TRUE);
    EXPECT_EQ(download.get_label(), "Try Again");

    ASSERT_TRUE(loadAfter([&] { player->showArtifact(Artifact::from(examples / "counter.jsx")); }));
    EXPECT_FALSE(offer.get_visible()) << "another artifact has no offer";
}

// Saved in an editor, the running file runs again as it now is, in the same device
// width, with a word that it happened; the same bytes written again change nothing.
TEST_F(PlayerTest, TheRunningArtifactRunsAgainWhenItsFilesChangeOnDisk) {
    const auto live = root / "live.jsx";
    const auto component = [](const std::string& text) {
        return "export default () => <p id=\"text\">" + text + "</p>;\n";
    };
    const auto shows = [&](const std::string& text) {
        return pageSays("String(document.getElementById('text')?.textContent)", text);
    };
    writeFile(live, component("one"));
    showPlayer(Artifact::from(live));
    ASSERT_TRUE(loadAfter([&] { pickViewport(ViewportMode::tablet); }));
    ASSERT_TRUE(shows("one"));
    Gtk::Widget& notice = withClass("disk-notice");
    EXPECT_FALSE(notice.get_visible());

    writeFile(live, component("two")); // in place
    EXPECT_TRUE(shows("two"));
    EXPECT_EQ(player->viewport(), ViewportMode::tablet);
    EXPECT_TRUE(notice.get_visible());
    Glib::file_set_contents(live.string(), component("three")); // by rename
    EXPECT_TRUE(shows("three"));

    const int loads = loadsStarted;
    writeFile(live, component("three"));
    runMainLoopUntil([] { return false; }, std::chrono::milliseconds{400});
    EXPECT_EQ(loadsStarted, loads) << "the same content again";

    // A version that does not compile shows its error and nothing of the one before;
    // dismissed, the error leaves a way back to it.
    writeFile(live, "export default () => <p>;\n");
    EXPECT_TRUE(pageSays("document.getElementById('kelmo-error') !== null && "
                         "document.getElementById('text') === null",
                         "true"));
    evaluateIn(player->hostedWebView().webView(),
               "document.querySelector('.kelmo-error__dismiss').click()");
    EXPECT_TRUE(pageSays("document.getElementById('kelmo-error').hidden && "
                         "document.querySelector('.kelmo-error__reopen').offsetWidth > 0",
                         "true"));

    // An HTML page also runs again when a file it loaded from its folder changes.
    writeFile(root / "page.html", "<p id=\"text\"></p><script src=\"app.js\"></script>");
    writeFile(root / "app.js", "document.getElementById('text').textContent = 'four';");
    ASSERT_TRUE(loadAfter([&] { player->showArtifact(Artifact::from(root / "page.html")); }));
    ASSERT_TRUE(shows("four"));
    writeFile(root / "app.js", "document.getElementById('text').textContent = 'five';");
    EXPECT_TRUE(shows("five"));
}

// A file that arrives in a watched folder (a download renamed into place when it is
// complete) while another artifact plays is offered, and opens on request.
TEST_F(PlayerTest, AFileThatArrivesWhileAnotherPlaysIsOfferedNotOpened) {
    TemporaryDirectory folder;
    writeFile(folder / "first.html", "<p>first</p>", std::chrono::seconds{60});
    watchFolder(folder.path());
    ASSERT_TRUE(store->selectedArtifact().has_value());
    showPlayer(*store->selectedArtifact());
    ASSERT_TRUE(loadAfter([] {}));
    Gtk::Widget& notice = withClass("arrival-notice");

    writeFile(folder / "report.html.part", "<p>report</p>");
    std::filesystem::rename(folder / "report.html.part", folder / "report.html");
    ASSERT_TRUE(runMainLoopUntil([&] { return notice.get_visible(); }));
    EXPECT_EQ(store->selectedArtifact()->name, "first");
    EXPECT_TRUE(showsText(notice, "report.html \u2014"));
    auto* open = findButton(notice, "Open");
    ASSERT_NE(open, nullptr);
    open->activate();
    EXPECT_TRUE(runMainLoopUntil([&] { return store->selectedArtifact()->name == "report"; }));
    EXPECT_FALSE(notice.get_visible());
}

// The Share menu writes where the user chose: one HTML file for a component (a page
// already needs none), and a PNG of the whole page at the width it is shown.
TEST_F(PlayerTest, ShareExportsTheComponentAsOneFileAndSavesAPictureOfThePage) {
    TemporaryDirectory folder;
    showPlayer(Artifact::from(examples / "counter.jsx"));
    ASSERT_TRUE(loadAfter([&] { pickViewport(ViewportMode::phone); }));
    std::vector<std::string> suggested;
    player->setSaveChooser([&](const std::string&, const std::filesystem::path&,
                               const std::string& name, auto chosen) {
        suggested.push_back(name);
        chosen(folder / name);
    });
    const auto menuLabels = [&] {
        std::vector<std::string> labels;
        for (const auto& item :
             menuItems(findAll<Gtk::MenuButton>(*player).at(0)->get_menu_model()->gobj()))
            labels.push_back(item.label);
        return labels;
    };
    EXPECT_EQ(menuLabels(),
              (std::vector<std::string>{"Export as HTML\u2026", "Save Picture\u2026"}));

    player->activate_action("player.export-html");
    ASSERT_TRUE(runMainLoopUntil([&] { return std::filesystem::exists(folder / "counter.html"); },
                                 pageDeadline));
    EXPECT_EQ(readFile(folder / "counter.html").rfind("<!doctype html>", 0), 0U);

    player->activate_action("player.save-picture");
    ASSERT_TRUE(runMainLoopUntil([&] { return std::filesystem::exists(folder / "counter.png"); },
                                 pageDeadline));
    auto picture = Gdk::Texture::create_from_filename((folder / "counter.png").string());
    EXPECT_EQ(picture->get_width(), player->hostedWebView().get_width());
    EXPECT_EQ(suggested, (std::vector<std::string>{"counter.html", "counter.png"}));

    ASSERT_TRUE(
        loadAfter([&] { player->showArtifact(Artifact::from(examples / "welcome.html")); }));
    EXPECT_EQ(menuLabels(), std::vector<std::string>{"Save Picture\u2026"});
}

// Once an artifact has run, its card and its row show a picture of its first screen; a
// file that changed has none until it runs again.
TEST_F(PlayerTest, AnArtifactThatHasRunShowsItsFirstScreenOnItsCardAndRow) {
    const auto file = root / "card.html";
    writeFile(file, "<body style='background: rgb(200, 30, 90)'>card</body>");
    Gtk::Window library;
    auto& views = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 0);
    auto& card = *Gtk::make_managed<ArtifactCardView>(*store, Artifact::from(file));
    auto& row = *Gtk::make_managed<ArtifactRowView>(*store, Artifact::from(file));
    views.append(card);
    views.append(row);
    library.set_child(views);
    auto& thumbnail = theOnly<CardThumbnail>(card);
    EXPECT_FALSE(row.hasPicture());
    EXPECT_FALSE(thumbnail.hasPicture());

    showPlayer(Artifact::from(file));
    ASSERT_TRUE(loadAfter([] {}));
    EXPECT_TRUE(runMainLoopUntil([&] { return thumbnail.hasPicture(); }, pageDeadline));
    EXPECT_TRUE(row.hasPicture());

    ASSERT_TRUE(
        loadAfter([&] { player->showArtifact(Artifact::from(examples / "welcome.html")); }));
    writeFile(file, "<body>changed</body>");
    card.show(Artifact::from(file));
    runMainLoopUntil([] { return false; }, std::chrono::milliseconds{300});
    EXPECT_FALSE(thumbnail.hasPicture());
}

} // namespace
} // namespace kelmo::testing
