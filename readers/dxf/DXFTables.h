#pragma once

#include <string_view>

namespace belvor {

/// The release that a header's $ACADVER stands for ("AC1009": 11): 10, 11, 13 for that and
/// everything later, 0 for what is not known.
int releaseOf(std::string_view version) noexcept;

}   // namespace belvor
