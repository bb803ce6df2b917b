#include "orxdef/FileContents.h"

#include <stdexcept>

#include "orxdef/Files.h"

namespace orx::orxdef {

FileContents readFiles(Mistakes& mistakes) {
    FileContents contents(mistakes.fileCount());
    for (std::size_t file = 0; file < contents.size(); ++file) {
        try {
            contents[file] = readFile(mistakes.fileName(file));
        } catch (const std::runtime_error& error) {
            mistakes.addUnreadable(file, error.what());
        }
    }
    return contents;
}

}  // namespace orx::orxdef
