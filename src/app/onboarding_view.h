#pragma once

#include "app/onboarding_steps.h"
#include "store/artifact_store.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/drawingarea.h>
#include <gtkmm/overlay.h>
#include <gtkmm/stack.h>
#include <gtkmm/window.h>
#include <vector>

namespace kelmo {

// One page of the guide: the emblem, the title and the text.
class OnboardingStepView : public Gtk::Box {
public:
    explicit OnboardingStepView(const OnboardingStep& step);

private:
    Color color_;
    Gtk::DrawingArea disc_;
};

// The first-run guide: four pages paged through with "Back" and "Next" or the Left and
// Right keys, shown modally over the main window. "Get Started" on the last page closes
// it and records that the guide was seen; any other close (Escape, the window manager)
// only closes it.
// Every close writes false into the store's isShowingOnboarding.
class OnboardingView : public Gtk::Window {
public:
    static constexpr int width = 520;
    static constexpr int height = 460;

    OnboardingView(ArtifactStore& store, Gtk::Window* parent);
    ~OnboardingView() override;
    OnboardingView(const OnboardingView&) = delete;
    OnboardingView& operator=(const OnboardingView&) = delete;

    // The index of the page shown.
    int currentStep() const { return currentStep_; }

private:
    void setCurrentStep(int step);
    void getStarted();
    void drawGrid(const Cairo::RefPtr<Cairo::Context>& cr, int width, int height);

    ArtifactStore& store_;
    const std::vector<OnboardingStep>& steps_;
    int currentStep_ = 0;
    Gtk::Overlay layers_;
    Gtk::DrawingArea grid_;
    Gtk::Box column_{Gtk::Orientation::VERTICAL, 0};
    Gtk::Stack pages_;
    Gtk::Box dots_{Gtk::Orientation::HORIZONTAL, 6};
    std::vector<Gtk::Widget*> dotViews_;
    Gtk::Box buttons_{Gtk::Orientation::HORIZONTAL, 12};
    Gtk::Button back_{"Back"};
    Gtk::Button next_{"Next"};
    Gtk::Button getStarted_{"Get Started"};
};

} // namespace kelmo
