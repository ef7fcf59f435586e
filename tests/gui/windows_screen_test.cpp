// What Windows reports of its screens and colours, and what the window does.

#include "bench_fixture.h"
#include "qt/appearance.h"
#include "qt/desktop_scheme.h"
#include "runtime/windows_api.h"
#include "visibility.h"

#include <QApplication>
#include <QScreen>
#include <QTest>
#include <QWindow>

#include <gtest/gtest.h>

#include <optional>
#include <vector>

#include <dwmapi.h>

namespace desk::gui {

namespace {

constexpr const wchar_t* choices = LR"(Software\Microsoft\Windows\CurrentVersion\Themes\Personalize)";
constexpr const wchar_t* light_programs = L"AppsUseLightTheme";

HWND handle_of(const QWidget& window) { return reinterpret_cast<HWND>(window.winId()); }

class colors_of_windows : public bench {
protected:
    colors_of_windows() {
        plug_generator();
        DWORD value = 0;
        DWORD size = sizeof value;
        if (RegGetValueW(HKEY_CURRENT_USER, choices, light_programs, RRF_RT_REG_DWORD, nullptr, &value, &size) ==
            ERROR_SUCCESS)
            before_ = value;
    }
    ~colors_of_windows() override {
        if (before_)
            set(*before_);
        else
            RegDeleteKeyValueW(HKEY_CURRENT_USER, choices, light_programs);
        qt::set_scheme(qt::scheme::light);
    }

    static void set(DWORD light) {
        RegSetKeyValueW(HKEY_CURRENT_USER, choices, light_programs, REG_DWORD, &light, sizeof light);
    }
    /// As the Settings do after a choice.
    void choose(bool light) {
        set(light ? 1 : 0);
        announce();
    }
    void announce(const wchar_t* what = L"ImmersiveColorSet") {
        SendMessageW(handle_of(program->main_window()), WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(what));
    }
    qt::scheme shown() { return qt::scheme_of(program->main_window().palette()); }

private:
    std::optional<DWORD> before_;
};

TEST_F(colors_of_windows, are_known_at_the_start) {
    set(0);
    EXPECT_EQ(qt::desktop_scheme_now(), qt::scheme::dark);
    set(1);
    EXPECT_EQ(qt::desktop_scheme_now(), qt::scheme::light);
    RegDeleteKeyValueW(HKEY_CURRENT_USER, choices, light_programs);
    EXPECT_EQ(qt::desktop_scheme_now(), qt::scheme::light);
}

TEST_F(colors_of_windows, are_followed_while_the_desk_runs) {
    set(1);
    const qt::desktop_scheme desktop(qt::set_scheme);
    start();
    EXPECT_EQ(shown(), qt::scheme::light);
    choose(false);
    EXPECT_TRUE(wait_until([&] { return shown() == qt::scheme::dark; }, 5000));
    choose(true);
    EXPECT_TRUE(wait_until([&] { return shown() == qt::scheme::light; }, 5000));
    set(0);
    announce(L"Policy");
    SendMessageW(handle_of(program->main_window()), WM_SETTINGCHANGE, 0, 0);
    EXPECT_FALSE(wait_until([&] { return shown() == qt::scheme::dark; }, 200)) << "other settings have changed";
}

TEST_F(colors_of_windows, are_those_of_the_title_bar) {
    constexpr DWORD immersive_dark_mode = 20;
    set(1);
    const qt::desktop_scheme desktop(qt::set_scheme);
    start();
    const HWND window = handle_of(program->main_window());
    BOOL dark = TRUE;
    if (FAILED(DwmSetWindowAttribute(window, immersive_dark_mode, &dark, sizeof dark)) ||
        FAILED(DwmGetWindowAttribute(window, immersive_dark_mode, &dark, sizeof dark)))
        GTEST_SKIP() << "the title bar has no colours here";
    const auto is_dark = [&] {
        DwmGetWindowAttribute(window, immersive_dark_mode, &dark, sizeof dark);
        return dark == TRUE;
    };
    choose(false);
    EXPECT_TRUE(wait_until(is_dark, 5000));
    choose(true);
    EXPECT_TRUE(wait_until([&] { return !is_dark(); }, 5000));
}

class screens_of_windows : public bench {
protected:
    screens_of_windows() { plug_generator(); }
};

TEST_F(screens_of_windows, can_have_different_scales) {
    start();
    EXPECT_EQ(GetAwarenessFromDpiAwarenessContext(GetWindowDpiAwarenessContext(handle_of(program->main_window()))),
              DPI_AWARENESS_PER_MONITOR_AWARE);
}

TEST_F(screens_of_windows, give_the_window_its_size) {
    start();
    QWidget& window = program->main_window();
    const HWND handle = handle_of(window);
    const QRect room = window.screen()->availableGeometry();
    // smaller, so that it fits the screen of every test
    RECT wanted{room.left() + 20, room.top() + 20, room.left() + 820, room.top() + 640};
    SendMessageW(handle, WM_DPICHANGED, MAKEWPARAM(192, 192), reinterpret_cast<LPARAM>(&wanted));
    const auto has_wanted_size = [&] {
        RECT now{};
        GetWindowRect(handle, &now);
        return EqualRect(&now, &wanted) != 0;
    };
    EXPECT_TRUE(wait_until(has_wanted_size, 5000));
    EXPECT_EQ(clipped_captions(window), QStringList());
}

} // namespace

} // namespace desk::gui
