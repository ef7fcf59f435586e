#pragma once

#include "platform/end_request.h"

#include <QObject>

#include <functional>

namespace desk::qt {

/// Hears every request that the program end: the system's (end_request) and the session's (QEvent::Quit). Needs the
/// application, and hears while events run.
class end_watch : public QObject {
public:
    /// `request` outlives this.
    explicit end_watch(const end_request& request);

    /// Called for every request. Until the program fills it in, the loops of events end.
    std::function<void()> end;

    /// Whether the system has requested the end; true even while no events run.
    bool requested() const { return request_.came(); }

    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    const end_request& request_;
};

} // namespace desk::qt
