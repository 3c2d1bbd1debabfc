#pragma once

#include "explorer/form_layout.h"
#include "explorer/label.h"
#include "explorer/look.h"
#include "hosting/event_sink.h"
#include "hosting/form.h"
#include "hosting/host_window.h"
#include "hosting/late_bound.h"

#include <functional>
#include <string>

namespace explorer {

/// A label and a hosted OrvaneControls.Combo.
class ComboField {
public:
    /// `name` is that of the control; `caption` may mark a mnemonic with "&". The control's list is
    /// empty at first. Throws hosting::Error where the control is not there.
    ComboField(hosting::Form& form, const std::wstring& name, const std::wstring& caption);
    ~ComboField();
    ComboField(const ComboField&) = delete;
    ComboField& operator=(const ComboField&) = delete;

    /// Called for each event of the control, with its name and its key.
    std::function<void(const std::wstring& event, const std::wstring& key)> onEvent;

    [[nodiscard]] const std::wstring& Name() const noexcept { return hosted_.Name(); }
    /// The control, for its other members.
    [[nodiscard]] const hosting::LateBound& Control() const noexcept { return control_; }
    /// The control's window.
    [[nodiscard]] HWND Window() const { return hosted_.Window(); }
    /// The object of the current row, empty where there is none.
    [[nodiscard]] hosting::LateBound Selection() const;
    /// Makes the row of an object the current one, as if the user had picked it.
    void Select(const hosting::LateBound& object);
    void Clear() { control_.Call(L"Clear"); }

    void SetLook(const Look& look);
    void Place(const FormRow& row);
    [[nodiscard]] int LabelWidth(const Look& look) const { return look.TextWidth(caption_); }
    /// The control's own height.
    [[nodiscard]] int Height() const;
    /// The letter that goes to the field with Alt, in upper case; 0 where there is none.
    [[nodiscard]] wchar_t Mnemonic() const { return MnemonicOf(caption_); }
    void Focus() { hosted_.Focus(); }

private:
    void Hear(const hosting::Event& event);

    std::wstring caption_;
    hosting::OwnedWindow label_;
    hosting::HostedControl& hosted_;
    hosting::LateBound control_;
    hosting::EventSink events_;
};

}  // namespace explorer
