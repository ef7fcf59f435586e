#include "robot/queued_dialogs.h"

#include <gtest/gtest.h>

namespace desk::robot {
namespace {

class boxes : public testing::Test {
protected:
    box_answer ask(box_buttons buttons) { return box.show("Sure ?", box_icon::question, buttons); }
    queued_message_box box;
};

TEST_F(boxes, are_answered_ok_or_no_with_nothing_queued) {
    EXPECT_EQ(ask(box_buttons::ok), box_answer::ok);
    EXPECT_EQ(ask(box_buttons::yes_no), box_answer::no);
    EXPECT_EQ(ask(box_buttons::yes_no_cancel), box_answer::no);
}

TEST_F(boxes, are_answered_from_the_queue_in_order) {
    box.queue(box_answer::yes);
    box.queue(box_answer::cancel);
    EXPECT_EQ(ask(box_buttons::yes_no_cancel), box_answer::yes);
    EXPECT_EQ(ask(box_buttons::yes_no_cancel), box_answer::cancel);
    EXPECT_EQ(ask(box_buttons::yes_no_cancel), box_answer::no);
}

TEST_F(boxes, take_the_first_answer_that_they_have_a_button_for) {
    box.queue(box_answer::cancel);
    box.queue(box_answer::no);
    box.queue(box_answer::yes);
    EXPECT_EQ(ask(box_buttons::ok), box_answer::ok);
    EXPECT_EQ(ask(box_buttons::yes_no), box_answer::no);
    EXPECT_EQ(ask(box_buttons::yes_no), box_answer::yes);
    EXPECT_EQ(ask(box_buttons::yes_no_cancel), box_answer::cancel) << "it waited for its box";
}

TEST_F(boxes, take_an_ok_for_an_ok) {
    box.queue(box_answer::ok);
    EXPECT_EQ(ask(box_buttons::yes_no), box_answer::no);
    EXPECT_EQ(ask(box_buttons::ok), box_answer::ok);
}

TEST_F(boxes, are_reported_once_with_text_icon_and_buttons) {
    box.show("a \"b\"", box_icon::critical, box_buttons::ok);
    box.show("", box_icon::none, box_buttons::yes_no);
    box.show("q", box_icon::question, box_buttons::yes_no_cancel);
    box.show("e", box_icon::exclamation, box_buttons::ok);
    box.show("i", box_icon::information, box_buttons::ok);
    EXPECT_EQ(json_text(box.take_shown()), "[{\"text\": \"a \\\"b\\\"\", \"icon\": \"critical\", \"buttons\": \"ok\"}, "
                                           "{\"text\": \"\", \"icon\": \"none\", \"buttons\": \"yesno\"}, "
                                           "{\"text\": \"q\", \"icon\": \"question\", \"buttons\": \"yesnocancel\"}, "
                                           "{\"text\": \"e\", \"icon\": \"exclamation\", \"buttons\": \"ok\"}, "
                                           "{\"text\": \"i\", \"icon\": \"information\", \"buttons\": \"ok\"}]");
    EXPECT_EQ(json_text(box.take_shown()), "[]");
}

class file_dialogs : public testing::Test {
protected:
    file_dialogs() {
        open.title = "Open";
        open.filter = "HEX|*.hex|BIN|*.bin";
        open.filter_index = 2;
        open.init_dir = "C:\\edid";
        open.file_name = "x.bin";
    }
    file_dialog_setup open;
    queued_file_dialog dialog;
};

TEST_F(file_dialogs, are_cancelled_with_nothing_queued) { EXPECT_FALSE(dialog.show(open)); }

TEST_F(file_dialogs, choose_what_is_queued) {
    dialog.queue("/tmp/a.hex", 1);
    dialog.queue("/tmp/b.bin", std::nullopt);
    auto choice = dialog.show(open);
    ASSERT_TRUE(choice);
    EXPECT_EQ(choice->file_name, "/tmp/a.hex");
    EXPECT_EQ(choice->filter_index, 1);
    choice = dialog.show(open);
    ASSERT_TRUE(choice);
    EXPECT_EQ(choice->file_name, "/tmp/b.bin");
    EXPECT_EQ(choice->filter_index, 2) << "as it was set up";
    EXPECT_FALSE(dialog.show(open));
}

TEST_F(file_dialogs, can_be_cancelled_in_their_turn) {
    dialog.queue(std::nullopt, std::nullopt);
    dialog.queue("/tmp/a.hex", std::nullopt);
    EXPECT_FALSE(dialog.show(open));
    EXPECT_TRUE(dialog.show(open));
}

TEST_F(file_dialogs, are_reported_once_as_they_were_set_up) {
    file_dialog_setup save;
    save.kind = file_dialog_setup::dialog_kind::save;
    dialog.queue("/tmp/a.hex", 1);
    dialog.show(open);
    dialog.show(save);
    EXPECT_EQ(json_text(dialog.take_shown()),
              "[{\"kind\": \"open\", \"title\": \"Open\", \"filter\": \"HEX|*.hex|BIN|*.bin\", \"filter_index\": 2, "
              "\"init_dir\": \"C:\\\\edid\", \"file_name\": \"x.bin\"}, "
              "{\"kind\": \"save\", \"title\": \"\", \"filter\": \"\", \"filter_index\": 1, "
              "\"init_dir\": \"\", \"file_name\": \"\"}]");
    EXPECT_EQ(json_text(dialog.take_shown()), "[]");
}

} // namespace
} // namespace desk::robot
