#pragma once

#include "edid/buffers.h"

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace desk::golden {

using lines = std::vector<std::string>;

/// A text that the program shows, its lines escaped as in a file, and how it ended: "ok", "stops" or "fatal N".
struct shown_text {
    std::string outcome = "ok";
    lines text{""};
    std::string over; ///< the boxes or pictures over the text: "boxes 2 7", "pictures fl"
};

struct shown_node {
    std::string key;
    std::string parent; ///< its key, or "-" for a root
    std::string title;
    bool expanded = false;
    bool bold = false;
};

/// Everything that the desk shows for an EDID, expected or actual.
struct facts {
    std::map<std::string, std::string> values; ///< map, start, offset, cea and blocks, as in a file
    std::vector<shown_node> nodes;             ///< in order of adding
    std::map<std::string, shown_text> texts;   ///< "trans", "report", and what a click shows by the key of its node
};

/// A line of an expanded text, and the name of the text in whose own lines it is.
struct expanded_line {
    std::string text;
    std::string of;
    std::size_t place = 0; ///< in the text's body
};

/// One file of the folder; README.md has the form. A file's values are its own, or else those of its base.
class golden_file {
public:
    /// Throws std::runtime_error if the file can't be read or is invalid.
    explicit golden_file(const std::filesystem::path& path);

    const std::string& name() const { return name_; }
    golden_file* base() const { return base_.get(); }
    edid_buffer edid() const;
    facts expected() const;

    /// What follows the key of a line, such as "start" or "tree block1_db"; "": there is none.
    std::string value(const std::string& key) const;
    /// The lines of a text with their marks, changed lines ("~") put in place; nullopt: there is none.
    std::optional<lines> body(const std::string& text) const;
    /// How a text ends by itself: "ok", "stops" or "fatal N".
    std::string outcome(const std::string& text) const;
    bool has(const std::string& key) const;
    /// Expands a text; the lines are empty if it adds no line. Gives the outcome.
    std::string expand(const std::string& text, std::vector<expanded_line>& to) const;

    /// Sets the file's own line, or removes it if the base has the same.
    void set_value(const std::string& key, const std::string& value);
    /// Sets the file's own text, as changes of the text that it is like if that is shorter.
    void set_text(const std::string& text, const std::string& outcome, const lines& body);
    /// Reads the base again, and keeps what the texts of this file are.
    void reload_base();
    std::string written() const;

private:
    struct item {
        std::string key;
        lines written;
    };
    struct own_text {
        std::string outcome;
        std::string like; ///< the text whose lines it changes, of this file or of the base; "": none
        lines body;
    };

    void parse();
    void parse_line(const item& i);
    item& item_of(const std::string& key);
    void remove(const std::string& key);
    std::optional<own_text> text_of(const std::string& name) const;
    lines like_of(const std::string& name, const std::string& like) const;

    std::filesystem::path folder_;
    std::string name_;
    std::shared_ptr<golden_file> base_;
    std::vector<item> items_;
    std::map<std::size_t, std::uint8_t> bytes_;
    std::map<std::string, std::string> values_;
    std::map<std::string, own_text> texts_;
};

/// The files of EDIDs, in order.
std::vector<std::filesystem::path> golden_files(const std::filesystem::path& folder);

/// The words of a line.
lines words_of(const std::string& line);

/// Everything that the desk shows for an EDID.
facts said_about(const edid_buffer& edid);

/// Some of the facts, as lines to compare. Line 0 of a text is its outcome.
struct section {
    std::string name;
    lines all;
};
std::vector<section> sections_of(const facts& all);

} // namespace desk::golden
