#pragma once

#include <optional>
#include <string_view>
#include <unordered_map>

#include "trees/hierarchy_records.h"

namespace trees {

/// What the nodes of a hierarchy tree stand for, by the nodes' numbers, which grow as they are
/// added, and by object and link. Constant time each.
class HierarchyInfos {
public:
    using Info = ole::Ref<HTNodeInfo>;

    HierarchyInfos() = default;
    ~HierarchyInfos();
    HierarchyInfos(const HierarchyInfos&) = delete;
    HierarchyInfos& operator=(const HierarchyInfos&) = delete;

    void Add(std::int32_t number, const Info& info);
    /// Null where there is none.
    Info Find(std::int32_t number) const;
    void Remove(std::int32_t number);

    // The first of those that show an object, were reached by a link, or either; null for none.

    Info OfObject(const ole::Object& object) const;
    Info OfLink(const ole::Object& link) const;
    Info OfEither(const ole::Object& object) const;

    /// An entry shows another object, or was reached by another link.
    void Reindex(HTNodeInfo& info);

private:
    Info Find(std::optional<std::int32_t> number) const;

    std::unordered_map<std::int32_t, Info> infos_;
    IdentityIndex objects_;
    IdentityIndex links_;
};

}  // namespace trees
