#include "resources/Texts.h"

namespace belvor {

const char* textOf(int number) noexcept
{
    switch (number) {
#define TEXT(id, text) \
    case id: return text;
#include "resources/strings.def"
#undef TEXT
    default: return "";
    }
}

}   // namespace belvor
