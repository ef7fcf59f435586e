#include "link/work_progress.h"

#include <algorithm>

namespace desk {

bool work_progress::has_no_measure() const { return innermost_ != nullptr && innermost_->steps_ == 0; }

double work_progress::fraction() const {
    double part = 0;
    for (const work* w = innermost_; w != nullptr; w = w->outer_) {
        const int done = w->done();
        // after the last step there is nothing left to do
        part = w->steps_ == 0 ? 0 : done == w->steps_ ? 1 : (done + part) / w->steps_;
    }
    return part;
}

work::work(work_progress& progress, int steps)
    : progress_(progress), outer_(progress.innermost_), steps_(std::max(0, steps)) {
    progress_.innermost_ = this;
}

work::work(work_progress& progress, int steps, const std::int16_t& counted) : work(progress, steps) {
    counted_ = &counted;
}

work::~work() {
    // procedures that wait for modal windows end in any order
    work** link = &progress_.innermost_;
    while (*link != this)
        link = &(*link)->outer_;
    *link = outer_;
}

int work::done() const { return std::clamp(counted_ == nullptr ? done_ : *counted_, 0, steps_); }

} // namespace desk
