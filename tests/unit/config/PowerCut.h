// What a disk may hold after the power was cut in the middle of a row of steps.
//
// The model promises no more than the platform does: a step on a file is safe once the file has
// been synchronised, a step on names once the folder has. Every other step may have been carried
// out or not, whatever became of the steps ahead of it, and a write may have been carried out in
// part. Names are exchanged as a whole, which a renaming guarantees.
#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <random>
#include <span>
#include <string>
#include <vector>

#include "unit/config/RecordingDisk.h"

namespace orx::test {

/// The files of a disk, and the names that lead to them.
struct DiskState {
    struct File {
        std::string content{};
        mode_t mode = 0;
        uid_t user = 0;
        bool operator==(const File&) const = default;
    };

    std::map<ino_t, File> files;
    std::map<std::string, ino_t> names;

    /// What a reader finds under `name`, or nothing.
    [[nodiscard]] std::optional<File> find(const std::string& name) const {
        const auto entry = names.find(name);
        if (entry == names.end()) return std::nullopt;
        const auto file = files.find(entry->second);
        return file != files.end() ? file->second : File{};
    }

    void apply(const DiskStep& step) {
        using Kind = DiskStep::Kind;
        switch (step.kind) {
            case Kind::create:
                names[step.name] = step.file;
                break;
            case Kind::write:
                write(files[step.file].content, step);
                break;
            case Kind::truncate:
                files[step.file].content.resize(sizeOf(step), '\0');
                break;
            case Kind::setOwner:
                files[step.file].user = step.user;
                break;
            case Kind::setMode:
                files[step.file].mode = step.mode;
                break;
            case Kind::rename:
                names.erase(step.oldName);
                names[step.name] = step.file;
                break;
            case Kind::remove:
                names.erase(step.oldName);
                break;
            case Kind::sync:
            case Kind::syncFolder:
                break;
        }
    }

  private:
    static std::size_t sizeOf(const DiskStep& step) { return static_cast<std::size_t>(step.size); }

    static void write(std::string& content, const DiskStep& step) {
        const auto begin = static_cast<std::size_t>(step.offset);
        content.resize(std::max(content.size(), begin + step.bytes.size()), '\0');
        content.replace(begin, step.bytes.size(), step.bytes);
    }
};

class PowerCut {
  public:
    /// The power goes when all of `done` have been asked for; `before` is what the disk held.
    PowerCut(DiskState before, std::span<const DiskStep> done) : safe(std::move(before)) {
        for (std::size_t index = 0; index < done.size(); ++index) {
            if (isSafe(done, index)) {
                safe.apply(done[index]);
            } else {
                open.push_back(done[index]);
            }
        }
    }

    /// How many steps may have been lost.
    [[nodiscard]] std::size_t openSteps() const { return open.size(); }

    /// What the disk holds where of the open steps those have been carried out that `survives`
    /// tells, and of each write as many bytes as `portion` tells.
    template <typename Survives, typename Portion>
    [[nodiscard]] DiskState after(Survives survives, Portion portion) const {
        auto state = safe;
        for (std::size_t index = 0; index < open.size(); ++index) {
            if (!survives(index)) continue;
            auto step = open[index];
            step.bytes.resize(portion(step.bytes.size()));
            state.apply(step);
        }
        return state;
    }

    /// As `after`, all by chance.
    [[nodiscard]] DiskState after(std::mt19937& chance) const {
        const auto upTo = [&chance](std::size_t most) {
            return std::uniform_int_distribution<std::size_t>(0, most)(chance);
        };
        return after([&](std::size_t) { return upTo(1) == 1; },
                     [&](std::size_t size) { return upTo(1) == 1 ? size : upTo(size); });
    }

  private:
    static bool concernsNames(const DiskStep& step) {
        using Kind = DiskStep::Kind;
        return step.kind == Kind::create || step.kind == Kind::rename || step.kind == Kind::remove;
    }

    static bool isSafe(std::span<const DiskStep> done, std::size_t index) {
        return std::ranges::any_of(done.subspan(index), [&](const DiskStep& later) {
            if (concernsNames(done[index])) return later.kind == DiskStep::Kind::syncFolder;
            return later.kind == DiskStep::Kind::sync && later.file == done[index].file;
        });
    }

    DiskState safe;
    std::vector<DiskStep> open;
};

}  // namespace orx::test
