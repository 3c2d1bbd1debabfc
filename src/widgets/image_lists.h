#pragma once

#include <windows.h>

#include <commctrl.h>
#include <ocidl.h>

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "widgets/picture.h"

namespace widgets {

/// The small and the large images of a control, each known by a key and a position from 0. The
/// first picture of a list decides how large its images are; the others are drawn in that size.
class ImageLists {
public:
    ImageLists() = default;
    ~ImageLists() { Clear(); }
    ImageLists(const ImageLists&) = delete;
    ImageLists& operator=(const ImageLists&) = delete;

    /// Adds an image to both lists, or to none. Errors: 35602 for a key in use, 481 for a picture
    /// that cannot be drawn.
    void Add(std::wstring_view key, const Picture& small, const Picture& large, int dpi);
    void Clear();

    int Count() const { return static_cast<int>(keys_.size()); }
    /// The position of a key. Errors: 35601.
    int Find(std::wstring_view key) const;
    const std::wstring& Key(int position) const {
        return keys_[static_cast<std::size_t>(position)];
    }

    HIMAGELIST Small() const { return small_; }
    HIMAGELIST Large() const { return large_; }

private:
    HIMAGELIST small_ = nullptr;
    HIMAGELIST large_ = nullptr;
    std::vector<std::wstring> keys_;
    std::unordered_map<std::wstring, int> positions_;
};

}  // namespace widgets
