#pragma once

#include "imagefile/OmbrFile.h"
#include "resources/Texts.h"

#include <new>
#include <stdexcept>
#include <string>

namespace belvor {

/// Runs `work` on the file `path` (UTF-8). A failure whose text does not say with which file it
/// happened goes on as one that does.
template <class Work>
void namingFile(const std::string& path, Work work)
try {
    work();
} catch (const OmbrFile::Error& failure) {
    throw std::runtime_error(filledText(Text::placeWithoutLine, {failure.what(), path}));
} catch (const std::bad_alloc&) {
    throw std::runtime_error(filledText(Text::placeWithoutLine, {textOf(Text::outOfMemory), path}));
}

}   // namespace belvor
