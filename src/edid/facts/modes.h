#pragma once

#include "edid/facts/block_reader.h"
#include "edid/facts/formula_timing.h"

#include <cstddef>
#include <cstdint>

namespace desk::facts {

/// Each adds one mode to the facts.
void add_dmt_mode(const block_reader& block, place where, mode_source source, std::uint8_t dmt);
void add_vic_mode(const block_reader& block, place where, mode_source source, std::uint8_t vic, bool native);
void add_hdmi_vic_mode(const block_reader& block, place where, mode_source source, std::uint8_t hdmi_vic);
void add_cvt_mode(const block_reader& block, place where, mode_source source, std::uint32_t width, std::uint32_t height,
                  unsigned rate_hz, blanking kind, bool preferred);
void add_detailed_mode(const block_reader& block, const detailed_timing& timing);

/// The mode of a two-byte standard timing code; reports a reserved one. Nothing for an unused one.
void read_standard_code(const block_reader& block, std::size_t offset);

/// The modes of a three-byte CVT code; reports a reserved one. Nothing for an unused one.
void read_cvt_code(const block_reader& block, std::size_t offset);

/// The modes of the established timings I and II, three bytes from `offset` on.
void read_established(const block_reader& block, std::size_t offset);

/// The modes of the established timings III, six bytes from `offset` on.
void read_established_iii(const block_reader& block, std::size_t offset);

/// Reads a detailed timing of 18 bytes, reports what is wrong with it and adds it to the timings and the modes.
void read_detailed_timing(const block_reader& block, std::size_t offset, bool preferred);

/// Adds a complete timing to the timings and the modes, with the codes whose figures it has; reports an impossible one.
void add_detailed_timing(const block_reader& block, detailed_timing timing, std::string_view clause);

} // namespace desk::facts
