#include "generator/windows_control_pipe.h"

#include "platform/port_file.h"
#include "runtime/failure.h"
#include "runtime/files.h"

#include <utility>

namespace desk {

namespace {

/// One of them waits for the next program, and one can be new and not yet counted.
constexpr unsigned most_ends = static_cast<unsigned>(control_clients::most) + 2;

class pipe_connection final : public control_connection {
public:
    explicit pipe_connection(std::unique_ptr<served_pipe> pipe) : pipe_(std::move(pipe)) {}

    HANDLE event(control_clients::waits_for what) const {
        return what == control_clients::waits_for::sending ? pipe_->output_event() : pipe_->input_event();
    }

    input receive(std::string& text) override {
        if (pipe_->client_has_left()) return input::ended;
        const bytes data = pipe_->take();
        for (const std::uint8_t byte : data) {
            if (byte == end_of_lines) return input::ended;
            text += static_cast<char>(byte);
        }
        return data.empty() ? input::none : input::some;
    }

    bool send(std::string& text) override {
        if (offered_ == 0) {
            pipe_->write(bytes_of(text));
            offered_ = text.size();
        }
        if (pipe_->is_writing()) return true;
        text.erase(0, std::exchange(offered_, 0));
        return !pipe_->client_has_left();
    }

private:
    std::unique_ptr<served_pipe> pipe_;
    std::size_t offered_ = 0;
};

std::string checked_name(const std::filesystem::path& path) {
    std::string name = utf8_from_path(path);
    if (is_pipe(name)) return name;
    throw runtime_failure(failure::path_file_access_error,
                          "the control pipe " + name + " can't be made: its name has to be \\\\.\\pipe\\NAME");
}

} // namespace

control_pipe::control_pipe(const std::filesystem::path& path)
    : name_(checked_name(path)), next_(std::make_unique<served_pipe>(name_, most_ends, served_pipe::place::first)) {}

void control_pipe::add_events(std::vector<HANDLE>& events) const {
    events.push_back(next_->input_event());
    clients_.for_each_waiting([&](control_connection& one, control_clients::waits_for what) {
        events.push_back(static_cast<pipe_connection&>(one).event(what));
    });
}

void control_pipe::serve(const std::function<std::string(std::string_view line)>& reply_to) {
    next_->take();
    if (next_->client_has_left()) {
        next_->serve_next();
    } else if (next_->has_client()) {
        auto further = std::make_unique<served_pipe>(name_, most_ends, served_pipe::place::further);
        clients_.add(std::make_unique<pipe_connection>(std::exchange(next_, std::move(further))));
    }
    clients_.serve(reply_to);
}

} // namespace desk
