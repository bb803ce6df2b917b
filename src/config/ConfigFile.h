// A plain-text configuration file: one "key = value" a line, held in memory as ordered texts.
//
//   - Blanks, tabs and carriage returns around lines, keys and values do not count.
//   - A line whose first character is '#' or ';' is a comment; later in a line they are ordinary.
//   - The first '=' separates key and value; either may be empty. A repeated key overwrites.
//
// Base of the main configuration and of the lens memory. Takes no lock: one thread at a time.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "config/ConfigLine.h"

namespace orx {

class ConfigFile {
  public:
    using Entries = std::map<std::string, std::string, std::less<>>;

    /// An empty store without a file.
    ConfigFile() = default;

    /// Reads `path` at once; errors as `load`.
    explicit ConfigFile(std::string path);

    /// A store of the `given` entries without a file.
    explicit ConfigFile(Entries given);

    ConfigFile(const ConfigFile&) = delete;
    ConfigFile& operator=(const ConfigFile&) = delete;
    virtual ~ConfigFile() = default;

    /// Whether `path` can be opened for reading.
    [[nodiscard]] static bool isReadable(const std::string& path);

    /// What is thrown for the line of that number in the file `path`.
    [[nodiscard]] static std::string parseError(const std::string& path, std::size_t lineNumber);

    /// Reads the file into the store, over what it holds. A file that cannot be opened changes
    /// nothing. Throws `std::runtime_error` with the text `parseError`, "[config] FILE, line N:
    /// parse error", at the first line without '='; the entries of the lines before it are kept.
    void load();

    /// Empties the store and reads the file again; errors as `load`.
    virtual void reload();

    /// Rewrites the file from the store: "key = value" lines in ascending byte order of the keys,
    /// then an empty line. Comments and the former order are lost. A power cut leaves the old file
    /// or the new one, see `FileReplacement`. Throws `std::runtime_error` "could not write to
    /// file: FILE" where it cannot be opened for writing; it is then untouched.
    virtual void save();

    /// Prints every entry to standard output as "[config] key = value".
    virtual void dump() const;

    /// The value, or the empty text where the key is absent.
    [[nodiscard]] std::string getString(std::string_view key) const;

    /// The whole number that begins the value; `fallback` where the key is absent or its value
    /// empty. Throws `std::invalid_argument` or `std::out_of_range`, both with the text "stoi".
    [[nodiscard]] int getInt(std::string_view key, int fallback) const;

    /// The value split at every ',' and each piece trimmed. Empty pieces are kept; an absent key
    /// gives no piece, an empty value one empty piece.
    [[nodiscard]] std::vector<std::string> getList(std::string_view key) const;

  protected:
    [[nodiscard]] const std::string& path() const noexcept { return fileName; }

    Entries entries;

  private:
    void take(ConfigLine line, std::size_t lineNumber);

    std::string fileName;
};

}  // namespace orx
