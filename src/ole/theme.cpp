#include "ole/theme.h"

#include <commctrl.h>

#include <string>

#include "ole/server.h"

namespace ole {

namespace {

/// The context lasts as long as the module.
class ServerContext {
public:
    ServerContext() {
        const std::wstring path = ModulePath();
        ACTCTXW description = {};
        description.cbSize = sizeof(description);
        description.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
        description.lpSource = path.c_str();
        description.lpResourceName = MAKEINTRESOURCEW(2);
        description.hModule = ModuleHandle();
        handle_ = CreateActCtxW(&description);
    }
    ~ServerContext() {
        if (IsValid()) ReleaseActCtx(handle_);
    }
    ServerContext(const ServerContext&) = delete;
    ServerContext& operator=(const ServerContext&) = delete;

    bool IsValid() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE Handle() const { return handle_; }

private:
    HANDLE handle_;
};

}  // namespace

ThemedScope::ThemedScope() {
    static const ServerContext context;
    active_ = context.IsValid() && ActivateActCtx(context.Handle(), &cookie_);
    static const bool initialized = [] {
        const INITCOMMONCONTROLSEX classes = {
            sizeof(classes),
            ICC_STANDARD_CLASSES | ICC_WIN95_CLASSES | ICC_LISTVIEW_CLASSES | ICC_TREEVIEW_CLASSES};
        return InitCommonControlsEx(&classes) != FALSE;
    }();
    static_cast<void>(initialized);
}

ThemedScope::~ThemedScope() {
    if (active_) DeactivateActCtx(0, cookie_);
}

}  // namespace ole
