#include "app/content_view.h"
#include "library/library_view.h"
#include "shell_fixture.h"
#include "store/settings_keys.h"

#include <gtkmm/label.h>

namespace kelmo::testing {
namespace {

struct RecordingViews {
    int librariesMade = 0;
    int playersMade = 0;
    std::vector<std::string> handedArtifacts;

    DetailViews views() {
        DetailViews views;
        views.makeLibraryView = [this](ArtifactStore&) -> Gtk::Widget* {
            ++librariesMade;
            return Gtk::make_managed<Gtk::Label>("library");
        };
        views.makePlayerView = [this](ArtifactStore&, const Artifact& artifact) -> Gtk::Widget* {
            ++playersMade;
            return Gtk::make_managed<Gtk::Label>("player " + artifact.name);
        };
        views.showArtifact = [this](Gtk::Widget& player, const Artifact& artifact) {
            handedArtifacts.push_back(artifact.name);
            static_cast<Gtk::Label&>(player).set_text("player " + artifact.name);
        };
        return views;
    }
};

class ContentViewTest : public ShellTest {
protected:
    ArtifactStore& makeQuietStore() {
        auto& made = makeStore();
        made.setIsShowingOnboarding(false);
        for (const auto* name : {"first.html", "second.jsx"}) {
            writeFile(root / name);
            made.addArtifact(root / name);
        }
        made.setSelectedArtifact(std::nullopt);
        return made;
    }

    static std::string detailText(ContentView& view) {
        auto* label = dynamic_cast<Gtk::Label*>(view.detailView());
        return label ? std::string{label->get_text()} : std::string{};
    }

    RecordingViews recorded;
};

TEST_F(ContentViewTest, DetailShowsOneKeptPlayerWhileAnArtifactIsSelectedAndTheLibraryOtherwise) {
    auto& store = makeQuietStore();
    ContentView view{store, recorded.views()};
    show(view);
    EXPECT_EQ(detailText(view), "library");

    store.setSelectedArtifact(artifactNamed("first"));
    Gtk::Widget* player = view.detailView();
    store.setSelectedSection(SidebarItem::favorites());
    EXPECT_EQ(detailText(view), "player first") << "the section alone does not choose the detail";
    store.setSelectedArtifact(artifactNamed("second"));
    EXPECT_EQ(view.detailView(), player);
    EXPECT_EQ(recorded.playersMade, 1);
    EXPECT_EQ(recorded.handedArtifacts, std::vector<std::string>{"second"});

    store.setSelectedArtifact(std::nullopt);
    EXPECT_EQ(detailText(view), "library");
    store.setSelectedArtifact(artifactNamed("first"));
    EXPECT_EQ(recorded.playersMade, 2);
    EXPECT_EQ(recorded.librariesMade, 2);
    drainMainLoop();
    const auto isDetail = [](Gtk::Label& l) {
        return l.get_text().find("player") == 0 || l.get_text() == "library";
    };
    EXPECT_EQ(findAll<Gtk::Label>(view, isDetail).size(), 1u) << "replaced views leave";
}

TEST_F(ContentViewTest, TheLibraryKeepsGridOrListAcrossSectionsAndEachNewLibraryView) {
    auto& store = makeQuietStore();
    auto views = DetailViews::standard();
    auto* page = Gtk::make_managed<Gtk::Box>();
    auto* first = dynamic_cast<LibraryView*>(views.makeLibraryView(store));
    ASSERT_NE(first, nullptr);
    page->append(*first);
    show(*page);
    click(theOnly<Gtk::Button>(
        *first, [](Gtk::Button& b) { return b.get_tooltip_text().raw() == "List view"; }));
    store.setSelectedSection(SidebarItem::favorites());
    store.setSelectedSection(SidebarItem::library());
    EXPECT_FALSE(first->isGridView());

    auto* second = dynamic_cast<LibraryView*>(views.makeLibraryView(store));
    page->append(*second);
    EXPECT_FALSE(second->isGridView());
}

TEST_F(ContentViewTest, FocusModeHidesTheSidebarAndDraggingTheDividerSwitchesIt) {
    auto& store = makeQuietStore();
    ContentView view{store, recorded.views()};
    show(view);
    EXPECT_EQ(view.get_position(), SidebarView::idealWidth);

    store.setIsFocusMode(true);
    EXPECT_EQ(view.get_position(), 0);
    EXPECT_FALSE(view.get_start_child()->get_can_target());

    store.setIsFocusMode(false);
    EXPECT_EQ(view.get_position(), SidebarView::idealWidth);

    // Dragged near the edge the divider collapses into focus mode; dragged out, it ends it,
    // the sidebar keeping between its minimum and maximum widths.
    view.set_position(40);
    EXPECT_TRUE(store.isFocusMode());
    EXPECT_EQ(view.get_position(), 0);
    view.set_position(500);
    EXPECT_FALSE(store.isFocusMode());
    EXPECT_EQ(view.get_position(), SidebarView::maximumWidth);
    view.set_position(ContentView::collapseWidth + 20);
    EXPECT_EQ(view.get_position(), SidebarView::minimumWidth);
}

TEST_F(ContentViewTest, GuideIsAFixedModalSheetOverThePlayerThatACloseOnlyHides) {
    auto& store = makeStore();
    ASSERT_TRUE(store.isShowingOnboarding()) << "a first start asks for the guide";
    writeFile(root / "first.html");
    store.addArtifact(root / "first.html");
    ContentView view{store, recorded.views()};
    show(view);
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(runMainLoopUntil([&] { return view.onboardingView() != nullptr; }));
        auto* guide = view.onboardingView();
        EXPECT_TRUE(runMainLoopUntil([&] { return guide->get_mapped(); }));
        EXPECT_EQ(guide->get_transient_for(), window.get());
        EXPECT_TRUE(guide->get_modal() && !guide->get_resizable());
        EXPECT_EQ(detailText(view), "player first") << "the player keeps running beneath";

        guide->close();
        EXPECT_FALSE(store.isShowingOnboarding());
        EXPECT_FALSE(savedSettings().boolValue(settings_keys::hasSeenOnboarding))
            << "only Get Started records the guide as seen";
        EXPECT_EQ(view.onboardingView(), nullptr);
        store.setIsShowingOnboarding(true);
        EXPECT_NE(view.onboardingView(), nullptr) << "asked for again, the guide is presented";
    }
}

} // namespace
} // namespace kelmo::testing
