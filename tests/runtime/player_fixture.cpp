#include "player_fixture.h"

#include "../app/shell_fixture.h"
#include "library/app_style.h"
#include "library/symbols.h"
#include "web_view_fixture.h"

namespace kelmo::testing {
PlayerFixture::PlayerFixture() {
    ArtifactStore::Environment environment;
    environment.settingsFile = home_ / "settings";
    environment.downloadsDirectory = [] { return std::optional<std::filesystem::path>{}; };
    store_ = std::make_unique<ArtifactStore>(environment);
    installSymbolIcons(Gdk::Display::get_default());
    loadApplicationStyle(Gdk::Display::get_default());
    window_.set_default_size(1100, 700);
    window_.present();
}

PlayerFixture::~PlayerFixture() {
    stateChanged_.disconnect();
    window_.unset_child();
    drainMainLoop();
}

ArtifactDetailView& PlayerFixture::show(const Artifact& artifact) {
    stateChanged_.disconnect();
    player_ = Gtk::make_managed<ArtifactDetailView>(*store_, artifact);
    bool wasLoading = false;
    stateChanged_ = player_->signalStateChanged().connect([this, wasLoading]() mutable {
        if (player_->isLoading() && !wasLoading)
            ++loadsStarted_;
        wasLoading = player_->isLoading();
    });
    window_.set_child(*player_);
    runMainLoopUntil([this] { return player_->get_mapped(); });
    return *player_;
}

bool PlayerFixture::loadAfter(const std::function<void()>& action) {
    const int before = loadsStarted_;
    action();
    return runMainLoopUntil([&] { return loadsStarted_ > before && !player_->isLoading(); },
                            pageDeadline);
}

void PlayerFixture::activate(const std::string& action) {
    player_->activate_action(action);
}

void PlayerFixture::pickViewport(ViewportMode mode) {
    player_->activate_action("player.viewport",
                             Glib::Variant<Glib::ustring>::create(std::string{rawValue(mode)}));
}

Gtk::Button* PlayerFixture::buttonWithTooltip(const std::string& tooltip) {
    auto found = findAll<Gtk::Button>(
        *player_, [&](Gtk::Button& button) { return button.get_tooltip_text().raw() == tooltip; });
    return found.empty() ? nullptr : found.front();
}

} // namespace kelmo::testing
