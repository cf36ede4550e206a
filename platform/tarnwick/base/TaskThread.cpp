#include "TaskThread.h"

#include "Error.h"

#include <system_error>

namespace tarnwick {

TaskThread::TaskThread()
try : m_thread([this] { work(); }) {
} catch (const std::system_error &) {
    throw Error(QStringLiteral("The system cannot start another thread."));
}

TaskThread::~TaskThread()
{
    {
        const std::scoped_lock lock(m_mutex);
        m_isEnding = true;
        m_waiting.clear();
    }
    m_changed.notify_all();
    m_thread.join();
}

void TaskThread::add(Task task)
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_failure || m_waiting.size() < kMostWaiting; });
    checkFailure();
    m_waiting.push_back(std::move(task));
    lock.unlock();
    m_changed.notify_all();
}

void TaskThread::finish()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_failure || (m_waiting.empty() && !m_isBusy); });
    checkFailure();
}

void TaskThread::checkFailure() const
{
    if (m_failure)
        std::rethrow_exception(m_failure);
}

void TaskThread::work()
{
    std::unique_lock lock(m_mutex);
    while (true) {
        m_changed.wait(lock, [this] { return m_isEnding || !m_waiting.empty(); });
        if (m_isEnding)
            return;
        Task task = std::move(m_waiting.front());
        m_waiting.pop_front();
        m_isBusy = true;
        lock.unlock();
        m_changed.notify_all();
        std::exception_ptr failure;
        try {
            task();
        } catch (...) {
            failure = std::current_exception();
        }
        task = {}; // what it holds goes here, not under the lock
        lock.lock();
        m_isBusy = false;
        if (failure) {
            m_failure = failure;
            m_waiting.clear();
        }
        m_changed.notify_all();
    }
}

} // namespace tarnwick
