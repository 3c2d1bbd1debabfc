#include <OrvaneControls.h>
#include <oleidl.h>

#include "library/resources.h"
#include "lists/combo.h"
#include "lists/descriptors.h"
#include "lists/list_view.h"
#include "ole/server.h"
#include "trees/hierarchy_tree_view.h"
#include "trees/tree_view.h"

namespace {

/// What a container may do with a windowed control that is active whenever it is visible.
constexpr DWORD controlStatus = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE |
                                OLEMISC_INSIDEOUT | OLEMISC_ACTIVATEWHENVISIBLE |
                                OLEMISC_SETCLIENTSITEFIRST;

constexpr ole::Class classes[] = {
    {CLSID_Combo, ole::MakeClass<lists::Combo>, comboToolboxBitmap, controlStatus},
    {CLSID_IconCondition, ole::MakeClass<lists::IconCondition>},
    {CLSID_ListCallback, ole::MakeClass<lists::ListCallback>},
    {CLSID_ListView, ole::MakeClass<lists::ListView>, listViewToolboxBitmap, controlStatus},
    {CLSID_NodeDescription, ole::MakeClass<trees::NodeDescription>},
    {CLSID_NodeInfo, ole::MakeClass<trees::NodeInfo>},
    {CLSID_TreeView, ole::MakeClass<trees::TreeView>, treeViewToolboxBitmap, controlStatus},
    {CLSID_HTNodeInfo, ole::MakeClass<trees::HTNodeInfo>},
    {CLSID_HTNewNodeInfo, ole::MakeClass<trees::HTNewNodeInfo>},
    {CLSID_HTIcon, ole::MakeClass<trees::HTIcon>},
    {CLSID_HierarchyTreeView, ole::MakeClass<trees::HierarchyTreeView>,
     hierarchyTreeViewToolboxBitmap, controlStatus},
};

}  // namespace

const ole::ServerDescription ole::server = {LIBID_OrvaneControls, L"OrvaneControls.X", classes};
