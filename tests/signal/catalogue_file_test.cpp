#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace desk {
namespace {

/// The catalogue that comes with the desk, read line by line and apart from the desk's own reader.
struct shipped_catalogue {
    struct timing {
        std::string name;
        double htotal = 0, hactive = 0, hdelay = 0, hsw = 0;
        std::string hpol;
        double vtotal = 0, vactive = 0, vdelay = 0, vsw = 0;
        std::string vpol;
        std::string pix_f;
    };
    std::string text;
    std::vector<timing> timings;
    std::vector<std::string> patterns;

    shipped_catalogue() : text(read_whole_file(CATALOGUE_FILE)) {
        std::istringstream lines(text);
        const int timing_count = std::stoi(line_of(lines));
        for (int i = 0; i < timing_count; ++i)
            timings.push_back(timing_of(line_of(lines)));
        const int pattern_count = std::stoi(line_of(lines));
        for (int i = 0; i < pattern_count; ++i)
            patterns.push_back(without_quotes(line_of(lines)));
        std::string rest;
        EXPECT_FALSE(std::getline(lines, rest)) << "nothing follows the last pattern";
    }

private:
    static std::string line_of(std::istream& lines) {
        std::string line;
        EXPECT_TRUE(std::getline(lines, line)) << "the file is shorter than its counts";
        EXPECT_TRUE(line.ends_with('\r')) << line;
        return line.substr(0, line.find('\r'));
    }
    static std::string without_quotes(const std::string& text) {
        EXPECT_TRUE(text.size() > 2 && text.front() == '"' && text.back() == '"') << text;
        return text.substr(1, text.size() - 2);
    }
    static timing timing_of(const std::string& line) {
        static const std::regex record("\"([^\",]+)\",(\\d+),(\\d+),(\\d+),(\\d+),\"([+-])\","
                                       "(\\d+),(\\d+),(\\d+),(\\d+),\"([+-])\",(\\d+\\.\\d+)");
        std::smatch part;
        if (!std::regex_match(line, part, record)) {
            ADD_FAILURE() << "no timing record: " << line;
            return {};
        }
        const auto number = [&](std::size_t i) { return std::stod(part[i]); };
        return {part[1],   number(2), number(3), number(4),  number(5), part[6],
                number(7), number(8), number(9), number(10), part[11],  part[12]};
    }
};

/// The contents of a timing name: "[13] 800x600 120Hz RB".
struct name_parts {
    int row = 0;
    int width = 0;
    int height = 0;
    std::string scan;
    double rate = 0;
};

name_parts parts_of_name(const std::string& name) {
    static const std::regex form("\\[([ \\d]\\d)\\] (\\d+)x(\\d+)([pi]?) ([\\d.]+)Hz( RB)?");
    std::smatch part;
    if (!std::regex_match(name, part, form)) {
        ADD_FAILURE() << "no timing name: " << name;
        return {};
    }
    double rate = std::stod(part[5]);
    // the television rates beside the whole ones
    for (const double whole : {24.0, 30.0, 60.0})
        if (std::abs(rate - whole / 1.001) < 0.01) rate = whole / 1.001;
    return {std::stoi(part[1]), std::stoi(part[2]), std::stoi(part[3]), part[4], rate};
}

TEST(shipped_catalogue_test, has_enough_rows_and_two_digits_for_each) {
    const shipped_catalogue c;
    EXPECT_GE(c.timings.size(), 60U);
    EXPECT_LE(c.timings.size(), 99U);
    EXPECT_GE(c.patterns.size(), 48U);
    EXPECT_LE(c.patterns.size(), 99U);
}

TEST(shipped_catalogue_test, is_plain_ascii) {
    for (const char c : shipped_catalogue().text)
        ASSERT_TRUE((c >= 0x20 && c <= 0x7E) || c == '\r' || c == '\n') << static_cast<int>(c);
}

TEST(shipped_catalogue_test, has_each_rows_number_in_its_name) {
    const shipped_catalogue c;
    for (std::size_t i = 0; i < c.timings.size(); ++i)
        EXPECT_EQ(std::stoul(c.timings[i].name.substr(1, 2)), i + 1) << c.timings[i].name;
    for (std::size_t i = 0; i < c.patterns.size(); ++i)
        EXPECT_EQ(std::stoul(c.patterns[i].substr(1, 2)), i + 1) << c.patterns[i];
}

TEST(shipped_catalogue_test, has_the_color_setting_at_13_and_the_motion_string_at_41) {
    const shipped_catalogue c;
    EXPECT_NE(c.patterns.at(12).find("Colour Setting"), std::string::npos);
    EXPECT_NE(c.patterns.at(40).find("Motion String"), std::string::npos);
}

TEST(shipped_catalogue_test, has_every_name_once) {
    const shipped_catalogue c;
    std::vector<std::string> names = c.patterns;
    for (const auto& t : c.timings)
        names.push_back(t.name);
    for (std::string& name : names)
        name = name.substr(4);
    std::sort(names.begin(), names.end());
    const auto twice = std::adjacent_find(names.begin(), names.end());
    EXPECT_EQ(twice, names.end()) << *twice;
}

TEST(shipped_catalogue_test, has_the_rate_in_each_name) {
    for (const auto& t : shipped_catalogue().timings) {
        const name_parts name = parts_of_name(t.name);
        const double clock = static_cast<double>(std::stof(t.pix_f));
        const double line_khz = clock / t.htotal * 1000;
        const double frame_hz = clock / (t.vtotal * t.htotal) * 1e6;
        EXPECT_NEAR(line_khz * 1000 / t.vtotal, frame_hz, 1e-9) << t.name;
        const double picture_hz = name.scan == "i" ? 2 * frame_hz : frame_hz;
        EXPECT_NEAR(picture_hz / name.rate, 1, 0.005) << t.name;
        EXPECT_GT(line_khz, 10) << t.name;
        EXPECT_LT(line_khz, 300) << t.name;
    }
}

TEST(shipped_catalogue_test, has_the_size_in_each_name) {
    for (const auto& t : shipped_catalogue().timings) {
        const name_parts name = parts_of_name(t.name);
        EXPECT_EQ(t.hactive, name.width) << t.name;
        EXPECT_EQ(t.vactive, name.height) << t.name;
    }
}

TEST(shipped_catalogue_test, leaves_room_for_every_pulse) {
    for (const auto& t : shipped_catalogue().timings) {
        EXPECT_LE(t.hactive + t.hdelay + t.hsw, t.htotal) << t.name;
        EXPECT_LE(t.vactive + t.vdelay + t.vsw, t.vtotal) << t.name;
        EXPECT_GT(t.hsw, 0) << t.name;
        EXPECT_GT(t.vsw, 0) << t.name;
        EXPECT_LE(t.htotal, 32767) << t.name;
        EXPECT_LE(t.vtotal, 32767) << t.name;
    }
}

TEST(shipped_catalogue_test, has_clocks_of_seven_digits_at_most) {
    for (const auto& t : shipped_catalogue().timings) {
        std::string digits = t.pix_f;
        digits.erase(digits.find('.'), 1);
        digits.erase(0, digits.find_first_not_of('0'));
        EXPECT_LE(digits.size(), 7U) << t.name;
    }
}

TEST(shipped_catalogue_test, has_an_odd_number_of_lines_for_interlaced_timings) {
    int interlaced = 0;
    for (const auto& t : shipped_catalogue().timings) {
        if (parts_of_name(t.name).scan != "i") continue;
        ++interlaced;
        EXPECT_EQ(std::fmod(t.vtotal, 2), 1) << t.name;
        EXPECT_EQ(std::fmod(t.vactive, 2), 0) << t.name;
    }
    EXPECT_GT(interlaced, 0);
}

} // namespace
} // namespace desk
