#pragma once

#include <exception>
#include <string>
#include <string_view>
#include <utility>

namespace desk {

/// The run-time failures by number. Only the robot reports `does_not_return`, for a wait that never ends.
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

/// A run-time failure. It ends the program unless the running procedure has armed a handler.
class runtime_failure : public std::exception {
public:
    /// `why` names the value at fault in a few words, for the operator: "300 does not fit into a byte".
    runtime_failure(failure code, std::string why);

    failure code() const { return code_; }
    int number() const { return static_cast<int>(code_); }
    std::string_view text() const { return failure_text(code_); }

    /// One sentence on what was being done and with what: "Reading timing_pattern.ini: timing 3: ... ."
    std::string sentence() const { return why_ + "."; }

    /// Replaces the reason.
    void set_why(std::string why) { why_ = std::move(why); }
    /// Prepends what was being done.
    void add_context(std::string_view what) { why_ = std::string(what) + ": " + why_; }

    const char* what() const noexcept override;

private:
    failure code_;
    std::string why_;
};

/// Runs `work` and adds what was being done to a failure inside it. `what` returns the text, on failure only.
template <class What, class Work>
decltype(auto) while_doing(What&& what, Work&& work) {
    try {
        return std::forward<Work>(work)();
    } catch (runtime_failure& f) {
        f.add_context(std::forward<What>(what)());
        throw;
    }
}

/// Runs `work` and replaces the reason of a failure inside it. `words` returns the new one, on failure only.
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
