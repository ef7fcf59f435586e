#pragma once

#include <string>
#include <string_view>

namespace desk {

/// The commands of the wire protocol: six characters, a three-letter mnemonic and a three-digit argument, without a
/// terminator. Row numbers are those of the catalogue, counted from 1.
namespace mnemonic {

inline constexpr std::string_view timing = "TIM";
inline constexpr std::string_view pattern = "PAT";
inline constexpr std::string_view favorite_timing_on = "FT+";
inline constexpr std::string_view favorite_timing_off = "FT-";
inline constexpr std::string_view favorite_pattern_on = "FP+";
inline constexpr std::string_view favorite_pattern_off = "FP-";
inline constexpr std::string_view output_format = "OUT"; ///< 1 PC, 2 HD, 3 DVI, 4 HDMI
inline constexpr std::string_view hdcp = "HDC";          ///< 0 off, 1 on
inline constexpr std::string_view audio_source = "ASC";  ///< 1 EXT 7.1CH, 2 EXT OPT, 3 INT SINE
inline constexpr std::string_view lpcm_channels = "PCM"; ///< 1 2 CH, 2 5.1 CH, 3 7.1 CH
inline constexpr std::string_view color_space = "CSC";   ///< 1 RGB444, 2 YUV444, 3 YUV422
inline constexpr std::string_view deep_color = "DEE";    ///< 1 8 BIT, 2 10 BIT, 3 12 BIT
inline constexpr std::string_view autorun = "ATO";       ///< 0 off, 1 on
inline constexpr std::string_view my_favorite = "FAV";   ///< 0 off, 1 on
inline constexpr std::string_view color_red = "CRR";     ///< colour settings, 0 to 255
inline constexpr std::string_view color_green = "CRG";
inline constexpr std::string_view color_blue = "CRB";
inline constexpr std::string_view color_grey = "CRY";
inline constexpr std::string_view autorun_row = "ATN"; ///< 1 to 32: the row that the next three set
inline constexpr std::string_view autorun_timing = "ATT";
inline constexpr std::string_view autorun_pattern = "ATP";
inline constexpr std::string_view autorun_interval = "ATI"; ///< seconds; 0 marks the row unused

} // namespace mnemonic

namespace command {

inline constexpr std::string_view reset = "RST001"; ///< has the longest wait of all commands
inline constexpr std::string_view firmware_version = "VER001";

inline constexpr std::string_view query_favorite_timings = "FT+999"; ///< 6 characters for each timing row
inline constexpr std::string_view query_favorite_patterns = "FP+999";
inline constexpr std::string_view query_autorun_list = "ATS999";   ///< 32 records of 24 characters
inline constexpr std::string_view query_custom_string = "MOT999";  ///< the command and 12 characters
inline constexpr std::string_view upload_custom_string = "MOT001"; ///< 12 raw bytes follow

inline constexpr std::string_view choose_hdmi_out = "ESC001"; ///< the sink for the next three
inline constexpr std::string_view choose_hdmi_in = "ESC002";
inline constexpr std::string_view choose_vga_out = "ESC003";
inline constexpr std::string_view read_edid = "ERD001";  ///< 256 raw bytes follow the answer
inline constexpr std::string_view write_edid = "EWR001"; ///< 256 raw bytes follow
inline constexpr std::string_view erase_edid = "ERS001";

/// A set command. Throws failure::invalid_procedure_call for an argument of more than three characters.
std::string set(std::string_view mnemonic, int argument);
/// The query form: reads the current value.
std::string query(std::string_view mnemonic);

} // namespace command

/// Lengths of the long answers, in characters.
inline constexpr int favorite_record = 6; ///< to FT+999 and FP+999: for each row two letters, "+" or "-", the row
inline constexpr int autorun_record = 24; ///< to ATS999: for each step ATN, ATT, ATP and ATI, in command form
inline constexpr int autorun_rows = 32;
inline constexpr int custom_string_length = 12;
inline constexpr int custom_string_answer = 6 + custom_string_length;

} // namespace desk
