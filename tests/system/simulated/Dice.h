// Numbers that follow from a seed alone; the distributions of the library differ between systems.
#pragma once

#include <cstdint>
#include <random>
#include <string>

namespace orx::test {

class Dice {
  public:
    explicit Dice(std::uint64_t seed) : engine(seed) {}

    /// 0 to `count` - 1.
    [[nodiscard]] int below(int count) {
        return static_cast<int>(engine() % static_cast<std::uint64_t>(count));
    }
    [[nodiscard]] int between(int least, int greatest) {
        return least + below(greatest - least + 1);
    }
    [[nodiscard]] bool oneOf(int count) { return below(count) == 0; }

    [[nodiscard]] const auto& pick(const auto& choices) {
        return choices.at(static_cast<std::size_t>(below(static_cast<int>(choices.size()))));
    }

    /// `size` bytes of values from `least` to `greatest`.
    [[nodiscard]] std::string bytes(int size, int least, int greatest) {
        std::string text(static_cast<std::size_t>(size), '\0');
        for (char& byte : text)
            byte = static_cast<char>(between(least, greatest));
        return text;
    }

  private:
    std::mt19937_64 engine;
};

}  // namespace orx::test
