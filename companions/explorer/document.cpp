#include "explorer/document.h"

#include "explorer/automation.h"

#include <algorithm>
#include <filesystem>

namespace explorer {

namespace {

constexpr wchar_t inMemory[] = L":memory:";

std::wstring FileName(const std::wstring& path) {
    return std::filesystem::path(path).filename().wstring();
}

/// The texts of an array of variants or strings.
std::vector<std::wstring> Texts(const _variant_t& array) {
    std::vector<std::wstring> texts;
    if (!(array.vt & VT_ARRAY) || !array.parray || SafeArrayGetDim(array.parray) != 1) return texts;
    LONG first = 0, last = -1;
    hosting::Check(SafeArrayGetLBound(array.parray, 1, &first), L"reading an array");
    hosting::Check(SafeArrayGetUBound(array.parray, 1, &last), L"reading an array");
    const VARTYPE type = array.vt & VT_TYPEMASK;
    for (LONG index = first; index <= last; ++index) {
        _variant_t element;
        void* const place =
            type == VT_VARIANT ? static_cast<void*>(&element) : static_cast<void*>(&element.byref);
        hosting::Check(SafeArrayGetElement(array.parray, &index, place), L"reading an array");
        if (type != VT_VARIANT) element.vt = type;
        texts.push_back(TextOf(element));
    }
    return texts;
}

/// An array of variants, as scripts make them.
_variant_t ArrayOf(const std::vector<std::wstring>& texts) {
    _variant_t array;
    array.parray = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(texts.size()));
    if (!array.parray) throw hosting::Error(E_OUTOFMEMORY, L"There is no memory for an array.");
    array.vt = VT_ARRAY | VT_VARIANT;
    for (LONG index = 0; index < static_cast<LONG>(texts.size()); ++index) {
        _variant_t text(texts[static_cast<std::size_t>(index)].c_str());
        hosting::Check(SafeArrayPutElement(array.parray, &index, &text), L"filling an array");
    }
    return array;
}

}  // namespace

Document::Document() : repository_(hosting::LateBound::Create(L"OrvaneRepository.Repository")) {}

void Document::New() {
    repository_.Call(L"New", inMemory);
    imported_.clear();
}

void Document::Open(const std::wstring& path) {
    repository_.Call(L"Open", path.c_str());
    imported_.clear();
}

std::vector<std::wstring> Document::Import(const std::vector<std::wstring>& paths) {
    if (paths.size() == 1)
        repository_.Call(L"Import", paths.front().c_str());
    else
        repository_.Call(L"Import", ArrayOf(paths));
    for (const auto& path : paths) {
        const std::wstring name = FileName(path);
        if (std::find(imported_.begin(), imported_.end(), name) == imported_.end())
            imported_.push_back(name);
    }
    return Texts(repository_.Get(L"ImportMessages"));
}

void Document::SaveAs(const std::wstring& path) {
    repository_.Call(L"SaveAs", path.c_str());
}

bool Document::HasFile() const {
    const std::wstring path = TextOf(repository_.Get(L"Path"));
    return !path.empty() && path != inMemory;
}

std::wstring Document::Description() const {
    if (HasFile()) return TextOf(repository_.Get(L"Path"));
    std::wstring text = L"In memory";
    const wchar_t* separator = L": ";
    for (const auto& name : imported_) {
        text += separator + name;
        separator = L", ";
    }
    return text;
}

}  // namespace explorer
