#include "translate/decode/audio.h"

#include "runtime/numbers.h"
#include "translate/decode/data_block.h"
#include "translate/decode/text_output.h"

#include <array>

namespace desk {

namespace {

constexpr int linear_pcm = 1;
constexpr int first_with_bit_rate = 2;
constexpr int last_with_bit_rate = 8;

constexpr std::array<std::string_view, 16> formats = {
    "Reserved", "Linear PCM", "AC-3",    "MPEG1-Layer1/2", "MP3.MPEG1-Layer3", "MPEG2-Multichannel",
    "AAC",      "DTS",        "ATRAC",   "One Bit Audio",  "Dolby Digital+",   "DTS-HD",
    "MAT-MLP",  "DST",        "WMA Pro", "Reserved",
};

// the slash belongs to every value except the first, which can be missing
constexpr std::array<std::string_view, 7> sampling_rates = {"32", "/44.1", "/48", "/88.2", "/96", "/176.4", "/192"};
constexpr std::array<std::string_view, 3> sample_sizes = {"16", "/20", "/24"};

template <class Values>
void print_values_of_bits(std::string& text, const Values& values, std::uint8_t bits) {
    for (std::size_t i = 0; i < values.size(); ++i)
        if (bit(bits, static_cast<int>(i))) print(text, values.at(i));
}

void print_short_audio_descriptor(std::string& text, const data_block& block, int p) {
    print(text, "Audio Format = ");
    const int f = block.byte(p) >> 3 & 15;
    print_line(text, formats.at(static_cast<std::size_t>(f)));
    print(text, "Sampling Rate(KHz) = ");
    print_values_of_bits(text, sampling_rates, block.byte(p + 1));
    print(text, line_end, "Max number of channels = ");
    print_digit(text, (block.byte(p) & 7U) + 1);
    if (f == linear_pcm) {
        print(text, line_end, "Bit per Sample(bit) = ");
        print_values_of_bits(text, sample_sizes, block.byte(p + 2));
    } else if (f >= first_with_bit_rate && f <= last_with_bit_rate) {
        print(text, line_end, "Max bit rate =");
        print(text, str(block.byte(p + 2) * 8), " KHz");
    }
    print(text, line_end, line_end);
}

} // namespace

void decode_audio_block(std::string& text, const edid_buffer& trans_buff, std::uint8_t address) {
    if (address == 0) return print(text, "No Audio Block");
    decode_data_block("audio", trans_buff, address, [&](const data_block& block) {
        // Intended: rounded, not truncated, so the last descriptor can extend beyond the block.
        const int n = to_byte(block.length() / 3.0);
        for (int i = 1; i <= n; ++i)
            print_short_audio_descriptor(text, block, 1 + 3 * (i - 1));
    });
}

} // namespace desk
