#ifndef _WIN32

#include "platform/FileNames.h"
#include "platform/OutputPlace.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <system_error>
#include <utility>

#ifndef O_PATH
#define O_PATH O_RDONLY
#endif

namespace belvor {
namespace {

/// A name of ours beside an output's name. The records are never freed, only used again: the
/// handler of a signal may be reading them at any time.
struct Unfinished {
    std::atomic<int> folder{-1};   // −1: the record is free
    char name[160];
    Unfinished* next = nullptr;
};

std::atomic<Unfinished*> allUnfinished{nullptr};
static_assert(std::atomic<Unfinished*>::is_always_lock_free && std::atomic<int>::is_always_lock_free,
              "read by the handler of a signal");

std::mutex& unfinishedMutex()
{
    static std::mutex mutex;
    return mutex;
}

Unfinished* noteUnfinished(int folder, const std::string& name)
{
    const std::lock_guard guard(unfinishedMutex());
    Unfinished* record = allUnfinished.load();
    while (record && record->folder.load() >= 0) record = record->next;
    const bool fresh = record == nullptr;
    if (fresh) record = new Unfinished;
    std::strncpy(record->name, name.c_str(), sizeof record->name - 1);
    record->name[sizeof record->name - 1] = '\0';
    if (fresh) record->next = allUnfinished.load();
    record->folder.store(folder);
    if (fresh) allUnfinished.store(record);
    return record;
}

/// Where `path` leads: its links are followed, also those that lead to no file yet.
std::string resolved(std::string path)
{
    if (char* const whole = realpath(path.c_str(), nullptr)) {
        path = whole;
        std::free(whole);
        return path;
    }
    for (int links = 0; links < 40; ++links) {
        char target[4096];
        const ssize_t length = readlink(path.c_str(), target, sizeof target);
        if (length <= 0) break;
        const std::string_view text(target, static_cast<std::size_t>(length));
        if (text[0] == '/') path = text;
        else path = path.substr(0, path.size() - fileName(path).size()) + std::string(text);
    }
    return path;
}

std::string folderOf(const std::string& path)
{
    const std::string folder = path.substr(0, path.rfind('/') + 1);   // npos + 1 is 0
    return folder.empty() ? "." : folder;
}

std::string nameIn(const std::string& path) { return path.substr(path.rfind('/') + 1); }

std::string numberOf(const struct stat& status)
{
    return std::to_string(status.st_dev) + ":" + std::to_string(status.st_ino);
}

/// A write-protected file is refused to the superuser as well, whom the system would let write it.
bool isWritable(int folder, const std::string& name, const struct stat& status) noexcept
{
    if (faccessat(folder, name.c_str(), W_OK, AT_EACCESS) != 0) return false;
    if ((status.st_mode & 0222) != 0) return true;
    errno = EACCES;
    return false;
}

}   // namespace

struct OutputFile::Place::System {
    std::string path;   // where the links lead
    std::string name;
    int folder = -1;
    int lockHolder = -1;   // of the file to be: tells other processes that it is still wanted
    mode_t mode = 0;
    Unfinished* written = nullptr;   // the file to be
    Unfinished* older = nullptr;     // a second name of the file that it replaces

    System() = default;
    System(const System&) = delete;
    System& operator=(const System&) = delete;
    ~System();
    bool look(struct stat& status, bool& exists) const noexcept;
    bool inherit(const struct stat* status) noexcept;
    int create(bool replaces);
};

OutputFile::Place::System::~System()
{
    for (Unfinished* const each : {written, older}) {
        if (!each) continue;
        unlinkat(folder, each->name, 0);
        each->folder.store(-1);
    }
    if (folder >= 0) close(folder);
    if (lockHolder >= 0) close(lockHolder);
}

/// What has the name now: nothing, or a file that may be replaced; else false.
bool OutputFile::Place::System::look(struct stat& status, bool& exists) const noexcept
{
    exists = fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0;
    if (!exists) return errno == ENOENT;
    if (S_ISDIR(status.st_mode)) errno = EISDIR;
    else if (!S_ISREG(status.st_mode)) errno = EEXIST;
    else return isWritable(folder, name, status);
    return false;
}

OutputFile::Place::Place(const std::string& path) : system(std::make_unique<System>())
{
    struct stat status;
    if (stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode)) {
        special = existed = true;
        system->path = path;
        return;
    }
    system->path = resolved(path);
    system->name = nameIn(system->path);
    if (system->name.empty()) throw FileError(path, Text::cannotWrite, path.empty() ? ENOENT : EISDIR);
    system->folder = ::open(folderOf(system->path).c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    if (system->folder < 0) throw FileError(path, Text::cannotWrite, errno);
    const bool usable = fstat(system->folder, &status) == 0;
    if (usable) identity = numberOf(status) + "/" + system->name;
    if (usable && system->look(status, existed)) {
        system->mode = existed ? status.st_mode & 0777 : 0;
        hadContent = existed && status.st_size > 0;
        return;
    }
    throw FileError(path, Text::cannotWrite, errno);
}

OutputFile::Place::Place() : system(std::make_unique<System>()), special(true), existed(true) {}

OutputFile::Place::~Place() = default;

/// Creates the file beside the name; its descriptor, or −1.
int OutputFile::Place::System::create(bool replaces)
{
    const mode_t first =
        replaces ? 0600 : 0666;   // the new version of a private file is never readable by others
    older = noteUnfinished(folder, unusedNameFor(name));
    for (int attempts = 0; attempts < 100; ++attempts) {
        written = noteUnfinished(folder, unusedNameFor(name));   // before there is such a file
        const int number =
            openat(folder, written->name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, first);
        if (number >= 0) {
            if (flock(number, LOCK_EX | LOCK_NB) == 0) lockHolder = fcntl(number, F_DUPFD_CLOEXEC, 0);
            return number;
        }
        std::exchange(written, nullptr)->folder.store(-1);
        if (errno != EEXIST) break;
    }
    return -1;
}

std::FILE* OutputFile::Place::open()
{
    const int number = !special               ? system->create(existed)
                       : system->path.empty() ? fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0)
                                              : ::open(system->path.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC);
    if (number < 0) return nullptr;
    std::FILE* const opened = fdopen(number, "wb");
    if (!opened) close(number);
    return opened;
}

/// The written file gets what the one that it replaces has, or had. Few users may give an owner
/// away, so a failure to set the owner is ignored; a failure to set the mode is not.
bool OutputFile::Place::System::inherit(const struct stat* status) noexcept
{
    constexpr auto same = static_cast<uid_t>(-1);
    if (status && fchownat(folder, written->name, status->st_uid, status->st_gid, AT_SYMLINK_NOFOLLOW) != 0
        && fchownat(folder, written->name, same, status->st_gid, AT_SYMLINK_NOFOLLOW) != 0)
        errno = 0;
    if (status) mode = status->st_mode & 0777;
    return fchmodat(folder, written->name, mode, 0) == 0;
}

bool OutputFile::Place::takeName(bool keepOlder) noexcept
{
    if (special) return true;
    struct stat status;
    bool exists = false;
    if (!system->look(status, exists)) return false;
    if ((exists || existed) && !system->inherit(exists ? &status : nullptr)) return false;
    // Where files have no second names, this one cannot be given back.
    [[maybe_unused]] const int kept = exists && keepOlder ? linkat(system->folder, system->name.c_str(),
                                                                   system->folder, system->older->name, 0)
                                                          : 0;
    existed = exists;
    taken = renameat(system->folder, system->written->name, system->folder, system->name.c_str()) == 0;
    return taken;
}

void OutputFile::Place::giveBack() noexcept
{
    if (!taken) return;
    if (!existed) unlinkat(system->folder, system->name.c_str(), 0);
    else renameat(system->folder, system->older->name, system->folder, system->name.c_str());
    taken = false;
}

void OutputFile::Place::settle() noexcept
{
    if (!special && existed) unlinkat(system->folder, system->older->name, 0);
}

namespace {

/// Takes a file's bytes to the disk in small steps, since one fsync of a large file waits for seconds; false
/// with errno set. What it does not do, fsync does.
bool flushInSteps([[maybe_unused]] int file, [[maybe_unused]] const std::function<void()>& goOn)
{
#ifdef __linux__
    constexpr off_t step = 4 << 20, ahead = 4 * step;   // bytes; as many steps keep the disk at work
    const auto fails = [file](off_t from, unsigned what) {
        // A failed write is told once: fsync would no longer know of it.
        return sync_file_range(file, from, step, what) != 0
               && (errno == EIO || errno == ENOSPC || errno == EDQUOT);
    };
    struct stat status;
    if (fstat(file, &status) != 0 || !S_ISREG(status.st_mode)) return true;
    for (off_t from = 0; from < status.st_size + ahead; from += step) {
        if (from < status.st_size && fails(from, SYNC_FILE_RANGE_WRITE)) return false;
        if (from >= ahead && fails(from - ahead, SYNC_FILE_RANGE_WAIT_BEFORE)) return false;
        goOn();
    }
#endif
    return true;
}

}   // namespace

bool flushToDisk(std::FILE* file, const std::function<void()>& goOn)
{
    goOn();
    const int number = fileno(file);
    return flushInSteps(number, goOn)
           && (fsync(number) == 0 || errno == EINVAL || errno == ENOTSUP || errno == EROFS);
}

std::string fileIdentity(const std::string& path)
{
    struct stat status;
    if (stat(path.c_str(), &status) == 0) return numberOf(status);
    const std::string target = resolved(path);
    return stat(folderOf(target).c_str(), &status) == 0 ? numberOf(status) + "/" + nameIn(target) : target;
}

std::vector<std::string> namesIn(const std::string& folder)
{
    std::vector<std::string> names;
    std::error_code fault;
    for (std::filesystem::directory_iterator entry(folder, fault), end; !fault && entry != end;
         entry.increment(fault))
        names.push_back(entry->path().filename().string());
    return names;
}

void removeIfAbandoned(const std::string& path) noexcept
{
    const int number = open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (number < 0) return;
    if (flock(number, LOCK_EX | LOCK_NB) == 0) unlink(path.c_str());
    close(number);
}

void removeUnfinishedFiles() noexcept
{
    for (const Unfinished* each = allUnfinished.load(); each; each = each->next)
        if (const int folder = each->folder.load(); folder >= 0) unlinkat(folder, each->name, 0);
}

}   // namespace belvor

#endif
