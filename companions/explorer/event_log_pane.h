#pragma once

#include "explorer/event_log.h"
#include "explorer/pane.h"
#include "explorer/pane_label.h"
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
    bool FocusMnemonic(wchar_t letter) override;

    [[nodiscard]] HWND List() const noexcept { return list_.get(); }
    /// Answers a WM_NOTIFY of the list.
    std::optional<LRESULT> OnNotify(NMHDR& notification);

    /// Called when the list gets the focus.
    std::function<void()> onFocus;

private:
    void ShowEntries();
    void FitColumns();
    [[nodiscard]] const std::wstring& CellText(std::size_t row, int column);

    EventLog& log_;
    PaneLabel label_;
    hosting::OwnedWindow list_;
    std::wstring time_;
    SIZE minimum_{};
    int columnUnit_ = 0;
};

}  // namespace explorer
