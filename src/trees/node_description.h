#pragma once

#include <OrvaneControls.h>

#include "ole/automation_collection.h"
#include "ole/record.h"

namespace trees {

/// `OrvaneControls.NodeDescription`: what a tree view shows at a place and below it.
class NodeDescription final : public ole::Record<_NodeDescription, CLSID_NodeDescription> {
public:
    STDMETHODIMP get_Caption(BSTR* text) override { return Read(caption, text); }
    STDMETHODIMP put_Caption(BSTR* text) override { return Write(caption, text); }
    STDMETHODIMP get_objectType(BSTR* text) override { return Read(objectType, text); }
    STDMETHODIMP put_objectType(BSTR* text) override { return Write(objectType, text); }
    STDMETHODIMP get_typ(BSTR* text) override { return Read(typ, text); }
    STDMETHODIMP put_typ(BSTR* text) override { return Write(typ, text); }
    STDMETHODIMP get_picture(BSTR* text) override { return Read(picture, text); }
    STDMETHODIMP put_picture(BSTR* text) override { return Write(picture, text); }
    STDMETHODIMP get_key(BSTR* text) override { return Read(key, text); }
    STDMETHODIMP put_key(BSTR* text) override { return Write(key, text); }
    STDMETHODIMP get_Children(_Collection** objects) override {
        return Run([&] { children_.CopyTo(objects); });
    }
    STDMETHODIMP AddChild(BSTR* childTyp, BSTR* childObjectType, BSTR* childCaption,
                          BSTR* childPicture, BSTR* childKey, _NodeDescription** child) override {
        return Run([&] {
            const auto made = ole::Make<NodeDescription>();
            made->typ = ole::ToBstr(*childTyp);
            made->objectType = ole::ToBstr(*childObjectType);
            made->caption = ole::ToBstr(*childCaption);
            made->picture = ole::ToBstr(*childPicture);
            made->key = ole::ToBstr(*childKey);
            children_->Values().Add(_variant_t(static_cast<IDispatch*>(made.Get())),
                                    ole::ToWide(made->key));
            ole::Give(made, child);
        });
    }

    ole::KeyedValues& Children() { return children_->Values(); }

    _bstr_t caption = L"";
    _bstr_t objectType = L"";
    _bstr_t typ = L"";
    _bstr_t picture = L"";
    _bstr_t key = L"";

private:
    using Collection = ole::AutomationCollection<_Collection, CLSID_Collection>;
    ole::Ref<Collection> children_ = ole::Make<Collection>();
};

}  // namespace trees
