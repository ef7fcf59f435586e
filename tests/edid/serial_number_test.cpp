#include "edid/serial_number.h"

#include "support/edid_fixture.h"
#include "support/expect_failure.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>
#include <vector>

namespace desk {
namespace {

using test::buffer_of;
using test::failure_of;
using test::good_edid;
using test::mended;
using test::needing_256;
using test::strings;
using test::trans;

/// An EDID with these bytes 12 to 15 and the checksum that then belongs to it.
std::string stamped(const std::string& four_bytes, std::string edid = good_edid()) {
    return mended(edid.replace(12, 4, four_bytes), 0);
}

class serial_number_test : public test::edid_fixture {
protected:
    serial_number_test() { buffers.write_buff = buffer_of(good_edid()); }
    double number_in(std::uint8_t buff_type, const std::string& four_bytes) {
        buffers.of(buff_type) = buffer_of(stamped(four_bytes));
        serial.get_sn(buff_type);
        return fields.sn_value;
    }
    void store(double number) {
        fields.sn_value = number;
        serial.set_sn(buff::write);
    }
};

TEST_F(serial_number_test, is_bytes_12_to_15_lowest_first) {
    EXPECT_EQ(number_in(buff::write, std::string("\x00\x00\x00\x00", 4)), 0);
    EXPECT_EQ(number_in(buff::write, std::string("\x01\x00\x00\x00", 4)), 1);
    EXPECT_EQ(number_in(buff::write, std::string("\x00\x01\x00\x00", 4)), 256);
    EXPECT_EQ(number_in(buff::write, std::string("\x00\x00\x01\x00", 4)), 65536);
    EXPECT_EQ(number_in(buff::write, std::string("\x00\x00\x00\x01", 4)), 16777216);
    EXPECT_EQ(number_in(buff::write, "\x78\x56\x34\x12"), 305419896);
    EXPECT_EQ(number_in(buff::write, "\xFF\xFF\xFF\xFF"), 4294967295);
}

TEST_F(serial_number_test, comes_from_the_chosen_buffer) {
    number_in(buff::write, std::string("\x01\0\0\0", 4));
    number_in(buff::read, std::string("\x02\0\0\0", 4));
    number_in(trans, std::string("\x03\0\0\0", 4));
    remember();
    for (const auto& [buff_type, number] : {std::pair{buff::write, 1}, {buff::read, 2}, {trans, 3}}) {
        serial.get_sn(buff_type);
        EXPECT_EQ(fields.sn_value, number);
    }
    EXPECT_EQ(changed(), strings{}) << "the last was 3 before, and nothing else is touched";
}

TEST_F(serial_number_test, is_stored_over_its_whole_range) {
    const std::vector<std::pair<double, std::string>> cases = {
        {0, std::string(4, '\0')},
        {255, std::string("\xFF\0\0\0", 4)},
        {256, std::string("\0\x01\0\0", 4)},
        {65535, std::string("\xFF\xFF\0\0", 4)},
        {65536, std::string("\0\0\x01\0", 4)},
        {16777215, std::string("\xFF\xFF\xFF\0", 4)},
        {16777216, std::string("\0\0\0\x01", 4)},
        {2147483648, std::string("\0\0\0\x80", 4)},
        {4294967295, "\xFF\xFF\xFF\xFF"},
    };
    for (const auto& [number, four_bytes] : cases) {
        store(number);
        EXPECT_EQ(buffers.write_buff, buffer_of(stamped(four_bytes))) << number;
    }
}

TEST_F(serial_number_test, loses_what_is_above_its_highest_byte) {
    store(4294967296.0 + 305419896);
    EXPECT_EQ(buffers.write_buff, buffer_of(stamped("\x78\x56\x34\x12")));
}

TEST_F(serial_number_test, is_the_same_when_it_is_read_again) {
    std::mt19937 random(5);
    for (int i = 0; i < 500; ++i) {
        const auto number = static_cast<double>(random());
        if (failure_of([&] { store(number); })) continue;
        fields.sn_value = -1;
        serial.get_sn(buff::write);
        ASSERT_EQ(fields.sn_value, number);
    }
}

TEST_F(serial_number_test, leaves_block_1_and_its_wrong_checksum) {
    std::string edid = good_edid();
    edid[255] = static_cast<char>(edid[255] + 1);
    buffers.write_buff = buffer_of(edid);
    store(7);
    EXPECT_EQ(buffers.write_buff, buffer_of(stamped(std::string("\x07\0\0\0", 4), edid)));
}

TEST_F(serial_number_test, rounds_a_fraction_into_its_lowest_byte) {
    const std::vector<std::pair<double, std::string>> cases = {
        {0.5, std::string("\x00\0\0\0", 4)},      {1.5, std::string("\x02\0\0\0", 4)},
        {2.4, std::string("\x02\0\0\0", 4)},      {254.5, std::string("\xFE\0\0\0", 4)},
        {255.4, std::string("\xFF\0\0\0", 4)},    {256.5, std::string("\x00\x01\0\0", 4)},
        {511.25, std::string("\xFF\x01\0\0", 4)},
    };
    for (const auto& [number, four_bytes] : cases) {
        store(number);
        EXPECT_EQ(buffers.write_buff, buffer_of(stamped(four_bytes))) << number;
    }
}

TEST_F(serial_number_test, fails_for_a_fraction_that_rounds_up_to_256) {
    store(0x01020304);
    const auto failed = failure_of([&] { store(0x0A0B0CFF + 0.5); });
    EXPECT_EQ(failed, failure::overflow);
    std::string expected = good_edid();
    expected.replace(12, 4, "\x04\x0C\x0B\x0A");
    expected[127] = static_cast<char>(buffers.write_buff[127]);
    EXPECT_EQ(buffers.write_buff, buffer_of(expected)) << "the higher bytes were stored first";
    EXPECT_EQ(buffers.write_buff[127], buffer_of(stamped("\x04\x03\x02\x01"))[127]);
}

TEST_F(serial_number_test, is_0_for_any_buffer_but_the_first) {
    for (const std::uint8_t buff_type : {buff::read, trans, std::uint8_t{9}}) {
        buffers.of(buff_type) = buffer_of(test::some_bytes(256));
        fields.sn_value = 305419896;
        remember();
        serial.set_sn(buff_type);
        EXPECT_EQ(buffers.of(buff_type), buffer_of(stamped(std::string(4, '\0'), test::some_bytes(256))));
        EXPECT_EQ(changed(), strings{buff_type == buff::read ? "read_buff" : "trans_buff"});
    }
}

TEST_F(serial_number_test, fails_for_a_block_that_then_needs_256) {
    const std::string edid = needing_256(stamped(std::string("\x05\0\0\0", 4)), 0);
    buffers.write_buff = buffer_of(edid);
    store(4);
    EXPECT_EQ(buffers.write_buff[127], 1);
    EXPECT_EQ(failure_of([&] { store(5); }), failure::overflow);
    std::string expected = edid;
    expected[127] = 1;
    EXPECT_EQ(buffers.write_buff, buffer_of(expected)) << "the number is stored, and the old checksum stays";
}

TEST_F(serial_number_test, corrects_random_blocks_if_possible) {
    test::random_edids random(6);
    for (int i = 0; i < 300; ++i) {
        const std::string bytes = random.next();
        buffers.write_buff = buffer_of(bytes);
        const bool fails = test::needed_by(bytes, 0) == 256;
        ASSERT_EQ(failure_of([&] { serial.cal_checksum(buff::write); }),
                  fails ? std::optional(failure::overflow) : std::nullopt);
        ASSERT_EQ(buffers.write_buff, buffer_of(fails ? bytes : mended(bytes, 0)));
    }
}

} // namespace
} // namespace desk
