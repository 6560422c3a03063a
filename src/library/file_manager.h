#pragma once

#include <string>

namespace kelmo {

// Asks the desktop's file manager to show the file selected in its folder (the
// freedesktop FileManager1 ShowItems call on the session bus). Where no file
// manager answers that call, the containing folder is opened with the default
// handler instead. Returns at once; failures are not reported.
void revealInFileManager(const std::string& filePath);

} // namespace kelmo
