// velotrace_cli as its user runs it: commands from standard input.

#ifndef _WIN32

#include "cli/posix_cli_bench.h"

#include <gtest/gtest.h>

#include <string>

namespace desk {
namespace {

class cli_batch : public test::cli_bench {
protected:
    strings keep_going{"--json", "-", "--keep-going"};
};

TEST_F(cli_batch, answers_each_line) {
    plug_generator_in();
    const test::program_end ended = run_lines("set timing 7\n"
                                              "# a comment\n"
                                              "\n"
                                              "   set pattern '[12] pattern'   # another\n"
                                              "status\r\n"
                                              "list timings\n"
                                              "edid read 'my unit.hex'",
                                              {"--json", "-"});
    EXPECT_EQ(ended.status, 0) << ended.err;
    EXPECT_EQ(ended.err, "");
    const auto answers = objects(ended.out);
    ASSERT_EQ(answers.size(), 5U) << ended.out;
    EXPECT_EQ(answers[0].dump(), R"({"row":7,"name":"[07] timing"})");
    EXPECT_EQ(answers[1].dump(), R"({"row":12,"name":"[12] pattern"})");
    EXPECT_EQ(answers[2]["timing"]["row"], 7);
    EXPECT_EQ(answers[3]["rows"].size(), 25U);
    EXPECT_EQ(answers[4]["file"], "my unit.hex") << "the last line needs no end";
    EXPECT_TRUE(folder.has("my unit.hex"));
}

TEST_F(cli_batch, answers_people) {
    plug_generator_in();
    EXPECT_EQ(run_lines("set timing 7\nset pattern 12\n").out, "  7  [07] timing\n 12  [12] pattern\n");
    EXPECT_EQ(run_lines("set timing 7\nset pattern 12\n", {"--quiet", "-"}).out, "");
}

TEST_F(cli_batch, answers_before_the_next_line_comes) {
    plug_generator_in();
    const auto batch = start({"--json", "-"}, {.input = ""});
    for (int row = 1; row <= 3; ++row) {
        batch->type("set timing " + std::to_string(row) + "\n");
        ASSERT_TRUE(test::eventually([&] { return objects(batch->out()).size() == static_cast<std::size_t>(row); }));
    }
    EXPECT_EQ(batch->wait(), 0);
}

TEST_F(cli_batch, without_lines_needs_no_port) {
    EXPECT_EQ(run_lines("").status, 0);
    EXPECT_EQ(run_lines("\n# nothing\n\n").status, 0);
}

TEST_F(cli_batch, stops_at_the_first_failure) {
    plug_generator_in();
    generator("refuse TIM003 TIM004");
    const test::program_end ended = run_lines("set timing 2\nset timing 3\nset timing 5\n", {"--json", "-"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.err, "velotrace_cli: line 2: Link Error\n");
    const auto answers = objects(ended.out);
    ASSERT_EQ(answers.size(), 2U);
    EXPECT_EQ(answers[1].dump(), R"({"error":"Link Error","status":1})");
    EXPECT_FALSE(has_received("TIM005"));
}

TEST_F(cli_batch, keeps_going_and_returns_the_first_failure) {
    plug_generator_in();
    generator("refuse TIM003 TIM004");
    const test::program_end ended =
        run_lines("set timing 2\nnonsense\nset timing 3\n'unclosed\nset timing 5\n", keep_going);
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.err, "velotrace_cli: line 2: \"nonsense\" is not understood; see --help\n"
                         "velotrace_cli: line 3: Link Error\n"
                         "velotrace_cli: line 4: a quotation mark is not closed\n");
    const auto answers = objects(ended.out);
    ASSERT_EQ(answers.size(), 5U);
    EXPECT_EQ(answers[0]["row"], 2);
    EXPECT_EQ(answers[1]["status"], 2);
    EXPECT_EQ(answers[2]["status"], 1);
    EXPECT_EQ(answers[3]["status"], 2);
    EXPECT_EQ(answers[4]["row"], 5);
}

TEST_F(cli_batch, keeps_going_after_a_failed_upload) {
    plug_generator_in();
    generator("drop 2");
    // the desk's button then stays disabled
    const test::program_end ended = run_lines("string FIRST\nstring SECOND\nstring\n", keep_going);
    EXPECT_EQ(ended.status, 1);
    const auto answers = objects(ended.out);
    ASSERT_EQ(answers.size(), 3U);
    EXPECT_EQ(answers[0].dump(), R"({"error":"Link Error","status":1})");
    EXPECT_EQ(answers[1].dump(), R"({"text":"SECOND"})");
    EXPECT_EQ(answers[2].dump(), R"({"text":"SECOND"})");
}

TEST_F(cli_batch, keeps_going_after_a_failed_unit) {
    plug_generator_in();
    const std::string unit = put_unit();
    generator("refuse EWR001 none");
    const test::program_end ended =
        run_lines("edid stamp '" + unit + "' --serial 7 --count 2\nset timing 3\n", keep_going);
    EXPECT_EQ(ended.status, 1);
    const auto answers = objects(ended.out);
    ASSERT_EQ(answers.size(), 3U);
    EXPECT_EQ(answers[0]["result"], "FAIL");
    EXPECT_EQ(answers[1]["status"], 1);
    EXPECT_EQ(answers[2]["row"], 3);
}

TEST_F(cli_batch, keeps_going_while_the_adapter_is_pulled_out) {
    plug_generator_in();
    const std::string unit = path("unit.bin");
    generator("refuse ERD001 ERD001"); // it waits for data
    const auto batch = start(keep_going, {.input = ""});
    const auto answered = [&](std::size_t count) {
        return test::eventually([&] { return objects(batch->out()).size() == count; });
    };
    batch->type("edid read '" + unit + "'\n");
    ASSERT_TRUE(test::eventually([&] { return has_received("ERD001"); }));
    generator("unplug");
    ASSERT_TRUE(answered(1));
    batch->type("status\n");
    ASSERT_TRUE(answered(2));
    generator("refuse off");
    generator("plug");
    batch->type("edid read '" + unit + "'\n");
    ASSERT_TRUE(answered(3));
    EXPECT_EQ(batch->wait(), 1);
    const auto answers = objects(batch->out());
    EXPECT_EQ(answers[0]["status"], 1);
    EXPECT_EQ(answers[1]["status"], 3);
    EXPECT_EQ(answers[2]["checksums"].dump(), "[true,true]");
}

TEST_F(cli_batch, reports_every_line_on_a_dead_line) {
    std::string lines;
    for (int i = 0; i < 1000; ++i)
        lines += "status\n";
    const test::program_end ended = run_lines(lines, keep_going);
    EXPECT_EQ(ended.status, 3);
    const auto answers = objects(ended.out);
    ASSERT_EQ(answers.size(), 1000U);
    EXPECT_TRUE(std::all_of(answers.begin(), answers.end(), [](const auto& a) { return a["status"] == 3; }));
}

TEST_F(cli_batch, runs_a_hundred_commands) {
    plug_generator_in();
    std::string lines;
    for (int i = 0; i < 100; ++i)
        lines += "set timing " + std::to_string(i % 25 + 1) + "\n";
    const test::program_end ended = run_lines(lines, {"--json", "-"});
    EXPECT_EQ(ended.status, 0) << ended.err;
    EXPECT_EQ(objects(ended.out).size(), 100U);
    EXPECT_EQ(received().size(), 100U);
}

TEST_F(cli_batch, has_no_options_and_no_batch_inside) {
    for (const std::string line : {"--json status", "-", "batch", "--help", "--version", "--port 1 status",
                                   "edid stamp unit.hex --serial 1 --wait-key"})
        EXPECT_EQ(run_lines(line + "\n").status, 2) << line;
}

// hostile input

TEST_F(cli_batch, rejects_a_line_without_end) {
    plug_generator_in();
    const std::string endless(5'000'000, 'x');
    const test::program_end ended =
        run_lines("string " + endless + "\n'" + endless + "\n" + endless + "\nset timing 7", keep_going);
    EXPECT_EQ(ended.status, 2);
    const auto answers = objects(ended.out);
    ASSERT_EQ(answers.size(), 4U);
    for (const std::size_t i : {std::size_t{0}, std::size_t{1}, std::size_t{2}})
        EXPECT_EQ(answers[i].dump(), R"({"error":"a line has at most 4096 bytes","status":2})");
    EXPECT_EQ(answers[3]["row"], 7);
}

TEST_F(cli_batch, rejects_zero_bytes) {
    plug_generator_in();
    using namespace std::string_literals;
    const std::string lines = "set timing 7\0\nedid read u.bin\0.hex\n\0\0\nstring a\0b\nset timing 3\n"s;
    const test::program_end ended = run_lines(lines, keep_going);
    EXPECT_EQ(ended.status, 2);
    const auto answers = objects(ended.out);
    ASSERT_EQ(answers.size(), 5U) << ended.out;
    for (const std::size_t i : {std::size_t{0}, std::size_t{1}, std::size_t{2}, std::size_t{3}})
        EXPECT_EQ(answers[i]["status"], 2) << i;
    EXPECT_EQ(answers[4]["row"], 3);
    EXPECT_EQ(received(), strings{"TIM003"});
}

TEST_F(cli_batch, answers_lines_that_are_not_text) {
    plug_generator_in();
    std::string lines;
    for (int byte = 1; byte < 256; ++byte) {
        if (byte != '\n') lines += std::string(3, static_cast<char>(byte)) + "\n";
    }
    const test::program_end ended = run_lines(lines + "set timing 3\n", keep_going);
    EXPECT_EQ(ended.status, 2);
    for (const cli::json& answer : objects(ended.out))
        EXPECT_TRUE(answer.is_object());
    EXPECT_EQ(last_object(ended.out)["row"], 3);
    EXPECT_EQ(received(), strings{"TIM003"});
}

TEST_F(cli_batch, takes_names_of_files_as_they_are) {
    plug_generator_in();
    for (const std::string name :
         {"with space.bin", "quote'.bin", "-dash.bin", "#1.bin", "\xC3\xA9.bin", "\xFF.bin", "back\\slash.bin"}) {
        std::string quoted = "\"";
        for (const char c : path(name))
            quoted += c == '\\' ? "\\\\" : std::string(1, c);
        quoted += "\"";
        const test::program_end ended = run_lines("edid read " + quoted + "\n", {"--json", "-"});
        EXPECT_EQ(ended.status, 0) << ended.err;
        EXPECT_TRUE(last_object(ended.out).is_object());
        EXPECT_EQ(folder.content(name).size(), 256U) << name;
    }
}

} // namespace
} // namespace desk

#endif
