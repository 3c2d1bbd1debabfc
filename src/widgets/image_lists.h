#pragma once

#include <windows.h>

#include <commctrl.h>
#include <ocidl.h>

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "widgets/image_list.h"
#include "widgets/picture.h"

namespace widgets {

/// The small and the large images of a control, each known by a key and a position from 0. The
/// first picture of a list decides how large its images are; the others are drawn in that size.
class ImageLists {
public:
    ImageLists() = default;
    ImageLists(const ImageLists&) = delete;
    ImageLists& operator=(const ImageLists&) = delete;

    /// Adds an image to both lists, or to none. Errors: 35602 for a key in use, 481 for a picture
    /// that cannot be drawn.
    void Add(std::wstring_view key, const Picture& small, const Picture& large);
    /// Adds an image where only small ones are shown. Errors: the same.
    void Add(std::wstring_view key, const Picture& small);
    void Clear();

    int Count() const { return static_cast<int>(keys_.size()); }
    /// The position of a key. Errors: 35601.
    int Find(std::wstring_view key) const;
    /// As `Find`, but -1 for an empty key, which is no image.
    int FindOrNone(std::wstring_view key) const { return key.empty() ? -1 : Find(key); }
    const std::wstring& Key(int position) const {
        return keys_[static_cast<std::size_t>(position)];
    }

    /// A small image as a picture of its own.
    Picture PictureAt(int position) const;

    HIMAGELIST Small() const { return small_.get(); }
    HIMAGELIST Large() const { return large_.get(); }

private:
    /// Adds a picture to a list, which is made first where there is none yet.
    static void AddTo(ImageList& list, const Picture& picture);

    void CheckFree(std::wstring_view key) const;
    void Remember(std::wstring_view key);

    ImageList small_;
    ImageList large_;
    std::vector<std::wstring> keys_;
    std::unordered_map<std::wstring, int> positions_;
};

}  // namespace widgets
