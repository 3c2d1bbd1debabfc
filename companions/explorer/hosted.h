#pragma once

#include "explorer/look.h"
#include "hosting/event_sink.h"
#include "hosting/hosted_control.h"
#include "hosting/late_bound.h"

namespace explorer {

/// Gives a hosted control the look's font, as its ambient font.
void SetFont(hosting::HostedControl& hosted, const Look& look);

/// The argument of an event at `index` from 0, Empty where it has fewer; by reference or not.
[[nodiscard]] _variant_t ArgumentOf(const hosting::Event& event, std::size_t index);

}  // namespace explorer
