#include "edid/save_name.h"

#include "support/expect_failure.h"
#include "support/fake_machine.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace desk {
namespace {

using test::failure_of;

TEST(with_ending, keeps_a_name_that_has_it_in_either_case) {
    for (const char* name : {"a.txt", "a.TXT", "a.Txt", ".txt", "/folder/report.tXt"})
        EXPECT_EQ(with_ending(name, ".txt"), name);
}

TEST(with_ending, replaces_the_last_four_characters_whatever_they_are) {
    const std::vector<std::pair<std::string, std::string>> names = {
        {"report", "re.txt"},   {"a.htm", "a.txt"},   {"b.html", "b..txt"},       {"abcd", ".txt"},
        {"name.tx", "nam.txt"}, {"a.txt2", "a..txt"}, {"/folder/a", "/fold.txt"},
    };
    for (const auto& [name, changed] : names)
        EXPECT_EQ(with_ending(name, ".txt"), changed);
}

TEST(with_ending, counts_characters_not_bytes) {
    EXPECT_EQ(with_ending("na\xC3\xA4\xC3\xB6\xC3\xBCx", ".hex"), "na.hex");
    EXPECT_EQ(with_ending("\xE2\x82\xAC.txt", ".txt"), "\xE2\x82\xAC.txt");
}

TEST(with_ending, fails_for_a_name_too_short) {
    for (const char* name : {"", "a", "abc", "\xC3\xA4\xC3\xB6"})
        EXPECT_EQ(failure_of([&] { with_ending(name, ".txt"); }), failure::invalid_procedure_call) << name;
}

class where_to_save : public testing::Test {
protected:
    where_to_save() { directory.put("old.txt", "old"); }
    /// The result when the operator chooses these names in turn; "(nothing)" if there is none.
    std::string chosen(const std::vector<std::string>& names) {
        for (const std::string& name : names)
            m.files.choices.emplace_back(file_choice{name, 2});
        const auto choice = ask_where_to_save(m.host, setup, [this] { setup.title = std::to_string(++prepared); });
        if (choice) {
            EXPECT_EQ(choice->filter_index, 2);
        }
        return choice ? choice->file_name : "(nothing)";
    }
    std::string path(const std::string& name) const { return utf8_from_path(directory / name); }

    test::temporary_directory directory;
    test::fake_machine m;
    file_dialog_setup setup;
    int prepared = 0;
};

TEST_F(where_to_save, is_the_name_chosen) {
    EXPECT_EQ(chosen({path("new.txt")}), path("new.txt"));
    EXPECT_EQ(prepared, 1);
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(where_to_save, is_nowhere_without_a_name) {
    EXPECT_EQ(chosen({}), "(nothing)");
    EXPECT_EQ(chosen({""}), "(nothing)");
    EXPECT_EQ(prepared, 2);
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(where_to_save, needs_a_yes_to_overwrite_a_file) {
    m.boxes.answers = {box_answer::yes};
    EXPECT_EQ(chosen({path("old.txt")}), path("old.txt"));
    EXPECT_EQ(m.boxes.all, (std::vector<test::noted_boxes::shown>{{path("old.txt") + " exists. Overwrite it ?",
                                                                   box_icon::none, box_buttons::yes_no_cancel}}));
}

TEST_F(where_to_save, is_nowhere_if_the_question_is_cancelled) {
    m.boxes.answers = {box_answer::cancel};
    EXPECT_EQ(chosen({path("old.txt"), path("new.txt")}), "(nothing)");
    EXPECT_EQ(prepared, 1);
}

TEST_F(where_to_save, is_asked_in_a_dialog_set_up_anew_each_time) {
    m.boxes.answers = {box_answer::no, box_answer::no};
    EXPECT_EQ(chosen({path("old.txt"), path("old.txt"), path("new.txt")}), path("new.txt"));
    ASSERT_EQ(m.files.shown.size(), 3U);
    EXPECT_EQ(m.files.shown[0].title, "1");
    EXPECT_EQ(m.files.shown[2].title, "3");
}

TEST_F(where_to_save, does_not_change_the_file) {
    m.boxes.answers = {box_answer::yes};
    chosen({path("old.txt")});
    EXPECT_EQ(directory.content("old.txt"), "old");
    EXPECT_EQ(directory.file_count(), 1U);
}

} // namespace
} // namespace desk
