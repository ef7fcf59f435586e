#pragma once

#include <cstdint>

namespace desk {

class work;

/// The progress of the desk's current work. Nested work, such as a Refresh during a SET, subdivides the current step
/// of the outer work, so the total never decreases.
class work_progress {
public:
    bool at_work() const { return innermost_ != nullptr; }
    /// Whether the length of the current step is unknown.
    bool has_no_measure() const;
    /// Progress of the outermost work, from 0 to 1.
    double fraction() const;

private:
    friend class work;
    work* innermost_ = nullptr;
};

/// A piece of work with a known number of steps, for the life of this object.
class work {
public:
    work(work_progress& progress, int steps);
    work(work_progress& progress, int steps, const std::int16_t& counted);
    /// Work of unknown length.
    explicit work(work_progress& progress) : work(progress, 0) {}
    work(const work&) = delete;
    work& operator=(const work&) = delete;
    ~work();

    void step() { ++done_; }

private:
    friend class work_progress;
    int done() const;

    work_progress& progress_;
    work* outer_;
    int steps_;
    int done_ = 0;
    const std::int16_t* counted_ = nullptr;
};

} // namespace desk
