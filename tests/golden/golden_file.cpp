#include "golden_file.h"

#include "runtime/text.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <functional>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace desk::golden {

namespace {

bool is_text_line(std::string_view line) {
    return line.size() > 1 && line[1] == ' ' && std::string_view("|=*~").find(line[0]) != std::string_view::npos;
}

/// The text between a mark, "| " or "~ ", and the "$" at the end.
std::string literal(const std::string& line) { return line.substr(2, line.size() - 3); }

std::string joined(const lines& words, std::size_t from) {
    std::string text;
    for (std::size_t i = from; i < words.size(); ++i)
        text += (i == from ? "" : " ") + words[i];
    return text;
}

/// "Label = " of a line "Label = value"; "": it has none.
std::string label_of(const std::string& line) {
    const std::size_t at = line.find(" = ");
    return at == std::string::npos ? "" : line.substr(0, at + 3);
}

/// The place of the one line that has this label; none, or more than one: nullopt.
std::optional<std::size_t> place_of(const std::string& label, const lines& body) {
    std::optional<std::size_t> place;
    for (std::size_t i = 0; i < body.size(); ++i) {
        if (label.empty() || !body[i].starts_with("| " + label)) continue;
        if (place) return std::nullopt;
        place = i;
    }
    return place;
}

/// The changes that make `like` the same as `body`; nullopt: changes of labelled lines do not.
std::optional<lines> changes(const lines& body, const lines& like) {
    if (body.size() != like.size()) return std::nullopt;
    lines changed;
    for (std::size_t i = 0; i < body.size(); ++i) {
        if (body[i] == like[i]) continue;
        if (body[i][0] != '|' || place_of(label_of(literal(body[i])), like) != i) return std::nullopt;
        changed.push_back("~" + body[i].substr(1));
    }
    return changed;
}

/// `name` with "#" for its last digit; "": it ends in none.
std::string numbered(const std::string& name) {
    return name.empty() || name.back() < '0' || name.back() > '9' ? "" : name.substr(0, name.size() - 1) + "#";
}

std::string with_number(std::string text, char digit) {
    std::replace(text.begin(), text.end(), '#', digit);
    return text;
}

constexpr std::array<std::string_view, 3> table_words = {"start", "offset", "cea"};

} // namespace

lines words_of(const std::string& line) {
    std::istringstream in(line);
    lines words;
    for (std::string word; in >> word;)
        words.push_back(word);
    return words;
}

golden_file::golden_file(const std::filesystem::path& path) : folder_(path.parent_path()), name_(path.stem().string()) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error(path.string() + " can't be read");
    for (std::string line; std::getline(file, line);) {
        const lines words = words_of(line);
        const std::size_t star = std::min(line.find("*| "), line.size());
        const bool repeated = star > 0 && line.find_first_not_of("0123456789") == star;
        if ((repeated || is_text_line(line)) && !items_.empty()) {
            items_.back().written.insert(items_.back().written.end(), repeated ? std::stoul(line) : 1U,
                                         repeated ? line.substr(star + 1) : line);
            continue;
        }
        const std::string kind = words.empty() || line[0] == '#' ? "#" : words[0];
        const bool named =
            words.size() > 1 && (kind == "tree" || kind == "reported" || kind == "title" || kind == "text");
        items_.push_back({named ? kind + " " + words[1].substr(0, words[1].find(':')) : kind, {line}});
        if (kind == "base") base_ = std::make_shared<golden_file>(folder_ / (words.at(1) + ".txt"));
    }
    parse();
}

void golden_file::parse() {
    bytes_.clear();
    values_.clear();
    texts_.clear();
    for (const item& i : items_)
        parse_line(i);
}

void golden_file::parse_line(const item& i) {
    const lines words = words_of(i.written.front());
    if (i.key == "#" || i.key == "base") return;
    if (i.key == "bytes") {
        std::size_t at = std::stoul(words.at(1), nullptr, 16);
        for (std::size_t w = 2; w < words.size(); ++w) {
            const std::size_t star = words[w].find('*');
            const int count = star == std::string::npos ? 1 : std::stoi(words[w].substr(0, star));
            const auto byte = std::stoul(words[w].substr(star == std::string::npos ? 0 : star + 1), nullptr, 16);
            for (int n = 0; n < count; ++n)
                bytes_[at++] = static_cast<std::uint8_t>(byte);
        }
    } else if (i.key == "table") {
        for (std::size_t w = 1; w < words.size(); ++w)
            values_[words[w].substr(0, words[w].find('='))] = words[w].substr(words[w].find('=') + 1);
    } else if (i.key.starts_with("text ")) {
        const auto like = std::find(words.begin(), words.end(), "like");
        own_text text{joined({words.begin(), like}, 2),
                      like == words.end() ? "" : like[1],
                      {i.written.begin() + 1, i.written.end()}};
        if (text.outcome.empty()) text.outcome = "ok";
        const bool changes_lines = !text.body.empty() && text.body[0][0] == '~';
        if (changes_lines || !text.like.empty()) {
            lines body = like_of(words[1], text.like);
            for (const std::string& line : text.body) {
                const auto place = place_of(label_of(literal(line)), body);
                if (!place) throw std::runtime_error(name_ + ": no one line to change: " + line);
                body[*place] = "|" + line.substr(1);
            }
            text.body = body;
        }
        texts_[words[1]] = text;
    } else {
        values_[i.key] = joined(words, i.key.find(' ') == std::string::npos ? 1 : 2);
    }
}

lines golden_file::like_of(const std::string& name, const std::string& like) const {
    const auto source = like.empty() ? (base_ ? base_->body(name) : std::nullopt) : body(like);
    if (!source) throw std::runtime_error(name_ + ": no text whose lines " + name + " can change");
    return *source;
}

bool golden_file::has(const std::string& key) const { return values_.contains(key) || (base_ && base_->has(key)); }

std::string golden_file::value(const std::string& key) const {
    for (const golden_file* f = this; f != nullptr; f = f->base())
        if (const auto found = f->values_.find(key); found != f->values_.end()) return found->second;
    const std::string of_all = numbered(key);
    return of_all.empty() ? "" : with_number(value(of_all), key.back());
}

std::optional<golden_file::own_text> golden_file::text_of(const std::string& name) const {
    for (const golden_file* f = this; f != nullptr; f = f->base())
        if (const auto found = f->texts_.find(name); found != f->texts_.end()) return found->second;
    const std::string of_all = numbered(name);
    if (of_all.empty()) return std::nullopt;
    auto found = text_of(of_all);
    if (found)
        for (std::string& line : found->body)
            line = with_number(line, name.back());
    return found;
}

std::optional<lines> golden_file::body(const std::string& text) const {
    const auto found = text_of(text);
    return found ? std::optional(found->body) : std::nullopt;
}

std::string golden_file::outcome(const std::string& text) const {
    const auto found = text_of(text);
    return found ? found->outcome : "ok";
}

edid_buffer golden_file::edid() const {
    edid_buffer all = base_ && !base_->bytes_.empty() ? base_->edid() : edid_buffer{};
    for (const auto& [at, byte] : bytes_)
        all.at(at) = byte;
    return all;
}

std::string golden_file::expand(const std::string& name, std::vector<expanded_line>& to) const {
    const auto text = text_of(name);
    if (!text) throw std::runtime_error(name_ + ": no text " + name);
    const auto include = [&](const std::string& other, bool on_the_same_line) {
        std::vector<expanded_line> more;
        std::string outcome = expand(other, more);
        auto from = more.begin();
        if (on_the_same_line && !to.empty() && from != more.end()) to.back().text += (from++)->text;
        to.insert(to.end(), from, more.end());
        return outcome;
    };
    for (std::size_t place = 0; place < text->body.size(); ++place) {
        const std::string& line = text->body[place];
        const lines words = words_of(line);
        std::string outcome = "ok";
        if (line[0] == '|') {
            to.push_back({literal(line), name, place});
        } else if (line[0] == '*') {
            const std::string listed = has("reported " + words.at(1)) ? "reported " : "tree ";
            for (const std::string& child : words_of(value(listed + words[1])))
                if (outcome == "ok") outcome = include(text_of("report." + child) ? "report." + child : child, false);
        } else if (words.at(1) == "the") {
            const edid_buffer bytes = edid();
            std::string row;
            for (std::size_t i = std::stoul(words.at(3)); i <= std::stoul(words.at(5)); ++i) {
                row += hex2(bytes.at(i)) + " ";
                if (i % 8 == 7)
                    to.push_back({std::exchange(row, "") + "//" + hex(static_cast<std::uint8_t>(i)), name, place});
            }
            to.push_back({"", name, place});
        } else {
            for (std::size_t w = 1; w < words.size() && outcome == "ok"; ++w)
                outcome = include(words[w], w > 1);
        }
        if (outcome != "ok") return outcome;
    }
    return text->outcome;
}

facts golden_file::expected() const {
    facts all;
    for (const char* key : {"map", "start", "offset", "cea", "blocks"})
        all.values[key] = value(key);
    const auto show = [&](const std::string& name) -> shown_text& {
        std::vector<expanded_line> expanded;
        shown_text& text = all.texts[name];
        text.outcome = expand(name, expanded);
        if (!expanded.empty()) text.text.clear();
        for (const expanded_line& line : expanded)
            text.text.push_back(line.text);
        return text;
    };
    const bool translated = show("trans").outcome == "ok";
    const auto is_in = [&](const char* key, const std::string& node) {
        const lines words = words_of(value(key));
        return std::find(words.begin(), words.end(), node) != words.end();
    };
    const auto add = [&](const std::string& key, const std::string& parent) {
        all.nodes.push_back({key, parent, value("title " + key), is_in("open", key), is_in("bold", key)});
        if (!translated) return;
        shown_text& text = show(key);
        const std::string pictures = value("pictures");
        if (text.outcome == "ok" && key == "block0_established") text.over = "boxes " + value("boxes");
        if (text.outcome == "ok" && key == "block1_db_speaker" && !pictures.empty()) text.over = "pictures " + pictures;
    };
    const std::function<void(const std::string&)> add_children = [&](const std::string& parent) {
        for (const std::string& child : words_of(value("tree " + parent))) {
            add(child, parent);
            add_children(child);
        }
    };
    const lines roots = words_of(value("tree -"));
    for (const std::string& root : roots)
        add(root, "-");
    for (const std::string& root : roots)
        add_children(root);
    show("report");
    return all;
}

golden_file::item& golden_file::item_of(const std::string& key) {
    const auto found = std::find_if(items_.begin(), items_.end(), [&](const item& i) { return i.key == key; });
    if (found != items_.end()) return *found;
    const std::string kind = key.substr(0, key.find(' '));
    const auto last =
        std::find_if(items_.rbegin(), items_.rend(), [&](const item& i) { return i.key.starts_with(kind); });
    const auto place =
        last != items_.rend() || kind == "text"
            ? last.base()
            : std::find_if(items_.begin(), items_.end(), [](const item& i) { return i.key.starts_with("text "); });
    return *items_.insert(last == items_.rend() && kind == "text" ? items_.end() : place, {key, {}});
}

void golden_file::remove(const std::string& key) {
    std::erase_if(items_, [&](const item& i) { return i.key == key; });
    parse();
}

void golden_file::set_value(const std::string& key, const std::string& to) {
    if (std::find(table_words.begin(), table_words.end(), key) != table_words.end()) {
        values_[key] = to;
        std::string words;
        for (const std::string_view word : table_words) {
            const std::string of_word = value(std::string(word));
            if (!base_ || base_->value(std::string(word)) != of_word) words += " " + std::string(word) + "=" + of_word;
        }
        if (words.empty()) return remove("table");
        item_of("table").written = {"table" + words};
    } else if (base_ && base_->value(key) == to) {
        return remove(key);
    } else {
        const bool list = key.starts_with("tree ") || key.starts_with("reported ");
        item_of(key).written = {key + (list ? ":" : "") + (to.empty() ? "" : " " + to)};
    }
    parse();
}

void golden_file::set_text(const std::string& name, const std::string& outcome, const lines& body) {
    const std::string key = "text " + name;
    const auto of_base = base_ ? base_->text_of(name) : std::nullopt;
    if (of_base && of_base->outcome == outcome && of_base->body == body) return remove(key);
    const std::string like = texts_.contains(name) ? texts_[name].like : "";
    const bool has_source = !like.empty() || of_base;
    const auto changed = has_source ? changes(body, like_of(name, like)) : std::nullopt;
    const bool shorter = changed && (like.empty() ? !changed->empty() && changed->size() + 1 < body.size()
                                                  : changed->size() < body.size());
    lines written = {key + (outcome == "ok" ? "" : " " + outcome) + (shorter && !like.empty() ? " like " + like : "")};
    const lines& rest = shorter ? *changed : body;
    written.insert(written.end(), rest.begin(), rest.end());
    item_of(key).written = written;
    parse();
}

void golden_file::reload_base() {
    if (!base_) return;
    base_ = std::make_shared<golden_file>(folder_ / (base_->name() + ".txt"));
    const auto texts = texts_;
    for (const auto& [name, text] : texts) {
        item& i = item_of("text " + name);
        i.written = {"text " + name + (text.outcome == "ok" ? "" : " " + text.outcome)};
        i.written.insert(i.written.end(), text.body.begin(), text.body.end());
    }
    parse();
    for (const auto& [name, text] : texts) {
        texts_[name].like = text.like;
        set_text(name, text.outcome, text.body);
    }
}

std::string golden_file::written() const {
    std::string text;
    for (const item& i : items_) {
        for (auto line = i.written.begin(); line != i.written.end();) {
            const auto next = std::find_if(line, i.written.end(), [&](const std::string& l) { return l != *line; });
            const auto times = line->starts_with("| ") ? next - line : 1;
            if (times >= 4) text += std::to_string(times) + "*";
            text += *line + "\n";
            line = times >= 4 ? next : line + 1;
        }
    }
    return text;
}

std::vector<std::filesystem::path> golden_files(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        if (name.ends_with(".txt") && name != "common.txt") paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

} // namespace desk::golden
