#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace belvor {

/// What the words in braces of a picture's name stand for.
struct TemplateValues {
    std::string_view
        model;   ///< The path: "{name}" is its last part without .gz and ending, "{dir}" its folder.
    std::string_view view;   ///< "{view}".
    std::size_t number;      ///< "{n}", with four digits at least.
};

/// Whether the template has "{view}".
bool hasViewWord(std::string_view pattern) noexcept;

/// The name that a template gives; "{{" is a brace. Throws Usage for other words in braces and for a brace
/// that is not closed.
std::string expandedName(const std::string& pattern, const TemplateValues& values);

}   // namespace belvor
