#include "generator/sim_options.h"

#include "runtime/failure.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace desk {
namespace {

using option_words = std::vector<std::string>;

TEST(sim_options, has_defaults) {
    const sim_options options = sim_options_of({});
    EXPECT_EQ(options.timings, shipped_timing_count);
    EXPECT_EQ(options.patterns, shipped_pattern_count);
    EXPECT_FALSE(options.quiet);
    EXPECT_FALSE(options.help);
    EXPECT_TRUE(options.link.empty());
    EXPECT_TRUE(options.faults.idle());
}

TEST(sim_options, reads_random_faults) {
    const sim_options options = sim_options_of({"--faults", " 20 seed 7  drop late ", "com1"});
    EXPECT_EQ(options.faults.text(), "20 % of answers are faulty, seed 7: drop late");
    EXPECT_EQ(options.link, "com1");
    for (const option_words& line :
         {option_words{"--faults"}, option_words{"--faults", ""}, option_words{"--faults", "x"},
          option_words{"--faults", "20 lies"}, option_words{"--faults", "--quiet"}})
        EXPECT_THROW(sim_options_of(line), runtime_failure) << line.back();
}

TEST(sim_options, reads_all_options) {
    const sim_options options = sim_options_of({"--timings", "3", "com1", "--quiet", "--patterns", "998"});
    EXPECT_EQ(options.timings, 3);
    EXPECT_EQ(options.patterns, 998);
    EXPECT_TRUE(options.quiet);
    EXPECT_EQ(options.link, "com1");
    EXPECT_TRUE(sim_options_of({"--help"}).help);
    EXPECT_TRUE(sim_options_of({"--version"}).version);
    EXPECT_EQ(sim_options_of({"--send", "build/control", "--version"}).line, "--version");
}

TEST(sim_options, reads_the_path_of_the_control_socket) {
    EXPECT_TRUE(sim_options_of({}).control.empty());
    EXPECT_EQ(sim_options_of({"--control", "build/control", "com1"}).control, "build/control");
}

TEST(sim_options, takes_all_words_after_the_socket_as_one_line) {
    const sim_options options = sim_options_of({"--send", "build/control", "sink", "1", "--none"});
    EXPECT_EQ(options.send_to, "build/control");
    EXPECT_EQ(options.line, "sink 1 --none");
    EXPECT_EQ(sim_options_of({"--send", "build/control"}).line, "");
}

TEST(sim_options, refuses_what_it_does_not_know) {
    for (const option_words& line :
         {option_words{"--timing", "3"}, option_words{"-q"}, option_words{""}, option_words{"com1", "com2"},
          option_words{"--timings"}, option_words{"--timings", "0"}, option_words{"--timings", "999"},
          option_words{"--patterns", "x"}, option_words{"--patterns", "4x"}, option_words{"--patterns", "--quiet"},
          option_words{"--control"}, option_words{"--control", ""}, option_words{"--send"}, option_words{"--send", ""},
          option_words{"--send", "build/control", ""}, option_words{"--quiet", "--send", "build/control"}})
        EXPECT_THROW(sim_options_of(line), runtime_failure) << line.front();
}

} // namespace
} // namespace desk
