// Standard output, line by line.
//
// Every line is visible at once, also when standard output is a pipe or a file, and lines of two
// threads never mix: a text goes out in one piece, under one lock, and nothing is buffered. A
// standard output that is closed or full is no reason to stop, so failures are ignored.
#pragma once

#include <string_view>

namespace orx {

/// Writes `line` and a line feed. Any thread may call it.
void printLine(std::string_view line);

/// The same with `tag` ahead of the line.
void printLine(std::string_view tag, std::string_view line);

/// Writes `text`, complete lines with their line feeds, in one piece. Any thread may call it.
void printText(std::string_view text);

}  // namespace orx
