#include "platform/native_serial_port.h"

#include "support/expect_failure.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

namespace desk {
namespace {

using test::failure_of;

class closed_port : public testing::Test {
protected:
    test::temporary_directory folder;
    std::unique_ptr<serial_port> port = make_native_serial_port(folder.path());
};

TEST_F(closed_port, can_not_be_opened_without_a_number) {
    // not even where a link of that name leads to a terminal
    std::error_code ignored;
    std::filesystem::create_symlink("/dev/ptmx", folder / "com0", ignored);
    EXPECT_EQ(failure_of([&] { port->open(0); }), failure::path_file_access_error);
}

TEST_F(closed_port, can_not_be_opened_where_its_link_leads_to_no_device) {
    std::filesystem::create_symlink("no_device", folder / "com7");
    EXPECT_EQ(failure_of([&] { port->open(7); }), failure::path_file_access_error);
}

TEST_F(closed_port, holds_nothing_and_takes_nothing) {
    port->write(bytes_of("TIM001"));
    EXPECT_EQ(port->in_count(), 0U);
    EXPECT_EQ(port->out_count(), 0U);
    EXPECT_TRUE(port->read().empty());
}

} // namespace
} // namespace desk
