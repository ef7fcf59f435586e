// The whole desk on a line: the operator acts at random, even during an exchange, and the generator answers
// correctly, late, in pieces, with other bytes, or not at all.

#include "controls/kinds.h"
#include "controls/operator_actions.h"
#include "desk_under_fuzz.h"
#include "fuzz_input.h"
#include "runtime/windows_1252.h"
#include "shell/frm_main.h"
#include "support/desk_files.h"
#include "support/temporary_directory.h"

#include <set>

namespace {

using namespace desk;

constexpr int most_pieces = 12;

/// The desk's start-up files; no input changes them.
const std::filesystem::path& program_directory() {
    static const test::temporary_directory directory;
    static const bool filled = [] {
        directory.put("marlo_rs232.ini", test::usual_settings);
        directory.put("timing_pattern.ini", test::plain_catalogue(30, 45));
        return true;
    }();
    fuzz::demand(filled, "the directory has its files");
    return directory.path();
}

class conversation {
public:
    explicit conversation(fuzz::fuzz_input& input) : input_(input) {
        m_.host.program_directory = program_directory();
        m_.events.ticking = &desk_.exchange.tim_rx;
        m_.port.on_write = [this](const std::string& written) { answer(written); };
        m_.boxes.on_show = [this] { m_.boxes.answers = {box_answer::yes}; };
        m_.windows.on_show = [this](window& w) { work_in(w); };
    }

    void hold() {
        desk_.load();
        desk_.form.visible = true;
        while (!input_.empty()) {
            act(desk_.form);
            demand_rest();
        }
    }

private:
    /// The generator's reaction to what the desk writes.
    void answer(const std::string& written) {
        switch (input_.below(6)) {
        case 0:
            return; // nothing
        case 1:
            return send(written + std::string(input_.short_text(4)));
        case 2:
            return send(written.substr(0, 3) + std::string(input_.text(3)));
        case 3:
            // like a sink's bytes, which follow the answer
            send(written);
            return m_.events.in(
                60, [this, byte = input_.byte()] { m_.port.arrive(std::string(256, static_cast<char>(byte))); });
        case 4:
            // the operator does not wait
            send(written);
            return m_.events.in(input_.byte(), [this] { act(desk_.form); });
        default:
            return send_pieces();
        }
    }
    void send(const std::string& text) {
        m_.events.in(10, [this, text] { m_.port.arrive(text); });
    }
    void send_pieces() {
        std::int64_t at = 0;
        for (int piece = input_.below(most_pieces); piece > 0; --piece) {
            at += input_.byte() * 2;
            m_.events.in(at, [this, bytes = std::string(input_.text())] { m_.port.arrive(bytes); });
        }
    }

    /// Performs one action on an enabled control.
    void act(window& w) {
        if (w.controls().empty()) return;
        control& c = *w.controls().at(input_.byte() % w.controls().size());
        if (!c.usable() || modal_ != (&w == &desk_.form ? nullptr : &w)) return;
        visit(c, overloaded{
                     [&](combo_box& b) { choose(b); },
                     [&](slider& s) { move_slider(s, input_.byte()); },
                     [&](text_box& t) { type(t); },
                     [&](list_view& l) { work_on(l); },
                     [&](tree_view& t) { click_some_node(t); },
                     [](auto& other) {
                         if constexpr (requires { click(other); }) click(other);
                     },
                 });
    }
    void choose(combo_box& c) {
        if (c.list_count() > 0) choose_item(c, input_.below(c.list_count()));
    }
    void type(text_box& t) {
        if (!t.locked) type_text(t, as_utf8(input_.short_text(14)));
        press_key(t, 13);
    }
    void work_on(list_view& l) {
        if (l.row_count() == 0) return;
        const int row = 1 + input_.below(l.row_count());
        if (l.check_boxes && input_.yes()) return set_check(l, row, input_.yes());
        choose_row(l, row);
        double_click(l);
    }
    void click_some_node(tree_view& t) {
        if (t.node_count() > 0) click_node(t, 1 + input_.below(t.node_count()));
    }

    void work_in(window& w) {
        window* const below = modal_;
        modal_ = &w;
        for (int actions = input_.below(8); actions > 0 && w.visible; --actions)
            act(w);
        // and closes it if allowed
        if (w.on_close)
            w.on_close();
        else if (auto* const ok = as<button>(w.find("cmd_ok")); ok != nullptr && w.visible)
            click(*ok);
        modal_ = below;
    }

    void demand_rest() const {
        fuzz::demand(!desk_.exchange.download_mode, "no download is left running");
        fuzz::demand(desk_.exchange.rx_text.size() == static_cast<std::size_t>(desk_.exchange.rx_count),
                     "each byte is counted");
        fuzz::demand(desk_.form.shown(), "the window stays visible");
        for (const control* c : desk_.form.controls()) {
            if (const auto* const l = as<label>(c)) demand_text(l->caption);
            if (const auto* const t = as<text_box>(c)) demand_text(t->text);
        }
    }
    static void demand_text(const std::string& text) { fuzz::demand(as_utf8(text) == text, "a text is UTF-8"); }

    fuzz::fuzz_input& input_;
    test::fake_machine m_;
    frm_main desk_{m_.host};
    window* modal_ = nullptr; // the open modal window
};

/// Failures that a line and an operator can cause.
const std::set<failure> expected = {failure::invalid_procedure_call, failure::overflow,
                                    failure::subscript_out_of_range, failure::invalid_property_value,
                                    failure::index_out_of_bounds,    failure::key_not_unique};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::fuzz_input input(data, size);
    conversation talk(input);
    fuzz::ends_well([&] {
        try {
            talk.hold();
        } catch (const runtime_failure& f) {
            fuzz::demand(expected.contains(f.code()), "only expected failures occur");
            throw;
        }
    });
    return 0;
}
