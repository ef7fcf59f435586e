#include "edid/serial_number.h"

#include "edid/format/checksum_rule.h"
#include "edid/format/serial_bytes.h"
#include "runtime/failure.h"
#include "runtime/numbers.h"
#include "runtime/text.h"

#include <cmath>
#include <numeric>

namespace desk {

void serial_number::get_sn(std::uint8_t buff_type) { fields_.sn_value = serial_number_of(buffers_.of(buff_type)); }

void serial_number::set_sn(std::uint8_t buff_type) {
    edid_buffer& into = buffers_.of(buff_type);
    // the lowest byte gets the fraction too
    const double number = buff_type == buff::write ? fields_.sn_value : 0;
    while_doing([&] { return "Storing the serial number " + trim(str(number)); },
                [&] {
                    into[15] = to_byte(std::fmod(std::floor(number / 16777216), 256));
                    into[14] = to_byte(std::fmod(std::floor(number / 65536), 256));
                    into[13] = to_byte(std::fmod(std::floor(number / 256), 256));
                    into[12] = to_byte(number - 256 * std::floor(number / 256));
                    cal_checksum(buff_type);
                });
}

void serial_number::cal_checksum(std::uint8_t buff_type) {
    edid_buffer& block = buffers_.of(buff_type);
    const std::int32_t sum = std::accumulate(block.begin(), block.begin() + edid_block_size - 1, std::int32_t{0});
    // Intended: no handler catches the failure of a block that needs 256.
    while_doing([] { return "Correcting the checksum of block 0"; },
                [&] { block[edid_block_size - 1] = to_byte(needed_checksum(sum)); });
}

} // namespace desk
