#pragma once

#include "library/color.h"

namespace kelmo {

// The application's one light, warm palette. Each colour is made once, on first
// use, from its hexadecimal string. The stylesheet defines the same colours under
// the same names (@appOrangePrimary, …) for the widgets' CSS.
const Color& appOrangePrimary(); // accent: primary buttons, highlights, favourites
const Color& appOrangeLight();   // second accent: loading overlay, first-run guide, settings
const Color& appOrangeDeep();    // deep accent: the About window
const Color& appBg0();           // window and page background
const Color& appBg1();           // raised surfaces
const Color& appBg2();           // recessed surfaces
const Color& appBorder();        // hairlines, outlines, dividers
const Color& appText();          // primary text
const Color& appTextDim();       // secondary text
const Color& appTextMuted();     // tertiary text: counts, dates, inactive icons

} // namespace kelmo
