// A bench shared by two users: one folder, one simulated generator, a desk each. Desks start, save, and end in order,
// by signal or killed; the cable is pulled, and the operator's own links are in the way. After each step every file
// has its owner, no file is partial, and no link of the operator's is lost. Needs root.

#include "edid/canonical_text.h"
#include "edid/file_writers.h"
#include "runtime/list_format.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <grp.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

struct user {
    const char* name;
    uid_t id;
};
/// Unused user and group numbers.
constexpr std::array users = {user{"alice", 54321}, user{"bob", 54322}};
constexpr gid_t lab = 54330;

/// Longer than any orderly end, even on a busy machine.
constexpr milliseconds patience(20'000);

[[noreturn]] void fail(const std::string& why) { throw std::runtime_error(why); }

void check(int result, const std::string& what) {
    if (result != 0) fail(what + ": " + std::strerror(errno));
}

/// A user's program, with a pipe to its standard input. The destructor kills it.
class user_process {
public:
    user_process(const user& who, std::vector<std::string> words, const fs::path& log) {
        std::array<int, 2> input{};
        check(::pipe2(input.data(), O_CLOEXEC), "pipe");
        process_ = ::fork();
        if (process_ == 0) run(who, words, input[0], log);
        ::close(input[0]);
        input_ = input[1];
        if (process_ < 0) fail("cannot start a process");
    }
    ~user_process() {
        if (!ended()) {
            send(SIGKILL);
            wait_for_end();
        }
        ::close(input_);
    }
    user_process(const user_process&) = delete;
    user_process& operator=(const user_process&) = delete;

    void type(const std::string& line) const {
        if (::write(input_, line.data(), line.size()) < 0 && errno != EPIPE) fail("cannot write to the pipe");
    }
    void send(int signal) const { ::kill(process_, signal); }

    /// Whether it has ended; `status` says how.
    bool ended() {
        if (!status_) {
            int status = 0;
            if (::waitpid(process_, &status, WNOHANG) == process_) status_ = status;
        }
        return status_.has_value();
    }
    int wait_for_end() {
        const auto limit = std::chrono::steady_clock::now() + patience;
        while (!ended()) {
            if (std::chrono::steady_clock::now() > limit) fail("process " + std::to_string(process_) + " does not end");
            std::this_thread::sleep_for(milliseconds(2));
        }
        return *status_;
    }

private:
    [[noreturn]] static void run(const user& who, const std::vector<std::string>& words, int input,
                                 const fs::path& log) {
        const int out = ::open(log.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, S_IRUSR | S_IWUSR);
        ::dup2(input, STDIN_FILENO);
        ::dup2(out, STDOUT_FILENO);
        ::dup2(out, STDERR_FILENO);
        // nohup and services start programs with some of these ignored
        for (const int signal : {SIGHUP, SIGINT, SIGTERM, SIGPIPE})
            std::signal(signal, SIG_DFL);
        std::vector<char*> argv;
        for (const std::string& word : words)
            argv.push_back(const_cast<char*>(word.c_str()));
        argv.push_back(nullptr);
        const bool is_user = ::setgroups(1, &lab) == 0 && ::setresgid(who.id, who.id, who.id) == 0 &&
                             ::setresuid(who.id, who.id, who.id) == 0;
        if (is_user) ::execv(argv[0], argv.data());
        ::_exit(127);
    }

    pid_t process_ = -1;
    int input_ = -1;
    std::optional<int> status_;
};

/// A file's owner and permissions.
struct owners {
    uid_t user;
    gid_t group;
    mode_t mode;
    bool operator==(const owners&) const = default;
};

owners owners_of(const fs::path& file) {
    struct stat found {};
    check(::lstat(file.c_str(), &found), file.string());
    return {found.st_uid, found.st_gid, found.st_mode};
}

/// An EDID file as the desk saves it: its size does not depend on the bytes.
std::string edid_file() {
    std::string text;
    for (std::size_t i = 0; i < 256; ++i)
        text += desk::canonical_piece(static_cast<std::uint8_t>(i), i);
    return desk::simple_hex_of(text);
}

std::string content_of(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

class shared_bench {
public:
    shared_bench(fs::path folder, unsigned seed) : folder_(std::move(folder)), random_(seed) {
        // the users may have no access to the build folder
        fs::copy_file(VELOTRACE_SIM, simulator_);
        fs::copy_file(SHARED_BENCH_DESK, desk_);
        set_up();
        start_generator();
    }

    void act() {
        switch (below(12)) {
        case 0:
        case 1:
        case 2:
            return start_desk(below(2));
        case 3:
            return end_desk(below(2), "closed", [](user_process& desk) { desk.type("close\n"); });
        case 4:
            return end_desk(below(2), "SIGTERM", [](user_process& desk) { desk.send(SIGTERM); });
        case 5:
            return end_desk(below(2), "SIGHUP", [](user_process& desk) { desk.send(SIGHUP); });
        case 6:
            return kill_desk(below(2));
        case 7:
            return count("unplugged and plugged", [this] {
                generator_->type("unplug\n");
                pause(below(50));
                generator_->type("plug\n");
                pause(50);
                open_terminal();
            });
        case 8:
            return count("generator killed and started", [this] { start_generator(); });
        case 9:
            return operators_link();
        default:
            // the desks save, read and open by themselves
            return count("left alone", [this] { pause(100 + below(300)); });
        }
    }

    void look() {
        for (const auto& [file, before] : owners_) {
            if (!(owners_of(file) == before)) fail(file.string() + " has changed hands");
        }
        for (const auto& [link, target] : links_) {
            std::error_code lost;
            if (fs::read_symlink(link, lost) != target || lost) fail(link.string() + " is lost");
        }
        look_at_settings();
        for (const fs::directory_entry& file : fs::directory_iterator(folder_))
            look_at(file.path());
    }

    void report() const {
        for (const auto& [what, times] : counts_)
            std::cout << times << " x " << what << '\n';
        std::cout << "no fault" << std::endl;
    }

private:
    void set_up() {
        fs::create_directory(folder_);
        check(::chown(folder_.c_str(), 0, lab), "chown");
        check(::chmod(folder_.c_str(), 0770), "chmod");
        for (const char* name : {"marlo_rs232.ini", "timing_pattern.ini"}) {
            fs::copy_file(fs::path(FIRST_FILES) / name, folder_ / name);
            give_to(folder_ / name, users[0].id);
        }
        // one file of each user, and one of root
        for (int i = 0; i < 3; ++i) {
            const fs::path file = folder_ / ("edid_" + std::to_string(i) + ".hex");
            std::ofstream(file, std::ios::binary) << edid_file();
            give_to(file, i < 2 ? users.at(static_cast<std::size_t>(i)).id : 0);
        }
        // an unplugged adapter, a folder, and another link
        keep_link("com2", "/dev/serial/by-id/usb-lab_adapter-if00");
        keep_link("com3", folder_);
        keep_link("com4", "com2");
    }

    void give_to(const fs::path& file, uid_t who) {
        check(::chown(file.c_str(), who, lab), "chown");
        check(::chmod(file.c_str(), 0660), "chmod");
        owners_.emplace(file, owners_of(file));
    }

    void keep_link(const char* name, const fs::path& target) {
        fs::create_symlink(target, folder_ / name);
        links_.emplace(folder_ / name, target);
    }

    void start_generator() {
        generator_.reset();
        const fs::path log = folder_.string() + ".generator.log";
        generator_.emplace(users[0], std::vector<std::string>{simulator_, "--quiet", (folder_ / "com1").string()}, log);
        pause(50);
        open_terminal();
    }

    /// Gives both users access to the generator's terminal, as a group has to an adapter.
    void open_terminal() const {
        std::error_code none;
        const fs::path terminal = fs::read_symlink(folder_ / "com1", none);
        if (none || terminal.parent_path() != "/dev/pts") return;
        if (::chown(terminal.c_str(), users[0].id, lab) == 0) ::chmod(terminal.c_str(), 0660);
    }

    /// The operator replaces the simulator's link by his own, and later removes it.
    void operators_link() {
        const fs::path link = folder_ / "com1";
        if (const auto own = links_.find(link); own != links_.end()) {
            links_.erase(own);
            fs::remove(link);
            return count("generator killed and started", [this] { start_generator(); });
        }
        std::error_code ignored;
        fs::remove(link, ignored);
        keep_link("com1", "/dev/serial/by-id/usb-other_adapter-if00");
        count("link of the operator's", [] {});
    }

    void start_desk(int who) {
        std::optional<user_process>& desk = desks_.at(static_cast<std::size_t>(who));
        if (desk && !desk->ended()) return;
        const user& u = users.at(static_cast<std::size_t>(who));
        const fs::path log = folder_.string() + "." + u.name + ".log";
        desk.reset();
        count(std::string("start by ") + u.name, [&] {
            desk.emplace(u, std::vector<std::string>{desk_, folder_.string(), std::to_string(random_())}, log);
        });
        pause(below(400));
    }

    void end_desk(int who, const std::string& how, const std::function<void(user_process&)>& end) {
        std::optional<user_process>& desk = desks_.at(static_cast<std::size_t>(who));
        if (!desk) return;
        count(how, [&] { end(*desk); });
        const int status = desk->wait_for_end();
        // 1 is a run-time failure of the desk, for example at an invalid EDID
        const bool in_order = WIFEXITED(status) && WEXITSTATUS(status) != 127;
        const bool by_that_signal = WIFSIGNALED(status) && (how == "SIGTERM" || how == "SIGHUP");
        if (!in_order && !by_that_signal) fail("a desk that was " + how + " ended with " + std::to_string(status));
        desk.reset();
    }

    void kill_desk(int who) {
        std::optional<user_process>& desk = desks_.at(static_cast<std::size_t>(who));
        if (!desk) return;
        count("killed", [&] { desk->send(SIGKILL); });
        desk->wait_for_end();
        desk.reset();
    }

    void look_at_settings() const {
        const std::string text = content_of(folder_ / "marlo_rs232.ini");
        try {
            desk::list_reader records(text);
            if (const int port = records.read_integer(); port < 0 || port > 8) fail("port " + std::to_string(port));
            for (int i = 0; i < 10; ++i) {
                const std::string name = records.read_string();
                if (!name.empty() && fs::path(name).parent_path() != folder_) fail("previous file " + name);
            }
            for (int i = 0; i < 3; ++i)
                records.read_byte();
        } catch (const std::exception& e) {
            fail("the settings are incomplete: " + std::string(e.what()) + "\n" + text);
        }
    }

    void look_at(const fs::path& file) const {
        if (!file.filename().string().starts_with("edid_")) return;
        const std::string text = content_of(file);
        if (text.size() != edid_file().size() || !text.ends_with("\r\n")) fail(file.string() + " is half:\n" + text);
    }

    int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
    static void pause(int ms) { std::this_thread::sleep_for(milliseconds(ms)); }
    template <class Work>
    void count(const std::string& what, Work work) {
        ++counts_[what];
        work();
    }

    fs::path folder_;
    const std::string simulator_ = folder_.parent_path() / "velotrace_sim";
    const std::string desk_ = folder_.parent_path() / "desk";
    std::mt19937 random_;
    std::map<fs::path, owners> owners_;
    std::map<fs::path, fs::path> links_;
    std::optional<user_process> generator_;
    std::array<std::optional<user_process>, 2> desks_;
    std::map<std::string, int> counts_;
};

int run(int actions, unsigned seed) {
    std::string name = (fs::temp_directory_path() / "shared_bench.XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) fail("no temporary folder");
    check(::chmod(name.c_str(), 0755), "chmod");
    const fs::path folder = fs::path(name) / "bench";
    try {
        shared_bench bench(folder, seed);
        for (int i = 0; i < actions; ++i) {
            bench.act();
            bench.look();
        }
        bench.report();
    } catch (const std::exception&) {
        std::cerr << "shared_bench: files left in: " << name << '\n';
        throw;
    }
    fs::remove_all(name);
    return 0;
}

} // namespace

int main(int argument_count, char** arguments) {
    const int actions = argument_count >= 2 ? std::atoi(arguments[1]) : 0;
    const int seed = argument_count == 3 ? std::atoi(arguments[2]) : 1;
    if (actions < 1 || argument_count > 3) {
        std::cerr << "usage: shared_bench ACTIONS [SEED]\n";
        return 2;
    }
    if (::geteuid() != 0) {
        std::cout << "skipped: needs root to act as two users\n";
        return 77;
    }
    std::signal(SIGPIPE, SIG_IGN);
    try {
        return run(actions, static_cast<unsigned>(seed));
    } catch (const std::exception& e) {
        std::cerr << "shared_bench: " << e.what() << '\n';
        return 1;
    }
}
