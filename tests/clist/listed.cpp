// Has a listing written to memory and its messages caught.
#include "tests/clist/listed.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include "clist/output.h"
#include "gas2interlist/report.h"

using namespace clist;

listed list(const std::vector<listing_input>& inputs, const listing_options& options) {
    gas2interlist::set_program_name("clist");
    const int descriptor = memfd_create("listing", 0);
    listed result;
    testing::internal::CaptureStderr();
    {
        output out(descriptor);
        result.status = write_listing(inputs, options, out);
        EXPECT_TRUE(out.flush());
    }
    result.messages = testing::internal::GetCapturedStderr();
    result.text.resize(static_cast<std::size_t>(lseek(descriptor, 0, SEEK_END)));
    EXPECT_EQ(pread(descriptor, result.text.data(), result.text.size(), 0),
              static_cast<ssize_t>(result.text.size()));
    close(descriptor);
    return result;
}
