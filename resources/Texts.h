#pragma once

namespace belvor {

/// The text of that number, UTF-8, for the program's life; an empty text for a number
/// that the table does not have.
const char* textOf(int number) noexcept;

}   // namespace belvor
