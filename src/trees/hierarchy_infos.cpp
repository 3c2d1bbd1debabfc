#include "trees/hierarchy_infos.h"

#include <algorithm>

#include "ole/error.h"

namespace trees {

namespace {

/// What tells an object from all others, as long as somebody holds it; null for none.
const void* IdentityOf(const ole::Object& object) {
    const auto identity = ole::Query<IUnknown>(object.Get());
    return identity ? identity.Get() : static_cast<IUnknown*>(object.Get());
}

}  // namespace

void HTNodeInfo::OnObjectsChanged() {
    if (home_ != nullptr) home_->Reindex(*this);
}

HierarchyInfos::~HierarchyInfos() {
    infos_.Each([this](const Info& info) { Forget(*info.Get()); });
    // They may go now, and call back.
}

void HierarchyInfos::Add(std::int32_t number, const Info& info) {
    if (!infos_.Add(number, info)) ole::Throw(ole::Number::keyInUse);
    info->home_ = this;
    info->asObject_.SetNumber(number);
    info->asLink_.SetNumber(number);
    Reindex(*info.Get());
}

HierarchyInfos::Info HierarchyInfos::Find(std::optional<std::int32_t> number) const {
    return number ? Find(*number) : nullptr;
}

void HierarchyInfos::Remove(std::int32_t number) {
    if (const Info info = infos_.Remove(number)) Forget(*info.Get());
}

void HierarchyInfos::Forget(HTNodeInfo& info) {
    info.home_ = nullptr;
    objects_.Set(info.asObject_, nullptr);
    links_.Set(info.asLink_, nullptr);
}

HierarchyInfos::Info HierarchyInfos::OfObject(const ole::Object& object) const {
    return Find(objects_.First(IdentityOf(object)));
}

HierarchyInfos::Info HierarchyInfos::OfLink(const ole::Object& link) const {
    return Find(links_.First(IdentityOf(link)));
}

HierarchyInfos::Info HierarchyInfos::OfEither(const ole::Object& object) const {
    const void* const identity = IdentityOf(object);
    const auto shows = objects_.First(identity);
    const auto reached = links_.First(identity);
    if (shows && reached) return Find(std::min(*shows, *reached));
    return Find(shows ? shows : reached);
}

void HierarchyInfos::Reindex(HTNodeInfo& info) {
    const void* const object = IdentityOf(info.RepObject());
    const void* const link = IdentityOf(info.RepLink());
    objects_.Set(info.asObject_, object);
    links_.Set(info.asLink_, link);
}

}  // namespace trees
