// The whole desk on a line: the operator does anything he can, also in the middle of an exchange, and the generator
// answers as it should, late, in pieces, with other bytes, or not at all.

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

/// The files that the desk starts with; no input changes them.
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
    /// What the generator does when the desk has written something.
    void answer(const std::string& written) {
        switch (input_.below(6)) {
        case 0:
            return; // nothing
        case 1:
            return send(written + std::string(input_.short_text(4)));
        case 2:
            return send(written.substr(0, 3) + std::string(input_.text(3)));
        case 3:
            // as a sink's bytes come behind the answer
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

    /// One action on a control that the operator can use now.
    void act(window& w) {
        if (w.controls().empty()) return;
        control& c = *w.controls().at(input_.byte() % w.controls().size());
        if (!c.usable() || modal_ != (&w == &desk_.form ? nullptr : &w)) return;
        switch (c.kind()) {
        case control_kind::button:
            return click(static_cast<button&>(c));
        case control_kind::check_box:
            return click(static_cast<check_box&>(c));
        case control_kind::option_button:
            return click(static_cast<option_button&>(c));
        case control_kind::label:
            return click(static_cast<label&>(c));
        case control_kind::combo_box:
            return choose(static_cast<combo_box&>(c));
        case control_kind::slider:
            return move_slider(static_cast<slider&>(c), input_.byte());
        case control_kind::text_box:
            return type(static_cast<text_box&>(c));
        case control_kind::list_view:
            return work_on(static_cast<list_view&>(c));
        case control_kind::tree_view:
            return click_some_node(static_cast<tree_view&>(c));
        default:
            return;
        }
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
        // and closes it as he can
        if (w.on_close)
            w.on_close();
        else if (auto* const ok = dynamic_cast<button*>(w.find("cmd_ok")); ok != nullptr && w.visible)
            click(*ok);
        modal_ = below;
    }

    void demand_rest() const {
        fuzz::demand(!desk_.exchange.download_mode, "no download is left running");
        fuzz::demand(desk_.exchange.rx_text.size() == static_cast<std::size_t>(desk_.exchange.rx_count),
                     "each byte is counted");
        fuzz::demand(desk_.form.shown(), "the window stays on show");
        for (const control* c : desk_.form.controls()) {
            if (c->kind() == control_kind::label) demand_text(static_cast<const label*>(c)->caption);
            if (c->kind() == control_kind::text_box) demand_text(static_cast<const text_box*>(c)->text);
        }
    }
    static void demand_text(const std::string& text) { fuzz::demand(as_utf8(text) == text, "a text is UTF-8"); }

    fuzz::fuzz_input& input_;
    test::fake_machine m_;
    frm_main desk_{m_.host};
    window* modal_ = nullptr; // the modal window that is open
};

/// What a line and an operator can end the program with.
const std::set<failure> told = {failure::invalid_procedure_call, failure::overflow,
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
            fuzz::demand(told.contains(f.code()), "a failure is one of those told");
            throw;
        }
    });
    return 0;
}
