// The standard mutex, lock and condition variable in a dress that the compiler can check: clang's
// -Wthread-safety proves that a field marked ORX_GUARDED_BY is touched under its mutex only.
#pragma once

#include <condition_variable>
#include <mutex>

#include "core/ThreadAnnotations.h"

namespace orx {

class ORX_CAPABILITY("mutex") Mutex {
  public:
    void lock() ORX_ACQUIRE() { native.lock(); }
    void unlock() ORX_RELEASE() { native.unlock(); }

  private:
    friend class Condition;
    std::mutex native;
};

/// Holds a mutex from its construction to the end of its scope.
class ORX_SCOPED_CAPABILITY MutexLock {
  public:
    explicit MutexLock(Mutex& held) ORX_ACQUIRE(held) : mutex(held) { mutex.lock(); }
    MutexLock(const MutexLock&) = delete;
    MutexLock& operator=(const MutexLock&) = delete;
    ~MutexLock() ORX_RELEASE() { mutex.unlock(); }

  private:
    Mutex& mutex;
};

/// A condition variable that waits on a `Mutex`.
class Condition {
  public:
    /// Releases the mutex while it waits; may return without a signal, so ask the condition again.
    void wait(Mutex& mutex) ORX_REQUIRES(mutex) {
        std::unique_lock<std::mutex> lock(mutex.native, std::adopt_lock);
        native.wait(lock);
        lock.release();
    }
    void notifyAll() noexcept { native.notify_all(); }

  private:
    std::condition_variable native;
};

}  // namespace orx
