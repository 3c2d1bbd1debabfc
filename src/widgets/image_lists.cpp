#include "widgets/image_lists.h"

#include <utility>

#include "ole/error.h"

namespace widgets {

void ImageLists::AddTo(ImageList& list, const Picture& picture) {
    if (list != nullptr) {
        picture.AddTo(list.get());
        return;
    }
    ImageList made = MakeImageList(picture.Size(), ILC_COLOR32 | ILC_MASK);
    picture.AddTo(made.get());
    list = std::move(made);
}

void ImageLists::Add(std::wstring_view key, const Picture& small, const Picture& large) {
    CheckFree(key);
    const int position = Count();
    AddTo(small_, small);
    try {
        AddTo(large_, large);
    } catch (...) {
        if (position == 0)
            small_.reset();
        else
            ImageList_Remove(small_.get(), position);
        throw;
    }
    Remember(key);
}

void ImageLists::Add(std::wstring_view key, const Picture& small) {
    CheckFree(key);
    AddTo(small_, small);
    Remember(key);
}

void ImageLists::CheckFree(std::wstring_view key) const {
    if (!key.empty() && positions_.contains(std::wstring(key))) {
        ole::Throw(ole::Number::keyNotUnique);
    }
}

void ImageLists::Remember(std::wstring_view key) {
    const int position = Count();
    keys_.emplace_back(key);
    if (!key.empty()) positions_.emplace(key, position);
}

Picture ImageLists::PictureAt(int position) const {
    return Picture::FromIcon(OwnedIcon(ImageList_GetIcon(small_.get(), position, ILD_TRANSPARENT)));
}

void ImageLists::Clear() {
    small_.reset();
    large_.reset();
    keys_.clear();
    positions_.clear();
}

int ImageLists::Find(std::wstring_view key) const {
    const auto found = positions_.find(std::wstring(key));
    if (found == positions_.end()) ole::Throw(ole::Number::elementNotFound);
    return found->second;
}

}  // namespace widgets
