#pragma once

#include "trees/described_tree.h"
#include "trees/tree_control.h"

namespace trees {

/// `OrvaneControls.TreeView`: a tree of repository objects in the shape of a description. Its
/// members are documented in the type library.
class TreeView final : public TreeControl<_TreeView, CLSID_TreeView, DIID___TreeView, TreePane> {
public:
    TreeView();
    ~TreeView() override;

    STDMETHODIMP get_Repository(IDispatch** object) override;
    STDMETHODIMP put_Repository(IDispatch** object) override;
    STDMETHODIMP putref_Repository(IDispatch** object) override;
    STDMETHODIMP Create(VARIANT* result) override;
    STDMETHODIMP Destroy(VARIANT* result) override;
    STDMETHODIMP ParentNode(BSTR* key, _NodeInfo** info) override;
    STDMETHODIMP get_selection(_NodeInfo** info) override;
    STDMETHODIMP put_selection(IDispatch** object) override;
    STDMETHODIMP putref_selection(IDispatch** object) override;
    STDMETHODIMP SetBackGroundColor(long* Color, VARIANT* result) override;
    STDMETHODIMP AddIcon(BSTR* name, BSTR* iconPath, VARIANT* result) override;
    STDMETHODIMP GetRootNodeDescription(_NodeDescription** description) override;

private:
    bool IsUnfilled(const widgets::TreeNode& node) const override;
    void FillNode(const widgets::NodePtr& node) override;
    ole::Object InfoForEvent(const widgets::NodePtr& node) override;

    DescribedTree described_;
};

}  // namespace trees
