// The banner of the version report.
#include "interlist/version.h"

#include <gtest/gtest.h>

#include "tests/harness/program.h"

TEST(PrintBanner, WritesTheTitleInFortyColumnsAndTheVersion) {
    const ScratchFolder folder;
    FILE* const stream = std::fopen((folder / "banner").c_str(), "w");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(print_banner(stream), '\n');
    std::fclose(stream);
    EXPECT_EQ(folder.read("banner"), "Morvex C Source Interlister             v8.3.12\n");
}

TEST(PrintBanner, GivesBackTheFailureOfItsNewline) {
    FILE* const stream = std::fopen("/dev/full", "w");
    ASSERT_NE(stream, nullptr);
    std::setvbuf(stream, nullptr, _IONBF, 0);
    EXPECT_EQ(print_banner(stream), EOF);
    std::fclose(stream);
}
