#include "app/onboarding_steps.h"

#include "library/palette.h"

namespace kelmo {

const std::vector<OnboardingStep>& onboardingSteps() {
    static const std::vector<OnboardingStep> steps{
        {"sparkles", "Welcome to\nKelmo",
         "Run any AI-generated prototype natively on your computer — no browser needed.",
         appOrangeLight()},
        {"doc.badge.plus", "Open a File",
         "Use File › Open File (Ctrl+O) to open any .html, .jsx, or .tsx file. Drag-and-drop "
         "works too.",
         Color::hex(0x38bdf8)},
        {"folder.badge.plus", "Watch a Folder",
         "Use File › Open Folder (Shift+Ctrl+O) to set a folder. The app will auto-discover "
         "and list every file inside.",
         Color::hex(0xa78bfa)},
        {"play.rectangle", "Run and Preview",
         "Select any file from the sidebar to run it instantly in a secure sandbox. HTML, JSX, and "
         "TSX all work out of the box.",
         appOrangePrimary()},
    };
    return steps;
}

std::vector<double> gridLineOffsets(double length, double spacing) {
    std::vector<double> offsets;
    if (spacing <= 0)
        return offsets;
    for (int index = 0; index * spacing <= length; ++index)
        offsets.push_back(index * spacing);
    return offsets;
}

} // namespace kelmo
