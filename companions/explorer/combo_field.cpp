#include "explorer/combo_field.h"

#include "explorer/automation.h"
#include "explorer/hosted.h"

namespace explorer {

namespace {

/// Until the first layout.
constexpr RECT startBounds{0, 0, 100, 20};

}  // namespace

ComboField::ComboField(hosting::Form& form, const std::wstring& name, const std::wstring& caption)
    : caption_(caption), label_(MakeLabel(form.Window(), caption)), hosted_(form.Add(name)) {
    hosted_.Create(L"OrvaneControls.Combo");
    hosted_.Activate(startBounds);
    control_ = hosting::LateBound(hosted_.Object());
    control_.Call(L"Create");
    events_.Connect(hosted_.Control(), [this](const hosting::Event& event) {
        Hear(event);
        return S_OK;
    });
}

ComboField::~ComboField() {
    events_.Disconnect();
    control_ = {};
    hosted_.GetForm().Remove(hosted_);
}

void ComboField::Hear(const hosting::Event& event) {
    if (onEvent) onEvent(event.name, TextOf(ArgumentOf(event, 0)));
}

hosting::LateBound ComboField::Selection() const {
    return control_.Object(L"selection");
}

void ComboField::Select(const hosting::LateBound& object) {
    control_.PutRef(L"selection", object.Get());
}

void ComboField::SetLook(const Look& look) {
    SetFont(label_.get(), look);
    SetFont(hosted_, look);
}

void ComboField::Place(const FormRow& row) {
    const auto& [label, field] = row;
    MoveWindow(label_.get(), label.left, label.top, label.width, label.height, TRUE);
    hosted_.Move({field.left, field.top, field.left + field.width, field.top + field.height});
}

int ComboField::Height() const {
    return hosted_.Bounds().bottom - hosted_.Bounds().top;
}

}  // namespace explorer
