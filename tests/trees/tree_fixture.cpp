#include "trees/tree_fixture.h"

namespace support {

void SelectPlaceholder(const TreeWindow& window, std::vector<std::string> above) {
    TVITEMW open = {};
    open.mask = TVIF_STATE | TVIF_HANDLE;
    open.hItem = window.At(above);
    open.state = open.stateMask = TVIS_EXPANDED;
    SendMessageW(window.Handle(), TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&open));
    above.emplace_back("Loading");
    window.Select(window.At(above));
}

std::vector<std::string> TreeTest::Taken(const std::string& name) const {
    std::vector<std::string> found;
    for (std::string& entry : Take()) {
        if (entry.find(name + '(') != std::string::npos || entry.ends_with('.' + name)) {
            found.push_back(std::move(entry));
        }
    }
    return found;
}

TreeViewTest::TreeViewTest() {
    EXPECT_TRUE(tree.Call("Create"));
    tree.PutRef("Repository", model.Root());
    events.Connect(tree.Get());
    model.Log().Clear();
}

TreeViewTest::~TreeViewTest() {
    events.Disconnect();
    if (tree) tree.Call("Destroy");
}

LateBound TreeViewTest::Describe(const LateBound& parent, const char* typ, const char* objectType,
                                 const char* caption, const char* picture) const {
    const LateBound siblings(parent.Get("Children").value);
    return LateBound(parent
                         .Call("AddChild", typ, objectType, caption, picture,
                               "key " + siblings.Get("Count").value.Text())
                         .value);
}

HierarchyTest::HierarchyTest() {
    EXPECT_TRUE(tree.Call("Create"));
    events.Connect(tree.Get());
    events.On("AddingNode").Run([this](const Arguments& arguments) { Allow(arguments); });
    model.Log().Clear();
}

HierarchyTest::~HierarchyTest() {
    events.Disconnect();
    if (!tree) return;
    tree.Call("Clear");
    tree.Call("Destroy");
}

void HierarchyTest::Allow(const Arguments& arguments) {
    const LateBound proposal(arguments.Object(0).Get());
    proposal.Put("Allowed", true);
    const auto object = proposal.Get("repObject").Object();
    const auto labelled = Query<Labelled>(object.Get());
    if (auto* const element = dynamic_cast<FakeElement*>(labelled.Get())) {
        proposal.Put("Caption", element->name);
    }
}

}  // namespace support
