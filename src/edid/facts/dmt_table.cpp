#include "edid/facts/dmt_table.h"

#include <array>
#include <cmath>

namespace desk::facts {

namespace {

// VESA DMT: id, active pixels, active lines, interlaced, total pixels, total lines, clock in kHz, reduced blanking
constexpr std::array<dmt_timing, 88> dmt_timings = {{
    {1, 640, 350, false, 832, 445, 31500, false},       {2, 640, 400, false, 832, 445, 31500, false},
    {3, 720, 400, false, 936, 446, 35500, false},       {4, 640, 480, false, 800, 525, 25175, false},
    {5, 640, 480, false, 832, 520, 31500, false},       {6, 640, 480, false, 840, 500, 31500, false},
    {7, 640, 480, false, 832, 509, 36000, false},       {8, 800, 600, false, 1024, 625, 36000, false},
    {9, 800, 600, false, 1056, 628, 40000, false},      {10, 800, 600, false, 1040, 666, 50000, false},
    {11, 800, 600, false, 1056, 625, 49500, false},     {12, 800, 600, false, 1048, 631, 56250, false},
    {13, 800, 600, false, 960, 636, 73250, true},       {14, 848, 480, false, 1088, 517, 33750, false},
    {15, 1024, 768, true, 1264, 817, 44900, false},     {16, 1024, 768, false, 1344, 806, 65000, false},
    {17, 1024, 768, false, 1328, 806, 75000, false},    {18, 1024, 768, false, 1312, 800, 78750, false},
    {19, 1024, 768, false, 1376, 808, 94500, false},    {20, 1024, 768, false, 1184, 813, 115500, true},
    {21, 1152, 864, false, 1600, 900, 108000, false},   {22, 1280, 768, false, 1440, 790, 68250, true},
    {23, 1280, 768, false, 1664, 798, 79500, false},    {24, 1280, 768, false, 1696, 805, 102250, false},
    {25, 1280, 768, false, 1712, 809, 117500, false},   {26, 1280, 768, false, 1440, 813, 140250, false},
    {27, 1280, 800, false, 1440, 823, 71000, true},     {28, 1280, 800, false, 1680, 831, 83500, false},
    {29, 1280, 800, false, 1696, 838, 106500, false},   {30, 1280, 800, false, 1712, 843, 122500, false},
    {31, 1280, 800, false, 1440, 847, 146250, true},    {32, 1280, 960, false, 1800, 1000, 108000, false},
    {33, 1280, 960, false, 1728, 1011, 148500, false},  {34, 1280, 960, false, 1440, 1017, 175500, true},
    {35, 1280, 1024, false, 1688, 1066, 108000, false}, {36, 1280, 1024, false, 1688, 1066, 135000, false},
    {37, 1280, 1024, false, 1728, 1072, 157500, false}, {38, 1280, 1024, false, 1440, 1084, 187250, true},
    {39, 1360, 768, false, 1792, 795, 85500, false},    {40, 1360, 768, false, 1520, 813, 148250, true},
    {41, 1400, 1050, false, 1560, 1080, 101000, true},  {42, 1400, 1050, false, 1864, 1089, 121750, false},
    {43, 1400, 1050, false, 1896, 1099, 156000, false}, {44, 1400, 1050, false, 1912, 1105, 179500, false},
    {45, 1400, 1050, false, 1560, 1112, 208000, true},  {46, 1440, 900, false, 1600, 926, 88750, true},
    {47, 1440, 900, false, 1904, 934, 106500, false},   {48, 1440, 900, false, 1936, 942, 136750, false},
    {49, 1440, 900, false, 1952, 948, 157000, false},   {50, 1440, 900, false, 1600, 953, 182750, true},
    {51, 1600, 1200, false, 2160, 1250, 162000, false}, {52, 1600, 1200, false, 2160, 1250, 175500, false},
    {53, 1600, 1200, false, 2160, 1250, 189000, false}, {54, 1600, 1200, false, 2160, 1250, 202500, false},
    {55, 1600, 1200, false, 2160, 1250, 229500, false}, {56, 1600, 1200, false, 1760, 1271, 268250, true},
    {57, 1680, 1050, false, 1840, 1080, 119000, true},  {58, 1680, 1050, false, 2240, 1089, 146250, false},
    {59, 1680, 1050, false, 2272, 1099, 187000, false}, {60, 1680, 1050, false, 2288, 1105, 214750, false},
    {61, 1680, 1050, false, 1840, 1112, 245500, true},  {62, 1792, 1344, false, 2448, 1394, 204750, false},
    {63, 1792, 1344, false, 2456, 1417, 261000, false}, {64, 1792, 1344, false, 1952, 1423, 333250, true},
    {65, 1856, 1392, false, 2528, 1439, 218250, false}, {66, 1856, 1392, false, 2560, 1500, 288000, false},
    {67, 1856, 1392, false, 2016, 1473, 356500, true},  {68, 1920, 1200, false, 2080, 1235, 154000, true},
    {69, 1920, 1200, false, 2592, 1245, 193250, false}, {70, 1920, 1200, false, 2608, 1255, 245250, false},
    {71, 1920, 1200, false, 2624, 1262, 281250, false}, {72, 1920, 1200, false, 2080, 1271, 317000, true},
    {73, 1920, 1440, false, 2600, 1500, 234000, false}, {74, 1920, 1440, false, 2640, 1500, 297000, false},
    {75, 1920, 1440, false, 2080, 1523, 380500, true},  {76, 2560, 1600, false, 2720, 1646, 268500, true},
    {77, 2560, 1600, false, 3504, 1658, 348500, false}, {78, 2560, 1600, false, 3536, 1672, 443250, false},
    {79, 2560, 1600, false, 3536, 1682, 505250, false}, {80, 2560, 1600, false, 2720, 1694, 552750, true},
    {81, 1366, 768, false, 1792, 798, 85500, false},    {82, 1920, 1080, false, 2200, 1125, 148500, false},
    {83, 1600, 900, false, 1800, 1000, 108000, true},   {84, 2048, 1152, false, 2250, 1200, 162000, true},
    {85, 1280, 720, false, 1650, 750, 74250, false},    {86, 1366, 768, false, 1500, 800, 72000, true},
    {87, 4096, 2160, false, 4176, 2222, 556744, true},  {88, 4096, 2160, false, 4176, 2222, 556188, true},
}};

/// Whether the standard gives the timing a two-byte code. Of those with reduced blanking only 1600x900 and 2048x1152
/// have one.
bool has_standard_code(const dmt_timing& timing) {
    return !timing.interlaced && (!timing.reduced_blanking || timing.id == 0x53 || timing.id == 0x54);
}

} // namespace

double dmt_timing::refresh_hz() const { return pixel_clock_khz * 1000.0 / h_total / v_total * (interlaced ? 2 : 1); }

const dmt_timing* timing_of_dmt(std::uint8_t id) {
    return id == 0 || id > dmt_timings.size() ? nullptr : &dmt_timings[id - 1U];
}

const dmt_timing* standard_dmt(std::uint32_t width, std::uint32_t height, unsigned rate_hz) {
    for (const dmt_timing& t : dmt_timings)
        if (t.h_active == width && t.v_active == height && has_standard_code(t) &&
            std::lround(t.refresh_hz()) == static_cast<long>(rate_hz))
            return &t;
    return nullptr;
}

std::uint8_t dmt_of(const detailed_timing& timing) {
    const std::uint32_t fields = timing.interlaced ? 2 : 1;
    for (const dmt_timing& t : dmt_timings) {
        if (t.h_active != timing.h_active) continue;
        const std::uint32_t total = (timing.v_active + timing.v_blank) * fields + (timing.interlaced ? 1 : 0);
        // a detailed timing counts the clock in 10 kHz
        const bool clock_fits = t.pixel_clock_khz / 10 == timing.pixel_clock_khz / 10;
        if (t.v_active == timing.v_active * fields && t.interlaced == timing.interlaced &&
            t.h_total == timing.h_active + timing.h_blank && t.v_total == total && clock_fits)
            return t.id;
    }
    return 0;
}

} // namespace desk::facts
