// One line on the terminal that shows how the moves of all daemons go on. It is gone in the end.
//
// Several threads may show at once.
#pragma once

#include <iosfwd>
#include <mutex>
#include <string>
#include <vector>

#include "orx/client/DaemonStatus.h"
#include "orxctl/MoveProgress.h"

namespace orx::orxctl {

class Progress {
  public:
    /// A terminal of `lineWidth` columns, which must outlive this, for so many daemons.
    Progress(std::ostream& lineTerminal, std::size_t lineWidth, std::size_t daemons);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    /// Takes the line away.
    ~Progress();

    /// Shows that the daemon of that number is now at `status`: of one daemon its lens, of several
    /// how many are at rest.
    void show(std::size_t number, const client::DaemonStatus& status);

  private:
    [[nodiscard]] std::string countLine() const;
    void draw(const std::string& line);

    std::ostream& terminal;
    std::size_t width;
    std::mutex mutex;  ///< guards all below, and the terminal
    std::vector<bool> atRest;
    MoveProgress move;
    std::string drawn;
};

}  // namespace orx::orxctl
