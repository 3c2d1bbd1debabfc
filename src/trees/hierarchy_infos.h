#pragma once

#include <optional>

#include "trees/hierarchy_records.h"
#include "widgets/number_map.h"

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
    Info Find(std::int32_t number) const { return infos_.Find(number); }
    void Remove(std::int32_t number);

    // The first of those that show an object, were reached by a link, or either; null for none.

    Info OfObject(const ole::Object& object) const;
    Info OfLink(const ole::Object& link) const;
    Info OfEither(const ole::Object& object) const;

    /// An entry shows another object, or was reached by another link.
    void Reindex(HTNodeInfo& info);

private:
    Info Find(std::optional<std::int32_t> number) const;
    /// An entry was taken out.
    void Forget(HTNodeInfo& info);

    widgets::NumberMap<Info> infos_;
    IdentityIndex objects_;
    IdentityIndex links_;
};

}  // namespace trees
