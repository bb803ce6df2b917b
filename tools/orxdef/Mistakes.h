// All mistakes found in the files of one run, each with its place.
//
// Readers go on after a mistake, so that one run shows everything there is to mend; whether the
// result may be used is decided at the end, by `empty`.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orx::orxdef {

/// A place in one of the files.
struct Place {
    std::size_t file = 0;                            ///< index in the list of files
    std::uint32_t line = 1;                          ///< counted from 1
    std::uint32_t column = 1;                        ///< in characters, counted from 1
    std::optional<std::size_t> byte = std::nullopt;  ///< in a binary file, in place of the two
};

/// How much a mistake matters.
enum class Severity : std::uint8_t {
    error,    ///< cannot be compiled or loaded, or ends the daemon
    warning,  ///< the daemon does something else than one would expect
    note,     ///< as the daemon is meant to work, but worth knowing
};

/// "error", "warning" or "note".
[[nodiscard]] std::string_view nameOf(Severity severity) noexcept;

struct Mistake {
    Place place;
    std::string message;  ///< one line without its end
    Severity severity = Severity::error;
};

class Mistakes {
  public:
    /// `fileNames` are the names of the files, as the user wrote them and in that order.
    explicit Mistakes(std::vector<std::string> fileNames);

    /// Takes one more of what is wrong; `message` is one line without its end.
    void add(const Place& place, std::string message, Severity severity = Severity::error);

    /// That a file could not be read, and why.
    void addUnreadable(std::size_t file, const std::string& reason);

    [[nodiscard]] bool empty() const noexcept { return mistakes.empty(); }
    [[nodiscard]] std::size_t count() const noexcept { return mistakes.size(); }
    [[nodiscard]] std::size_t count(Severity severity) const noexcept;
    [[nodiscard]] std::size_t fileCount() const noexcept { return files.size(); }
    [[nodiscard]] const std::string& fileName(std::size_t file) const { return files.at(file); }

    /// file:line:column, or "file:byte N" in a binary file
    [[nodiscard]] std::string describe(const Place& place) const;

    /// In reading order; mistakes at the same place stay in the order in which they were found.
    [[nodiscard]] std::vector<Mistake> sorted() const;

    /// "place: message" for each mistake, as `sorted`.
    [[nodiscard]] std::vector<std::string> lines() const;

    /// Writes each of `lines` on a line of its own.
    void print(std::ostream& output) const;

  private:
    std::vector<std::string> files;
    std::vector<Mistake> mistakes;
};

}  // namespace orx::orxdef
