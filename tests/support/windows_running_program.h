#pragma once

#include "runtime/windows_api.h"
#include "support/own_pipe.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace desk::test {

/// The program of this build, or the one of this name in the folder of the test program.
inline std::filesystem::path program_to_run(const std::filesystem::path& built) {
    std::wstring own(32768, L'\0');
    own.resize(GetModuleFileNameW(nullptr, own.data(), static_cast<DWORD>(own.size())));
    const std::filesystem::path beside = std::filesystem::path(own).replace_filename(built.filename());
    return std::filesystem::exists(beside) ? beside : built;
}

inline bool is_wine() { return GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") != nullptr; }

/// Waits until it is true; false: it was not within a minute.
inline bool eventually(const std::function<bool()>& condition) {
    for (int i = 0; i < 6; ++i)
        if (wait_until(condition)) return true;
    return false;
}

/// Where the standard streams of a program lead.
struct stream_setup {
    std::string input = "NUL"; ///< a file; empty: a pipe that the test writes to
    std::string output = {};   ///< a file; empty: one of its own
};

/// A program that runs beside the test, in the test's folder, and ends with the test at the latest.
class running_program {
public:
    /// `words`: the program and its arguments, without quotes in them.
    running_program(const temporary_directory& folder, const std::vector<std::string>& words,
                    const stream_setup& streams = {})
        : folder_(folder), name_(std::to_string(++count())) {
        HANDLE input = INVALID_HANDLE_VALUE;
        SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
        if (streams.input.empty()) {
            CreatePipe(&input, &keyboard_, &inherited, 0);
            SetHandleInformation(keyboard_, HANDLE_FLAG_INHERIT, 0);
        } else {
            input = CreateFileW(path_from_utf8(streams.input).c_str(), GENERIC_READ, FILE_SHARE_READ, &inherited,
                                OPEN_EXISTING, 0, nullptr);
        }
        const HANDLE out = new_file(streams.output, "out", inherited);
        const HANDLE err = new_file("", "err", inherited);
        start(words, input, out, err);
        for (const HANDLE one : {input, out, err})
            CloseHandle(one);
    }
    ~running_program() {
        end_input();
        if (process_ != nullptr) kill();
    }
    running_program(const running_program&) = delete;
    running_program& operator=(const running_program&) = delete;

    void type(const std::string& text) const {
        DWORD sent = 0;
        EXPECT_TRUE(WriteFile(keyboard_, text.data(), static_cast<DWORD>(text.size()), &sent, nullptr));
    }
    void end_input() {
        if (keyboard_ != nullptr) CloseHandle(std::exchange(keyboard_, nullptr));
    }
    /// As the task manager does.
    void kill() {
        TerminateProcess(process_, 99);
        wait_with_open_input();
    }
    /// As Ctrl+Break in its console does. Returns false if the test has no console.
    bool interrupt() const { return GenerateConsoleCtrlEvent(CTRL_BREAK_EVENT, id_) != 0; }
    std::string out() const { return folder_.content("out" + name_); }
    std::string err() const { return folder_.content("err" + name_); }
    bool runs() const { return WaitForSingleObject(process_, 0) == WAIT_TIMEOUT; }

    /// Waits for its end and returns the exit status.
    int wait() {
        end_input();
        return wait_with_open_input();
    }
    int wait_with_open_input() {
        constexpr DWORD patience_ms = 60'000;
        if (WaitForSingleObject(process_, patience_ms) == WAIT_TIMEOUT) {
            ADD_FAILURE() << "it does not end";
            TerminateProcess(process_, 98);
            WaitForSingleObject(process_, patience_ms);
        }
        DWORD status = 0;
        GetExitCodeProcess(process_, &status);
        CloseHandle(std::exchange(process_, nullptr));
        return static_cast<int>(status);
    }

private:
    static int& count() {
        static int number = 0;
        return number;
    }
    HANDLE new_file(const std::string& chosen, const std::string& kind, SECURITY_ATTRIBUTES& inherited) const {
        const std::filesystem::path file = chosen.empty() ? folder_ / (kind + name_) : path_from_utf8(chosen);
        return CreateFileW(file.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                           CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    }
    void start(const std::vector<std::string>& words, HANDLE input, HANDLE out, HANDLE err) {
        std::wstring line;
        for (const std::string& word : words)
            line += (line.empty() ? L"\"" : L" \"") + path_from_utf8(word).wstring() + L"\"";
        STARTUPINFOW streams{};
        streams.cb = sizeof streams;
        streams.dwFlags = STARTF_USESTDHANDLES;
        streams.hStdInput = input;
        streams.hStdOutput = out;
        streams.hStdError = err;
        PROCESS_INFORMATION started{};
        if (!CreateProcessW(path_from_utf8(words.front()).c_str(), line.data(), nullptr, nullptr, TRUE,
                            CREATE_NEW_PROCESS_GROUP, nullptr, folder_.path().c_str(), &streams, &started)) {
            ADD_FAILURE() << words.front() << " does not start: Windows error " << GetLastError();
            return;
        }
        CloseHandle(started.hThread);
        process_ = started.hProcess;
        id_ = started.dwProcessId;
    }

    const temporary_directory& folder_;
    std::string name_;
    HANDLE process_ = nullptr;
    HANDLE keyboard_ = nullptr;
    DWORD id_ = 0;
};

} // namespace desk::test
