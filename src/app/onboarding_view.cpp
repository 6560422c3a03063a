#include "app/onboarding_view.h"

#include "app/window_keys.h"
#include "library/app_style.h"
#include "library/palette.h"
#include "library/symbols.h"
#include "store/settings_keys.h"

#include <cmath>
#include <gtkmm/cssprovider.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/shortcutcontroller.h>
#include <gtkmm/stylecontext.h>
#include <string>

namespace kelmo {
namespace {

void setSourceColor(const Cairo::RefPtr<Cairo::Context>& cr, const Color& color) {
    cr->set_source_rgba(color.red, color.green, color.blue, color.opacity);
}

// Tints one widget (a symbolic icon takes its colour from CSS) with a colour that
// is not part of the stylesheet.
void tint(Gtk::Widget& widget, const Color& color) {
    auto provider = Gtk::CssProvider::create();
    provider->load_from_data("* { color: " + color.css() + "; }");
    widget.get_style_context()->add_provider(provider, GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
}

} // namespace

OnboardingStepView::OnboardingStepView(const OnboardingStep& step)
    : Gtk::Box{Gtk::Orientation::VERTICAL, 24}, color_{step.color} {
    add_css_class("onboarding-step");
    set_valign(Gtk::Align::START);

    auto* emblem = Gtk::make_managed<Gtk::Overlay>();
    emblem->set_halign(Gtk::Align::CENTER);
    disc_.set_content_width(90);
    disc_.set_content_height(90);
    disc_.set_draw_func([this](const Cairo::RefPtr<Cairo::Context>& cr, int width, int height) {
        setSourceColor(cr, color_.withOpacity(0.1));
        cr->arc(width / 2.0, height / 2.0, std::min(width, height) / 2.0, 0, 2 * M_PI);
        cr->fill();
    });
    emblem->set_child(disc_);
    auto* icon = Gtk::make_managed<Gtk::Image>();
    icon->set_from_icon_name(symbolIconName(step.icon));
    icon->set_pixel_size(38);
    icon->set_halign(Gtk::Align::CENTER);
    icon->set_valign(Gtk::Align::CENTER);
    icon->add_css_class("onboarding-emblem-icon");
    tint(*icon, step.color);
    emblem->add_overlay(*icon);
    append(*emblem);

    auto* texts = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 10);
    auto* title = Gtk::make_managed<Gtk::Label>(step.title);
    title->set_justify(Gtk::Justification::CENTER);
    title->add_css_class("onboarding-title");
    auto* subtitle = Gtk::make_managed<Gtk::Label>(step.subtitle);
    subtitle->set_justify(Gtk::Justification::CENTER);
    subtitle->set_wrap(true);
    subtitle->set_max_width_chars(52);
    subtitle->set_margin_start(40);
    subtitle->set_margin_end(40);
    subtitle->add_css_class("onboarding-subtitle");
    texts->append(*title);
    texts->append(*subtitle);
    append(*texts);
}

OnboardingView::OnboardingView(ArtifactStore& store, Gtk::Window* parent)
    : store_{store}, steps_{onboardingSteps()} {
    add_css_class("onboarding");
    set_title("Welcome to Kelmo");
    set_modal(true);
    set_resizable(false);
    set_hide_on_close(true);
    set_default_size(width, height);
    if (parent)
        set_transient_for(*parent);
    // A sheet has no title bar: the pages reach the top edge.
    auto* titlebar = Gtk::make_managed<Gtk::Box>();
    titlebar->set_visible(false);
    set_titlebar(*titlebar);

    grid_.set_draw_func(sigc::mem_fun(*this, &OnboardingView::drawGrid));
    layers_.set_child(grid_);
    layers_.set_size_request(width, height);

    column_.set_valign(Gtk::Align::CENTER);
    pages_.set_transition_type(Gtk::StackTransitionType::SLIDE_LEFT_RIGHT);
    pages_.set_transition_duration(300);
    pages_.set_size_request(-1, 340);
    for (std::size_t index = 0; index < steps_.size(); ++index)
        pages_.add(*Gtk::make_managed<OnboardingStepView>(steps_[index]), std::to_string(index));
    column_.append(pages_);

    dots_.set_halign(Gtk::Align::CENTER);
    dots_.set_margin_top(8);
    for (std::size_t index = 0; index < steps_.size(); ++index) {
        auto* dot = Gtk::make_managed<Gtk::Box>();
        dot->add_css_class("onboarding-dot");
        dot->set_valign(Gtk::Align::CENTER);
        dots_.append(*dot);
        dotViews_.push_back(dot);
    }
    column_.append(dots_);

    buttons_.add_css_class("onboarding-buttons");
    setButtonStyle(back_, button_style::appSecondary);
    setButtonStyle(next_, button_style::appPrimary);
    setButtonStyle(getStarted_, button_style::appPrimary);
    auto* spacer = Gtk::make_managed<Gtk::Box>();
    spacer->set_hexpand(true);
    buttons_.append(back_);
    buttons_.append(*spacer);
    buttons_.append(next_);
    buttons_.append(getStarted_);
    back_.signal_clicked().connect([this] { setCurrentStep(currentStep_ - 1); });
    next_.signal_clicked().connect([this] { setCurrentStep(currentStep_ + 1); });
    getStarted_.signal_clicked().connect([this] { getStarted(); });
    column_.append(buttons_);

    layers_.add_overlay(column_);
    set_child(layers_);

    // Escape closes the guide like any other dismissal.
    closeOnEscape(*this);
    // The arrow keys turn the pages. They are caught before the focused button, which
    // would otherwise move the focus with them.
    auto paging = Gtk::ShortcutController::create();
    paging->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    for (const auto& [key, offset] : {std::pair{GDK_KEY_Left, -1}, std::pair{GDK_KEY_Right, 1}})
        paging->add_shortcut(Gtk::Shortcut::create(
            Gtk::KeyvalTrigger::create(key),
            Gtk::CallbackAction::create([this, offset](Gtk::Widget&, const Glib::VariantBase&) {
                setCurrentStep(currentStep_ + offset);
                return true;
            })));
    add_controller(paging);
    signal_close_request().connect(
        [this] {
            store_.setIsShowingOnboarding(false);
            return false;
        },
        false);

    setCurrentStep(0);
    set_default_widget(next_);
}

OnboardingView::~OnboardingView() = default;

void OnboardingView::setCurrentStep(int step) {
    const int last = static_cast<int>(steps_.size()) - 1;
    currentStep_ = std::clamp(step, 0, last);
    pages_.set_visible_child(std::to_string(currentStep_));
    for (int index = 0; index <= last; ++index) {
        if (index == currentStep_)
            dotViews_[index]->add_css_class("current");
        else
            dotViews_[index]->remove_css_class("current");
    }
    back_.set_visible(currentStep_ >= 1);
    next_.set_visible(currentStep_ < last);
    getStarted_.set_visible(currentStep_ == last);
    if (currentStep_ == last)
        set_default_widget(getStarted_);
    else
        set_default_widget(next_);
}

void OnboardingView::getStarted() {
    store_.setIsShowingOnboarding(false);
    store_.settings().setBool(settings_keys::hasSeenOnboarding, true);
}

void OnboardingView::drawGrid(const Cairo::RefPtr<Cairo::Context>& cr, int width, int height) {
    for (const double x : gridLineOffsets(width)) {
        cr->move_to(x, 0);
        cr->line_to(x, height);
    }
    for (const double y : gridLineOffsets(height)) {
        cr->move_to(0, y);
        cr->line_to(width, y);
    }
    setSourceColor(cr, appBorder().withOpacity(0.5));
    cr->set_line_width(0.5);
    cr->stroke();
}

} // namespace kelmo
