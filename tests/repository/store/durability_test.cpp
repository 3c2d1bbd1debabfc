#include <gtest/gtest.h>

#include "repository/store/scratch.h"

#ifndef _WIN32
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace repository::store {
namespace {

/// A process that changes a repository and is killed without warning in the middle of it. It says
/// through a pipe which calls have returned.
class KilledProcess {
public:
    template <class Work>
    explicit KilledProcess(Work&& work) {
        int ends[2];
        EXPECT_EQ(pipe(ends), 0);
        process_ = fork();
        if (process_ == 0) {
            close(ends[0]);
            work([&](int done) {
                if (write(ends[1], &done, sizeof done) != sizeof done) _exit(1);
            });
            _exit(0);
        }
        close(ends[1]);
        reports_ = ends[0];
    }

    /// Waits for a number of reports, kills the process and answers the last thing that it
    /// reported.
    int KillAfter(int reports) {
        int last = -1;
        for (int i = 0; i < reports; ++i) {
            if (read(reports_, &last, sizeof last) != sizeof last) break;
        }
        kill(process_, SIGKILL);
        int done = 0;
        while (read(reports_, &done, sizeof done) == sizeof done) last = done;
        waitpid(process_, nullptr, 0);
        close(reports_);
        return last;
    }

private:
    pid_t process_ = 0;
    int reports_ = 0;
};

int Rounds() {
    return IsLongRun() ? 100 : 5;
}

TEST(Durability, WhatHasReturnedIsInTheFileAfterAKill) {
    for (int round = 1; round <= Rounds(); ++round) {
        const Scratch scratch;
        const std::string file = scratch.File("a.orv");
        KilledProcess process([&](auto report) {
            const auto store = Store::Create(file);
            const auto meta = store->MakeMetaNode("M", "");
            const auto number =
                store->MakeProperty(meta, "Number", store->Meta().types.Find("Long"), "");
            for (int i = 0;; ++i) {
                const auto node = store->MakeNode(meta, std::to_string(i), "");
                store->SetValue(node, *number, std::int32_t{i});
                report(i);
            }
        });
        const int last = process.KillAfter(1 + round * 7 % 100);
        ASSERT_GE(last, 0);
        const auto store = Store::Open(file);
        const auto meta = store->Meta().nodes.Find("M");
        for (int i = 0; i <= last; ++i) {
            const auto node = store->Find(std::to_string(i));
            ASSERT_TRUE(node) << i;
            EXPECT_EQ(store->GetValue(*node, *meta->properties.Find("Number")),
                      Value(std::int32_t{i}));
        }
        EXPECT_LE(store->Count(ObjectSet::Instances(*meta)), last + 2);
    }
}

TEST(Durability, ALargeChangeIsThereCompletelyOrNotAtAll) {
    for (int round = 1; round <= Rounds(); ++round) {
        const Scratch scratch;
        const std::string file = scratch.File("a.orv");
        Store::Create(file)->MakeMetaNode("M", "");
        KilledProcess process([&](auto report) {
            const auto store = Store::Open(file);
            const auto meta = store->Meta().nodes.Find("M");
            store->Change([&] {
                for (int i = 0;; ++i) {
                    store->MakeNode(meta, std::to_string(i), std::string(300, 'x'));
                    if (i % 100 == 0) report(i);
                }
            });
        });
        process.KillAfter(1 + round * 20 % 300);
        const auto store = Store::Open(file);
        EXPECT_EQ(store->Count(ObjectSet::Instances(*store->Meta().nodes.Find("M"))), 0);
    }
}

}  // namespace
}  // namespace repository::store
#endif
