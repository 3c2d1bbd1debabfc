#include "support/server.h"
#include "support/type_library_text.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

namespace {

// Run the test with ORVANE_UPDATE_SNAPSHOTS=1 in the environment to write what the library says
// now, and look at the difference before it is committed.
constexpr const char* snapshotFile = "tests/library/OrvaneControls.snapshot.txt";

std::string Recorded() {
    std::ostringstream text;
    text << std::ifstream(snapshotFile, std::ios::binary).rdbuf();
    return text.str();
}

TEST(Interfaces, AreWhatHostsWereCompiledWith) {
    const support::Server server;
    const std::string present = support::DescribeTypeLibrary(*server.TypeLibrary().Get());
    if (std::getenv("ORVANE_UPDATE_SNAPSHOTS") != nullptr)
        std::ofstream(snapshotFile, std::ios::binary) << present;
    EXPECT_EQ(Recorded(), present) << "see " << snapshotFile;
}

}  // namespace
