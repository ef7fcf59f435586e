#include "batch/options.h"

#include "runtime/text.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

namespace desk::batch {

const char* const help_text =
    R"(usage: edid_report [--format FORMAT] [-j N] [-o FOLDER] FILE|FOLDER...

Writes the EDID analysis report of each file, as the desk's Report button shows it.

  FILE          a .hex, .bin or .ddc file, or a file without an extension, which holds raw bytes
  FOLDER        all such files in it, in the order of their names
  --format FORMAT
                text: the report, which is the default. json: everything known about the display, for programs, one
                object a line. html: a page a file with drawings of colours, timings and bytes, and index.html; needs -o
  -o FOLDER     writes each report to FOLDER/NAME.txt, NAME.json or NAME.html; by default all go to standard output.
                Files that differ only in their extension keep it: NAME.hex.txt and NAME.bin.txt. Files of the same
                name in different folders get the folder's: FOLDER_NAME.txt.
                An older report is replaced, any other file is not
  -j N          works on N files at a time; by default one for each processor
  --            what follows is a FILE or a FOLDER, even if it begins with "-"
  -h, --help    shows this text
  --version     shows number, commit and date of this build

An EDID of 128 bytes gets a second block of FF bytes. Of a longer one the first two blocks are reported; json and
html have all of up to 256. There a run-time failure is no problem: the object or page has it and the text so far.
If a file can't be read or its report ends in a run-time failure, standard error says so, with the text so far, and
the other files go on.

Exit status: 0 if each file has its report, 1 if one has not, 2 if the command line is wrong.
)";

namespace {

/// Iterates over the arguments; an option's value can be joined to it.
class word_reader {
public:
    explicit word_reader(const std::vector<std::string>& words) : words_(words) {}

    std::optional<std::string_view> next() {
        if (at_ == words_.size()) return std::nullopt;
        return words_.at(at_++);
    }
    /// The value of an option: what follows it in the same word, or the next word.
    std::string_view value_of(std::string_view word, std::string_view option) {
        if (word.size() > option.size()) return word.substr(option.size());
        const auto value = next();
        if (!value) throw usage_error(std::string(option) + " needs a value");
        return *value;
    }

private:
    const std::vector<std::string>& words_;
    std::size_t at_ = 0;
};

output_format format_of(std::string_view text) {
    if (text == "text") return output_format::text;
    if (text == "json") return output_format::json;
    if (text == "html") return output_format::html;
    throw usage_error("--format needs text, json or html, not \"" + std::string(text) + "\"");
}

unsigned jobs_of(std::string_view text) {
    constexpr unsigned most = 1024;
    unsigned jobs = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), jobs);
    if (read.ec != std::errc() || read.ptr != text.data() + text.size() || jobs < 1 || jobs > most)
        throw usage_error("-j needs a number from 1 to " + std::to_string(most) + ", not \"" + std::string(text) +
                          "\"");
    return jobs;
}

} // namespace

options options_of(const std::vector<std::string>& words) {
    options result;
    word_reader reader(words);
    bool names_only = false;
    while (const auto word = reader.next()) {
        if (names_only || !word->starts_with('-') || *word == "-") {
            result.inputs.emplace_back(*word);
        } else if (*word == "--") {
            names_only = true;
        } else if (*word == "-h" || *word == "--help") {
            result.help = true;
            return result;
        } else if (*word == "--version") {
            result.version = true;
            return result;
        } else if (*word == "--format" || word->starts_with("--format=")) {
            result.format = format_of(reader.value_of(*word, *word == "--format" ? "--format" : "--format="));
        } else if (word->starts_with("-j")) {
            result.jobs = jobs_of(reader.value_of(*word, "-j"));
        } else if (word->starts_with("-o")) {
            result.output_folder = reader.value_of(*word, "-o");
            if (result.output_folder.empty()) throw usage_error("-o needs the name of a folder");
        } else {
            throw usage_error("unknown option " + std::string(*word));
        }
    }
    if (result.inputs.empty()) throw usage_error("no file given");
    if (result.format == output_format::html && result.output_folder.empty())
        throw usage_error("--format html needs -o FOLDER");
    return result;
}

} // namespace desk::batch
