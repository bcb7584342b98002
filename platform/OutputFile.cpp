#include "platform/OutputFile.h"

#include "platform/FileNames.h"
#include "platform/OutputPlace.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <map>
#include <mutex>
#include <random>
#include <set>
#include <utility>

namespace belvor {
namespace {

/// Of a file: whole pages at whole pages of the file, and few calls, which takes the system half the time of
/// pieces of 32,256 bytes. Of a pipe: half of what it holds, so that a call that waits because nobody reads
/// has passed nothing on and ends by a signal; after a part the stream would call again and wait on.
constexpr std::size_t fileBuffer = 262144, pipeBuffer = 32256;

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

OutputFile::Busy::Busy(const std::string& path)
    : FileError(path, Text::cannotWrite, textOf(Text::fileBeingWritten), EBUSY)
{}

namespace {

constexpr std::string_view wordLetters = "abcdefghijklmnopqrstuvwxyz234567";
constexpr std::string_view unfinishedEnd = ".part";
constexpr std::size_t wordLength = 20;

/// What the unused names for `name` begin with.
std::string_view unfinishedPrefix(std::string_view name) noexcept
{
    constexpr std::size_t longest = 100;
    std::size_t length = std::min(name.size(), longest);
    if (length < name.size())   // not in the middle of a character
        while (length > 0 && (static_cast<unsigned char>(name[length]) & 0xC0) == 0x80) --length;
    return name.substr(0, length);
}

/// The prefix of an unused name; empty for other names.
std::string_view prefixOfUnfinished(std::string_view entry) noexcept
{
    constexpr std::size_t added = 1 + wordLength + unfinishedEnd.size();
    if (entry.size() <= added || !entry.ends_with(unfinishedEnd)) return {};
    const std::string_view prefix = entry.substr(0, entry.size() - added);
    const std::string_view word = entry.substr(prefix.size() + 1, wordLength);
    const bool ours = entry[prefix.size()] == '.' && word.find_first_not_of(wordLetters) == word.npos;
    return ours ? prefix : std::string_view();
}

}   // namespace

std::string unusedNameFor(std::string_view name)
{
    std::random_device random;
    std::string result(unfinishedPrefix(name));
    result += '.';
    for (std::size_t word = 0; word < wordLength; word += 5) {
        std::uint32_t bits = random();
        for (int letter = 0; letter < 5; ++letter, bits >>= 5) result += wordLetters[bits & 31];
    }
    return result += unfinishedEnd;
}

void removeAbandonedFiles(std::span<const std::string> outputs)
{
    std::map<std::string, std::set<std::string>> prefixes;   // by folder
    for (const std::string& output : outputs) {
        const std::string_view name = fileName(output);
        prefixes[output.substr(0, output.size() - name.size())].emplace(unfinishedPrefix(name));
    }
    for (const auto& [folder, ours] : prefixes) {
        for (const std::string& name : namesIn(folder.empty() ? "." : folder)) {
            const std::string_view prefix = prefixOfUnfinished(name);
            if (!prefix.empty() && ours.count(std::string(prefix)) != 0) removeIfAbandoned(folder + name);
        }
    }
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

OutputFile::OutputFile(const std::string& path) : OutputFile(path, std::make_unique<Place>(path)) {}

OutputFile::OutputFile(StandardOutput, const std::string& shownName)
    : OutputFile(shownName, std::make_unique<Place>())
{}

OutputFile::OutputFile(std::string shownName, std::unique_ptr<Place> where)
    : name(std::move(shownName)),
      place(std::move(where)),
      buffer(new char[place->special ? pipeBuffer : fileBuffer]),
      claim(place->special ? nullptr : std::make_unique<Claim>(name, place->identity)),
      file(place->open())
{
    const std::size_t size = place->special ? pipeBuffer : fileBuffer;
    if (file && std::setvbuf(file, buffer.get(), _IOFBF, size) == 0) return;
    const int code = errno;
    if (file) std::fclose(file);
    throw FileError(name, Text::cannotWrite, code);
}

OutputFile::~OutputFile()
{
    if (file) std::fclose(file);   // an open file cannot be deleted everywhere
}

bool OutputFile::replacesContent() const noexcept { return place->hadContent; }

bool OutputFile::isSeekable() const noexcept { return !place->special; }

void OutputFile::finish(const std::function<void()>& goOn)
{
    if (finished) return;
    if (!file) throw FileError(name, Text::cannotWrite, EBADF);   // it has failed before
    int code = std::fflush(file) == 0 && flushToDisk(file, goOn) ? 0 : errno;
    if (std::fclose(std::exchange(file, nullptr)) != 0 && code == 0) code = errno;
    if (code != 0) throw FileError(name, Text::cannotWrite, code);
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
        throw FileError(files[named]->name, Text::cannotWrite, code);
    }
    for (OutputFile* const each : files) {
        each->place->settle();
        each->claim.reset();
    }
}

}   // namespace belvor
