#pragma once

#include <cstdint>

namespace desk {

class work;

/// How far the work is that the desk does now. Work inside of work, such as a Refresh that the operator asks for in the
/// middle of a SET, divides the step of the outer one that it comes in: the whole never goes back.
class work_progress {
public:
    bool at_work() const { return innermost_ != nullptr; }
    /// Whether nobody knows how long the present step lasts.
    bool has_no_measure() const;
    /// The part of the outermost work that is done, from 0 to 1.
    double fraction() const;

private:
    friend class work;
    work* innermost_ = nullptr;
};

/// A piece of work with a known number of steps, as long as this lives.
class work {
public:
    work(work_progress& progress, int steps);
    /// Another variable counts the steps.
    work(work_progress& progress, int steps, const std::int16_t& counted);
    /// Nobody knows how long it takes.
    explicit work(work_progress& progress) : work(progress, 0) {}
    work(const work&) = delete;
    work& operator=(const work&) = delete;
    ~work();

    /// One more step is done.
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
