#include <cstdlib>
#include <fstream>
#include <random>

#include "repository/com/repository_fixture.h"
#include "support/program_run.h"

namespace repository {
namespace {

// Each test is also the program that it kills: this names the file that the program works on.
constexpr const wchar_t* fileVariable = L"ORVANE_TEST_FILE";

int Rounds() {
    return std::getenv("ORVANE_TEST_LONG") != nullptr ? 100 : 5;
}

/// The number of the last call that a program says it has completed.
int Completed(const std::wstring& file) {
    std::ifstream stream(std::filesystem::path(file + L".log"), std::ios::binary);
    int last = -1;
    for (int number; stream >> number;) last = number;
    return last;
}

std::ofstream LogOf(const std::wstring& file) {
    return std::ofstream(std::filesystem::path(file + L".log"), std::ios::binary);
}

/// Runs the test of that name as a program of its own, and kills it some time after it has
/// completed a number of calls.
void RunAndKill(const wchar_t* test, const std::wstring& file, int calls, int milliseconds) {
    SetEnvironmentVariableW(fileVariable, file.c_str());
    wchar_t self[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, self, MAX_PATH);
    const support::RunningProgram program(
        self, {L"--gtest_output=", L"--gtest_brief=1", L"--gtest_filter=" + std::wstring(test)},
        {});
    SetEnvironmentVariableW(fileVariable, nullptr);
    for (int i = 0; i < 3000 && Completed(file) < calls && !program.EndsWithin(10); ++i) {
    }
    Sleep(static_cast<DWORD>(milliseconds));
    program.Kill();
}

void ChangeForEver(const std::wstring& file) {
    const LateBound rep(Component().Create("Repository"));
    ASSERT_TRUE(rep.Do("New", file));
    ASSERT_TRUE(rep.Call("MakeMetaNode", "M"));
    ASSERT_TRUE(rep.Call("MakeProperty", "M", "Number", "Long", "", "Long"));
    std::ofstream log = LogOf(file);
    for (int i = 0;; ++i) {
        const LateBound node = ObjectIn(rep.Call("MakeNode", std::to_string(i), "M", "x"));
        ASSERT_TRUE(node.Do("SetProperty", "Number", i));
        log << i << ' ' << std::flush;
    }
}

TEST(Durability, WhatHasReturnedIsInTheFileWhenTheHostIsKilled) {
    if (const wchar_t* given = _wgetenv(fileVariable)) return ChangeForEver(given);
    std::minstd_rand random(4711);
    for (int round = 0; round < Rounds(); ++round) {
        const TemporaryFolder scratch;
        const std::wstring file = scratch.File(L"a.orv");
        RunAndKill(L"Durability.WhatHasReturnedIsInTheFileWhenTheHostIsKilled", file,
                   static_cast<int>(random() % 10), static_cast<int>(random() % 50));
        const int last = Completed(file);
        ASSERT_GE(last, 0);
        const LateBound rep(Component().Create("Repository"));
        const Outcome opened = rep.Do("Open", file);
        ASSERT_TRUE(opened) << opened.Text();
        for (int i = 0; i <= last; ++i) {
            const LateBound node = ObjectIn(rep.Call("Objects", std::to_string(i)));
            EXPECT_EQ(Result(node.Call("GetProperty", "Number")), Value(i));
        }
        EXPECT_EQ(Result(rep.Call("Objects", std::to_string(last + 2))), support::Nothing());
        ASSERT_TRUE(rep.Do("Close"));
    }
}

std::size_t MetaNodesOf(const LateBound& rep) {
    return ObjectIn(rep.Call("MetaNodes")).Elements(9).size();
}

void Import(const std::wstring& file) {
    const LateBound rep(Component().Create("Repository"));
    ASSERT_TRUE(rep.Do("New", file));
    std::ofstream log = LogOf(file);
    log << "0 " << std::flush;
    ASSERT_TRUE(rep.Call("Import", "stdole2.tlb"));
    log << "1 " << std::flush;
    Sleep(10000);
}

TEST(Durability, AnImportIsThereCompletelyOrNotAtAllWhenTheHostIsKilled) {
    if (const wchar_t* given = _wgetenv(fileVariable)) return Import(given);
    const LateBound whole(Component().Create("Repository"));
    ASSERT_TRUE(whole.Do("New"));
    const std::size_t before = MetaNodesOf(whole);
    const auto start = GetTickCount64();
    ASSERT_TRUE(whole.Call("Import", "stdole2.tlb"));
    const auto duration = GetTickCount64() - start;
    std::minstd_rand random(4712);
    for (int round = 0; round < Rounds(); ++round) {
        const TemporaryFolder scratch;
        const std::wstring file = scratch.File(L"a.orv");
        RunAndKill(L"Durability.AnImportIsThereCompletelyOrNotAtAllWhenTheHostIsKilled", file, 0,
                   static_cast<int>(random() % (2 * duration + 20)));
        const int last = Completed(file);
        ASSERT_GE(last, 0);
        const LateBound rep(Component().Create("Repository"));
        const Outcome opened = rep.Do("Open", file);
        ASSERT_TRUE(opened) << opened.Text();
        const std::size_t nodes = MetaNodesOf(rep);
        if (last == 1 || nodes != before) {
            EXPECT_EQ(nodes, MetaNodesOf(whole));
        }
        ASSERT_TRUE(rep.Do("Close"));
    }
}

}  // namespace
}  // namespace repository
