#include "generator/control_clients.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace desk {

void control_clients::add(std::unique_ptr<control_connection> connection) {
    if (clients_.size() == most) clients_.pop_front();
    clients_.push_back({.connection = std::move(connection)});
}

void control_clients::for_each_waiting(const std::function<void(control_connection&, waits_for)>& visit) const {
    for (const client& c : clients_) {
        if (!c.unsent.empty())
            visit(*c.connection, waits_for::sending);
        else if (!c.ended)
            visit(*c.connection, waits_for::input);
    }
}

bool control_clients::has_line() const {
    return std::any_of(clients_.begin(), clients_.end(),
                       [](const client& c) { return c.unsent.empty() && c.lines.has_line(); });
}

void control_clients::serve(const std::function<std::string(std::string_view line)>& reply_to) {
    const auto last = clients_.size();
    auto c = clients_.begin();
    for (std::size_t i = 0; i < last; ++i) {
        const auto next = std::next(c);
        send_to(*c);
        if (c->unsent.empty() && !c->lines.has_line()) read_from(*c);
        if (c->unsent.empty()) {
            if (const std::optional<std::string> line = c->lines.next()) {
                const std::string reply = reply_to(*line);
                if (!reply.empty()) c->unsent += reply + "\n";
                send_to(*c);
                clients_.splice(clients_.end(), clients_, c);
            }
        }
        c = next;
    }
    clients_.remove_if(
        [](const client& one) { return one.gone || (one.ended && one.unsent.empty() && !one.lines.has_line()); });
}

void control_clients::read_from(client& c) {
    if (c.ended || c.gone) return;
    std::string text;
    const control_connection::input kind = c.connection->receive(text);
    c.lines.add(text);
    c.ended = kind == control_connection::input::ended;
    c.gone = kind == control_connection::input::gone;
    if (c.ended) c.lines.end();
}

void control_clients::send_to(client& c) {
    if (!c.unsent.empty() && !c.gone) c.gone = !c.connection->send(c.unsent);
}

} // namespace desk
