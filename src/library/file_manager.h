#pragma once

#include <string>

namespace kelmo {

// Both ask the desktop's file manager first (the freedesktop FileManager1 interface on
// the session bus). Where none answers, the folder opens with the default handler of
// folders; where that fails too, a message over Kelmo's active window says why and
// where the folder is. Both return at once.

// Shows the file selected in its folder.
void revealInFileManager(const std::string& filePath);

// Opens the folder.
void openInFileManager(const std::string& folderPath);

} // namespace kelmo
