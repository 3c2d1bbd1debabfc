#pragma once

#include <OrvaneControls.h>

#include <utility>

#include "ole/record.h"
#include "trees/identity_index.h"
#include "trees/record_key.h"

namespace trees {

class HierarchyInfos;

/// `OrvaneControls.HTNodeInfo`: what a node of a hierarchy tree stands for.
class HTNodeInfo final : public ole::Record<_HTNodeInfo, CLSID_HTNodeInfo> {
public:
    STDMETHODIMP get_NodeType(::HTNodeType* kind) override { return Read(nodeType, kind); }
    STDMETHODIMP put_NodeType(::HTNodeType* kind) override { return Write(nodeType, kind); }
    STDMETHODIMP get_key(BSTR* text) override {
        return Run([&] { *text = ole::ToBstr(key.Text()).Detach(); });
    }
    STDMETHODIMP put_key(BSTR* text) override {
        return Run([&] { key.Write(ole::ToBstr(*text)); });
    }
    STDMETHODIMP get_repObject(IDispatch** object) override { return Read(repObject_, object); }
    STDMETHODIMP put_repObject(IDispatch** object) override {
        return Run([&] { SetObject(*object); });
    }
    STDMETHODIMP putref_repObject(IDispatch** object) override { return put_repObject(object); }
    STDMETHODIMP get_repLink(IDispatch** object) override { return Read(repLink_, object); }
    STDMETHODIMP put_repLink(IDispatch** object) override {
        return Run([&] { SetLink(*object); });
    }
    STDMETHODIMP putref_repLink(IDispatch** object) override { return put_repLink(object); }

    const ole::Object& RepObject() const { return repObject_; }
    const ole::Object& RepLink() const { return repLink_; }
    void SetObject(ole::Object object);
    void SetLink(ole::Object link);

    long nodeType = HTMetaNodeFolder;
    RecordKey key;

private:
    friend class HierarchyInfos;

    ole::Object repObject_;
    ole::Object repLink_;
    /// Whose indices follow what is written here; null while nobody's do.
    HierarchyInfos* home_ = nullptr;
    IdentityIndex::Entry asObject_;
    IdentityIndex::Entry asLink_;
};

/// `OrvaneControls.HTNewNodeInfo`: a node that is about to be added.
class HTNewNodeInfo final : public ole::Record<_HTNewNodeInfo, CLSID_HTNewNodeInfo> {
public:
    STDMETHODIMP get_Allowed(VARIANT_BOOL* flag) override { return Read(allowed, flag); }
    STDMETHODIMP put_Allowed(VARIANT_BOOL* flag) override { return Write(allowed, flag); }
    STDMETHODIMP get_Image(BSTR* text) override { return Read(image, text); }
    STDMETHODIMP put_Image(BSTR* text) override { return Write(image, text); }
    STDMETHODIMP get_Caption(BSTR* text) override { return Read(caption, text); }
    STDMETHODIMP put_Caption(BSTR* text) override { return Write(caption, text); }
    STDMETHODIMP get_repObject(IDispatch** object) override { return Read(repObject, object); }
    STDMETHODIMP put_repObject(IDispatch** object) override { return Write(repObject, object); }
    STDMETHODIMP putref_repObject(IDispatch** object) override { return Write(repObject, object); }
    STDMETHODIMP get_repLink(IDispatch** object) override { return Read(repLink, object); }
    STDMETHODIMP put_repLink(IDispatch** object) override { return Write(repLink, object); }
    STDMETHODIMP putref_repLink(IDispatch** object) override { return Write(repLink, object); }
    STDMETHODIMP get_NodeType(::HTNodeType* kind) override { return Read(nodeType, kind); }
    STDMETHODIMP put_NodeType(::HTNodeType* kind) override { return Write(nodeType, kind); }

    bool allowed = false;
    _bstr_t image = L"";
    _bstr_t caption = L"";
    ole::Object repObject;
    ole::Object repLink;
    long nodeType = HTMetaNodeFolder;
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
