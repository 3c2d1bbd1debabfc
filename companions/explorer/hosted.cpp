#include "explorer/hosted.h"

namespace explorer {

void SetFont(hosting::HostedControl& hosted, const Look& look) {
    const auto font = hosting::Query<IDispatch>(
        hosting::MakeFont(look.FontName().c_str(), look.FontPoints()).Get());
    hosted.Ambients().Set(DISPID_AMBIENT_FONT, font.Get());
    hosted.AmbientChanged(DISPID_AMBIENT_FONT);
}

_variant_t ArgumentOf(const hosting::Event& event, std::size_t index) {
    _variant_t value;
    if (index < event.Count())
        hosting::Check(VariantCopyInd(&value, &event.Argument(index)),
                       L"reading an argument of an event");
    return value;
}

}  // namespace explorer
