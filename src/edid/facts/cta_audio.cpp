#include "edid/facts/cta_blocks.h"

#include <array>
#include <string>

namespace desk::facts {

namespace {

constexpr std::string_view clause_of_audio = "CTA-861, 7.5.2";
constexpr std::array<double, 7> rates_khz = {32, 44.1, 48, 88.2, 96, 176.4, 192};
constexpr unsigned linear_pcm = 1;
constexpr unsigned extended = 15;

/// By code.
constexpr std::array<std::string_view, 16> formats = {
    "",      "L-PCM",         "AC-3",          "MPEG-1", "MP3", "MPEG-2", "AAC LC",  "DTS",
    "ATRAC", "One Bit Audio", "Enhanced AC-3", "DTS-HD", "MAT", "DST",    "WMA Pro", ""};

/// By extended code.
constexpr std::array<std::string_view, 14> extended_formats = {"",
                                                               "",
                                                               "",
                                                               "",
                                                               "MPEG-4 HE AAC",
                                                               "MPEG-4 HE AAC v2",
                                                               "MPEG-4 AAC LC",
                                                               "DRA",
                                                               "MPEG-4 HE AAC + MPEG Surround",
                                                               "",
                                                               "MPEG-4 AAC LC + MPEG Surround",
                                                               "MPEG-H 3D Audio",
                                                               "AC-4",
                                                               "L-PCM 3D Audio"};
constexpr unsigned mpeg_h = 11;
constexpr unsigned ac_4 = 12;
constexpr unsigned linear_pcm_3d = 13;

void read_sample_sizes(audio_format& format) {
    constexpr std::array<std::uint8_t, 3> sizes = {16, 20, 24};
    for (unsigned i = 0; i < sizes.size(); ++i)
        if ((format.bytes[2] >> i & 1) != 0) format.bits.push_back(sizes[i]);
}

void read_extended_format(audio_format& format) {
    format.extended_code = format.bytes[2] >> 3;
    if (format.extended_code < extended_formats.size()) format.format = extended_formats[format.extended_code];
    if (format.extended_code == mpeg_h || format.extended_code == ac_4) format.channels = 0;
    if (format.extended_code != linear_pcm_3d) return;
    const unsigned count = (format.bytes[1] >> 7 & 1U) << 4 | (format.bytes[0] >> 7 & 1U) << 3 | (format.bytes[0] & 7U);
    format.channels = static_cast<std::uint8_t>(count + 1);
    read_sample_sizes(format);
}

audio_format format_of(const payload& data, std::size_t i) {
    audio_format format;
    format.where = data.at(i, 3);
    format.bytes = {data[i], data[i + 1], data[i + 2]};
    format.code = format.bytes[0] >> 3 & 15;
    format.format = formats[format.code];
    format.channels = static_cast<std::uint8_t>((format.bytes[0] & 7) + 1);
    for (unsigned rate = 0; rate < rates_khz.size(); ++rate)
        if ((format.bytes[1] >> rate & 1) != 0) format.rates_khz.push_back(rates_khz[rate]);
    if (format.code == linear_pcm) read_sample_sizes(format);
    if (format.code >= 2 && format.code <= 8) format.max_bitrate_kbps = static_cast<std::uint16_t>(format.bytes[2] * 8);
    if (format.code == extended) read_extended_format(format);
    return format;
}

} // namespace

void read_audio_block(const payload& data) {
    if (data.empty() || data.size() % 3 != 0)
        data.block.find(severity::error, data.offset() - 1,
                        "An audio data block of " + std::to_string(data.size()) +
                            " bytes holds no whole number of descriptors.",
                        clause_of_audio);
    for (std::size_t i = 0; i + 3 <= data.size(); i += 3) {
        audio_format format = format_of(data, i);
        if (format.format.empty()) {
            format.format = "reserved";
            data.block.find(severity::warning, data.offset(i), "An audio format is a reserved code.", clause_of_audio);
            if (format.code == 0) continue;
        }
        if (format.rates_khz.empty())
            data.block.find(severity::warning, data.offset(i + 1), "An audio format has no sampling rate.",
                            clause_of_audio);
        if (format.code == linear_pcm && format.bits.empty())
            data.block.find(severity::warning, data.offset(i + 2), "L-PCM has no sample size.", clause_of_audio);
        data.block.facts.cta.audio.push_back(std::move(format));
    }
}

void read_speaker_block(const payload& data) {
    constexpr std::string_view clause = "CTA-861, 7.5.3";
    if (data.size() < 3)
        data.block.find(severity::error, data.offset() - 1, "A speaker allocation data block is shorter than 3 bytes.",
                        clause);
    if (data.block.facts.cta.speakers)
        data.block.find(severity::warning, data.offset() - 1, "There is a second speaker allocation data block.",
                        clause);
    else
        data.block.facts.cta.speakers = data.three_bytes(0);
}

std::string_view speaker_name(unsigned bit) {
    constexpr std::array<std::string_view, 20> names = {"front left and right",
                                                        "low frequency effects",
                                                        "front centre",
                                                        "back left and right",
                                                        "back centre",
                                                        "front left and right of centre",
                                                        "rear left and right of centre",
                                                        "front left and right wide",
                                                        "top front left and right",
                                                        "top centre",
                                                        "top front centre",
                                                        "left and right surround",
                                                        "second low frequency effects",
                                                        "top back centre",
                                                        "side left and right",
                                                        "top side left and right",
                                                        "top back left and right",
                                                        "bottom front centre",
                                                        "bottom front left and right",
                                                        "top left and right surround"};
    return bit < names.size() ? names[bit] : std::string_view();
}

} // namespace desk::facts
