// The setting of Windows, from the registry.

#include "qt/desktop_scheme.h"
#include "runtime/windows_api.h"

#include <QAbstractNativeEventFilter>
#include <QByteArray>
#include <QCoreApplication>

#include <cwchar>
#include <utility>

namespace desk::qt {

namespace {

constexpr const wchar_t* choices = LR"(Software\Microsoft\Windows\CurrentVersion\Themes\Personalize)";

/// Qt 6.4 reports a change only to programs with its own dark style.
class change_of_colors final : public QObject, public QAbstractNativeEventFilter {
public:
    explicit change_of_colors(std::function<void(scheme)> report) : report_(std::move(report)) {
        QCoreApplication::instance()->installNativeEventFilter(this);
    }

    bool nativeEventFilter(const QByteArray& /*type*/, void* message, qintptr* /*result*/) override {
        const MSG& arrived = *static_cast<const MSG*>(message);
        const auto* const what = reinterpret_cast<const wchar_t*>(arrived.lParam);
        if (arrived.message == WM_SETTINGCHANGE && what != nullptr && std::wcscmp(what, L"ImmersiveColorSet") == 0)
            report_(desktop_scheme_now());
        return false;
    }

private:
    std::function<void(scheme)> report_;
};

} // namespace

scheme desktop_scheme_now() {
    DWORD light = 1;
    DWORD size = sizeof light;
    RegGetValueW(HKEY_CURRENT_USER, choices, L"AppsUseLightTheme", RRF_RT_REG_DWORD, nullptr, &light, &size);
    return light == 0 ? scheme::dark : scheme::light;
}

std::unique_ptr<QObject> watch_desktop(std::function<void(scheme)> report) {
    return std::make_unique<change_of_colors>(std::move(report));
}

} // namespace desk::qt
