// Rewrites golden files from what the desk says, for a person to review. tests/golden/update builds and runs it.

#include "golden_file.h"

#include <algorithm>
#include <fstream>
#include <iostream>

namespace desk::golden {
namespace {

void append(std::string& words, const std::string& word) { words += (words.empty() ? "" : " ") + word; }

void update_value(golden_file& file, const std::string& key, const std::string& said) {
    if (file.value(key) != said) file.set_value(key, said);
}

void update_values(golden_file& file, const facts& said) {
    for (const auto& [key, value] : said.values)
        update_value(file, key, value);
    std::map<std::string, std::string> children;
    std::string open;
    std::string bold;
    for (const shown_node& n : said.nodes) {
        update_value(file, "title " + n.key, n.title);
        append(children[n.parent], n.key);
        children[n.key];
        if (n.expanded) append(open, n.key);
        if (n.bold) append(bold, n.key);
    }
    for (const auto& [parent, keys] : children)
        update_value(file, "tree " + parent, keys);
    update_value(file, "open", open);
    update_value(file, "bold", bold);
    for (const auto& [name, shown] : said.texts) {
        const lines over = words_of(shown.over);
        if (name == "block0_established" && shown.outcome == "ok") update_value(file, "boxes", shown.over.substr(6));
        if (name == "block1_db_speaker" && shown.outcome == "ok")
            update_value(file, "pictures", over.empty() ? "" : shown.over.substr(9));
    }
}

lines marked(lines::const_iterator first, lines::const_iterator last) {
    lines body;
    std::transform(first, last, std::back_inserter(body), [](const std::string& line) { return "| " + line + "$"; });
    return body;
}

enum class change { none, made, by_hand };

/// Takes a text one step nearer to what the desk says. A text that includes others is changed in the one text that
/// holds the difference; if more than one does, it is left.
change update_step(golden_file& file, const std::string& name, const shown_text& said) {
    const auto body = file.body(name);
    std::vector<expanded_line> expected;
    const std::string outcome = body ? file.expand(name, expected) : "";
    const bool same = std::equal(expected.begin(), expected.end(), said.text.begin(), said.text.end(),
                                 [](const expanded_line& line, const std::string& text) { return line.text == text; });
    const bool both_empty = expected.empty() && said.text == lines{""};
    if (outcome == said.outcome && (same || both_empty)) return change::none;
    const auto is_literal = [](const std::string& line) { return line[0] == '|'; };
    if (!body || std::all_of(body->begin(), body->end(), is_literal)) {
        file.set_text(name, said.outcome, marked(said.text.begin(), said.text.end()));
        return change::made;
    }
    if (outcome != said.outcome) return change::by_hand;
    std::size_t first = 0;
    while (first < std::min(expected.size(), said.text.size()) && expected[first].text == said.text[first])
        ++first;
    std::size_t left = expected.size();
    std::size_t last = said.text.size();
    if (left == last) {
        left = last = first + 1;
    } else {
        while (std::min(left, last) > first && expected[left - 1].text == said.text[last - 1]) {
            --left;
            --last;
        }
    }
    // an inserted line belongs to the text of the line before it
    const std::size_t from = left > first ? first : first - 1;
    const std::size_t to = left > first ? left : first;
    const expanded_line& owner = expected.at(from);
    // the texts of nodes have been compared with clicks, if TRANS went well
    const bool clicked = file.body("trans") && file.expected().texts["trans"].outcome == "ok";
    if (name == "report" && clicked && !owner.of.starts_with("report")) return change::by_hand;
    lines changed = *file.body(owner.of);
    for (std::size_t i = from; i < to; ++i)
        if (expected[i].of != owner.of || expected[i].place != owner.place + i - from ||
            !is_literal(changed[expected[i].place]))
            return change::by_hand;
    const auto place = changed.begin() + static_cast<std::ptrdiff_t>(owner.place);
    const auto kept = left > first ? place : place + 1;
    const auto at = changed.erase(kept, place + static_cast<std::ptrdiff_t>(to - from));
    const lines lines_said = marked(said.text.begin() + static_cast<std::ptrdiff_t>(first),
                                    said.text.begin() + static_cast<std::ptrdiff_t>(last));
    changed.insert(at, lines_said.begin(), lines_said.end());
    // the layout of the report is the same for all
    const bool of_common =
        file.base() != nullptr && file.base()->base() == nullptr && file.base()->body(owner.of) == file.body(owner.of);
    (of_common ? *file.base() : file).set_text(owner.of, file.outcome(owner.of), changed);
    return change::made;
}

bool update_text(golden_file& file, const std::string& name, const shown_text& said) {
    change made = change::made;
    for (int step = 0; step < 1000 && made == change::made; ++step)
        made = update_step(file, name, said);
    return made == change::none;
}

bool update(golden_file& file, const facts& said) {
    update_values(file, said);
    bool done = true;
    const auto update_one = [&](const std::string& name) {
        if (!said.texts.contains(name) || update_text(file, name, said.texts.at(name))) return;
        std::cout << file.name() << ": change the text " << name << " by hand\n";
        done = false;
    };
    for (const shown_node& n : said.nodes)
        update_one(n.key);
    update_one("trans");
    update_one("report");
    return done;
}

void write(const std::filesystem::path& path, const std::string& content) {
    if (!(std::ofstream(path, std::ios::binary) << content))
        throw std::runtime_error(path.string() + " can't be written");
}

} // namespace
} // namespace desk::golden

int main(int count, char** words) {
    using namespace desk::golden;
    const std::filesystem::path folder = GOLDEN_FILES;
    std::vector<std::filesystem::path> paths(words + 1, words + count);
    if (paths.empty()) paths = golden_files(folder);
    bool done = true;
    const auto each = [&](const std::string& name, const auto& work) {
        try {
            work();
        } catch (const std::exception& e) {
            std::cout << name << ": " << e.what() << "\n";
            done = false;
        }
    };
    // all are read before a base changes
    std::vector<golden_file> files;
    for (const std::filesystem::path& path : paths)
        each(path.stem().string(), [&] { files.emplace_back(path); });
    for (golden_file& file : files) {
        each(file.name(), [&] {
            file.reload_base();
            const desk::edid_buffer edid = file.edid();
            done = update(file, said_about(edid)) && done;
            write(folder / (file.name() + ".txt"), file.written());
            if (file.base() != nullptr) write(folder / (file.base()->name() + ".txt"), file.base()->written());
            write(std::filesystem::path(FUZZ_CORPUS) / (file.name() + ".bin"), {edid.begin(), edid.end()});
        });
    }
    return done ? 0 : 1;
}
