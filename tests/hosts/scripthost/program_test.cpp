#include "hosts/scripthost/script_run.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <array>
#include <fstream>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

namespace fs = std::filesystem;

TEST(ScriptHostTest, PlainScriptsRunUnchanged) {
    ScriptRun run("plain.vbs",
                  "WScript.Echo \"Grüße, 世界 😀\", 1.5, True, Null, Empty & \"\"\n"
                  "For Each argument In WScript.Arguments\n"
                  "  WScript.StdOut.Write \"<\" & argument & \">\"\n"
                  "Next\n"
                  "WScript.StdOut.WriteLine\n"
                  "WScript.Echo WScript.Arguments.Count, WScript.Arguments(0), WScript.ScriptName\n"
                  "WScript.StdErr.WriteLine \"warning\"\n"
                  "Set words = CreateObject(\"Scripting.Dictionary\")\n"
                  "words(\"a\") = 1\n"
                  "WScript.Echo words.Count\n");
    const auto result = run.Arguments({L"eins", L"zwei drei"}).Run();
    EXPECT_THAT(result.Lines(), ElementsAre("Grüße, 世界 😀 1.5 -1 null ", "<eins><zwei drei>",
                                            "2 eins plain.vbs", "1"));
    EXPECT_EQ(result.errors, "warning\n");
    EXPECT_EQ(result.exitCode, 0);
}

TEST(ScriptHostTest, QuittingEndsAPlainScriptAtOnce) {
    const auto result = ScriptRun("quit.vbs",
                                  "On Error Resume Next\n"
                                  "WScript.Quit 9\n"
                                  "WScript.Echo \"still here\"\n")
                            .Run();
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.exitCode, 9);
}

TEST(ScriptHostTest, HostQuitLetsTheScriptGoOn) {
    const auto result = ScriptRun("quit.vbs",
                                  "Host.Quit 4\n"
                                  "Host.Run\n"
                                  "Host.Echo \"still here\"\n")
                            .Run();
    EXPECT_EQ(result.output, "still here\n");
    EXPECT_EQ(result.exitCode, 4);
}

TEST(ScriptHostTest, ARunTimeErrorSaysWhereAndEndsTheScript) {
    const ScriptRun run("wrong.vbs",
                        "Host.Echo \"before\"\n"
                        "\n"
                        "    number = CInt(\"zwölf\")\n"
                        "Host.Echo \"after\"\n");
    const auto result = run.Run();
    EXPECT_EQ(result.output, "before\n");
    EXPECT_THAT(result.errors, HasSubstr("wrong.vbs(3, 5): error 0x800A000D (13): "));
    EXPECT_THAT(result.errors, HasSubstr("\n    number = CInt(\"zwölf\")\n"));
    EXPECT_EQ(result.exitCode, 1);
}

TEST(ScriptHostTest, ASyntaxErrorSaysWhereAndRunsNothing) {
    const auto result = ScriptRun("wrong.vbs",
                                  "Host.Echo \"before\"\n"
                                  "If Then\n")
                            .Run();
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, HasSubstr("wrong.vbs(2, "));
    EXPECT_THAT(result.errors, HasSubstr("\n    If Then\n"));
    EXPECT_EQ(result.exitCode, 1);
}

TEST(ScriptHostTest, AnErrorInAHandlerEndsTheMessageLoop) {
    const auto result =
        ScriptRun("wrong.vbs",
                  "Host.CreateControl \"HostDouble.Control\", \"Box\", 10, 10, 100, 20\n"
                  "Sub Box_Done()\n"
                  "  Err.Raise 1000, \"me\", \"broken\"\n"
                  "End Sub\n"
                  "Box.RaiseDoneLater\n"
                  "Host.Run\n"
                  "Host.Echo \"over\"\n")
            .Run();
    EXPECT_EQ(result.output, "over\n");
    EXPECT_THAT(result.errors,
                HasSubstr("wrong.vbs(3, 3): error 0x800A03E8 (1000): broken [me]\n    Err.Raise"));
    EXPECT_EQ(result.exitCode, 1);
}

TEST(ScriptHostTest, AScriptWithoutEndIsStopped) {
    const auto result = ScriptRun("endless.vbs", "Do\nLoop\n").Options({L"--timeout", L"1"}).Run();
    EXPECT_EQ(result.exitCode, 124);
    EXPECT_THAT(result.errors, HasSubstr("did not end within 1 seconds"));
}

TEST(ScriptHostTest, TheWindowIsShownUnlessItIsHidden) {
    const std::string script =
        "Host.CreateControl \"HostDouble.Control\", \"Box\", 10, 10, 500, 300\n"
        "Host.Echo InStr(Box.Log, \"SetObjectRects 10 10 510 310\") > 0, Box.Shown\n";
    EXPECT_EQ(ScriptRun("window.vbs", script).Options({}).Run().output, "-1 -1\n");
    EXPECT_EQ(ScriptRun("window.vbs", script).Run().output, "-1 0\n");
}

TEST(ScriptHostTest, AManifestMayBeNamed) {
    std::array<wchar_t, 4096> program{};
    GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size()));
    const fs::path manifest = fs::path(program.data()).parent_path() / L"HostDouble.X.manifest";
    const char script[] =
        "Set box = CreateObject(\"HostDouble.Control\")\n"
        "Host.Echo box.Living\n";
    EXPECT_EQ(ScriptRun("named.vbs", script).Options({L"--manifest", manifest}).Run().output,
              "1\n");
    const auto missing =
        ScriptRun("named.vbs", script).Options({L"--manifest", L"none.manifest"}).Run();
    EXPECT_EQ(missing.exitCode, 2);
    EXPECT_THAT(missing.errors, HasSubstr("none.manifest"));
}

TEST(ScriptHostTest, TheFilesEncodingIsRecognised) {
    const auto output = [](const std::string& bytes) {
        return ScriptRun("encoded.vbs", bytes).Run().output;
    };
    EXPECT_EQ(output("\xEF\xBB\xBFHost.Echo \"\xC3\xA4\"\n"), "ä\n");
    EXPECT_EQ(output("Host.Echo \"\xC3\xA4\"\n"), "ä\n");
    const std::u16string wide = u"\xFEFFHost.Echo \"ä\"\n";
    EXPECT_EQ(output({reinterpret_cast<const char*>(wide.data()), wide.size() * 2}), "ä\n");
    EXPECT_THAT(output("Host.Echo \"\xE4\", 1\n"), HasSubstr(" 1\n"));
}

TEST(ScriptHostTest, AWrongCommandLineShowsTheUsage) {
    for (const auto& arguments : std::vector<std::vector<std::wstring>>{
             {}, {L"--unknown", L"x.vbs"}, {L"--timeout", L"soon", L"x.vbs"}, {L"--manifest"}}) {
        const auto result = RunScriptHost(arguments);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_THAT(result.errors, HasSubstr("Usage: orvane-scripthost"));
    }
    EXPECT_THAT(RunScriptHost({L"none.vbs"}).errors, HasSubstr("none.vbs"));
    EXPECT_EQ(ScriptRun("text.txt", "x").Run().exitCode, 2);
}

}  // namespace
