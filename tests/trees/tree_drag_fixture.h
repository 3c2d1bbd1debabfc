#pragma once

#include <ole2.h>

#include "trees/tree_input_fixture.h"

namespace support {

/// Both trees and the list, each of which may be dragged from and dropped on. "Root" of the
/// described tree is open.
class TreeDragTest : public TreeInputTest {
protected:
    TreeDragTest() {
        for (const LateBound* control : {&tree, &described, &list}) {
            control->Put("dragAllowed", true);
            control->Put("dropAllowed", true);
        }
        Described().Open({"Root"});
        Take();
    }
    void DragTree(const Texts& path, HWND to, POINT end) {
        Drag(Window().Handle(), On(Window(), path), to, end);
    }
    void DragTreeToDescribed() {
        DragTree({"On Graphs"}, Described().Handle(), On(Described(), {"Root"}));
    }
    void DragDescribedToTree() {
        Drag(Described().Handle(), On(Described(), {"Root", "On Lists"}), Window().Handle(),
             On(Window(), {"On Trees"}));
    }
};

}  // namespace support
