#include "support/fake_collection.h"

#include "support/fake_enumerator.h"

#include <algorithm>
#include <array>

namespace support {

namespace {

bool Same(std::string_view a, std::string_view b) {
    return SameName(Wide(a), Wide(b));
}

[[noreturn]] void NoSuchElement(const Value& index) {
    throw Failure::Exception(FakeCollection::noSuchElement, "No element " + Describe(index));
}

}  // namespace

struct CollectionMembers {
    static FakeCollection& Self(FakeObject& self) { return static_cast<FakeCollection&>(self); }

    static std::size_t IndexOf(const FakeCollection& self, const Value& index) {
        const auto& elements = self.elements_;
        if (index.Type() == VT_BSTR) {
            const std::string key = index.Text();
            for (std::size_t at = 0; at < elements.size(); ++at)
                if (!key.empty() && Same(elements[at].key, key)) return at;
            NoSuchElement(index);
        }
        const long number = index.Number();
        if (number < 1 || number > static_cast<long>(elements.size())) NoSuchElement(index);
        return static_cast<std::size_t>(number - 1);
    }

    static Value Item(FakeObject& object, Arguments& arguments) {
        FakeCollection& self = Self(object);
        return self.elements_[IndexOf(self, arguments[0])].value;
    }

    static Value Count(FakeObject& object, Arguments&) {
        return static_cast<long>(Self(object).elements_.size());
    }

    static Value Remove(FakeObject& object, Arguments& arguments) {
        FakeCollection& self = Self(object);
        const auto at = static_cast<std::ptrdiff_t>(IndexOf(self, arguments[0]));
        const FakeCollection::Element removed =
            std::move(self.elements_[static_cast<std::size_t>(at)]);
        self.elements_.erase(self.elements_.begin() + at);
        return {};
    }

    static Value Search(FakeObject& object, Arguments& arguments) {
        return Self(object).Find(arguments.Text(0)) != nullptr;
    }

    static Value NewEnum(FakeObject& object, Arguments&) {
        const auto enumerator = support::Make<FakeEnumerator>(Ref<FakeCollection>(&Self(object)));
        return static_cast<IUnknown*>(static_cast<IEnumVARIANT*>(enumerator.Get()));
    }

    static std::span<const Member> All() {
        static const std::array members = {
            Member{.name = std::string(defaultMember), .least = 1, .most = 1, .get = Item},
            Member{.name = "Item", .least = 1, .most = 1, .get = Item},
            Member{.name = "Count", .most = 0, .get = Count},
            Member{.name = "Remove", .least = 1, .most = 1, .isMethod = true, .get = Remove},
            Member{.name = "Search", .least = 1, .most = 1, .isMethod = true, .get = Search},
            Member{.name = std::string(newEnumMember), .most = 0, .get = NewEnum},
        };
        return members;
    }
};

FakeCollection::FakeCollection(std::string label, SharedLog log)
    : FakeObject(std::move(label), std::move(log), CollectionMembers::All()) {}

FakeCollection& FakeCollection::Add(std::string key, Value value) {
    elements_.push_back({std::move(key), std::move(value)});
    return *this;
}

bool FakeCollection::Remove(std::string_view key) {
    const auto found = std::find_if(elements_.begin(), elements_.end(),
                                    [key](const Element& each) { return Same(each.key, key); });
    if (found == elements_.end()) return false;
    const Element removed = std::move(*found);
    elements_.erase(found);
    return true;
}

const FakeCollection::Element* FakeCollection::Find(std::string_view key) const {
    const auto found = std::find_if(elements_.begin(), elements_.end(),
                                    [key](const Element& each) { return Same(each.key, key); });
    return found != elements_.end() ? &*found : nullptr;
}

void FakeCollection::Forget() {
    const auto elements = std::exchange(elements_, {});
}

}  // namespace support
