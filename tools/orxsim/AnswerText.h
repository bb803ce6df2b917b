// Answers as they are written on the command line.
#pragma once

#include <string>
#include <string_view>

namespace orx::orxsim {

/// The bytes of `text`, in which \xNN, \r, \n, \t and \\ stand for one byte each and all other
/// characters for themselves. Throws `std::invalid_argument`, whose text says what is wrong, for
/// any other use of the backslash.
[[nodiscard]] std::string answerBytes(std::string_view text);

}  // namespace orx::orxsim
