#include "repository/com/link.h"

#include "repository/com/show.h"

namespace repository::com {

STDMETHODIMP Link::get_parent(_MetaLink** result) {
    return Do([&] {
        const auto meta = std::dynamic_pointer_cast<store::MetaLink>(Live()->meta);
        *result = Show(Whole(), meta).Detach();
    });
}

STDMETHODIMP Link::get_source(_Node** result) {
    return Do([&] { *result = ShowNode(Whole(), Store().Source(*Live())).Detach(); });
}

STDMETHODIMP Link::get_Target(_Node** result) {
    return Do([&] { *result = ShowNode(Whole(), Store().Target(*Live())).Detach(); });
}

}  // namespace repository::com
