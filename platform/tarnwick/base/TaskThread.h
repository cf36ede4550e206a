#pragma once
#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

namespace tarnwick {

/// Runs tasks one after the other in a thread of its own, in the order in which they come. After a task has thrown, the
/// tasks behind it are dropped.
class TaskThread
{
public:
    using Task = std::function<void()>;

    /// Throws Error if the system cannot start a thread.
    TaskThread();
    /// Drops the tasks that have not begun and waits for the one that runs.
    ~TaskThread();
    TaskThread(const TaskThread &) = delete;
    TaskThread &operator=(const TaskThread &) = delete;

    /// Adds a task. Waits while kMostWaiting others wait, so that a quick caller does not fill the memory. Throws what
    /// an earlier task threw.
    void add(Task task);
    /// Waits until all tasks are done. Throws what one of them threw.
    void finish();

private:
    static constexpr size_t kMostWaiting = 4;

    void work();
    void checkFailure() const;

    std::mutex m_mutex;
    std::condition_variable m_changed; ///< of everything below
    std::deque<Task> m_waiting;
    std::exception_ptr m_failure;
    bool m_isBusy = false;
    bool m_isEnding = false;
    std::thread m_thread; ///< last: it uses the others from its start
};

} // namespace tarnwick
