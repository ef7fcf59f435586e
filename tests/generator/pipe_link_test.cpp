#include "generator/pipe_link.h"

#include "support/expect_failure.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>

namespace desk {
namespace {

class a_pipe_link : public testing::Test {
protected:
    static std::string pipe(int number) { return simulator_pipe_prefix + std::to_string(number); }
    std::string sentence_of_linking() {
        return test::sentence_of([this] { const pipe_link refused(file, pipe(1)); });
    }

    test::temporary_directory folder;
    const std::filesystem::path file = folder / "port1.txt";
};

TEST_F(a_pipe_link, names_the_pipe_while_it_exists) {
    {
        const pipe_link link(file, pipe(1));
        EXPECT_EQ(folder.content("port1.txt"), pipe(1) + "\r\n");
    }
    EXPECT_EQ(folder.file_count(), 0U);
}

TEST_F(a_pipe_link, replaces_the_file_of_another_simulator) {
    folder.put("port1.txt", pipe(7) + "\n");
    {
        const pipe_link link(file, pipe(1));
        EXPECT_EQ(folder.content("port1.txt"), pipe(1) + "\r\n");
    }
    EXPECT_EQ(folder.file_count(), 0U);
}

TEST_F(a_pipe_link, leaves_the_file_to_a_simulator_that_took_it_over) {
    std::optional<pipe_link> first(std::in_place, file, pipe(1));
    const pipe_link second(file, pipe(2));
    first.reset();
    EXPECT_EQ(folder.content("port1.txt"), pipe(2) + "\r\n");
}

TEST_F(a_pipe_link, leaves_a_file_that_the_operator_writes_meanwhile) {
    {
        const pipe_link link(file, pipe(1));
        folder.put("port1.txt", "COM12\r\n");
    }
    EXPECT_EQ(folder.content("port1.txt"), "COM12\r\n");
}

TEST_F(a_pipe_link, does_not_replace_a_file_of_the_operator) {
    folder.put("port1.txt", "COM12");
    EXPECT_EQ(sentence_of_linking(), utf8_from_path(file) + " names COM12 and is not replaced: choose another LINK.");
    EXPECT_EQ(folder.content("port1.txt"), "COM12");
    folder.put("port1.txt", R"(\\.\pipe\bench)");
    EXPECT_EQ(sentence_of_linking(),
              utf8_from_path(file) + R"( names \\.\pipe\bench and is not replaced: choose another LINK.)");
    folder.put("port1.txt", "my notes");
    EXPECT_EQ(sentence_of_linking(),
              utf8_from_path(file) + " already exists and is not the file of a port: choose another LINK.");
    EXPECT_EQ(folder.content("port1.txt"), "my notes");
}

TEST_F(a_pipe_link, cannot_be_made_where_there_is_no_folder) {
    EXPECT_EQ(test::failure_of([this] { const pipe_link refused(folder / "no folder/port1.txt", pipe(1)); }),
              failure::path_file_access_error);
    std::filesystem::create_directory(file);
    EXPECT_EQ(test::failure_of([this] { const pipe_link refused(file, pipe(1)); }), failure::path_file_access_error);
    EXPECT_TRUE(std::filesystem::is_directory(file));
}

} // namespace
} // namespace desk
