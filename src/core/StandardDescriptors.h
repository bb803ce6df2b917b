// Standard input, output and error of the process.
#pragma once

namespace orx {

/// Opens those that are closed onto /dev/null. A closed one would be the number of the next file
/// opened, and what is meant for the console would go out on the serial line. To be called first of
/// all, as long as there is one thread.
void occupyStandardDescriptors();

}  // namespace orx
