#include "runtime/failure.h"

#include <gtest/gtest.h>

#include <string>

namespace desk {
namespace {

struct numbered_text {
    failure code;
    int number;
    const char* text;
};

const numbered_text all_failures[] = {
    {failure::does_not_return, 0, "Does not return"},
    {failure::invalid_procedure_call, 5, "Invalid procedure call or argument"},
    {failure::overflow, 6, "Overflow"},
    {failure::subscript_out_of_range, 9, "Subscript out of range"},
    {failure::division_by_zero, 11, "Division by zero"},
    {failure::type_mismatch, 13, "Type mismatch"},
    {failure::file_not_found, 53, "File not found"},
    {failure::file_already_open, 55, "File already open"},
    {failure::input_past_end_of_file, 62, "Input past end of file"},
    {failure::bad_record_number, 63, "Bad record number"},
    {failure::path_file_access_error, 75, "Path/File access error"},
    {failure::invalid_property_value, 380, "Invalid property value"},
    {failure::index_out_of_bounds, 35600, "Index out of bounds"},
    {failure::key_not_unique, 35602, "Key is not unique in collection"},
};

TEST(runtime_failure, has_the_number_and_the_text_of_its_code) {
    for (const numbered_text& f : all_failures) {
        const runtime_failure thrown(f.code, "why");
        EXPECT_EQ(thrown.number(), f.number);
        EXPECT_EQ(thrown.text(), f.text);
        EXPECT_EQ(thrown.code(), f.code);
    }
}

TEST(runtime_failure, explains_itself_in_one_sentence) {
    const runtime_failure thrown(failure::overflow, "300 does not fit into a byte");
    EXPECT_EQ(thrown.sentence(), "300 does not fit into a byte.");
}

TEST(runtime_failure, puts_what_was_being_done_in_front) {
    runtime_failure thrown(failure::overflow, "300 does not fit into a byte");
    thrown.add_context("timing 3");
    thrown.add_context("Reading timing_pattern.ini");
    EXPECT_EQ(thrown.sentence(), "Reading timing_pattern.ini: timing 3: 300 does not fit into a byte.");
    EXPECT_EQ(thrown.number(), 6);
}

TEST(runtime_failure, can_be_given_other_words) {
    runtime_failure thrown(failure::overflow, "300 does not fit into a byte");
    thrown.add_context("forgotten");
    thrown.set_why("the clock is too high");
    EXPECT_EQ(thrown.sentence(), "the clock is too high.");
    EXPECT_STREQ(thrown.what(), "the clock is too high");
    EXPECT_EQ(thrown.code(), failure::overflow);
    thrown.add_context("Decoding a timing");
    EXPECT_EQ(thrown.sentence(), "Decoding a timing: the clock is too high.");
}

TEST(while_doing, hands_the_result_through_and_asks_for_no_words) {
    bool asked = false;
    const auto words = [&] {
        asked = true;
        return "adding";
    };
    EXPECT_EQ(while_doing(words, [] { return 2 + 3; }), 5);
    EXPECT_FALSE(asked);
}

TEST(while_doing, hands_a_reference_through) {
    int value = 1;
    while_doing([] { return ""; }, [&]() -> int& { return value; }) = 7;
    EXPECT_EQ(value, 7);
}

TEST(while_doing, lets_a_failure_learn_what_was_being_done) {
    const auto inner = [] { throw runtime_failure(failure::type_mismatch, "\"x\" is not a number"); };
    try {
        while_doing([] { return "outer"; }, [&] { while_doing([] { return std::string("inner"); }, inner); });
        FAIL() << "nothing was thrown";
    } catch (const runtime_failure& f) {
        EXPECT_EQ(f.code(), failure::type_mismatch);
        EXPECT_EQ(f.sentence(), "outer: inner: \"x\" is not a number.");
    }
}

TEST(while_doing, leaves_other_exceptions_alone) {
    EXPECT_THROW(while_doing([] { return "throwing"; }, [] { throw 5; }), int);
}

TEST(telling, hands_the_result_through_and_asks_for_no_words) {
    bool asked = false;
    const auto words = [&] {
        asked = true;
        return "adding";
    };
    EXPECT_EQ(telling(words, [] { return 2 + 3; }), 5);
    EXPECT_FALSE(asked);
}

TEST(telling, hands_a_reference_through) {
    int value = 1;
    telling([] { return ""; }, [&]() -> int& { return value; }) = 7;
    EXPECT_EQ(value, 7);
}

TEST(telling, puts_its_words_in_the_place_of_those_of_a_failure) {
    const auto inner = [] { throw runtime_failure(failure::overflow, "53325 does not fit"); };
    try {
        while_doing([] { return "outer"; },
                    [&] { telling([] { return std::string("the clock is too high"); }, inner); });
        FAIL() << "nothing was thrown";
    } catch (const runtime_failure& f) {
        EXPECT_EQ(f.code(), failure::overflow);
        EXPECT_EQ(f.sentence(), "outer: the clock is too high.");
    }
}

TEST(telling, leaves_other_exceptions_alone) {
    EXPECT_THROW(telling([] { return "throwing"; }, [] { throw 5; }), int);
}

} // namespace
} // namespace desk
