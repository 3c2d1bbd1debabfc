#include "widgets/image_lists.h"

#include <utility>

#include "ole/error.h"
#include "ole/theme.h"

namespace widgets {

namespace {

HIMAGELIST MakeList(const Picture& first, int dpi) {
    const SIZE size = first.Size(dpi);
    const ole::ThemedScope themed;
    const HIMAGELIST list = ImageList_Create(size.cx, size.cy, ILC_COLOR32 | ILC_MASK, 4, 4);
    if (list == nullptr) ole::Check(E_OUTOFMEMORY);
    return list;
}

void Drop(HIMAGELIST list) {
    if (list != nullptr) ImageList_Destroy(list);
}

}  // namespace

void ImageLists::Add(std::wstring_view key, const Picture& small, const Picture& large, int dpi) {
    if (!key.empty() && positions_.contains(std::wstring(key))) {
        ole::Throw(ole::Number::keyNotUnique);
    }
    if (small_ == nullptr) small_ = MakeList(small, dpi);
    if (large_ == nullptr) large_ = MakeList(large, dpi);
    const int position = Count();
    small.AddTo(small_);
    try {
        large.AddTo(large_);
    } catch (...) {
        ImageList_Remove(small_, position);
        throw;
    }
    keys_.emplace_back(key);
    if (!key.empty()) positions_.emplace(key, position);
}

void ImageLists::Clear() {
    Drop(std::exchange(small_, nullptr));
    Drop(std::exchange(large_, nullptr));
    keys_.clear();
    positions_.clear();
}

int ImageLists::Find(std::wstring_view key) const {
    const auto found = positions_.find(std::wstring(key));
    if (found == positions_.end()) ole::Throw(ole::Number::elementNotFound);
    return found->second;
}

}  // namespace widgets
