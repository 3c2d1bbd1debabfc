#include <map>
#include <set>

#include "trees/tree_input_fixture.h"

namespace support {
namespace {

using testing::UnorderedElementsAre;

std::string NameOf(VARTYPE type) {
    static const std::map<VARTYPE, std::string> names = {{VT_DISPATCH, "Object"},
                                                         {VT_I2, "Integer"},
                                                         {VT_I4, "Long"},
                                                         {VT_BOOL, "Boolean"},
                                                         {VT_BSTR, "String"}};
    const auto known = names.find(static_cast<VARTYPE>(type & ~VT_BYREF));
    const std::string name = known != names.end() ? known->second : "type " + std::to_string(type);
    return ((type & VT_BYREF) != 0 ? "ByRef " : "ByVal ") + name;
}

/// The types with which arguments reach a host that was compiled against the type library.
class TreeEventArguments : public TreeInputTest {
protected:
    TreeEventArguments() {
        for (const LateBound* control : {&tree, &described}) {
            control->Put("dragAllowed", true);
            control->Put("dropAllowed", true);
        }
        Described().Open({"Root"});
    }
    void Watch(EventRecorder& source, std::initializer_list<const char*> names) {
        for (const char* name : names) {
            source.On(name).Run([this, name](const Arguments& arguments) {
                if (std::string(name) == "AddingNode") Allow(arguments);
                Note(name, arguments);
            });
        }
    }
    void DragWithin(const TreeWindow& shown, const Texts& from, const Texts& to) {
        Drag(shown.Handle(), On(shown, from), shown.Handle(), On(shown, to));
    }

    std::set<std::string> seen;

private:
    void Note(const char* name, const Arguments& arguments) {
        std::string types;
        for (std::size_t index = 0; index < arguments.Count(); ++index) {
            types += (index > 0 ? ", " : "") + NameOf(V_VT(&arguments.Raw(index)));
        }
        seen.insert(name + ('(' + types + ')'));
    }
};

TEST_F(TreeEventArguments, OfTheHierarchyTreeAreReferencesOfTheDeclaredTypes) {
    Watch(events,
          {"NodeClick", "NodeCheck", "NodeRClick", "NodeDblClick", "AfterLabelEdit",
           "BeforeLabelEdit", "AddingNode", "NodeExpand", "NodeCollapse", "NodeRemoved",
           "OLECompleteDrag", "OLEDragDrop", "OLEDragOver", "OLEStartDrag", "OLEGiveFeedback"});
    DoubleClick(Window(), On(Window(), {"On Trees"}));
    Keys({VK_SUBTRACT});
    Click(Window(), On(Window(), {"On Graphs"}), Input::Button::right);
    Keys({VK_ESCAPE});
    tree.Put("LabelEdit", true);
    Input edit;
    edit.Key(VK_F2).Wait(150).Text("Text").Key(VK_RETURN).Wait(100);
    ASSERT_TRUE(Play(edit));
    tree.Put("Checkboxes", true);
    Click(Window(), OnCheckBox(Window(), Window().At({"On Graphs"})));
    DragWithin(Window(), {"On Graphs"}, {"Text"});
    tree.Call("RemoveLink", first);
    EXPECT_THAT(seen, UnorderedElementsAre(
                          "NodeClick(ByRef Object)", "NodeCheck(ByRef Object)",
                          "NodeRClick(ByRef Object)", "NodeDblClick(ByRef Object)",
                          "AfterLabelEdit(ByRef Integer, ByRef Object, ByRef String)",
                          "BeforeLabelEdit(ByRef Integer, ByRef Object)",
                          "AddingNode(ByRef Object)", "NodeExpand(ByRef Object)",
                          "NodeCollapse(ByRef Object)", "NodeRemoved(ByRef Object)",
                          "OLECompleteDrag(ByRef Long)", "OLEDragDrop(ByRef Object, ByRef Long)",
                          "OLEDragOver()", "OLEStartDrag(ByRef Object, ByRef Long)",
                          "OLEGiveFeedback(ByRef Long, ByRef Boolean)"));
}

TEST_F(TreeEventArguments, OfTheDescribedTreeAreReferencesOfTheDeclaredTypes) {
    Watch(describedEvents, {"NodeClick", "NodeDblClick", "OLECompleteDrag", "OLEDragDrop",
                            "OLEDragOver", "OLEStartDrag", "OLEGiveFeedback"});
    DoubleClick(Described(), On(Described(), {"Root", "On Trees"}));
    DragWithin(Described(), {"Root", "On Graphs"}, {"Root"});
    EXPECT_THAT(seen, UnorderedElementsAre("NodeClick(ByRef Object)", "NodeDblClick(ByRef Object)",
                                           "OLECompleteDrag(ByRef Long)",
                                           "OLEDragDrop(ByRef Object, ByRef Long)", "OLEDragOver()",
                                           "OLEStartDrag(ByRef Object, ByRef Long)",
                                           "OLEGiveFeedback(ByRef Long, ByRef Boolean)"));
}

}  // namespace
}  // namespace support
