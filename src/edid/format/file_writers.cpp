#include "edid/format/file_writers.h"

#include "edid/format/text_scanner.h"
#include "runtime/text.h"

namespace desk {

namespace {

class raw_bytes final : public text_findings {
public:
    std::string file;
    void pair(std::string_view digits) override { file.push_back(static_cast<char>(value_of_pair(digits))); }
};

class initialiser_lines final : public text_findings {
public:
    std::string file;
    void pair(std::string_view digits) override { line_.append("0x").append(digits).append(","); }
    void comment_begins() override { line_ += " //"; }
    void comment_character(char c) override { line_.push_back(c); }
    void comment_ends() override {
        file.append(line_).append(line_end);
        line_.clear();
    }
    void empty_line() override { file += line_end; }

private:
    std::string line_;
};

template <class Findings>
std::string file_of(std::string_view window_text) {
    Findings found;
    scan_window_text(window_text, found);
    return std::move(found.file);
}

} // namespace

std::string bin_of(std::string_view window_text) { return file_of<raw_bytes>(window_text); }

std::string simple_hex_of(std::string_view window_text) { return std::string(window_text) + std::string(line_end); }

std::string c_language_hex_of(std::string_view window_text) { return file_of<initialiser_lines>(window_text); }

} // namespace desk
