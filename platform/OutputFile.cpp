#include "platform/OutputFile.h"

#include "platform/OutputPlace.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <mutex>
#include <random>
#include <set>
#include <utility>

namespace belvor {
namespace {

constexpr std::size_t bufferSize = 32256;

/// The names that this process is writing.
struct NamesInUse {
    std::mutex mutex;
    std::set<std::string> identities;
};

NamesInUse& namesInUse()
{
    static NamesInUse names;
    return names;
}

}   // namespace

OutputFile::Error::Error(std::string path, int code)
    : std::runtime_error(std::strerror(code)),
      name(std::move(path)),
      savedErrno(code)
{}

OutputFile::Busy::Busy(std::string path) : Error(std::move(path), EBUSY) {}

std::string unusedNameFor(std::string_view name)
{
    constexpr std::size_t longestPrefix = 100;
    std::size_t length = std::min(name.size(), longestPrefix);
    if (length < name.size())   // not in the middle of a character
        while (length > 0 && (static_cast<unsigned char>(name[length]) & 0xC0) == 0x80) --length;
    constexpr char letters[] = "abcdefghijklmnopqrstuvwxyz234567";
    std::random_device random;
    std::string result(name.substr(0, length));
    result += '.';
    for (int word = 0; word < 4; ++word) {
        std::uint32_t bits = random();
        for (int letter = 0; letter < 5; ++letter, bits >>= 5) result += letters[bits & 31];
    }
    return result + ".part";
}

/// While it lives, no other output of this process has the name.
class OutputFile::Claim {
public:
    Claim(const std::string& path, const std::string& claimed) : identity(claimed)
    {
        const std::lock_guard guard(namesInUse().mutex);
        if (!namesInUse().identities.insert(identity).second) throw Busy(path);
    }
    Claim(const Claim&) = delete;
    Claim& operator=(const Claim&) = delete;
    ~Claim()
    {
        const std::lock_guard guard(namesInUse().mutex);
        namesInUse().identities.erase(identity);
    }

private:
    const std::string identity;
};

OutputFile::OutputFile(const std::string& path)
    : name(path),
      buffer(new char[bufferSize]),
      place(std::make_unique<Place>(path)),
      claim(place->special ? nullptr : std::make_unique<Claim>(path, place->identity)),
      file(place->open())
{
    if (file && std::setvbuf(file, buffer.get(), _IOFBF, bufferSize) == 0) return;
    const int code = errno;
    if (file) std::fclose(file);
    throw Error(name, code);
}

OutputFile::~OutputFile()
{
    if (file) std::fclose(file);   // an open file cannot be deleted everywhere
}

bool OutputFile::replacesContent() const noexcept { return place->hadContent; }

bool OutputFile::isSeekable() const noexcept { return !place->special; }

void OutputFile::finish()
{
    if (finished) return;
    if (!file) throw Error(name, EBADF);   // it has failed before
    int code = std::fflush(file) == 0 && flushToDisk(file) ? 0 : errno;
    if (std::fclose(std::exchange(file, nullptr)) != 0 && code == 0) code = errno;
    if (code != 0) throw Error(name, code);
    finished = true;
}

void OutputFile::commit()
{
    const std::array files{this};
    commit(files);
}

void OutputFile::commit(std::span<OutputFile* const> files)
{
    for (OutputFile* const each : files) each->finish();
    // From here on nothing is allocated before all names are taken or given back.
    std::size_t named = 0;
    while (named < files.size() && files[named]->place->takeName(files.size() > 1)) ++named;
    if (named < files.size()) {
        const int code = errno;
        for (std::size_t i = named; i-- > 0;) files[i]->place->giveBack();
        throw Error(files[named]->name, code);
    }
    for (OutputFile* const each : files) {
        each->place->settle();
        each->claim.reset();
    }
}

}   // namespace belvor
