#pragma once

#include <string>

namespace trees {

// The picture files that are installed beside the library.

std::wstring DummyIconPath();
std::wstring FolderIconPath();

}  // namespace trees
