#include "resources/Texts.h"

#define BELVOR_QUOTED(text) #text
#define BELVOR_QUOTED_VALUE(macro) BELVOR_QUOTED(macro)
#define BELVOR_VERSION BELVOR_QUOTED_VALUE(BELVOR_DOTTED_VERSION)

namespace belvor {

const char* textOf(Text text) noexcept
{
    switch (text) {
#define BELVOR_TEXT(number, name, words)                                                                     \
    case Text::name:                                                                                         \
        return words;
#include "resources/strings.def"
#undef BELVOR_TEXT
    default: return "";
    }
}

std::string filledText(Text text, std::initializer_list<std::string_view> arguments)
{
    return filledFormat(textOf(text), arguments);
}

std::string filledFormat(std::string_view format, std::initializer_list<std::string_view> arguments)
{
    std::string result;
    auto argument = arguments.begin();
    for (std::size_t i = 0; i < format.size(); ++i) {
        if (format[i] == '%' && i + 1 < format.size() && argument != arguments.end()) {
            result += *argument++;
            ++i;
        } else {
            result += format[i];
        }
    }
    return result;
}

}   // namespace belvor
