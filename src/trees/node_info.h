#pragma once

#include <utility>

#include "trees/node_description.h"
#include "trees/record_key.h"

namespace trees {

/// `OrvaneControls.NodeInfo`: what a node of a tree view stands for.
class NodeInfo final : public KeyedRecord<_NodeInfo, CLSID_NodeInfo> {
public:
    STDMETHODIMP get_NodeDescription(_NodeDescription** object) override {
        return Run([&] { ole::Give(description, object); });
    }
    STDMETHODIMP put_NodeDescription(_NodeDescription** object) override {
        return Run([&] {
            auto given = ole::OwnRecord<trees::NodeDescription>(*object);
            // What goes may call back: it finds the new one.
            std::swap(description, given);
        });
    }
    STDMETHODIMP putref_NodeDescription(_NodeDescription** object) override {
        return put_NodeDescription(object);
    }
    STDMETHODIMP get_repObject(IDispatch** object) override { return Read(repObject, object); }
    STDMETHODIMP put_repObject(IDispatch** object) override { return Write(repObject, object); }
    STDMETHODIMP putref_repObject(IDispatch** object) override { return Write(repObject, object); }

    ole::Ref<trees::NodeDescription> description;
    ole::Object repObject;
};

}  // namespace trees
