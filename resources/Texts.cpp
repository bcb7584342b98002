#include "resources/Texts.h"

namespace belvor {

const char* textOf(int number) noexcept
{
    switch (number) {
#define TEXT(id, text)                                                                                       \
    case id:                                                                                                 \
        return text;
#include "resources/strings.def"
#undef TEXT
    default: return "";
    }
}

std::string filledText(int number, std::string_view argument)
{
    std::string text = textOf(number);
    const std::size_t hole = text.find('%');
    return hole == text.npos ? text : text.replace(hole, 2, argument);
}

}   // namespace belvor
