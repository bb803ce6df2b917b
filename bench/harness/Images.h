// The files that the daemon reads, in any size.
#pragma once

#include <cstddef>
#include <string>

#include "support/DefinitionImage.h"

namespace orx::bench {

/// A definition file of at least `size` bytes, at most 64 KiB, whose first model is "BENCH": all
/// commands of the vocabulary, and models that nobody asks for up to the size. On the line of
/// "BENCH" a command costs no time.
[[nodiscard]] test::DefinitionImage definitions(std::size_t size);

/// A configuration file of so many lines, a third of them comments.
[[nodiscard]] std::string configuration(int lines);

/// A lens memory file with so many slots.
[[nodiscard]] std::string lensMemory(int slots);

}  // namespace orx::bench
