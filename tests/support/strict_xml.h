#pragma once

#include <algorithm>
#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace desk::test {

/// Reads a page as XML, strictly, and keeps what tests ask about. Knows what the pages use: no processing instructions,
/// no CDATA sections, and the references that need no declaration.
class strict_xml {
public:
    explicit strict_xml(std::string_view page) : rest_(page) {
        skip("<!DOCTYPE html>");
        while (fault.empty() && !rest_.empty())
            read_next();
        if (fault.empty() && !open_.empty()) fault = open_.back() + " is not closed";
        for (const std::string& link : links)
            if (fault.empty() && link.starts_with('#') && !ids.contains(link.substr(1)))
                fault = "the link " + link + " leads nowhere";
    }

    std::string fault; ///< empty: the page is well-formed, its ids are unique and its own links lead somewhere
    std::set<std::string> elements;
    std::set<std::string> attributes;
    std::set<std::string> ids;
    std::vector<std::string> links; ///< the values of href
    std::string text;               ///< of all elements, with references resolved

private:
    void fail(const std::string& why) {
        if (fault.empty()) fault = why + " before: " + std::string(rest_.substr(0, 60));
    }
    bool skip(std::string_view start) {
        if (!rest_.starts_with(start)) return false;
        rest_.remove_prefix(start.size());
        return true;
    }
    static bool is_name(char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
    }
    std::string name() {
        const auto end = std::find_if_not(rest_.begin(), rest_.end(), is_name);
        std::string read(rest_.begin(), end);
        rest_.remove_prefix(read.size());
        if (read.empty()) fail("a name is missing");
        return read;
    }
    void skip_spaces() {
        while (rest_.starts_with(' ') || rest_.starts_with('\n'))
            rest_.remove_prefix(1);
    }

    void read_next() {
        if (skip("<!--")) {
            const std::size_t end = rest_.find("-->");
            if (end == std::string_view::npos) return fail("a comment does not end");
            rest_.remove_prefix(end + 3);
        } else if (skip("</")) {
            const std::string element = name();
            if (!skip(">") || open_.empty() || open_.back() != element) return fail("wrong end of " + element);
            open_.pop_back();
        } else if (skip("<")) {
            read_start();
        } else {
            text += characters('<');
        }
    }

    void read_start() {
        const std::string element = name();
        elements.insert(element);
        std::set<std::string> here;
        for (skip_spaces(); fault.empty() && !rest_.starts_with('>') && !rest_.starts_with("/>"); skip_spaces()) {
            const std::string attribute = name();
            if (!skip("=\"")) return fail("the value of " + attribute + " is missing");
            const std::string value = characters('"');
            if (!skip("\"")) return fail("the value of " + attribute + " does not end");
            if (!here.insert(attribute).second) fail(attribute + " is there twice");
            if (attribute == "id" && !ids.insert(value).second) fail("the id " + value + " is there twice");
            if (attribute == "href") links.push_back(value);
        }
        attributes.merge(here);
        if (skip("/>")) return;
        if (!skip(">")) return fail("a start tag does not end");
        open_.push_back(element);
    }

    /// Character data up to `end`.
    std::string characters(char end) {
        std::string read;
        while (!rest_.empty() && rest_[0] != end && fault.empty()) {
            const auto ends_run = [&](char c) {
                const bool control = static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r';
                return c == end || c == '&' || c == '<' || control;
            };
            const auto run =
                static_cast<std::size_t>(std::find_if(rest_.begin(), rest_.end(), ends_run) - rest_.begin());
            read += rest_.substr(0, run);
            rest_.remove_prefix(run);
            if (rest_.empty() || rest_[0] == end) break;
            if (rest_[0] == '&')
                read += reference();
            else
                fail("a < or a control character is not escaped");
        }
        return read;
    }
    char reference() {
        if (skip("&amp;")) return '&';
        if (skip("&lt;")) return '<';
        if (skip("&gt;")) return '>';
        if (skip("&quot;")) return '"';
        if (skip("&#39;")) return '\'';
        fail("an unknown reference");
        return '?';
    }

    std::string_view rest_;
    std::vector<std::string> open_;
};

} // namespace desk::test
