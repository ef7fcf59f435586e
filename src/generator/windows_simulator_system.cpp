#include "generator/simulator_system.h"

#include "generator/pipe_link.h"
#include "generator/windows_control_pipe.h"
#include "generator/windows_end_event.h"
#include "generator/windows_served_pipe.h"
#include "generator/windows_typed_input.h"
#include "platform/port_file.h"

#include <utility>
#include <vector>

#include <timeapi.h>

namespace desk {

namespace {

/// The line's pace is half a millisecond for a byte; without this a wait takes 16.
class fine_timer {
public:
    fine_timer() { timeBeginPeriod(1); }
    ~fine_timer() { timeEndPeriod(1); }
    fine_timer(const fine_timer&) = delete;
    fine_timer& operator=(const fine_timer&) = delete;
};

/// A line that a desk can open, with the file that names it.
class named_line {
public:
    named_line(const std::filesystem::path& file, const std::string& name)
        : pipe_(name, 1, served_pipe::place::first), link_(file, name) {}
    ~named_line() { pipe_.disconnect(); }
    named_line(const named_line&) = delete;
    named_line& operator=(const named_line&) = delete;

    served_pipe& pipe() { return pipe_; }

private:
    served_pipe pipe_;
    pipe_link link_;
};

bool is_set(HANDLE event) { return WaitForSingleObject(event, 0) == WAIT_OBJECT_0; }

DWORD milliseconds_of(std::chrono::nanoseconds time) {
    return static_cast<DWORD>(std::chrono::ceil<std::chrono::milliseconds>(time).count());
}

class windows_simulator_system final : public simulator_system {
public:
    explicit windows_simulator_system(const sim_options& options) : link_path_(options.link) {
        if (!options.control.empty()) control_.emplace(options.control);
    }

    void plug() override {
        // a desk may still hold the last one
        const std::string name =
            simulator_pipe_prefix + std::to_string(GetCurrentProcessId()) + "_" + std::to_string(++line_count_);
        line_.emplace(link_path_, name);
        line_name_ = name;
    }

    void unplug() override { line_.reset(); }
    bool is_plugged() const override { return line_.has_value(); }
    std::string line_name() const override { return line_name_; }

    void write_to_desk(const bytes& data) override {
        if (!line_->pipe().is_writing()) line_->pipe().write(data);
    }

    news wait(bool reads_desk, std::optional<std::chrono::nanoseconds> longest) override {
        std::vector<HANDLE> events{end_.event()};
        if (!typed_all_) events.push_back(typed_.event());
        if (line_ && reads_desk) events.push_back(line_->pipe().input_event());
        if (control_) control_->add_events(events);
        WaitForMultipleObjects(static_cast<DWORD>(events.size()), events.data(), FALSE,
                               longest ? milliseconds_of(*longest) : INFINITE);
        news arrived;
        arrived.end = is_set(end_.event());
        if (line_ && reads_desk) {
            arrived.from_desk = line_->pipe().take();
            if (line_->pipe().client_has_left()) line_->pipe().serve_next();
        }
        if (!typed_all_ && is_set(typed_.event())) {
            typed_input::typed now = typed_.take();
            typed_all_ = now.all;
            arrived.typed = std::move(now.text);
            arrived.typed_all = now.all;
        }
        return arrived;
    }

    bool control_has_line() const override { return control_ && control_->has_line(); }
    void serve_control(const std::function<std::string(std::string_view line)>& reply_to) override {
        if (control_) control_->serve(reply_to);
    }

private:
    end_event end_; // first: the rest is over before the system may end the program
    fine_timer timer_;
    std::filesystem::path link_path_;
    std::optional<named_line> line_;
    std::string line_name_;
    int line_count_ = 0;
    std::optional<control_pipe> control_;
    typed_input typed_;
    bool typed_all_ = false;
};

} // namespace

std::unique_ptr<simulator_system> make_simulator_system(const sim_options& options) {
    return std::make_unique<windows_simulator_system>(options);
}

std::filesystem::path link_of_port_1(const std::filesystem::path& folder) { return port_file(folder, 1); }

} // namespace desk
