#include "repository/ecore/annotations.h"

namespace repository::ecore {

namespace {

/// The place of the entry, 0 where there is none; `annotation` is that of an annotation with that
/// source.
std::size_t FindDetail(const xml::Tree& tree, std::size_t place, std::string_view source,
                       std::string_view key, std::size_t& annotation) {
    annotation = 0;
    for (const std::size_t each : tree.Children(place, "eAnnotations")) {
        if (tree[each].Get("source") != source) continue;
        annotation = each;
        for (const std::size_t detail : tree.Children(each, "details")) {
            if (tree[detail].Get("key") == key) return detail;
        }
    }
    return 0;
}

}  // namespace

std::string DetailOr(const xml::Tree& tree, std::size_t place, std::string_view source,
                     std::string_view key, std::string_view otherwise) {
    std::size_t annotation = 0;
    const std::size_t detail = FindDetail(tree, place, source, key, annotation);
    if (detail == 0) return std::string(otherwise);
    // A value may be written as an element, too.
    const auto values = tree.Children(detail, "value");
    if (!values.empty()) return tree[values.front()].text;
    const std::string* value = tree[detail].Find("value");
    return value != nullptr ? *value : std::string(otherwise);
}

void SetDetail(xml::Tree& tree, std::size_t place, std::string_view source, std::string_view key,
               std::string_view value) {
    std::size_t annotation = 0;
    std::size_t detail = FindDetail(tree, place, source, key, annotation);
    if (detail == 0) {
        if (annotation == 0) {
            annotation = tree.Add(place, "", "eAnnotations");
            tree[annotation].Set("source", source);
        }
        detail = tree.Add(annotation, "", "details");
        tree[detail].Set("key", key);
    }
    for (const std::size_t each : tree.Children(detail, "value")) tree.Detach(each);
    tree[detail].Set("value", value);
}

}  // namespace repository::ecore
