#pragma once

#include "explorer/event_log.h"
#include "explorer/pane.h"
#include "hosting/host_window.h"

#include <optional>

namespace explorer {

/// Shows the event log as a list, the newest entry in view.
class EventLogPane : public Pane {
public:
    EventLogPane(HWND parent, EventLog& log);
    ~EventLogPane() override;

    void Place(const RECT& bounds) override;
    [[nodiscard]] SIZE MinimumSize() const override;
    void SetLook(const Look& look) override;

    [[nodiscard]] HWND List() const noexcept { return list_.get(); }
    /// The letter that goes to the list with Alt.
    [[nodiscard]] static wchar_t Mnemonic() { return L'E'; }
    /// Answers a WM_NOTIFY of the list.
    std::optional<LRESULT> OnNotify(NMHDR& notification);

    /// Called when the list gets the focus.
    std::function<void()> onFocus;

private:
    void ShowEntries();
    void FitColumns();
    [[nodiscard]] const std::wstring& CellText(std::size_t row, int column);

    EventLog& log_;
    hosting::OwnedWindow label_;
    hosting::OwnedWindow list_;
    std::wstring time_;
    int margin_ = 0;
    int labelHeight_ = 0;
    SIZE minimum_{};
    int columnUnit_ = 0;
};

}  // namespace explorer
