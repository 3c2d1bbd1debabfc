#pragma once

#include <optional>

#include "ole/collection.h"
#include "trees/hierarchy_tree.h"
#include "trees/tree_control.h"

namespace trees {

/// `OrvaneControls.HierarchyTreeView`: a tree of repository objects that follows their links. Its
/// members are documented in the type library.
class HierarchyTreeView final : public TreeControl<_HierarchyTreeView, CLSID_HierarchyTreeView,
                                                   DIID___HierarchyTreeView, HierarchyPane> {
public:
    HierarchyTreeView();
    ~HierarchyTreeView() override;

    STDMETHODIMP Create(VARIANT* result) override;
    STDMETHODIMP Init(VARIANT* result) override;
    STDMETHODIMP Deinit(VARIANT* result) override;
    STDMETHODIMP Destroy(VARIANT* result) override;
    STDMETHODIMP AddIcon(BSTR* name, BSTR* iconPath, _HTIcon** icon) override;
    STDMETHODIMP GetIcon(BSTR* name, IDispatch** picture) override;
    STDMETHODIMP get_withFolders(VARIANT_BOOL* setting) override;
    STDMETHODIMP put_withFolders(VARIANT_BOOL* setting) override;
    STDMETHODIMP AddNodeInfo(IDispatch** repObject, _HTNewNodeInfo** nni, IDispatch** repLink,
                             _HTNodeInfo** info) override;
    STDMETHODIMP AddRootNode(IDispatch** repObject, VARIANT* root, VARIANT* result) override;
    STDMETHODIMP AddExtension(IDispatch** MO, VARIANT* result) override;
    STDMETHODIMP AddSubNode(IDispatch** repObject, VARIANT* parent, IDispatch** repLink,
                            VARIANT* result) override;
    STDMETHODIMP AddSubNodeToCurrent(IDispatch** repObject, IDispatch** repLink,
                                     VARIANT* result) override;
    STDMETHODIMP AddNode(_HTNodeInfo** parent, IDispatch** link, VARIANT* result) override;
    STDMETHODIMP Expand(IDispatch** repObject, VARIANT* result) override;
    STDMETHODIMP GetNodeInfo(BSTR* key, _HTNodeInfo** info) override;
    STDMETHODIMP GetInfoFromObject(IDispatch** repObject, _HTNodeInfo** info) override;
    STDMETHODIMP ParentNode(BSTR* key, _HTNodeInfo** info) override;
    STDMETHODIMP Update(_HTNodeInfo** ni, BSTR* Caption, BSTR* Image, VARIANT* result) override;
    STDMETHODIMP get_Checkboxes(VARIANT_BOOL* setting) override;
    STDMETHODIMP put_Checkboxes(VARIANT_BOOL* setting) override;
    STDMETHODIMP get_LabelEdit(VARIANT_BOOL* setting) override;
    STDMETHODIMP put_LabelEdit(VARIANT_BOOL* setting) override;
    STDMETHODIMP get_selection(IDispatch** object) override;
    STDMETHODIMP put_selection(IDispatch** object) override;
    STDMETHODIMP putref_selection(IDispatch** object) override;
    STDMETHODIMP get_SelectionInfo(_HTNodeInfo** info) override;
    STDMETHODIMP RemoveLink(IDispatch** link, VARIANT* result) override;

private:
    using TreeControl::AddNode;

    bool IsUnfilled(const widgets::TreeNode& node) const override;
    void FillNode(const widgets::NodePtr& node) override;
    ole::Object InfoForEvent(const widgets::NodePtr& node) override;

    widgets::NodePtr SelectedNode() override;
    void SelectNode(const widgets::NodePtr& node) override;
    void OpenNode(const widgets::NodePtr& node) override;
    void SetLook(widgets::TreeNode& node, std::wstring_view text, std::wstring_view image) override;
    void WhileRemoving(const std::function<void()>& work) override;
    void RaiseAdding(HTNewNodeInfo& proposal) override;
    void RaiseExpand(HTNodeInfo& info) override;
    void RaiseRemoved(HTNodeInfo& info) override;

    void RaiseOfInfo(DISPID event, IDispatch* info);
    ole::Ref<HTIcon> MakeIcon(const _bstr_t& name, const _bstr_t& path);
    bool RaiseBeforeEdit();
    bool RaiseAfterEdit(const widgets::NodePtr& node, std::wstring& text);

    HierarchyTree hierarchy_;
    /// The icons by name, none before `Create` and after `Destroy`.
    std::optional<ole::KeyedValues> icons_;
};

}  // namespace trees
