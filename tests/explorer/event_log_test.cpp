#include "explorer/event_log.h"

#include "hosting/error.h"
#include "hosting/file.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

namespace explorer {
namespace {

TEST(EventLogTest, TellsOfEachChange) {
    EventLog log;
    int changes = 0;
    log.onChange = [&changes] { ++changes; };
    log.Add(L"Nodes", L"Click", L"n1");
    log.Add(L"Nodes", L"Change", L"One");
    EXPECT_EQ(changes, 2);
    ASSERT_EQ(log.Entries().size(), 2u);
    EXPECT_EQ(log.Entries()[1].event, L"Change");
    log.Clear();
    EXPECT_EQ(changes, 3);
    EXPECT_TRUE(log.Entries().empty());
}

TEST(EventLogTest, TheFileHasALineOfFourColumnsForEachEntry) {
    const support::TemporaryFolder folder;
    EventLog log;
    log.Add(L"Nodes", L"Click", L"before the file");
    log.WriteTo(folder.File(L"log.txt"));
    log.Add(L"Nodes", L"Click", L"gr\u00fcn\tund\r\nrot");
    log.Clear();
    log.Add(L"Links", L"Change", {});
    std::istringstream lines(hosting::ReadBytes(folder.File(L"log.txt")));
    std::string line;
    ASSERT_TRUE(std::getline(lines, line));
    EXPECT_EQ(line.substr(line.find('\t')), "\tNodes\tClick\tgr\xC3\xBCn und  rot");
    ASSERT_TRUE(std::getline(lines, line));
    EXPECT_EQ(line.substr(line.find('\t')), "\tLinks\tChange\t");
    EXPECT_FALSE(std::getline(lines, line));
}

TEST(EventLogTest, AFileThatCannotBeWrittenIsAnError) {
    const support::TemporaryFolder folder;
    EventLog log;
    EXPECT_THROW(log.WriteTo(folder.File(L"no such folder\\log.txt")), hosting::Error);
}

TEST(EventLogTest, TimesHaveAFixedWidth) {
    SYSTEMTIME time{};
    time.wHour = 7;
    time.wMinute = 5;
    time.wSecond = 9;
    time.wMilliseconds = 42;
    EXPECT_EQ(TimeText(time), L"07:05:09.042");
}

}  // namespace
}  // namespace explorer
