#pragma once

#include "library/color.h"

#include <string>
#include <vector>

namespace kelmo {

// One page of the first-run guide.
struct OnboardingStep {
    std::string icon;     // symbol name of the page's emblem
    std::string title;    // may hold a line break
    std::string subtitle; // the page's text
    Color color;          // tints the emblem and its disc
};

// The guide's four pages, in order.
const std::vector<OnboardingStep>& onboardingSteps();

// Where the guide's background grid draws its lines along one side of the given
// length: every `spacing` from 0 up to and including the length; none when the
// length is negative.
std::vector<double> gridLineOffsets(double length, double spacing = 40);

} // namespace kelmo
