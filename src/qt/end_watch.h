#pragma once

#include "platform/end_request.h"

#include <QObject>

#include <functional>

namespace desk::qt {

/// Receives requests to end the program from the system (end_request) and the session (QEvent::Quit). Needs the
/// application and a running event loop.
class end_watch : public QObject {
public:
    /// `request` must outlive this.
    explicit end_watch(const end_request& request);

    /// Called for every request. Until it is set, a request ends the event loops.
    std::function<void()> end;

    /// Whether the system has requested the end; valid even while no events run.
    bool requested() const { return request_.received(); }

    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    const end_request& request_;
};

} // namespace desk::qt
