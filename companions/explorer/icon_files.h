#pragma once

#include "explorer/badge.h"

#include <filesystem>
#include <map>
#include <string>

namespace explorer {

/// Badges as icon files in a temporary folder, for controls that take icons from files. The folder
/// goes with this.
class IconFiles {
public:
    /// Icons of `size` times `size` pixels. Throws hosting::Error where no folder can be made.
    explicit IconFiles(int size);
    ~IconFiles();
    IconFiles(const IconFiles&) = delete;
    IconFiles& operator=(const IconFiles&) = delete;

    /// The file of a badge, which is written when it is first asked for. Throws hosting::Error.
    const std::wstring& PathOf(const Badge& badge);

private:
    int size_;
    std::filesystem::path folder_;
    std::map<std::wstring, std::wstring> paths_;
};

}  // namespace explorer
