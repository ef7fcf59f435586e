#pragma once

#include <exception>
#include <string>
#include <string_view>
#include <utility>

namespace desk {

/// The run-time failures by number. `does_not_return` is told only by the robot, for a wait without an end.
enum class failure : int {
    does_not_return = 0,
    invalid_procedure_call = 5,
    overflow = 6,
    subscript_out_of_range = 9,
    division_by_zero = 11,
    type_mismatch = 13,
    file_not_found = 53,
    file_already_open = 55,
    input_past_end_of_file = 62,
    bad_record_number = 63,
    path_file_access_error = 75,
    invalid_property_value = 380,
    index_out_of_bounds = 35600,
    key_not_unique = 35602,
};

/// The text that belongs to a failure's number.
std::string_view failure_text(failure code);

/// A run-time failure. It ends the program unless the procedure under way has armed a handler.
class runtime_failure : public std::exception {
public:
    /// `why` says in a few words which value it was, for the operator: "300 does not fit into a byte".
    runtime_failure(failure code, std::string why);

    failure code() const { return code_; }
    int number() const { return static_cast<int>(code_); }
    std::string_view text() const { return failure_text(code_); }

    /// One sentence on what was being done and with what: "Reading timing_pattern.ini: timing 3: ... ."
    std::string sentence() const { return why_ + "."; }

    /// Tells it in other words.
    void set_why(std::string why) { why_ = std::move(why); }
    /// Puts what was being done before the words that are there.
    void add_context(std::string_view what) { why_ = std::string(what) + ": " + why_; }

    const char* what() const noexcept override;

private:
    failure code_;
    std::string why_;
};

/// Runs `work`; a failure inside it learns what was being done. `what` gives the words and is called on failure only.
template <class What, class Work>
decltype(auto) while_doing(What&& what, Work&& work) {
    try {
        return std::forward<Work>(work)();
    } catch (runtime_failure& f) {
        f.add_context(std::forward<What>(what)());
        throw;
    }
}

/// Runs `work`; a failure inside it tells `words` in the place of its own. They are called for on failure only.
template <class Words, class Work>
decltype(auto) telling(Words&& words, Work&& work) {
    try {
        return std::forward<Work>(work)();
    } catch (runtime_failure& f) {
        f.set_why(std::forward<Words>(words)());
        throw;
    }
}

} // namespace desk
