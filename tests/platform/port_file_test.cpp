#include "platform/port_file.h"

#include "support/expect_failure.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <string>

namespace desk {
namespace {

std::string reason_against(const std::string& content) {
    return test::sentence_of([&] { device_named_by(content); });
}

TEST(port_file, names_a_com_port_of_any_number) {
    EXPECT_EQ(device_named_by("COM12"), "COM12");
    EXPECT_EQ(device_named_by("COM1"), "COM1");
    EXPECT_EQ(device_named_by("COM4096"), "COM4096");
}

TEST(port_file, names_a_pipe) {
    EXPECT_EQ(device_named_by(R"(\\.\pipe\velotrace)"), R"(\\.\pipe\velotrace)");
    EXPECT_EQ(device_named_by(R"(\\.\pipe\two words)"), R"(\\.\pipe\two words)");
    const std::string longest = R"(\\.\pipe\)" + std::string(247, 'x');
    EXPECT_EQ(device_named_by(longest), longest);
}

TEST(port_file, is_read_as_an_editor_leaves_it) {
    EXPECT_EQ(device_named_by("com12\r\n"), "COM12");
    EXPECT_EQ(device_named_by("\r\n  Com12\t\r\n\r\n"), "COM12");
    EXPECT_EQ(device_named_by("\xEF\xBB\xBF"
                              "COM12\n"),
              "COM12");
    EXPECT_EQ(device_named_by("\\\\.\\PIPE\\Bench 3\r\n"), R"(\\.\pipe\Bench 3)");
}

TEST(port_file, without_a_device_is_refused_with_the_reason) {
    const std::string empty = "it is empty; write the device into it, such as COM12.";
    EXPECT_EQ(reason_against(""), empty);
    EXPECT_EQ(reason_against(" \r\n\t"), empty);
    EXPECT_EQ(reason_against("\xEF\xBB\xBF"), empty);
    EXPECT_EQ(reason_against("COM1\nCOM2"), "it has more than one line.");
    EXPECT_EQ(reason_against("COM12 # the adapter"),
              R"("COM12 # the adapter" is neither a COM port, such as COM12, nor a pipe, \\.\pipe\NAME.)");
}

TEST(port_file, has_no_quotes_or_separators) {
    for (const char* const wrong : {"\"COM12\"", "'COM12'", "COM 12", "COM12;", "COM1,COM2", "COM12 COM13"})
        EXPECT_EQ(test::failure_of([&] { device_named_by(wrong); }), failure::path_file_access_error) << wrong;
}

TEST(port_file, names_nothing_but_a_com_port_or_a_pipe_of_this_computer) {
    for (const char* const wrong :
         {"COM", "COM0", "COM012", "COM12345", "COM-1", "COM1:", "LPT1", "12", "NUL", "PhysicalDrive0", "\\\\.\\COM12",
          "\\\\.\\pipe\\", "\\\\.\\pipe\\a\\b", "\\\\server\\pipe\\a", "\\\\?\\pipe\\a", "C:\\windows\\win.ini",
          "\\\\.\\pipe\\a\tb"}) {
        EXPECT_EQ(test::failure_of([&] { device_named_by(wrong); }), failure::path_file_access_error) << wrong;
    }
    EXPECT_EQ(test::failure_of([&] { device_named_by(R"(\\.\pipe\)" + std::string(248, 'x')); }),
              failure::path_file_access_error)
        << "Windows has no longer names";
}

TEST(port_file, shows_no_control_characters) {
    // as saved by an editor with two bytes for each character
    EXPECT_EQ(reason_against(std::string("C\0O\0M\0", 6)),
              R"("C?O?M?" is neither a COM port, such as COM12, nor a pipe, \\.\pipe\NAME.)");
}

TEST(port_file, is_optional) {
    const test::temporary_directory folder;
    EXPECT_EQ(device_of_port_file(port_file(folder.path(), 3)), std::nullopt);
    folder.put("port3.txt", "COM12\r\n");
    EXPECT_EQ(device_of_port_file(port_file(folder.path(), 3)), "COM12");
    EXPECT_EQ(device_of_port_file(port_file(folder.path(), 1)), std::nullopt);
}

TEST(port_file, is_named_in_the_reason) {
    const test::temporary_directory folder;
    const auto file = port_file(folder.path(), 3);
    folder.put("port3.txt", "COM1\nCOM2");
    EXPECT_EQ(test::sentence_of([&] { device_of_port_file(file); }),
              "the file " + utf8_from_path(file) + " names no device: it has more than one line.");
    std::filesystem::remove(file);
    std::filesystem::create_directory(file);
    EXPECT_EQ(test::failure_of([&] { device_of_port_file(file); }), failure::path_file_access_error) << "a folder";
}

TEST(port_file, is_refused_if_it_is_long) {
    const test::temporary_directory folder;
    const auto file = port_file(folder.path(), 3);
    const std::string longer = "the file " + utf8_from_path(file) + " names no device: it is longer than 512 bytes.";
    const std::string device = "COM12";
    folder.put("port3.txt", device + std::string(512 - device.size(), ' '));
    EXPECT_EQ(device_of_port_file(file), device);
    folder.put("port3.txt", device + std::string(513 - device.size(), ' '));
    EXPECT_EQ(test::sentence_of([&] { device_of_port_file(file); }), longer);
    folder.put("port3.txt", device + std::string(1'000'000, '\n') + "COM13");
    EXPECT_EQ(test::sentence_of([&] { device_of_port_file(file); }), longer);
}

TEST(port_file, tells_pipes_from_com_ports) {
    EXPECT_TRUE(is_pipe(R"(\\.\pipe\velotrace)"));
    EXPECT_TRUE(is_pipe(R"(\\.\Pipe\velotrace)"));
    EXPECT_FALSE(is_pipe("COM12"));
    EXPECT_FALSE(is_pipe(""));
}

} // namespace
} // namespace desk
