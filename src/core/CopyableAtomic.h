// An atomic member of a class that is copied as a value: a setting that one thread changes while
// another reads it.
#pragma once

#include <atomic>

namespace orx {

template <typename Value>
class CopyableAtomic {
  public:
    CopyableAtomic(Value initial) : value(initial) {}  // NOLINT(google-explicit-constructor)
    CopyableAtomic(const CopyableAtomic& other) : value(other.value.load()) {}
    CopyableAtomic& operator=(const CopyableAtomic&) = delete;
    ~CopyableAtomic() = default;

    void store(Value changed) noexcept { value = changed; }
    [[nodiscard]] Value load() const noexcept { return value; }

  private:
    std::atomic<Value> value;
};

}  // namespace orx
