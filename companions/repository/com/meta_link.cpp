#include "repository/com/meta_link.h"

#include "repository/com/show.h"

namespace repository::com {

STDMETHODIMP MetaLink::get_source(_MetaNode** result) {
    return Do([&] { *result = Show(Whole(), Live()->source).Detach(); });
}

STDMETHODIMP MetaLink::get_Target(_MetaNode** result) {
    return Do([&] { *result = Show(Whole(), Live()->target).Detach(); });
}

STDMETHODIMP MetaLink::get_LinkName(BSTR* result) {
    return Do([&] { *result = ToResult(Live()->linkName); });
}

}  // namespace repository::com
