#include "player_fixture.h"
#include "runtime/artifact_web_view.h"

#include <gtest/gtest.h>

namespace kelmo {
namespace {

using testing::PlayerFixture;
using testing::runMainLoopUntil;
using testing::TemporaryDirectory;
using testing::writeFile;

const std::filesystem::path examples{KELMO_EXAMPLES_DIR};

// Turns true once the widget is destroyed (addresses of destroyed widgets may be reused).
std::shared_ptr<bool> destroyed(Gtk::Widget& widget) {
    auto gone = std::make_shared<bool>(false);
    widget.signal_destroy().connect([gone] { *gone = true; });
    return gone;
}

class PlayerTest : public ::testing::Test {
protected:
    // The player's web view reaches this width once laid out.
    bool webViewWidthBecomes(int width) {
        return runMainLoopUntil(
            [&] { return fixture.player().hostedWebView().get_width() == width; });
    }

    PlayerFixture fixture;
    TemporaryDirectory folder;
};

TEST_F(PlayerTest, APlayerStartsInDesktopFollowsTheFavouriteAndLeavingItStartsTheNextAfresh) {
    const auto counter = Artifact::from(examples / "counter.jsx");
    fixture.store().setSelectedArtifact(counter);
    auto* player = &fixture.show(counter);
    EXPECT_FALSE(player->isLoading());
    EXPECT_EQ(player->errorMessage(), std::nullopt);
    EXPECT_EQ(player->viewport(), ViewportMode::desktop);
    const Uuid firstToken = player->reloadToken();
    ASSERT_TRUE(fixture.loadAfter([] {}));
    EXPECT_EQ(player->errorMessage(), std::nullopt);

    // Toggled elsewhere (a card, a row), the favourite button flips at once; a press
    // plays its pressed look before it acts.
    EXPECT_NE(fixture.buttonWithTooltip("Add to Favorites"), nullptr);
    fixture.store().toggleFavorite(counter);
    EXPECT_EQ(fixture.buttonWithTooltip("Add to Favorites"), nullptr);
    ASSERT_NE(fixture.buttonWithTooltip("Remove from Favorites"), nullptr);
    fixture.buttonWithTooltip("Remove from Favorites")->activate();
    EXPECT_TRUE(runMainLoopUntil([&] { return !fixture.store().isFavorite(counter); }));
    EXPECT_NE(fixture.buttonWithTooltip("Add to Favorites"), nullptr);

    ASSERT_TRUE(fixture.loadAfter([&] { fixture.pickViewport(ViewportMode::phone); }));
    fixture.activate("player.back");
    EXPECT_EQ(fixture.store().selectedArtifact(), std::nullopt);

    player = &fixture.show(counter);
    EXPECT_EQ(player->viewport(), ViewportMode::desktop);
    EXPECT_NE(player->reloadToken(), firstToken);
    EXPECT_TRUE(fixture.loadAfter([] {}));
}

TEST_F(PlayerTest, EveryViewportPressReloadsAndOnlyDesktopSwapsTheWebView) {
    fixture.show(Artifact::from(examples / "welcome.html"));
    ASSERT_TRUE(fixture.loadAfter([] {}));
    auto& player = fixture.player();
    const auto desktopViewGone = destroyed(player.hostedWebView());

    Uuid token = player.reloadToken();
    ASSERT_TRUE(fixture.loadAfter([&] { fixture.pickViewport(ViewportMode::tablet); }));
    EXPECT_EQ(player.viewport(), ViewportMode::tablet);
    EXPECT_NE(player.reloadToken(), token);
    EXPECT_TRUE(*desktopViewGone);
    const auto deviceViewGone = destroyed(player.hostedWebView());
    EXPECT_TRUE(webViewWidthBecomes(768));

    token = player.reloadToken();
    ASSERT_TRUE(fixture.loadAfter([&] { fixture.pickViewport(ViewportMode::phone); }));
    EXPECT_NE(player.reloadToken(), token);
    EXPECT_FALSE(*deviceViewGone);
    EXPECT_TRUE(webViewWidthBecomes(390));

    // The mode already shown reloads too.
    token = player.reloadToken();
    ASSERT_TRUE(fixture.loadAfter([&] { fixture.pickViewport(ViewportMode::phone); }));
    EXPECT_NE(player.reloadToken(), token);

    ASSERT_TRUE(fixture.loadAfter([&] { fixture.pickViewport(ViewportMode::desktop); }));
    EXPECT_TRUE(*deviceViewGone);
    EXPECT_TRUE(runMainLoopUntil([&] { return player.hostedWebView().get_width() > 768; }));
}

TEST_F(PlayerTest, AnErrorStaysThroughViewportChangesUntilReloadOrAnotherArtifact) {
    const auto broken = folder / "broken.jsx";
    writeFile(broken, "export default () => <p>caf\xe9</p>;");
    const auto artifact = Artifact::from(broken);
    fixture.show(artifact);
    auto& player = fixture.player();
    ASSERT_TRUE(fixture.loadAfter([] {}));
    ASSERT_EQ(player.errorMessage(), "Could not read file");
    EXPECT_NE(fixture.buttonWithTooltip("Back to Library"), nullptr);

    ASSERT_TRUE(fixture.loadAfter([&] { fixture.pickViewport(ViewportMode::tablet); }));
    // Fixed on disk, the next load succeeds, and the earlier error still shows.
    writeFile(broken, "export default () => <p>café</p>;");
    ASSERT_TRUE(fixture.loadAfter([&] { fixture.pickViewport(ViewportMode::phone); }));
    EXPECT_EQ(player.errorMessage(), "Could not read file");

    fixture.activate("player.reload");
    EXPECT_EQ(player.errorMessage(), std::nullopt);
    ASSERT_TRUE(fixture.loadAfter([] {}));
    EXPECT_EQ(player.errorMessage(), std::nullopt);

    writeFile(broken, "export default () => <p>caf\xe9</p>;");
    ASSERT_TRUE(fixture.loadAfter([&] { fixture.activate("player.reload"); }));
    ASSERT_EQ(player.errorMessage(), "Could not read file");

    // Another artifact keeps the Phone window and its web view, and clears the error.
    const auto phoneViewGone = destroyed(player.hostedWebView());
    const Uuid token = player.reloadToken();
    ASSERT_TRUE(
        fixture.loadAfter([&] { player.showArtifact(Artifact::from(examples / "counter.jsx")); }));
    EXPECT_EQ(player.errorMessage(), std::nullopt);
    EXPECT_NE(player.reloadToken(), token);
    EXPECT_EQ(player.viewport(), ViewportMode::phone);
    EXPECT_FALSE(*phoneViewGone);
    EXPECT_EQ(player.artifact().name, "counter");
}

} // namespace
} // namespace kelmo
