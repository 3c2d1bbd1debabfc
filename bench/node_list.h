#pragma once

#include <string>
#include <vector>

#include "hosting/com_class.h"
#include "hosting/ref.h"

namespace bench {

/// The cheapest late-bound object there can be: without type information, with a few names.
class LateBoundObject : public hosting::ComClass<IDispatch> {
public:
    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                        EXCEPINFO*, UINT*) override;

protected:
    /// What a member gives; the caller owns it.
    virtual HRESULT Answer(DISPID id, const DISPPARAMS& parameters, VARIANT& result) = 0;

    enum Member : DISPID { extension = 1, getProperty, name, identifier, metaNodes };
};

/// A node whose properties "Name" and "A" to "D" are its name, and so is its identifier.
class Node final : public LateBoundObject {
public:
    explicit Node(std::wstring called) : name_(std::move(called)) {}

    const std::wstring& Called() const { return name_; }

private:
    HRESULT Answer(DISPID id, const DISPPARAMS& parameters, VARIANT& result) override;

    std::wstring name_;
};

/// A meta node with `count` nodes in its extension, which also finds them by their identifiers.
/// Their names have twelve characters and come in no order.
class MetaNode final : public LateBoundObject {
public:
    explicit MetaNode(std::size_t count);

    /// The node made as number `position`, from 0.
    hosting::Ref<IDispatch> At(std::size_t position) const;

    ~MetaNode() override;

private:
    HRESULT Answer(DISPID id, const DISPPARAMS& parameters, VARIANT& result) override;

    hosting::Ref<class NodeCollection> nodes_;
};

/// A repository that has one meta node, whatever it is asked for.
class Root final : public LateBoundObject {
public:
    explicit Root(hosting::Ref<IDispatch> metaNode) : metaNode_(std::move(metaNode)) {}

private:
    HRESULT Answer(DISPID id, const DISPPARAMS& parameters, VARIANT& result) override;

    hosting::Ref<IDispatch> metaNode_;
};

}  // namespace bench
