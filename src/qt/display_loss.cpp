#include "qt/display_loss.h"

#include <QCoreApplication>
#include <QSemaphore>
#include <QString>
#include <QThread>

#include <atomic>
#include <cstdlib>
#include <utility>

namespace desk::qt {

namespace {

// The handlers take no context object.
std::function<void()> save_now;
std::atomic<bool> is_gone = false;
QSemaphore saved;
QtMessageHandler previous_handler = nullptr;

/// Main thread only.
void save_once() {
    if (const auto save = std::exchange(save_now, {})) save();
}

/// Any Qt thread may notice first. It must wait for the main thread, since it ends the program next.
void save_from_any_thread() {
    is_gone = true;
    QObject* const application = QCoreApplication::instance();
    if (application == nullptr || application->thread() == QThread::currentThread()) {
        save_once();
        return;
    }
    const auto save_and_end = [] {
        save_once();
        std::_Exit(EXIT_FAILURE);
    };
    QMetaObject::invokeMethod(application, save_and_end, Qt::QueuedConnection);
    constexpr int longest_wait_ms = 1500;
    saved.tryAcquire(1, longest_wait_ms);
}

/// The Wayland platform gives no other sign before it calls _exit.
void handle_message(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    previous_handler(type, context, message);
    if (message.startsWith("The Wayland connection ") || message.startsWith("The X11 connection "))
        save_from_any_thread();
}

} // namespace

display_loss::display_loss(std::function<void()> save) {
    save_now = std::move(save);
    previous_handler = qInstallMessageHandler(handle_message);
    // the X11 platform calls exit
    static const int registered = std::atexit(save_once);
    static_cast<void>(registered);
    // Windows ends the program after this signal
    QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, [] { save_once(); });
}

display_loss::~display_loss() {
    save_now = {};
    qInstallMessageHandler(previous_handler);
    saved.release();
}

bool display_loss::occurred() { return is_gone; }

} // namespace desk::qt
