// A few threads that share out jobs among themselves.
#pragma once

#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace zelvatone {

class ThreadTeam {
public:
    // `threads` at least 1; the caller of run() is one of them.
    explicit ThreadTeam(int threads);
    ~ThreadTeam();
    ThreadTeam(const ThreadTeam&) = delete;
    ThreadTeam& operator=(const ThreadTeam&) = delete;

    // Calls job(0) to job(count - 1), each once, on any thread and in any order, and comes back
    // when all have ended. After a job has thrown no further one is begun, and its exception comes
    // out of here. From one thread at a time.
    void run(int count, const std::function<void(int)>& job);

private:
    void work();
    // Does jobs until none is left. The lock is held when it begins and when it ends.
    void doJobs(std::unique_lock<std::mutex>& lock);

    std::mutex mutex_; // guards all below
    std::condition_variable jobsCame_;
    std::condition_variable jobsEnded_;
    const std::function<void(int)>* job_ = nullptr;
    int next_ = 0;
    int count_ = 0;
    int running_ = 0;
    bool closing_ = false;
    std::exception_ptr failure_;
    std::vector<std::thread> threads_;
};

// The threads that the machine runs at once; at least 1.
int machineThreads();

} // namespace zelvatone
