#include "robot/inspection.h"

#include "runtime/windows_1252.h"

#include <cmath>
#include <functional>
#include <map>

namespace desk::robot {

namespace {

using getter = std::function<json()>;
using getters = std::map<std::string, getter>;

template <class Value>
getter value_of(const property<Value>& p) {
    return [&p] { return json(p.get()); };
}

getters getters_of(control& c) {
    getters table = {
        {"visible", value_of(c.visible)},
        {"enabled", value_of(c.enabled)},
        {"left", value_of(c.left)},
        {"top", value_of(c.top)},
        {"width", value_of(c.width)},
        {"height", value_of(c.height)},
        {"back_color", value_of(c.back_color)},
        {"fore_color", value_of(c.fore_color)},
        {"shown", [&c] { return json(c.shown()); }},
        {"focus", [&c] { return json(c.has_focus()); }},
    };
    const auto add = [&table](const getters& more) { table.insert(more.begin(), more.end()); };
    switch (c.kind()) {
    case control_kind::window:
        add({{"caption", value_of(dynamic_cast<window&>(c).caption)}});
        break;
    case control_kind::frame:
        add({{"caption", value_of(dynamic_cast<frame&>(c).caption)}});
        break;
    case control_kind::button:
        add({{"caption", value_of(dynamic_cast<button&>(c).caption)}});
        break;
    case control_kind::label:
        add({{"caption", value_of(dynamic_cast<label&>(c).caption)}});
        break;
    case control_kind::text_box: {
        auto& t = dynamic_cast<text_box&>(c);
        add({{"text", value_of(t.text)},
             {"locked", value_of(t.locked)},
             {"sel_start", [&t] { return json(t.sel_start()); }},
             {"sel_length", [&t] { return json(t.sel_length()); }},
             {"max_length", [&t] { return json(t.max_length); }}});
        break;
    }
    case control_kind::combo_box: {
        auto& b = dynamic_cast<combo_box&>(c);
        add({{"text", [&b] { return json(b.text()); }},
             {"list_index", [&b] { return json(b.list_index()); }},
             {"list_count", [&b] { return json(b.list_count()); }}});
        break;
    }
    case control_kind::check_box: {
        auto& b = dynamic_cast<check_box&>(c);
        add({{"caption", value_of(b.caption)}, {"value", value_of(b.value)}});
        break;
    }
    case control_kind::option_button: {
        auto& o = dynamic_cast<option_button&>(c);
        add({{"caption", value_of(o.caption)}, {"value", value_of(o.value)}});
        break;
    }
    case control_kind::slider:
        add({{"value", [&c] { return json(dynamic_cast<slider&>(c).value()); }}});
        break;
    case control_kind::list_view: {
        auto& l = dynamic_cast<list_view&>(c);
        add({{"selected", [&l] { return json(l.selected()); }},
             {"row_count", [&l] { return json(l.row_count()); }},
             {"check_boxes", value_of(l.check_boxes)}});
        break;
    }
    case control_kind::picture:
    case control_kind::line:
    case control_kind::tree_view:
    case control_kind::timer:
        break;
    }
    return table;
}

/// A number that is whole is an integer.
json number_json(double value) {
    constexpr double exact = 9007199254740992;
    return value == std::floor(value) && std::fabs(value) <= exact ? json(static_cast<std::int64_t>(value))
                                                                   : json(value);
}

json descriptor_map_of(const translation_tables& tables) {
    json rows = json::array();
    for (const descriptor_row& row : tables.descriptor_map)
        rows.push_back({row.position, row.kind});
    return rows;
}

std::optional<json> look_up(const getters& table, const std::string& name) {
    const auto found = table.find(name);
    return found == table.end() ? std::nullopt : std::optional(found->second());
}

} // namespace

std::optional<json> property_of(control& c, const std::string& name) { return look_up(getters_of(c), name); }

json row_of(const list_row& row) { return {{"text", row.text}, {"sub", row.sub}, {"checked", row.checked}}; }

json nodes_of(const tree_view& tree) {
    json nodes = json::array();
    for (const tree_node& n : tree.nodes()) {
        nodes.push_back({{"key", n.key},
                         {"title", n.title},
                         {"parent", n.parent == 0 ? "" : tree.node(n.parent).key},
                         {"expanded", n.expanded},
                         {"bold", n.bold}});
    }
    return nodes;
}

json controls_of(const window& w) {
    json controls = json::array();
    for (const control* c : w.controls()) {
        controls.push_back({{"name", c->full_name()},
                            {"kind", kind_name(c->kind())},
                            {"parent", c->parent == nullptr ? w.name : c->parent->full_name()}});
    }
    return controls;
}

std::optional<json> field_of(const frm_main& desk, const std::string& name) {
    const exchange& link = desk.exchange;
    const catalogue& rows = desk.catalogue;
    const shared_fields& shared = desk.shared_fields;
    const getters table = {
        {"view_mode", [&] { return json(link.view_mode); }},
        {"logo_hidden", [&] { return json(desk.logo_hidden); }},
        {"cur_timing", [&] { return json(rows.cur_timing); }},
        {"cur_pattern", [&] { return json(rows.cur_pattern); }},
        {"color_mode", [&] { return json(desk.color_settings.color_mode); }},
        {"com_port", [&] { return json(link.com_port); }},
        {"rs232_connected", [&] { return json(link.rs232_connected); }},
        {"download_mode", [&] { return json(link.download_mode); }},
        {"rx_count", [&] { return json(link.rx_count); }},
        {"rx_text", [&] { return json(text_from_bytes(link.rx_text)); }},
        {"rx_done", [&] { return json(link.rx_done); }},
        {"fav_timing_count", [&] { return json(link.fav_timing_count); }},
        {"fav_pattern_count", [&] { return json(link.fav_pattern_count); }},
        {"edid_file_name", [&] { return json(shared.edid_file_name); }},
        {"edid_src", [&] { return json(shared.edid_src); }},
        {"read_ok", [&] { return json(shared.read_ok); }},
        {"run_ok", [&] { return json(shared.run_ok); }},
        {"file_ok", [&] { return json(desk.file_opener.file_ok); }},
        {"diag_mode", [&] { return json(shared.diag_mode); }},
        {"hex_type", [&] { return json(shared.hex_type); }},
        {"eeprom_size_index", [&] { return json(shared.eeprom_size_index); }},
        {"unused_byte_index", [&] { return json(shared.unused_byte_index); }},
        {"checksum_4digits", [&] { return json(shared.checksum_4digits); }},
        {"sn_value", [&] { return number_json(shared.sn_value); }},
        {"tree_sel_index", [&] { return json(desk.node_dispatch.tree_sel_index); }},
        {"descriptor_map", [&] { return descriptor_map_of(desk.translation_tables); }},
        {"descriptor_start", [&] { return json(desk.translation_tables.descriptor_start); }},
        {"data_block_addr", [&] { return json(desk.translation_tables.data_block_addr); }},
        {"cea_dtd_offset", [&] { return json(desk.translation_tables.cea_dtd_offset); }},
        {"is_cea_block1", [&] { return json(desk.translation_tables.is_cea_block1); }},
        {"report_text", [&] { return json(desk.report_opener.report_text()); }},
        {"recover_sum", [&] { return json(desk.window_text.recover_sum); }},
    };
    return look_up(table, name);
}

} // namespace desk::robot
