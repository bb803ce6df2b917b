// The JSON Schema of definitions in TOML, for editors that complete and check what is typed.
#pragma once

#include <iosfwd>

namespace orx::orxdef {

/// Prints the schema, made from the vocabulary, and gives exit status 0.
int printSchema(std::ostream& output);

}  // namespace orx::orxdef
