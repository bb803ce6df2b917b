// All mistakes found in the source files of one run, each with its place.
//
// Readers go on after a mistake, so that one run shows everything there is to mend; whether the
// result may be used is decided at the end, by `empty`.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace orx::orxdef {

/// A place in one of the source files.
struct Place {
    std::size_t file = 0;      ///< index in the list of source files
    std::uint32_t line = 1;    ///< counted from 1
    std::uint32_t column = 1;  ///< in characters, counted from 1
};

class Mistakes {
  public:
    /// `fileNames` are the names of the source files, as the user wrote them and in that order.
    explicit Mistakes(std::vector<std::string> fileNames);

    /// `message` is one line without its end.
    void add(const Place& place, std::string message);

    [[nodiscard]] bool empty() const noexcept { return mistakes.empty(); }
    [[nodiscard]] std::size_t count() const noexcept { return mistakes.size(); }
    [[nodiscard]] const std::string& fileName(std::size_t file) const { return files.at(file); }

    /// file:line:column
    [[nodiscard]] std::string describe(const Place& place) const;

    /// "file:line:column: message" for each mistake, in reading order; mistakes at the same place
    /// stay in the order in which they were found.
    [[nodiscard]] std::vector<std::string> lines() const;

  private:
    struct Mistake {
        Place place;
        std::string message;
    };

    std::vector<std::string> files;
    std::vector<Mistake> mistakes;
};

}  // namespace orx::orxdef
