#include "edid/previous_files.h"

#include "support/edid_fixture.h"
#include "support/expect_failure.h"

#include <gtest/gtest.h>

#include <string>

namespace desk {
namespace {

using test::strings;

class previous_files_test : public test::edid_fixture {
protected:
    void set_list(const strings& names) {
        for (std::size_t i = 0; i < names.size(); ++i)
            view.lab_pre_f.at(i).caption = names[i];
    }
    strings list() const {
        strings names;
        for (const label& l : view.lab_pre_f)
            names.push_back(l.caption);
        return names;
    }
    strings list_with(const std::string& name) {
        fields.edid_file_name = name;
        previous.add_pre_f();
        return list();
    }
    strings list_without(std::size_t index) {
        set_list(ten);
        previous.forget(index);
        return list();
    }
    const strings ten{"a", "b", "c", "d", "e", "f", "g", "h", "i", "j"};
};

TEST_F(previous_files_test, are_empty_at_first) { EXPECT_EQ(list(), strings(10, "")); }

TEST_F(previous_files_test, take_a_new_one_in_front) {
    EXPECT_EQ(list_with("x"), (strings{"x", "", "", "", "", "", "", "", "", ""}));
    EXPECT_EQ(list_with("y"), (strings{"y", "x", "", "", "", "", "", "", "", ""}));
}

TEST_F(previous_files_test, lose_the_oldest_of_ten) {
    set_list(ten);
    EXPECT_EQ(list_with("x"), (strings{"x", "a", "b", "c", "d", "e", "f", "g", "h", "i"}));
}

TEST_F(previous_files_test, move_one_that_they_have_to_the_front) {
    for (std::size_t found = 0; found < 10; ++found) {
        set_list(ten);
        strings expected = ten;
        expected.erase(expected.begin() + static_cast<int>(found));
        expected.insert(expected.begin(), ten[found]);
        EXPECT_EQ(list_with(ten[found]), expected) << found;
    }
}

TEST_F(previous_files_test, compare_names_letter_by_letter) {
    set_list({"C:\\edid.hex", "B"});
    EXPECT_EQ(list_with("C:\\EDID.hex"), (strings{"C:\\EDID.hex", "C:\\edid.hex", "B", "", "", "", "", "", "", ""}));
    EXPECT_EQ(list_with("C:\\edid.hex "),
              (strings{"C:\\edid.hex ", "C:\\EDID.hex", "C:\\edid.hex", "B", "", "", "", "", "", ""}));
}

TEST_F(previous_files_test, take_the_first_of_two_that_are_the_same) {
    set_list({"a", "b", "c", "b", "d"});
    EXPECT_EQ(list_with("b"), (strings{"b", "a", "c", "b", "d", "", "", "", "", ""}));
}

TEST_F(previous_files_test, close_the_gap_of_a_removed_one) {
    EXPECT_EQ(list_without(0), (strings{"b", "c", "d", "e", "f", "g", "h", "i", "j", ""}));
    EXPECT_EQ(list_without(4), (strings{"a", "b", "c", "d", "f", "g", "h", "i", "j", ""}));
    EXPECT_EQ(list_without(9), (strings{"a", "b", "c", "d", "e", "f", "g", "h", "i", ""}));
}

TEST_F(previous_files_test, highlight_only_the_one_under_the_mouse) {
    view.fra_pre_f.back_color = 0x123456;
    for (std::size_t lit = 0; lit < 10; ++lit) {
        view.lab_pre_f.at(lit).on_mouse_move();
        for (std::size_t i = 0; i < 10; ++i) {
            EXPECT_EQ(view.lab_pre_f.at(i).back_color, i == lit ? 0xFF0000U : 0x123456U) << i << " of " << lit;
            EXPECT_EQ(view.lab_pre_f.at(i).fore_color, i == lit ? 0xFFFFFFU : 0U) << i << " of " << lit;
        }
    }
}

TEST_F(previous_files_test, are_ten) {
    EXPECT_EQ(test::failure_of([&] { previous.lab_pre_f_mouse_move(10); }), failure::subscript_out_of_range);
}

} // namespace
} // namespace desk
