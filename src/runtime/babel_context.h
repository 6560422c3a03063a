#pragma once

#include <optional>
#include <string>

namespace kelmo {

// Keeps this process's JavaScript engine to its interpreter and baseline compiler,
// and its baseline compiler away from the bundle's module scope. Babel runs once per
// compile: the optimising tiers would spend more time compiling its functions, on
// threads of their own, than they save, and a first start, which compiles while GTK
// and WebKit's processes start, is short of processor time. Call before anything in
// the process uses JavaScriptCore; later calls have no effect.
void keepJavaScriptToQuickTiers();

// Runs the compiler script over the source in a fresh JavaScript context: the module
// as JSON text ({code, imports, exports}), or nothing when Babel, the script or the
// source fails.
std::optional<std::string> compileInContext(const std::string& babel, const std::string& compiler,
                                            const std::string& source);

} // namespace kelmo
