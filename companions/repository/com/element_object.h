#pragma once

#include <memory>
#include <utility>

#include "ole/automation.h"
#include "repository/com/failure.h"
#include "repository/com/held.h"
#include "repository/com/repository.h"
#include "repository/com/variant.h"

namespace repository::com {

/// The automation object of one element. There is one for an element as long as somebody holds it;
/// it keeps the element and the repository object.
template <class I, const GUID& classId, class T>
class ElementObject : public ole::Automation<I, classId, IHeld> {
public:
    using ElementRef = std::shared_ptr<T>;

    ElementObject(Repository& repository, ElementRef element)
        : repository_(&repository), session_(repository.Current()), element_(std::move(element)) {
        element_->face = static_cast<I*>(this);
    }

    com::Element Held() override { return element_; }
    Repository& Owner() override { return *repository_.Get(); }
    unsigned HeldSession() override { return session_; }

protected:
    ~ElementObject() override { element_->face = nullptr; }

    /// What every member does.
    template <class Work>
    HRESULT Do(Work&& work) noexcept {
        return this->Run([&] { Translated(work); });
    }

    Repository& Whole() const { return *repository_.Get(); }

    /// The open store. Error 91 when the repository was closed meanwhile.
    store::Store& Store() const { return repository_->StoreOf(session_); }

    /// The element, up to date. Error 35601 when it was removed.
    const ElementRef& Live() const {
        store::Store& store = Store();
        if constexpr (std::is_same_v<T, store::Object>) store.Update(*element_);
        store::RequireLive(*element_);
        return element_;
    }

    /// The element as it is known, whatever has become of it.
    const ElementRef& Known() const {
        if constexpr (std::is_same_v<T, store::Object>) {
            if (repository_->IsCurrent(session_)) Store().Update(*element_);
        }
        return element_;
    }

private:
    ole::Ref<Repository> repository_;
    Repository::Session session_;
    ElementRef element_;
};

/// The automation object of an element: the one that there is, or a new one.
template <class Shown, class I, class T>
ole::Ref<I> ShowAs(Repository& repository, const std::shared_ptr<T>& element) {
    if (!element) return nullptr;
    if (element->face != nullptr) return ole::Ref<I>(static_cast<I*>(element->face));
    return ole::Make<Shown>(repository, element);
}

}  // namespace repository::com
