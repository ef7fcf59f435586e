// The system's file dialogs.

#include "bench_fixture.h"
#include "qt/qt_dialogs.h"
#include "runtime/windows_api.h"

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace desk::gui {

namespace {

struct child_window {
    HWND handle;
    std::wstring kind;
};

std::wstring kind_of(HWND window) {
    std::wstring kind(256, L'\0');
    kind.resize(static_cast<std::size_t>(GetClassNameW(window, kind.data(), static_cast<int>(kind.size()))));
    return kind;
}

std::wstring text_of(HWND window) {
    std::wstring text(1024, L'\0');
    text.resize(
        static_cast<std::size_t>(SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

std::vector<child_window> children_of(HWND window) {
    std::vector<child_window> found;
    const auto note = [](HWND child, LPARAM into) -> BOOL {
        reinterpret_cast<std::vector<child_window>*>(into)->push_back({child, kind_of(child)});
        return TRUE;
    };
    EnumChildWindows(window, note, reinterpret_cast<LPARAM>(&found));
    return found;
}

/// The visible dialog of this process, or null.
HWND system_dialog() {
    HWND found = nullptr;
    const auto note = [](HWND window, LPARAM into) -> BOOL {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        if (process != GetCurrentProcessId() || IsWindowVisible(window) == 0 || kind_of(window) != L"#32770")
            return TRUE;
        *reinterpret_cast<HWND*>(into) = window;
        return FALSE;
    };
    EnumWindows(note, reinterpret_cast<LPARAM>(&found));
    return found;
}

std::vector<std::wstring> entries_of(HWND list) {
    std::vector<std::wstring> entries;
    const auto count = SendMessageW(list, CB_GETCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
        std::wstring entry(1024, L'\0');
        entry.resize(static_cast<std::size_t>(
            SendMessageW(list, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(entry.data()))));
        entries.push_back(entry);
    }
    return entries;
}

/// What the operator sees in the system's dialog.
struct seen_system_dialog {
    std::wstring title;
    std::vector<std::wstring> filters;
    std::wstring filter;
};

class system_dialogs : public bench {
protected:
    system_dialogs() { plug_generator(); }

    /// Shows the dialog; in it, types `name` and accepts, or cancels if it is empty.
    std::optional<file_choice> answer(const file_dialog_setup& setup, const std::wstring& name) {
        std::thread operator_([&] { operate(name); });
        const auto choice = qt::qt_file_dialog(program->gate()).show(setup);
        operator_.join();
        return choice;
    }

    seen_system_dialog seen;

private:
    void operate(const std::wstring& name) {
        HWND dialog = nullptr;
        std::vector<HWND> filters;
        HWND line = nullptr;
        // the dialog is ready when its list of filters is full
        for (int ms = 0; ms < 30000 && (filters.empty() || line == nullptr); ms += 10) {
            Sleep(10);
            dialog = system_dialog();
            if (dialog == nullptr) continue;
            filters.clear();
            for (const child_window& child : children_of(dialog)) {
                const std::vector<std::wstring> entries =
                    child.kind == L"ComboBox" ? entries_of(child.handle) : std::vector<std::wstring>();
                if (!entries.empty() && entries[0].find(L"*.") != std::wstring::npos) filters.push_back(child.handle);
                if (child.kind == L"Edit" && IsWindowVisible(child.handle) != 0) line = child.handle;
            }
        }
        if (dialog == nullptr || filters.empty() || line == nullptr) {
            ADD_FAILURE() << "there is no dialog of the system";
            return;
        }
        seen = {text_of(dialog), entries_of(filters[0]), text_of(filters[0])};
        if (!name.empty()) SendMessageW(line, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name.c_str()));
        PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(name.empty() ? IDCANCEL : IDOK, BN_CLICKED), 0);
    }
};

TEST_F(system_dialogs, have_the_filters_and_return_the_file) {
    start();
    const QString name = QString::fromUtf8("Prüfling ü電.hex");
    put_file(name, "00");
    file_dialog_setup setup;
    setup.title = "Open edid file";
    setup.filter = "hex / bin|*.hex;*.bin|*.*|*.*";
    setup.filter_index = 1;
    setup.init_dir = QDir::toNativeSeparators(directory.path()).toStdString();
    const auto choice = answer(setup, name.toStdWString());
    EXPECT_EQ(seen.title, L"Open edid file");
    ASSERT_EQ(seen.filters.size(), 2U);
    EXPECT_NE(seen.filters[0].find(L"hex / bin"), std::wstring::npos);
    EXPECT_NE(seen.filters[1].find(L"*.*"), std::wstring::npos);
    EXPECT_EQ(seen.filter, seen.filters[0]);
    ASSERT_TRUE(choice.has_value());
    EXPECT_EQ(QFileInfo(QString::fromStdString(choice->file_name)), QFileInfo(directory.filePath(name)));
    EXPECT_EQ(choice->filter_index, 1);
}

TEST_F(system_dialogs, save_under_a_new_name_and_leave_the_question_to_the_desk) {
    start();
    file_dialog_setup setup;
    setup.kind = file_dialog_setup::dialog_kind::save;
    setup.title = "Save EDID file";
    setup.filter = "*.hex|*.hex|*.bin|*.bin";
    setup.filter_index = 2;
    setup.init_dir = QDir::toNativeSeparators(directory.path()).toStdString();
    const QString name = QString::fromUtf8("ü電.bin");
    for (const QByteArray there : {"", "an older file"}) {
        if (!there.isEmpty()) put_file(name, there);
        const auto choice = answer(setup, name.toStdWString());
        EXPECT_EQ(seen.title, L"Save EDID file");
        EXPECT_EQ(seen.filter, seen.filters.at(1));
        ASSERT_TRUE(choice.has_value());
        EXPECT_EQ(QFileInfo(QString::fromStdString(choice->file_name)).fileName(), name);
        EXPECT_EQ(choice->filter_index, 2);
    }
}

TEST_F(system_dialogs, can_be_cancelled) {
    start();
    file_dialog_setup setup;
    setup.title = "Open edid file";
    setup.filter = "hex / bin|*.hex;*.bin|*.*|*.*";
    EXPECT_FALSE(answer(setup, L"").has_value());
}

} // namespace

} // namespace desk::gui
