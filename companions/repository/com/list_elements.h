#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "repository/com/elements.h"
#include "repository/com/repository.h"
#include "repository/com/show.h"
#include "repository/store/element.h"

namespace repository::com {

/// What an element is called in a collection.
inline const std::string& KeyOf(const store::Element& element) {
    return element.name;
}
inline const std::string& KeyOf(const store::Object& object) {
    return object.identifier;
}

/// Goes through a list as it was at the beginning.
template <class T>
class ListCursor final : public Cursor {
public:
    using List = std::vector<std::shared_ptr<T>>;

    ListCursor(Repository& repository, List list)
        : repository_(repository), list_(std::make_shared<const List>(std::move(list))) {}

    ole::Ref<IDispatch> Next() override {
        while (next_ < list_->size()) {
            const auto& element = (*list_)[next_++];
            if (!element->removed) return Show(repository_, element);
        }
        return nullptr;
    }

    std::unique_ptr<Cursor> Clone() const override { return std::make_unique<ListCursor>(*this); }

private:
    Repository& repository_;
    std::shared_ptr<const List> list_;
    std::size_t next_ = 0;
};

/// A list of the meta model. `Source` answers a `NamedList<T>`, whenever it is asked.
template <class T, class Source>
class NamedElements final : public Elements {
public:
    NamedElements(Repository& repository, Source source)
        : repository_(repository), source_(std::move(source)) {}

    long Count() override { return static_cast<long>(source_().Count()); }

    ole::Ref<IDispatch> Find(const std::string& key) override {
        return Show(repository_, source_().Find(key));
    }

    ole::Ref<IDispatch> At(long position) override {
        const store::NamedList<T>& list = source_();
        const auto index = static_cast<std::size_t>(position);
        return index < list.Count() ? Show(repository_, list.At(index)) : nullptr;
    }

    std::unique_ptr<Cursor> Begin() override {
        const store::NamedList<T>& list = source_();
        return std::make_unique<ListCursor<T>>(
            repository_, typename ListCursor<T>::List(list.begin(), list.end()));
    }

private:
    Repository& repository_;
    Source source_;
};

template <class T, class Source>
std::unique_ptr<Elements> MakeNamedElements(Repository& repository, Source source) {
    return std::make_unique<NamedElements<T, Source>>(repository, std::move(source));
}

/// A short list that `Source` puts together whenever it is asked. A key that is there exactly comes
/// before one that is the same without case.
template <class T, class Source>
class ListElements final : public Elements {
public:
    ListElements(Repository& repository, Source source)
        : repository_(repository), source_(std::move(source)) {}

    long Count() override { return static_cast<long>(source_().size()); }

    ole::Ref<IDispatch> Find(const std::string& key) override {
        const auto list = source_();
        for (const auto& element : list) {
            if (KeyOf(*element) == key) return Show(repository_, element);
        }
        const std::string folded = store::FoldCase(key);
        for (const auto& element : list) {
            if (!std::is_same_v<T, store::Object> && store::FoldCase(KeyOf(*element)) == folded) {
                return Show(repository_, element);
            }
        }
        return nullptr;
    }

    ole::Ref<IDispatch> At(long position) override {
        const auto list = source_();
        const auto index = static_cast<std::size_t>(position);
        return index < list.size() ? Show(repository_, list[index]) : nullptr;
    }

    std::unique_ptr<Cursor> Begin() override {
        return std::make_unique<ListCursor<T>>(repository_, source_());
    }

private:
    Repository& repository_;
    Source source_;
};

template <class T, class Source>
std::unique_ptr<Elements> MakeListElements(Repository& repository, Source source) {
    return std::make_unique<ListElements<T, Source>>(repository, std::move(source));
}

}  // namespace repository::com
