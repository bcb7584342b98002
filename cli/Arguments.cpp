#include "cli/Arguments.h"

#include <algorithm>
#include <utility>

namespace belvor {
namespace {

/// The walk over the arguments.
class Parser {
public:
    Parser(std::span<const OptionRow> table, const std::vector<std::string>& line, Options& target)
        : rows(table),
          arguments(line),
          options(target),
          given(table.size())
    {}

    std::vector<std::string> words()
    {
        std::vector<std::string> found;
        bool onlyWords = false;
        for (; at < arguments.size(); ++at) {
            const std::string& argument = arguments[at];
            if (argument.empty()) refuse(Text::emptyArgument);
            if (onlyWords || argument[0] != '-' || argument == "-") found.push_back(argument);
            else if (argument == "--") onlyWords = true;
            else if (argument[1] == '-') takeLong(argument);
            else takeLetters(argument);
        }
        return found;
    }

private:
    void takeLong(const std::string& argument)
    {
        const std::size_t equals = argument.find('=');
        const std::string name = argument.substr(0, equals);
        const auto row =
            std::find_if(rows.begin(), rows.end(), [&](const OptionRow& r) { return r.name == name; });
        if (row == rows.end()) refuse(Text::unknownOption, {name});
        if (equals == argument.npos) give(*row, name, nullptr);
        else {
            const std::string value = argument.substr(equals + 1);
            give(*row, name, &value);
        }
    }

    void takeLetters(const std::string& argument)
    {
        for (std::size_t i = 1; i < argument.size(); ++i) {
            const std::string name = std::string("-") + argument[i];
            const auto row = std::find_if(rows.begin(), rows.end(),
                                          [&](const OptionRow& r) { return r.letter == argument[i]; });
            if (row == rows.end()) refuse(Text::unknownOption, {name});
            if (row->valueName == Text::none || i + 1 == argument.size()) {
                give(*row, name, nullptr);
                continue;
            }
            const std::string value = argument.substr(i + 1);
            return give(*row, name, &value);
        }
    }

    /// `written` is the value where it stands in the same argument.
    void give(const OptionRow& row, const std::string& name, const std::string* written)
    {
        if (std::exchange(given[static_cast<std::size_t>(&row - rows.data())], char{1}) && !row.mayRepeat)
            refuse(Text::optionTwice, {row.name});
        if (row.valueName == Text::none) {
            if (written) refuse(Text::optionTakesNoValue, {name, *written});
            return row.take({}, options);
        }
        if (!written && row.valueOptional) return row.take({}, options);
        if (!written && at + 1 < arguments.size() && !arguments[at + 1].starts_with("--"))
            written = &arguments[++at];
        if (!written || written->empty())
            refuse(Text::optionNeedsValue, {row.valueOptional ? name + '=' : name});
        row.take(*written, options);
    }

    std::span<const OptionRow> rows;
    const std::vector<std::string>& arguments;
    Options& options;
    std::vector<char> given;
    std::size_t at = 0;
};

}   // namespace

void refuse(Text text, std::initializer_list<std::string_view> arguments)
{
    throw Usage(filledText(Text::usageForMore, {filledText(text, arguments)}));
}

std::vector<std::string> parseArguments(std::span<const OptionRow> rows,
                                        const std::vector<std::string>& arguments, Options& options)
{
    return Parser(rows, arguments, options).words();
}

std::string optionList(std::span<const OptionRow> rows)
{
    constexpr std::size_t helpColumn = 30;
    std::string list;
    for (const OptionRow& row : rows) {
        std::string line = row.letter ? std::string("  -") + row.letter + ", " : "      ";
        line += row.name;
        if (row.valueName != Text::none)
            line += std::string(row.valueOptional ? "" : " ") + textOf(row.valueName);
        line += std::string(line.size() < helpColumn ? helpColumn - line.size() : 1, ' ');
        list += line + textOf(row.help) + '\n';
    }
    return list;
}

}   // namespace belvor
