#include "cli/desk_session.h"

#include "cli/answer.h"
#include "link/delay.h"
#include "platform/native_serial_port.h"
#include "runtime/files.h"

namespace desk::cli {

namespace {

/// More than an adapter needs for its last bytes.
constexpr float moment = 0.05F;

std::unique_ptr<serial_port> port_of(const std::filesystem::path& program_directory,
                                     const std::optional<std::string>& port) {
    if (!port) return make_native_serial_port(program_directory);
    const bool number = port->size() == 1 && *port >= "1" && *port <= "8";
    return make_serial_port_of(number ? device_of_port(program_directory, port->front() - '0') : path_from_utf8(*port));
}

} // namespace

desk_session::desk_session(const std::filesystem::path& program_directory, const std::optional<std::string>& port,
                           const end_request& request)
    : desk_session(program_directory, port_of(program_directory, port), port.has_value(), request) {}

desk_session::desk_session(std::filesystem::path program_directory, std::unique_ptr<serial_port> port,
                           bool port_is_chosen, const end_request& request)
    : events_(request)
    , port_is_chosen_(port_is_chosen)
    , port_(std::move(port))
    , machine_{*port_, events_, boxes_, files_, windows_, dates_, std::move(program_directory)} {
    machine_.report_silent_failure = [this](std::string_view sentence) { silent_failures_.emplace_back(sentence); };
}

desk_session::~desk_session() { end(); }

frm_main& desk_session::desk() {
    if (desk_ == nullptr) start();
    return *desk_;
}

void desk_session::start() {
    auto starting = std::make_unique<frm_main>(machine_);
    events_.start({&starting->form});
    // the box names the port of the settings file, the sentence of the failure the device
    const auto report = std::exchange(boxes_.report, {});
    try {
        starting->form.on_load();
        if (port_is_chosen_ && starting->exchange.com_port == 0) starting->exchange.set_comm();
    } catch (...) {
        boxes_.report = report;
        throw;
    }
    boxes_.report = report;
    starting->form.visible = true;
    const bool connected = starting->exchange.rs232_connected;
    const std::string why = starting->exchange.cmd_disconn.tool_tip;
    if (!connected && starting->exchange.com_port == 0 && why.empty())
        throw command_failure(outcome::unusable, "marlo_rs232.ini names no port: choose one with --port");
    if (!connected) throw command_failure(outcome::unusable, without_full_stop(why));
    desk_ = std::move(starting);
}

frm_main& desk_session::catalogue_only() {
    if (catalogue_only_ == nullptr) {
        auto reading = std::make_unique<frm_main>(machine_);
        reading->catalogue.load(read_whole_file(machine_.program_directory / catalogue_file_name));
        catalogue_only_ = std::move(reading);
    }
    return *catalogue_only_;
}

void desk_session::end() {
    events_.start({});
    desk_.reset();
    port_->close();
}

void desk_session::let_the_line_finish() {
    desk().exchange.drain_output();
    delay_sec(events_, moment);
    // nothing answers, so that nothing else shows it
    if (port_->vanished()) throw command_failure(outcome::failed, "the device has vanished");
}

} // namespace desk::cli
