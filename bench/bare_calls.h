#pragma once

#include <comdef.h>
#include <oaidl.h>

#include <array>
#include <utility>
#include <vector>

#include "hosting/ref.h"

namespace bench {

/// One late-bound read, as little as it takes.
_variant_t Read(IDispatch& object, DISPID id, VARIANT* argument = nullptr);
_variant_t Read(IDispatch& object, const wchar_t* member, VARIANT* argument = nullptr);

/// The text that a property of a node has.
_variant_t ReadText(IDispatch& node, VARIANT property);

/// Texts, kept without copies: the platform's variants copy where others move.
class Texts {
public:
    void Keep(_variant_t& text) {
        texts_.emplace_back();
        std::swap<VARIANT>(texts_.back(), text);
    }
    const std::vector<_variant_t>& All() const { return texts_; }
    void Clear() { texts_ = {}; }

private:
    std::vector<_variant_t> texts_;
};

/// A text to pass again and again.
class Name {
public:
    explicit Name(const wchar_t* text) : text_(text) {}

    VARIANT Argument() const {
        VARIANT argument = {};
        V_VT(&argument) = VT_BSTR;
        V_BSTR(&argument) = const_cast<BSTR>(static_cast<const wchar_t*>(text_));
        return argument;
    }

private:
    _bstr_t text_;
};

/// Runs `visit(Ref<IDispatch>)` for each node of a meta node, fetched in blocks.
template <class Visit>
void EachElement(IDispatch& metaNode, Visit&& visit) {
    constexpr ULONG blockSize = 32;
    const _variant_t collection = Read(metaNode, L"Extension");
    const _variant_t enumerator = Read(*V_DISPATCH(&collection), DISPID_NEWENUM);
    const auto elements = hosting::Query<IEnumVARIANT>(V_UNKNOWN(&enumerator));
    std::array<VARIANT, blockSize> block = {};
    ULONG fetched = 0;
    do {
        _com_util::CheckError(elements->Next(blockSize, block.data(), &fetched));
        for (ULONG i = 0; i < fetched; ++i) visit(hosting::Adopt(V_DISPATCH(&block[i])));
    } while (fetched == blockSize);
}

}  // namespace bench
