#include "repository/store/loader.h"

#include <algorithm>

#include "repository/store/checked_value.h"
#include "repository/store/error.h"
#include "repository/store/text.h"

namespace repository::store {

namespace {

const std::string& TextIn(const Value& value) {
    static const std::string none;
    const auto* text = std::get_if<std::string>(&value);
    return text != nullptr ? *text : none;
}

}  // namespace

Loader::Loader(Store& store)
    : database_(*store.database_),
      store_(store),
      node_(database_.Prepare("INSERT OR IGNORE INTO object(meta, identifier, name, name_key) "
                              "VALUES(?1, ?2, ?3, ?4)")),
      link_(database_.Prepare(
          "INSERT OR IGNORE INTO object(meta, identifier, name, name_key, source, target) "
          "SELECT ?1, source.identifier || ' ' || ?2 || ' ' || target.identifier || ?5, "
          "target.name, target.name_key, source.id, target.id "
          "FROM object AS source, object AS target WHERE source.id = ?3 AND target.id = ?4")),
      value_(database_.Prepare(
          "INSERT INTO property_value(object, property, type, value) VALUES(?1, ?2, ?3, ?4)")),
      name_(database_.Prepare("UPDATE object SET name = ?2, name_key = ?3 WHERE id = ?1")),
      description_(database_.Prepare("UPDATE object SET description = ?2 WHERE id = ?1")) {}

Loader::~Loader() {
    // What is held may be older than what was written.
    ++store_.version_;
    store_.reader_.Invalidate();
}

Id Loader::AddNode(const MetaNode& meta, std::string_view identifier, std::string_view name) {
    node_.Execute(meta.id, identifier, name, FoldCase(name));
    return database_.Changes() == 1 ? Inserted(meta) : 0;
}

Id Loader::AddLink(const MetaLink& meta, Id source, Id target) {
    link_.Execute(meta.id, meta.linkName, source, target, std::string_view());
    while (database_.Changes() == 0) {
        const int number = ++further_[{meta.id, source, target}] + 1;
        link_.Execute(meta.id, meta.linkName, source, target, "#" + std::to_string(number));
    }
    return Inserted(meta);
}

bool Loader::IsNamedAsAdded(const Object& link, const MetaLink& meta, const Object& source,
                            const Object& target) {
    if (link.name != target.name) return false;
    const std::string first = source.identifier + " " + meta.linkName + " " + target.identifier;
    const std::string_view present = link.identifier;
    if (!present.starts_with(first)) return false;
    const std::string_view end = present.substr(first.size());
    return end.empty() || (end.size() > 1 && end.front() == '#' &&
                           std::all_of(end.begin() + 1, end.end(),
                                       [](char letter) { return letter >= '0' && letter <= '9'; }));
}

Id Loader::Inserted(const MetaObject& meta) {
    if (meta.instances) ++*meta.instances;
    if (++added_ % 1024 == 0) store_.history_.Measure();
    return database_.LastInsertId();
}

void Loader::SetValue(Id object, const MetaProperty& property, const Value& value) {
    const Value kept = Checked(property, value);
    switch (property.role) {
        case Role::name:
            name_.Execute(object, TextIn(kept), FoldCase(TextIn(kept)));
            break;
        case Role::description:
            description_.Execute(object, TextIn(kept));
            break;
        case Role::identifier:
            throw Error(Number::permissionDenied, "The identifier of an object does not change");
        case Role::value:
            if (IsEmpty(kept)) break;
            value_.Execute(object, property.id, static_cast<std::int64_t>(kept.index()), kept);
            break;
    }
}

}  // namespace repository::store
