#include "node_list.h"

#include <algorithm>
#include <array>
#include <cwchar>
#include <memory>
#include <unordered_map>

namespace bench {

namespace {

using Nodes = std::vector<hosting::Ref<Node>>;

class NodeEnumerator final : public hosting::ComClass<IEnumVARIANT> {
public:
    explicit NodeEnumerator(std::shared_ptr<const Nodes> nodes) : nodes_(std::move(nodes)) {}

    STDMETHODIMP Next(ULONG count, VARIANT* elements, ULONG* fetched) override {
        ULONG given = 0;
        for (; given < count && next_ < nodes_->size(); ++given, ++next_) {
            V_VT(&elements[given]) = VT_DISPATCH;
            V_DISPATCH(&elements[given]) = hosting::Ref<IDispatch>((*nodes_)[next_]).Detach();
        }
        if (fetched != nullptr) *fetched = given;
        return given == count ? S_OK : S_FALSE;
    }
    STDMETHODIMP Skip(ULONG) override { return E_NOTIMPL; }
    STDMETHODIMP Reset() override {
        next_ = 0;
        return S_OK;
    }
    STDMETHODIMP Clone(IEnumVARIANT**) override { return E_NOTIMPL; }

private:
    std::shared_ptr<const Nodes> nodes_;
    std::size_t next_ = 0;
};

bool IsProperty(const wchar_t* asked) {
    return _wcsicmp(asked, L"Name") == 0 || (asked[0] >= L'A' && asked[0] <= L'D' && asked[1] == 0);
}

HRESULT AnswerText(const std::wstring& text, VARIANT& result) {
    V_VT(&result) = VT_BSTR;
    V_BSTR(&result) = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    return S_OK;
}

}  // namespace

class NodeCollection final : public LateBoundObject {
public:
    explicit NodeCollection(std::size_t count) {
        auto nodes = std::make_shared<Nodes>();
        for (std::size_t i = 0; i < count; ++i) {
            // Every number below 10,000,000 once, for the factor shares no divisor with it.
            wchar_t called[16] = {};
            swprintf(called, std::size(called), L"Node %07u",
                     static_cast<unsigned>(i * 7919003ull % 10000000ull));
            nodes->push_back(hosting::Make<Node>(called));
            byIdentifier_.emplace(called, i);
        }
        nodes_ = std::move(nodes);
    }

    hosting::Ref<IDispatch> At(std::size_t position) const { return (*nodes_)[position]; }

private:
    HRESULT Answer(DISPID id, const DISPPARAMS& parameters, VARIANT& result) override {
        if (id == DISPID_NEWENUM) {
            V_VT(&result) = VT_UNKNOWN;
            V_UNKNOWN(&result) = hosting::Make<NodeEnumerator>(nodes_).Detach();
            return S_OK;
        }
        if (id != DISPID_VALUE) return DISP_E_MEMBERNOTFOUND;
        if (parameters.cArgs != 1 || V_VT(&parameters.rgvarg[0]) != VT_BSTR) return E_INVALIDARG;
        const auto found = byIdentifier_.find(V_BSTR(&parameters.rgvarg[0]));
        if (found == byIdentifier_.end()) return DISP_E_BADINDEX;
        V_VT(&result) = VT_DISPATCH;
        V_DISPATCH(&result) = At(found->second).Detach();
        return S_OK;
    }

    std::shared_ptr<const Nodes> nodes_;
    std::unordered_map<std::wstring, std::size_t> byIdentifier_;
};

HRESULT LateBoundObject::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return S_OK;
}

HRESULT LateBoundObject::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    *info = nullptr;
    return DISP_E_BADINDEX;
}

HRESULT LateBoundObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    constexpr std::array<std::pair<const wchar_t*, DISPID>, 5> known = {{
        {L"Extension", extension},
        {L"GetProperty", getProperty},
        {L"name", name},
        {L"identifier", identifier},
        {L"MetaNodes", metaNodes},
    }};
    if (count != 1) return DISP_E_UNKNOWNNAME;
    const auto found = std::find_if(known.begin(), known.end(), [&](const auto& each) {
        return _wcsicmp(each.first, names[0]) == 0;
    });
    if (found == known.end()) return DISP_E_UNKNOWNNAME;
    ids[0] = found->second;
    return S_OK;
}

HRESULT LateBoundObject::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters,
                                VARIANT* result, EXCEPINFO*, UINT*) {
    VARIANT answer = {};
    const HRESULT answered = Answer(id, *parameters, result != nullptr ? *result : answer);
    if (result == nullptr) VariantClear(&answer);
    return answered;
}

HRESULT Node::Answer(DISPID id, const DISPPARAMS& parameters, VARIANT& result) {
    switch (id) {
        case getProperty:
            if (parameters.cArgs != 1 || V_VT(&parameters.rgvarg[0]) != VT_BSTR ||
                !IsProperty(V_BSTR(&parameters.rgvarg[0]))) {
                return E_INVALIDARG;
            }
            [[fallthrough]];
        case name:
        case identifier:
            return AnswerText(name_, result);
        default:
            return DISP_E_MEMBERNOTFOUND;
    }
}

MetaNode::MetaNode(std::size_t count) : nodes_(hosting::Make<NodeCollection>(count)) {}

HRESULT MetaNode::Answer(DISPID id, const DISPPARAMS&, VARIANT& result) {
    if (id == name) return AnswerText(L"Nodes", result);
    if (id != extension) return DISP_E_MEMBERNOTFOUND;
    V_VT(&result) = VT_DISPATCH;
    V_DISPATCH(&result) = hosting::Ref<IDispatch>(nodes_).Detach();
    return S_OK;
}

HRESULT Root::Answer(DISPID id, const DISPPARAMS&, VARIANT& result) {
    if (id != metaNodes) return DISP_E_MEMBERNOTFOUND;
    V_VT(&result) = VT_DISPATCH;
    V_DISPATCH(&result) = hosting::Ref<IDispatch>(metaNode_).Detach();
    return S_OK;
}

MetaNode::~MetaNode() = default;

hosting::Ref<IDispatch> MetaNode::At(std::size_t position) const {
    return nodes_->At(position);
}

}  // namespace bench
