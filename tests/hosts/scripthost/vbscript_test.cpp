#include "hosts/scripthost/script_run.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

/// Runs a script that has the double as its control Box.
ScriptResult RunWithBox(const std::string& text) {
    return ScriptRun("test.vbs",
                     "Host.CreateControl \"HostDouble.Control\", \"Box\", 10, 10, 120, 24\n" + text)
        .Run();
}

TEST(VbScriptTest, AControlIsKnownByItsName) {
    const auto result = RunWithBox(
        "Box.Text = \"Größe\"\n"
        "Host.Echo Box.Text, TypeName(Box.Living), Box.Living\n"
        "Set other = Host.CreateControl(\"HostDouble.Control\", \"Lower\", 10, 40, 50, 20)\n"
        "Host.Echo other Is Lower, other Is Box, Lower.Living\n");
    EXPECT_THAT(result.Lines(), ElementsAre("Größe Long 1", "-1 0 2"));
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.exitCode, 0);
}

TEST(VbScriptTest, AControlIsActivatedInItsPlace) {
    const auto result = RunWithBox("Host.Echo Box.Log\n");
    EXPECT_THAT(result.output, HasSubstr("SetClientSite\nInitNew\nAdvise\n"));
    EXPECT_THAT(result.output, HasSubstr("SetObjectRects 10 10 130 34"));
}

TEST(VbScriptTest, AHandlersAssignmentsReachTheControl) {
    const auto result = RunWithBox(
        "Sub Box_Ask(text, allow)\n"
        "  Host.Echo text, allow\n"
        "  text = text & \", wär's?\"\n"
        "  allow = False\n"
        "End Sub\n"
        "Sub Box_Count(number)\n"
        "  number = number * 2\n"
        "End Sub\n"
        "Sub Box_Pick(object)\n"
        "  If object Is Box Then Set object = Nothing Else Set object = Box\n"
        "End Sub\n"
        "Sub Box_Anything(value)\n"
        "  If IsObject(value) Then value = \"an object\" Else Set value = Box\n"
        "End Sub\n"
        "Host.Echo Box.RaiseAsk(\"so\", True)\n"
        "Host.Echo Box.RaiseCount(21)\n"
        "Host.Echo Box.RaisePick(Box) Is Nothing, Box.RaisePick(Nothing) Is Box\n"
        "Host.Echo Box.RaiseAnything(Box)\n"
        "Host.Echo Box.RaiseAnything(1) Is Box\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_THAT(result.Lines(),
                ElementsAre("so -1", "so, wär's?|no", "42", "-1 -1", "an object", "-1"));
}

TEST(VbScriptTest, AnArgumentThatAHandlerLeavesAloneIsKept) {
    const auto result = RunWithBox(
        "Sub Box_Ask(ByVal text, ByVal allow)\n"
        "  text = \"mine\"\n"
        "  allow = False\n"
        "End Sub\n"
        "Sub Box_Plain(number, text, flag)\n"
        "  Host.Echo number, text, flag\n"
        "  number = 0\n"
        "End Sub\n"
        "Host.Echo Box.RaiseAsk(\"so\", True)\n"
        "Box.RaisePlain 3, \"drei\", False\n"
        "Host.Echo Box.RaiseCount(5)\n");
    EXPECT_THAT(result.Lines(), ElementsAre("so|yes", "3 drei 0", "5"));
    EXPECT_EQ(result.errors, "");
}

TEST(VbScriptTest, AnAssignedValueIsConvertedToTheArgumentsType) {
    const auto result = RunWithBox(
        "Sub Box_Ask(text, allow)\n"
        "  text = 12\n"
        "  allow = \"0\"\n"
        "End Sub\n"
        "Host.Echo Box.RaiseAsk(\"so\", True)\n");
    EXPECT_THAT(result.Lines(), ElementsAre("12|no"));
}

TEST(VbScriptTest, AnAssignedValueThatDoesNotConvertIsAnError) {
    const auto result = RunWithBox(
        "Sub Box_Count(number)\n"
        "  number = \"many\"\n"
        "End Sub\n"
        "Host.Echo Box.RaiseCount(5)\n");
    EXPECT_THAT(result.Lines(), ElementsAre("5"));
    EXPECT_THAT(result.errors, HasSubstr("Box_Count"));
    EXPECT_EQ(result.exitCode, 1);
}

TEST(VbScriptTest, TheMessageLoopRunsUntilAHandlerQuits) {
    const auto result = RunWithBox(
        "Sub Box_Done()\n"
        "  Host.Echo \"done\"\n"
        "  Host.Quit 7\n"
        "End Sub\n"
        "Box.RaiseDoneLater\n"
        "Host.Echo \"waiting\"\n"
        "Host.Run\n"
        "Host.Echo \"over\"\n");
    EXPECT_THAT(result.Lines(), ElementsAre("waiting", "done", "over"));
    EXPECT_EQ(result.exitCode, 7);
}

TEST(VbScriptTest, PumpingDeliversWhatWaits) {
    const auto result = RunWithBox(
        "Sub Box_Done()\n"
        "  Host.Echo \"done\"\n"
        "End Sub\n"
        "Box.RaiseDoneLater\n"
        "Host.Echo \"before\"\n"
        "Host.PumpMessages\n"
        "Box.RaiseDoneLater\n"
        "WScript.Sleep 50\n"
        "Host.Echo \"after\"\n");
    EXPECT_THAT(result.Lines(), ElementsAre("before", "done", "done", "after"));
}

TEST(VbScriptTest, AControlMayBeRemovedInItsOwnEvent) {
    const auto result = RunWithBox(
        "Sub Box_Ask(text, allow)\n"
        "  Host.RemoveControl \"Box\"\n"
        "  text = \"gone\"\n"
        "End Sub\n"
        "Set held = Box\n"
        "Host.Echo held.RaiseAsk(\"so\", True)\n"
        "Host.Echo held.RaiseAsk(\"so\", True)\n"
        "Host.Echo InStr(held.Log, \"SetClientSite none\") > 0\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_THAT(result.Lines(), ElementsAre("gone|yes", "so|yes", "-1"));
}

TEST(VbScriptTest, ObjectsWithoutAWindowHaveEventsToo) {
    const auto result = ScriptRun("test.vbs",
                                  "Set one = Host.CreateObject(\"HostDouble.Control\", \"Named\")\n"
                                  "Sub Named_Count(number)\n"
                                  "  number = 1\n"
                                  "End Sub\n"
                                  "Set two = WScript.CreateObject(\"HostDouble.Control\", \"w_\")\n"
                                  "Sub w_Count(number)\n"
                                  "  number = 2\n"
                                  "End Sub\n"
                                  "Set three = CreateObject(\"HostDouble.Control\")\n"
                                  "WScript.ConnectObject three, \"third\"\n"
                                  "Sub thirdCount(number)\n"
                                  "  number = 3\n"
                                  "End Sub\n"
                                  "Host.Echo Named.RaiseCount(0), two.RaiseCount(0)\n"
                                  "Host.Echo three.RaiseCount(0)\n"
                                  "WScript.DisconnectObject three\n"
                                  "Host.Echo three.RaiseCount(0)\n")
                            .Run();
    EXPECT_EQ(result.errors, "");
    EXPECT_THAT(result.Lines(), ElementsAre("1 2", "3", "0"));
}

TEST(VbScriptTest, AnObjectWithoutEventsMayHaveAName) {
    const auto result = ScriptRun("test.vbs",
                                  "Host.CreateObject \"Scripting.Dictionary\", \"words\"\n"
                                  "words.Add \"a\", 1\n"
                                  "Host.Echo words.Count\n")
                            .Run();
    EXPECT_EQ(result.errors, "");
    EXPECT_THAT(result.Lines(), ElementsAre("1"));
}

TEST(VbScriptTest, HostErrorsReachTheScript) {
    const auto result = RunWithBox(
        "On Error Resume Next\n"
        "Host.CreateControl \"No.Such\", \"X\", 0, 0, 10, 10\n"
        "Host.Echo Err.Number <> 0, Err.Source\n"
        "Err.Clear\n"
        "Host.CreateControl \"HostDouble.Control\", \"Box\", 0, 0, 10, 10\n"
        "Host.Echo Err.Description\n"
        "Err.Clear\n"
        "Host.RemoveControl \"X\"\n"
        "Host.Echo Err.Description\n"
        "Err.Clear\n"
        "Host.CreateControl \"HostDouble.Control\"\n"
        "Host.Echo Err.Description\n");
    EXPECT_THAT(result.Lines(), ElementsAre("-1 Host", "There is a control Box already.",
                                            "There is no control X.", "Argument 3 is missing."));
    EXPECT_EQ(result.exitCode, 0);
}

TEST(VbScriptTest, ControlsErrorsReachTheScriptWithAllTheySay) {
    const auto result = RunWithBox(
        "On Error Resume Next\n"
        "Box.Fail &H800A01BE, \"über\"\n"
        "Host.Echo Err.Number, Err.Description, Err.Source\n");
    EXPECT_THAT(result.Lines(), ElementsAre("446 über HostDouble.Control"));
}

}  // namespace
