#include <algorithm>

#include "widgets/node_tree.h"
#include "widgets/sketch.h"

namespace widgets {

void NodeTree::Draw(HDC context, const RECT& bounds) {
    const Sketch sketch(context, bounds, background_, font_);
    const RECT& box = sketch.Box();
    const LONG height = sketch.LineHeight();
    LONG top = box.top;
    LONG depth = 1;
    const TreeNode* node = nodes_.Top().FirstChild();
    while (node != nullptr && top < box.bottom) {
        sketch.Text(node->text,
                    {box.left + depth * height, top, box.right, std::min(top + height, box.bottom)},
                    ShownTextColor());
        top += height;
        if (node->expanded && node->FirstChild() != nullptr) {
            node = node->FirstChild();
            ++depth;
            continue;
        }
        while (node->Next() == nullptr && &nodes_.PlaceOf(*node) != &nodes_.Top()) {
            node = &nodes_.PlaceOf(*node);
            --depth;
        }
        node = node->Next();
    }
}

}  // namespace widgets
