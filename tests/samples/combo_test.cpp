#include <gtest/gtest.h>

#include "samples/sample_run.h"

namespace support {
namespace {

const std::filesystem::path sample = std::filesystem::absolute(L"samples/vbscript/combo.vbs");

TEST(ComboSample, InAWindowShowsSelectionsAndEvents) {
    ExpectLines(RunHosted(sample),
                {"no row is current: True", "Click: b2", "selected node: On Graphs", "Click: c1",
                 "selected link: builds on", "unknown property: OrvaneRepository.Node",
                 "without a property: True", "no meta node: OrvaneControls.Combo"});
}

TEST(ComboSample, RunsUnderTheSystemsScriptHostWithoutEvents) {
    ExpectLines(RunPlain(sample),
                {"no row is current: True", "selected node: On Graphs", "selected link: builds on",
                 "unknown property: OrvaneRepository.Node", "without a property: True",
                 "no meta node: OrvaneControls.Combo"});
}

}  // namespace
}  // namespace support
