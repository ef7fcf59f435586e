#pragma once

#include "support/desk_files.h"
#include "support/robot_at_hand.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace desk::test {

/// A robot with a settings file of port 1 and a catalogue of 30 timings, of which row 27 has no clock, and 45 patterns.
class robot_test : public testing::Test {
protected:
    robot_test() {
        directory.put("marlo_rs232.ini", usual_settings);
        std::string catalogue = plain_catalogue(30, 45);
        const std::size_t row = catalogue.find("\"timing 27\"");
        catalogue.replace(catalogue.find("25.175", row), 6, "0");
        directory.put("timing_pattern.ini", catalogue);
    }
    std::string answer(const std::string& line) { return r.answer(line); }
    void expect(const std::string& line, const std::string& expected) { EXPECT_EQ(answer(line), expected) << line; }
    template <class... Lines>
    void expect_ok(const Lines&... lines) {
        (expect(lines, "ok"), ...);
    }
    void expect_refusal(const std::string& line) {
        const std::string got = answer(line);
        EXPECT_TRUE(got.starts_with("refused \"") && got.size() > 11 && got.ends_with("\"")) << line << ": " << got;
    }
    template <class... Lines>
    void expect_refused(const Lines&... lines) {
        (expect_refusal(lines), ...);
    }
    /// Checks answers: "get lab_timing.caption = \"\"".
    void expect_values(const std::vector<std::string>& values) {
        for (const std::string& text : values) {
            const std::size_t middle = text.find(" = ");
            expect(text.substr(0, middle), "ok " + text.substr(middle + 3));
        }
    }
    void expect_no_program(const std::string& line) { expect(line, "refused \"no program\""); }
    void expect_some_ok(const std::string& line) {
        const std::string got = answer(line);
        EXPECT_TRUE(got == "ok" || got.starts_with("ok ")) << line << ": " << got;
    }

    temporary_directory directory;
    robot_at_hand r{directory.path()};
};

} // namespace desk::test
