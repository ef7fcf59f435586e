// velotrace_cli as its user runs it, on the simulator: each command with its answer.

#ifndef _WIN32

#include "cli/posix_cli_bench.h"

#include <gtest/gtest.h>

#include <string>

namespace desk {
namespace {

class cli_commands : public test::cli_bench {
protected:
    /// The answer for people; everything is done and nothing reported.
    std::string text(const strings& words) {
        const test::program_end ended = run(words);
        EXPECT_EQ(ended.status, 0) << ended.err;
        EXPECT_EQ(ended.err, "");
        return ended.out;
    }
    /// The answer for programs: one line.
    std::string object(strings words) {
        words.insert(words.begin(), "--json");
        const std::string out = text(words);
        EXPECT_TRUE(out.ends_with('\n'));
        EXPECT_EQ(out.find('\n'), out.size() - 1) << out;
        return out.substr(0, out.size() - 1);
    }
};

TEST_F(cli_commands, version) {
    plug_generator_in();
    EXPECT_EQ(text({"version"}), "program   v1.3G\nfirmware  v1.2\n");
    EXPECT_EQ(object({"version"}), R"({"program":"v1.3G","firmware":"v1.2"})");
}

TEST_F(cli_commands, lists_without_a_port) {
    const std::string timings = text({"list", "timings"});
    EXPECT_TRUE(timings.starts_with("  1  [01] timing\n  2  [02] timing\n")) << timings;
    EXPECT_TRUE(timings.ends_with(" 25  [25] timing\n")) << timings;
    EXPECT_TRUE(object({"list", "patterns"}).starts_with(R"({"rows":[{"row":1,"name":"[01] pattern"},)"));
}

TEST_F(cli_commands, set_and_status) {
    plug_generator_in();
    EXPECT_EQ(text({"set", "timing", "7"}), "  7  [07] timing\n");
    EXPECT_EQ(object({"set", "pattern", "[12] PATTERN"}), R"({"row":12,"name":"[12] pattern"})");
    EXPECT_EQ(text({"status"}), "timing   [07] timing\npattern  [12] pattern\noutput   HDMI\nhdcp     OFF\n");
    EXPECT_EQ(object({"status"}), R"({"timing":{"row":7,"name":"[07] timing"},)"
                                  R"("pattern":{"row":12,"name":"[12] pattern"},"output":"HDMI","hdcp":"OFF"})");
}

TEST_F(cli_commands, panel) {
    plug_generator_in();
    EXPECT_EQ(text({"panel", "color-space", "yuv422"}), "color-space yuv422\n");
    EXPECT_EQ(text({"panel"}), "output       hdmi\nhdcp         off\naudio        int-sine\nlpcm         2\n"
                               "color-space  yuv422\ndeep-color   8\nautorun      off\nfavorite     off\n");
    EXPECT_EQ(text({"--quiet", "panel", "hdcp", "on"}), "");
    EXPECT_EQ(text({"panel", "reset"}), "Reset.\n");
    EXPECT_TRUE(object({"panel"}).find(R"("hdcp":"off")") != std::string::npos);
}

TEST_F(cli_commands, color) {
    plug_generator_in();
    EXPECT_EQ(text({"color", "255", "0", "128"}), "Red     255\nGreen   0\nBlue    128\n");
    EXPECT_EQ(object({"color"}), R"({"mode":"rgb","values":[255,0,128]})") << "the last bytes reach the generator";
}

TEST_F(cli_commands, string) {
    plug_generator_in();
    EXPECT_EQ(text({"string", "HELLO WORLD"}), "HELLO WORLD\n");
    EXPECT_EQ(object({"string"}), R"({"text":"HELLO WORLD"})") << "the last bytes reach the generator";
}

TEST_F(cli_commands, favorites) {
    plug_generator_in();
    EXPECT_EQ(text({"favorites", "timings", "2", "25"}), "  2  [02] timing\n 25  [25] timing\n");
    EXPECT_EQ(object({"favorites", "timings"}), R"({"rows":[2,25]})");
}

TEST_F(cli_commands, autorun) {
    plug_generator_in();
    folder.put("steps.csv", "step,timing,pattern,seconds\n1,7,3,5\n");
    EXPECT_EQ(text({"autorun", path("steps.csv")}), "step,timing,pattern,seconds\n1,7,3,5\n");
    EXPECT_EQ(object({"autorun"}), R"({"steps":[{"step":1,"timing":7,"pattern":3,"seconds":5}]})");
    text({"autorun", "-o", path("read back.csv")});
    EXPECT_EQ(folder.content("read back.csv"), "step,timing,pattern,seconds\n1,7,3,5\n");
}

TEST_F(cli_commands, edid_read_in_every_form) {
    plug_generator_in();
    const std::string bin = path("my unit.bin");
    const cli::json answer = cli::json::parse(object({"edid", "read", bin}));
    EXPECT_EQ(answer["file"], bin);
    EXPECT_EQ(answer["checksums"].dump(), "[true,true]");
    const std::string edid = folder.content("my unit.bin");
    ASSERT_EQ(edid.size(), 256U);
    EXPECT_TRUE(edid.starts_with(std::string("\0\xFF\xFF\xFF\xFF\xFF\xFF\0", 8)));

    text({"edid", "read", path("unit.hex")});
    text({"edid", "read", path("unit_c.hex"), "--c"});
    EXPECT_TRUE(folder.content("unit.hex").starts_with("00 FF FF FF FF FF FF 00")) << folder.content("unit.hex");
    EXPECT_NE(folder.content("unit_c.hex").find("0x00,0xFF,0xFF"), std::string::npos) << folder.content("unit_c.hex");

    // standard output: what the file has; with --json an object after it
    EXPECT_EQ(text({"edid", "read", "-"}), folder.content("unit.hex"));
    EXPECT_EQ(text({"edid", "read", "-", "--c"}), folder.content("unit_c.hex"));
    const test::program_end both = run({"--json", "edid", "read", "-"});
    EXPECT_TRUE(both.out.starts_with(folder.content("unit.hex")));
    EXPECT_EQ(last_object(both.out)["sha256"], answer["sha256"]);
}

TEST_F(cli_commands, edid_write_and_verify_every_form) {
    plug_generator_in();
    text({"edid", "read", path("vga.bin"), "--source", "vga"});
    text({"edid", "read", path("vga.hex"), "--source", "vga"});
    text({"edid", "read", path("vga_c.hex"), "--source", "vga", "--c"});
    EXPECT_EQ(text({"edid", "write", path("vga.hex")}), "Match entirely.\n");
    EXPECT_EQ(text({"edid", "verify", path("vga_c.hex")}), "Match entirely.\n");
    EXPECT_EQ(object({"edid", "verify", path("vga.bin")}), R"({"verified":true})");
    EXPECT_EQ(object({"edid", "write", path("vga.bin"), "--no-verify"}), R"({"verified":null})");
}

TEST_F(cli_commands, edid_verify_counts_the_differences) {
    plug_generator_in();
    text({"edid", "write", "--no-verify", put_unit()});
    std::string edid = folder.content("unit.bin");
    ++edid[12];
    --edid[13];
    folder.put("other.bin", edid);
    const test::program_end ended = run({"--json", "edid", "verify", path("other.bin")});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(last_object(ended.out).dump(),
              R"({"verified":false,"differences":2,"error":"There are 2 wrong data !","status":1})");
}

TEST_F(cli_commands, edid_erase) {
    plug_generator_in();
    generator("erase 200");
    EXPECT_EQ(text({"edid", "erase", "--yes"}), "Erased.\n");
    text({"edid", "read", path("unit.bin")});
    EXPECT_EQ(folder.content("unit.bin"), std::string(256, '\xFF'));
}

TEST_F(cli_commands, edid_stamp) {
    plug_generator_in();
    const test::program_end ended =
        run({"--json", "edid", "stamp", put_unit(), "--serial", "258", "--count", "2", "--step", "2"});
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.out, "{\"serial\":258,\"result\":\"PASS\"}\n{\"serial\":260,\"result\":\"PASS\"}\n");
    EXPECT_NE(ended.err.find("258"), std::string::npos) << "progress";
    text({"edid", "read", path("stamped.bin")});
    EXPECT_EQ(folder.content("stamped.bin").substr(12, 4), std::string("\x04\x01\0\0", 4));
}

TEST_F(cli_commands, stamps_after_each_key) {
    plug_generator_in();
    const auto stamping =
        start({"edid", "stamp", put_unit(), "--serial", "7", "--count", "2", "--wait-key"}, {.input = ""});
    EXPECT_TRUE(
        test::eventually([&] { return stamping->err().find("connect unit 8 and press Enter") != std::string::npos; }));
    EXPECT_EQ(stamping->out(), "7  PASS\n");
    stamping->type("\n");
    EXPECT_EQ(stamping->wait_with_open_input(), 0);
    EXPECT_EQ(stamping->out(), "7  PASS\n8  PASS\n");
}

TEST_F(cli_commands, quiet_leaves_out_what_only_confirms) {
    plug_generator_in();
    EXPECT_EQ(text({"--quiet", "set", "timing", "7"}), "");
    EXPECT_NE(text({"--quiet", "status"}), "");
    EXPECT_EQ(object({"--quiet", "set", "timing", "7"}), R"({"row":7,"name":"[07] timing"})");
}

TEST_F(cli_commands, the_port_by_number_or_path) {
    plug_generator_in();
    folder.put("marlo_rs232.ini", "0" + test::usual_settings.substr(1));
    const test::program_end none = run({"status"});
    expect_failure(none, 3, "marlo_rs232.ini names no port: choose one with --port");
    EXPECT_NE(text({"--port", "1", "status"}), "");
    EXPECT_NE(text({"--port", path("com1"), "status"}), "");
    EXPECT_NE(text({"--port", std::filesystem::read_symlink(folder / "line").string(), "status"}), "");
}

TEST_F(cli_commands, leave_the_settings_alone) {
    plug_generator_in();
    text({"edid", "write", "--no-verify", put_unit()});
    text({"--port", path("com1"), "status"});
    EXPECT_EQ(folder.content("marlo_rs232.ini"), test::usual_settings);
}

} // namespace
} // namespace desk

#endif
