#pragma once

#include <windows.h>

#include <commctrl.h>
#include <ocidl.h>

#include <string>

#include "ole/owned.h"
#include "ole/ref.h"

namespace widgets {

using OwnedIcon = ole::Owned<HICON, &DestroyIcon>;

/// A picture: a bitmap, an icon, a JPEG or GIF image, a metafile; the platform's picture object.
class Picture {
public:
    /// Of a picture object. Errors: 481 for anything else, Nothing included.
    explicit Picture(IUnknown* object);

    /// Of a file. An icon file with several sizes gives the one nearest to `wanted` pixels. Errors:
    /// 53, 76, 70 and 75 for a file that cannot be read, 481 for one that is no picture.
    static Picture FromFile(const std::wstring& path, int wanted);

    /// Errors: 481 for no icon.
    static Picture FromIcon(OwnedIcon icon);

    /// The picture object.
    IPicture* Get() const { return picture_.Get(); }

    /// Its own in pixels; that of a metafile at the system's resolution. At most 256 by 256.
    SIZE Size() const;

    /// Adds it to an image list, in the size of that list's images. Errors: 481.
    void AddTo(HIMAGELIST list) const;

private:
    explicit Picture(ole::Ref<IPicture> picture) : picture_(std::move(picture)) {}

    ole::Ref<IPicture> picture_;
};

}  // namespace widgets
