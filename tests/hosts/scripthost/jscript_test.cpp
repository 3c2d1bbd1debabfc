#include "hosts/scripthost/script_run.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

ScriptResult RunWithBox(const std::string& text) {
    return ScriptRun(
               "test.js",
               "Host.CreateControl(\"HostDouble.Control\", \"Box\", 10, 10, 120, 24);\n" + text)
        .Run();
}

TEST(JScriptTest, TheReturnedValueAnswersInTheLastArgument) {
    const auto result = RunWithBox(
        "function Box_Ask(text, allow) { Host.Echo(text, allow); return false; }\n"
        "function Box_Count(number) { return number * 2; }\n"
        "function Box_Pick(object) { return Box; }\n"
        "function Box_Anything(value) { return value + 1; }\n"
        "Host.Echo(Box.RaiseAsk(\"größer\", true));\n"
        "Host.Echo(Box.RaiseCount(21));\n"
        "Host.Echo(Box.RaisePick(Host) === Box);\n"
        "Host.Echo(Box.RaiseAnything(1));\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_THAT(result.Lines(), ElementsAre("größer -1", "größer|no", "42", "-1", "2"));
}

TEST(JScriptTest, AHandlerThatReturnsNothingChangesNothing) {
    const auto result = RunWithBox(
        "function Box_Ask(text, allow) { text = \"mine\"; allow = false; }\n"
        "function Box_Plain(number, text, flag) { Host.Echo(number, text, flag); return 5; }\n"
        "Host.Echo(Box.RaiseAsk(\"so\", true));\n"
        "Box.RaisePlain(3, \"drei\", false);\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_THAT(result.Lines(), ElementsAre("so|yes", "3 drei 0"));
}

TEST(JScriptTest, TheMessageLoopRunsUntilAHandlerQuits) {
    const auto result = RunWithBox(
        "function Box_Done() { Host.Echo(\"done\"); Host.Quit(3); }\n"
        "Box.RaiseDoneLater();\n"
        "Host.Run();\n");
    EXPECT_THAT(result.Lines(), ElementsAre("done"));
    EXPECT_EQ(result.exitCode, 3);
}

TEST(JScriptTest, ArgumentsAreACollection) {
    ScriptRun run("test.js",
                  "for (var e = new Enumerator(WScript.Arguments); !e.atEnd(); e.moveNext())\n"
                  "    WScript.Echo(e.item());\n"
                  "WScript.Echo(WScript.Arguments.length, WScript.Arguments(1));\n");
    EXPECT_THAT(run.Arguments({L"eins", L"zwei ☃"}).Run().Lines(),
                ElementsAre("eins", "zwei ☃", "2 zwei ☃"));
}

TEST(JScriptTest, AnErrorSaysWhere) {
    const auto result = ScriptRun("test.js", "Host.Echo(1);\n   missing.call();\n").Run();
    EXPECT_EQ(result.output, "1\n");
    EXPECT_THAT(result.errors, HasSubstr("test.js(2, 4): error 0x800A1391 (5009): "));
    EXPECT_THAT(result.errors, HasSubstr("\n    missing.call();"));
    EXPECT_EQ(result.exitCode, 1);
}

}  // namespace
