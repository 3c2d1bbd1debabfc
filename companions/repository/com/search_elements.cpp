#include "repository/com/search_elements.h"

#include <algorithm>
#include <vector>

#include "repository/com/show.h"

namespace repository::com {

namespace {

using Ids = std::shared_ptr<const std::vector<store::Id>>;

class SearchCursor final : public Cursor {
public:
    SearchCursor(Repository& repository, Ids ids) : repository_(repository), ids_(std::move(ids)) {}

    ole::Ref<IDispatch> Next() override {
        while (next_ < ids_->size()) {
            if (const auto object = repository_.Store().Get((*ids_)[next_++])) {
                return Show(repository_, object);
            }
        }
        return nullptr;
    }

    std::unique_ptr<Cursor> Clone() const override { return std::make_unique<SearchCursor>(*this); }

private:
    Repository& repository_;
    Ids ids_;
    std::size_t next_ = 0;
};

class SearchElements final : public Elements {
public:
    SearchElements(Repository& repository, std::string text)
        : repository_(repository), text_(std::move(text)) {}

    long Count() override { return static_cast<long>(Found()->size()); }

    ole::Ref<IDispatch> Find(const std::string& key) override {
        const auto object = repository_.Store().Find(key);
        if (!object) return nullptr;
        const Ids ids = Found();
        const bool found = std::find(ids->begin(), ids->end(), object->id) != ids->end();
        return found ? Show(repository_, object) : nullptr;
    }

    ole::Ref<IDispatch> At(long position) override {
        const Ids ids = Found();
        const auto index = static_cast<std::size_t>(position);
        return index < ids->size() ? Show(repository_, repository_.Store().Get((*ids)[index]))
                                   : nullptr;
    }

    std::unique_ptr<Cursor> Begin() override {
        return std::make_unique<SearchCursor>(repository_, Found());
    }

private:
    /// What is found now; asked for again only after something was changed.
    Ids Found() {
        store::Store& store = repository_.Store();
        if (!ids_ || edition_ != store.Edition()) {
            ids_ = std::make_shared<const std::vector<store::Id>>(store.Search(text_));
            edition_ = store.Edition();
        }
        return ids_;
    }

    Repository& repository_;
    std::string text_;
    Ids ids_;
    std::uint64_t edition_ = 0;
};

}  // namespace

std::unique_ptr<Elements> MakeSearchElements(Repository& repository, const std::string& text) {
    return std::make_unique<SearchElements>(repository, text);
}

}  // namespace repository::com
