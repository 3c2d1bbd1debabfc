#include "repository/com/model_elements.h"

#include <vector>

#include "repository/com/list_elements.h"

namespace repository::com {

std::unique_ptr<Elements> MakeMetaNodeElements(Repository& repository) {
    return MakeNamedElements<store::MetaNode>(
        repository, [&repository]() -> const auto& { return repository.Store().Meta().nodes; });
}

std::unique_ptr<Elements> MakeMetaLinkElements(Repository& repository) {
    return MakeNamedElements<store::MetaLink>(
        repository, [&repository]() -> const auto& { return repository.Store().Meta().links; });
}

std::unique_ptr<Elements> MakeMetaTypeElements(Repository& repository) {
    return MakeNamedElements<store::MetaType>(
        repository, [&repository]() -> const auto& { return repository.Store().Meta().types; });
}

std::unique_ptr<Elements> MakeMetaEnumElements(Repository& repository) {
    return MakeNamedElements<store::MetaEnum>(
        repository, [&repository]() -> const auto& {
            return repository.Store().Meta().enumerations;
        });
}

std::unique_ptr<Elements> MakeMetaPropertyElements(Repository& repository) {
    return MakeListElements<store::MetaProperty>(repository, [&repository] {
        std::vector<store::MetaPropertyRef> all;
        const auto append = [&](const auto& objects) {
            for (const auto& object : objects) {
                all.insert(all.end(), object->properties.begin(), object->properties.end());
            }
        };
        append(repository.Store().Meta().nodes);
        append(repository.Store().Meta().links);
        return all;
    });
}

}  // namespace repository::com
