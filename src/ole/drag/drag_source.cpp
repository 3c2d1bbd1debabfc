#include "ole/drag/drag_source.h"

#include <array>
#include <cstring>

#include "ole/drag/ole_services.h"
#include "ole/enumerator.h"
#include "ole/error.h"
#include "ole/ref.h"
#include "ole/unknown.h"

namespace ole {

namespace {

constexpr std::array<FORMATETC, 1> formatsOffered = {{
    {CF_UNICODETEXT, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL},
}};

struct Formats {
    using Element = FORMATETC;
    std::size_t Size() const { return formatsOffered.size(); }
    FORMATETC Give(std::size_t at) const { return formatsOffered[at]; }
    static void Drop(FORMATETC&) {}
};

class TextData final : public Unknown<IDataObject> {
public:
    explicit TextData(std::wstring text) : text_(std::move(text)) {}

    STDMETHODIMP GetData(FORMATETC* format, STGMEDIUM* medium) override {
        if (medium == nullptr) return E_POINTER;
        *medium = {};
        const HRESULT known = QueryGetData(format);
        if (known != S_OK) return known;
        const std::size_t size = (text_.size() + 1) * sizeof(wchar_t);
        const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
        if (memory == nullptr) return E_OUTOFMEMORY;
        std::memcpy(GlobalLock(memory), text_.c_str(), size);
        GlobalUnlock(memory);
        medium->tymed = TYMED_HGLOBAL;
        medium->hGlobal = memory;
        return S_OK;
    }
    STDMETHODIMP GetDataHere(FORMATETC*, STGMEDIUM*) override { return DV_E_FORMATETC; }
    STDMETHODIMP QueryGetData(FORMATETC* format) override {
        if (format == nullptr) return E_POINTER;
        if (format->cfFormat != CF_UNICODETEXT) return DV_E_FORMATETC;
        if (format->dwAspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
        return (format->tymed & TYMED_HGLOBAL) != 0 ? S_OK : DV_E_TYMED;
    }
    STDMETHODIMP GetCanonicalFormatEtc(FORMATETC* format, FORMATETC* canonical) override {
        if (format == nullptr || canonical == nullptr) return E_POINTER;
        *canonical = *format;
        canonical->ptd = nullptr;
        return DATA_S_SAMEFORMATETC;
    }
    STDMETHODIMP SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) override {
        if (formats == nullptr) return E_POINTER;
        *formats = nullptr;
        if (direction != DATADIR_GET) return E_NOTIMPL;
        return Guard({}, IID_IDataObject, [&] {
            *formats = Make<Enumerator<IEnumFORMATETC, Formats>>(Formats{}).Detach();
        });
    }
    STDMETHODIMP DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override {
        return OLE_E_ADVISENOTSUPPORTED;
    }
    STDMETHODIMP DUnadvise(DWORD) override { return OLE_E_ADVISENOTSUPPORTED; }
    STDMETHODIMP EnumDAdvise(IEnumSTATDATA** sinks) override {
        if (sinks != nullptr) *sinks = nullptr;
        return OLE_E_ADVISENOTSUPPORTED;
    }

private:
    std::wstring text_;
};

class Source final : public Unknown<IDropSource> {
public:
    explicit Source(const DragFeedback& feedback) : feedback_(feedback) {}

    STDMETHODIMP QueryContinueDrag(BOOL escaped, DWORD keys) override {
        if (escaped) return DRAGDROP_S_CANCEL;
        return (keys & (MK_LBUTTON | MK_RBUTTON)) == 0 ? DRAGDROP_S_DROP : S_OK;
    }
    STDMETHODIMP GiveFeedback(DWORD effect) override {
        bool systemCursors = true;
        try {
            if (feedback_) feedback_(effect, systemCursors);
        } catch (...) {
            // The drag goes on: nobody called who could be told.
        }
        return systemCursors ? DRAGDROP_S_USEDEFAULTCURSORS : S_OK;
    }

private:
    DragFeedback feedback_;
};

}  // namespace

DWORD DragText(const std::wstring& text, DWORD allowedEffects, const DragFeedback& feedback) {
    const OleServices services;
    const auto data = Make<TextData>(text);
    const auto source = Make<Source>(feedback);
    DWORD effect = DROPEFFECT_NONE;
    const HRESULT ended = DoDragDrop(data.Get(), source.Get(), allowedEffects, &effect);
    return ended == DRAGDROP_S_DROP ? effect : DWORD{DROPEFFECT_NONE};
}

}  // namespace ole
