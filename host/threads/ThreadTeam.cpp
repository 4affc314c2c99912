#include "host/threads/ThreadTeam.h"

#include <algorithm>
#include <utility>

namespace zelvatone {

ThreadTeam::ThreadTeam(int threads) {
    for (int i = 1; i < threads; ++i) {
        threads_.emplace_back([this] { work(); });
    }
}

ThreadTeam::~ThreadTeam() {
    {
        const std::scoped_lock lock(mutex_);
        closing_ = true;
    }
    jobsCame_.notify_all();
    for (std::thread& thread : threads_) {
        thread.join();
    }
}

void ThreadTeam::work() {
    std::unique_lock lock(mutex_);
    while (true) {
        jobsCame_.wait(lock, [this] { return closing_ || next_ < count_; });
        if (closing_) {
            return;
        }
        doJobs(lock);
    }
}

void ThreadTeam::doJobs(std::unique_lock<std::mutex>& lock) {
    while (next_ < count_) {
        const int mine = next_++;
        ++running_;
        lock.unlock();
        std::exception_ptr failure;
        try {
            (*job_)(mine);
        } catch (...) {
            failure = std::current_exception();
        }
        lock.lock();
        --running_;
        if (failure) {
            failure_ = failure_ ? failure_ : failure;
            next_ = count_;
        }
    }
    if (running_ == 0) {
        jobsEnded_.notify_all();
    }
}

void ThreadTeam::run(int count, const std::function<void(int)>& job) {
    std::unique_lock lock(mutex_);
    job_ = &job;
    next_ = 0;
    count_ = count;
    jobsCame_.notify_all();
    doJobs(lock);
    jobsEnded_.wait(lock, [this] { return running_ == 0; });
    job_ = nullptr;
    if (failure_) {
        std::rethrow_exception(std::exchange(failure_, nullptr));
    }
}

int machineThreads() {
    return static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
}

} // namespace zelvatone
