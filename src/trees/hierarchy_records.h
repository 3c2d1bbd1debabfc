#pragma once

#include <OrvaneControls.h>

#include <utility>

#include "ole/record.h"
#include "trees/identity_index.h"
#include "trees/record_key.h"

namespace trees {

class HierarchyInfos;

/// What a node of a hierarchy tree and the proposal for one say of it, on top of the record `Base`.
template <class Base>
class HierarchyRecord : public Base {
public:
    STDMETHODIMP get_NodeType(::HTNodeType* kind) override { return this->Read(nodeType, kind); }
    STDMETHODIMP put_NodeType(::HTNodeType* kind) override { return this->Write(nodeType, kind); }
    STDMETHODIMP get_repObject(IDispatch** object) override { return this->Read(object_, object); }
    STDMETHODIMP put_repObject(IDispatch** object) override {
        return this->Run([&] { SetObject(*object); });
    }
    STDMETHODIMP putref_repObject(IDispatch** object) override { return put_repObject(object); }
    STDMETHODIMP get_repLink(IDispatch** object) override { return this->Read(link_, object); }
    STDMETHODIMP put_repLink(IDispatch** object) override {
        return this->Run([&] { SetLink(*object); });
    }
    STDMETHODIMP putref_repLink(IDispatch** object) override { return put_repLink(object); }

    const ole::Object& RepObject() const { return object_; }
    const ole::Object& RepLink() const { return link_; }
    // What goes may call back: it finds the new one.

    void SetObject(ole::Object object) {
        std::swap(object_, object);
        OnObjectsChanged();
    }
    void SetLink(ole::Object link) {
        std::swap(link_, link);
        OnObjectsChanged();
    }

    long nodeType = HTMetaNodeFolder;

private:
    /// Another object or link was set, and the one before is still there.
    virtual void OnObjectsChanged() {}

    ole::Object object_;
    ole::Object link_;
};

/// `OrvaneControls.HTNodeInfo`: what a node of a hierarchy tree stands for.
class HTNodeInfo final : public HierarchyRecord<KeyedRecord<_HTNodeInfo, CLSID_HTNodeInfo>> {
private:
    friend class HierarchyInfos;

    void OnObjectsChanged() override;

    /// Whose indices follow what is written here; null while nobody's do.
    HierarchyInfos* home_ = nullptr;
    IdentityIndex::Entry asObject_;
    IdentityIndex::Entry asLink_;
};

/// `OrvaneControls.HTNewNodeInfo`: a node that is about to be added.
class HTNewNodeInfo final
    : public HierarchyRecord<ole::Record<_HTNewNodeInfo, CLSID_HTNewNodeInfo>> {
public:
    STDMETHODIMP get_Allowed(VARIANT_BOOL* flag) override { return Read(allowed, flag); }
    STDMETHODIMP put_Allowed(VARIANT_BOOL* flag) override { return Write(allowed, flag); }
    STDMETHODIMP get_Image(BSTR* text) override { return Read(image, text); }
    STDMETHODIMP put_Image(BSTR* text) override { return Write(image, text); }
    STDMETHODIMP get_Caption(BSTR* text) override { return Read(caption, text); }
    STDMETHODIMP put_Caption(BSTR* text) override { return Write(caption, text); }

    bool allowed = false;
    _bstr_t image = L"";
    _bstr_t caption = L"";
};

/// `OrvaneControls.HTIcon`: an icon that was added.
class HTIcon final : public ole::Record<_HTIcon, CLSID_HTIcon> {
public:
    STDMETHODIMP get_name(BSTR* text) override { return Read(name, text); }
    STDMETHODIMP put_name(BSTR* text) override { return Write(name, text); }
    STDMETHODIMP get_Path(BSTR* text) override { return Read(path, text); }
    STDMETHODIMP put_Path(BSTR* text) override { return Write(path, text); }

    _bstr_t name = L"";
    _bstr_t path = L"";
};

}  // namespace trees
