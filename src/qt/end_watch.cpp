#include "qt/end_watch.h"

#include <QCoreApplication>
#include <QEvent>
#include <QSocketNotifier>

namespace desk::qt {

end_watch::end_watch(const end_request& request) : end([] { QCoreApplication::exit(); }), request_(request) {
    QCoreApplication::instance()->installEventFilter(this);
    if (request_.descriptor() < 0) return;
    auto* const notifier = new QSocketNotifier(request_.descriptor(), QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        // the byte stays in the pipe: one request is enough
        notifier->setEnabled(false);
        end();
    });
}

bool end_watch::eventFilter(QObject* watched, QEvent* e) {
    if (watched != QCoreApplication::instance() || e->type() != QEvent::Quit) return false;
    end();
    return true;
}

} // namespace desk::qt
