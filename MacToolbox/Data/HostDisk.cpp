#include "MacToolbox/Data/HostDisk.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <mutex>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace MacToolbox {

HostFile& HostFile::operator=(HostFile&& other) noexcept
{
    if (this != &other) {
        close();
        fd_ = other.fd_;
        other.fd_ = -1;
    }
    return *this;
}

void HostFile::close()
{
    if (fd_ >= 0)
        ::close(fd_);
    fd_ = -1;
}

namespace HostDisk {

namespace {

constexpr char kAttribute[] = "user.com.apple.FinderInfo"; // Linux keeps attributes of users under "user."
constexpr std::size_t kAttributeSize = 32;

struct FaultState {
    std::mutex lock;
    Faults faults;
    Int seen = 0;    // calls of the failing kind
    Int changes = 0; // calls that change something
    Int calls = 0;
};

FaultState& state()
{
    static auto& s = *new FaultState;
    return s;
}

/// True if this call is to fail; `errno` is set then.
bool fails(Call call)
{
    FaultState& s = state();
    const std::lock_guard guard(s.lock);
    ++s.calls;
    const bool changes = call != Call::Status && call != Call::Read && call != Call::GetAttribute;
    if (changes && s.changes++ == s.faults.endBefore)
        ::_exit(9);
    if (call == Call::SetAttribute && !s.faults.attributes) {
        errno = ENOTSUP;
        return true;
    }
    if (s.faults.after < 0 || (s.faults.call && *s.faults.call != call))
        return false;
    const Int n = s.seen++;
    if (n < s.faults.after || (n > s.faults.after && !s.faults.stays))
        return false;
    errno = s.faults.error;
    return true;
}

/// Of a growth by `wanted` bytes, what the disk still takes.
Int takeRoom(Int wanted)
{
    FaultState& s = state();
    const std::lock_guard guard(s.lock);
    if (s.faults.room < 0 || wanted <= 0)
        return wanted;
    const Int given = std::min(wanted, s.faults.room);
    s.faults.room -= given;
    return given;
}

/// False, with `errno` set, for a path that a zero byte would cut short.
bool isWhole(const std::string& path)
{
    if (path.find('\0') == std::string::npos)
        return true;
    errno = ENOENT;
    return false;
}

bool status(const std::string& path, struct stat& info)
{
    return isWhole(path) && !fails(Call::Status) && ::stat(path.c_str(), &info) == 0;
}

/// Told by `errno`: the path leads nowhere. Any other failure leaves open what is there.
bool leadsNowhere() { return errno == ENOENT || errno == ENOTDIR || errno == ENAMETOOLONG; }

} // namespace

void setFaults(const Faults& faults)
{
    FaultState& s = state();
    const std::lock_guard guard(s.lock);
    s.faults = faults;
    s.seen = s.changes = s.calls = 0;
}

Int changesMade()
{
    FaultState& s = state();
    const std::lock_guard guard(s.lock);
    return s.changes;
}

Int callsMade()
{
    FaultState& s = state();
    const std::lock_guard guard(s.lock);
    return s.calls;
}

Kind kind(const std::string& path)
{
    struct stat info { };
    if (!status(path, info))
        return leadsNowhere() ? Kind::Missing : Kind::Unknown;
    return S_ISREG(info.st_mode) ? Kind::File : Kind::Other;
}

Int size(const std::string& path)
{
    struct stat info { };
    return status(path, info) ? I(info.st_size) : 0;
}

std::optional<Int> changed(const std::string& path)
{
    struct stat info { };
    if (!status(path, info))
        return std::nullopt;
    return I(info.st_mtime);
}

bool isWritableFolder(const std::string& path)
{
    return isWhole(path) && !fails(Call::Status) && ::access(path.c_str(), W_OK | X_OK) == 0;
}

void makeFolders(const std::string& path)
{
    std::error_code ignored;
    std::filesystem::create_directories(path, ignored);
}

std::vector<std::string> names(const std::string& folder)
{
    std::vector<std::string> found;
    std::error_code error;
    for (std::filesystem::directory_iterator it(folder, error), end; !error && it != end; it.increment(error))
        found.push_back(it->path().filename().string());
    return found;
}

HostFile open(const std::string& path, Mode mode)
{
    if (!isWhole(path) || fails(Call::Open))
        return {};
    // Without O_NONBLOCK the open of a pipe would wait for its other end.
    const int flags = (mode == Mode::Read            ? O_RDONLY
                              : mode == Mode::Update ? O_RDWR
                                                     : O_RDWR | O_CREAT | O_EXCL)
        | O_CLOEXEC | O_NONBLOCK;
    HostFile file(::open(path.c_str(), flags, 0666));
    struct stat info { };
    if (file && (::fstat(file.fd(), &info) != 0 || !S_ISREG(info.st_mode))) {
        errno = EISDIR;
        return {};
    }
    return file;
}

Bytes read(const HostFile& file, Int at, Int wanted)
{
    if (wanted <= 0 || at < 0 || fails(Call::Read))
        return {};
    // A file may be asked for more than it holds; only what it holds is made room for.
    const Int there = length(file).value_or(0) - at;
    Bytes bytes(static_cast<std::size_t>(std::clamp<Int>(there, 0, wanted)));
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::pread(
            file.fd(), bytes.data() + done, bytes.size() - done, static_cast<off_t>(at) + static_cast<off_t>(done));
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0)
            return {};
        if (n == 0)
            break;
        done += static_cast<std::size_t>(n);
    }
    bytes.resize(done);
    return bytes;
}

bool write(const HostFile& file, Int at, std::span<const std::uint8_t> bytes)
{
    if (fails(Call::Write))
        return false;
    const Int before = length(file).value_or(0), growth = std::max<Int>(0, at + I(bytes.size()) - before);
    const Int missing = growth - takeRoom(growth);
    const std::size_t fitting = bytes.size() - static_cast<std::size_t>(std::min(missing, I(bytes.size())));
    std::size_t done = 0;
    while (done < fitting) {
        const ssize_t n =
            ::pwrite(file.fd(), bytes.data() + done, fitting - done, static_cast<off_t>(at) + static_cast<off_t>(done));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        done += static_cast<std::size_t>(n);
    }
    errno = ENOSPC;
    return missing == 0;
}

bool truncate(const HostFile& file, Int newLength)
{
    if (fails(Call::Truncate))
        return false;
    const Int growth = newLength - length(file).value_or(0);
    if (takeRoom(growth) < growth) {
        errno = ENOSPC;
        return false;
    }
    return ::ftruncate(file.fd(), static_cast<off_t>(newLength)) == 0;
}

std::optional<Int> length(const HostFile& file)
{
    struct stat info { };
    if (fails(Call::Status) || ::fstat(file.fd(), &info) != 0)
        return std::nullopt;
    return I(info.st_size);
}

bool sync(const HostFile& file) { return !fails(Call::Sync) && ::fsync(file.fd()) == 0; }

void copyMode(const HostFile& from, const HostFile& to)
{
    struct stat info { };
    if (::fstat(from.fd(), &info) == 0 && ::fchmod(to.fd(), info.st_mode & 07777) != 0)
        errno = 0;
}

void syncFolder(const std::string& path)
{
    if (!isWhole(path))
        return;
    const int folder = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return;
    ::fsync(folder);
    ::close(folder);
}

bool rename(const std::string& from, const std::string& to)
{
    return isWhole(from) && isWhole(to) && !fails(Call::Rename) && ::rename(from.c_str(), to.c_str()) == 0;
}

bool remove(const std::string& path) { return isWhole(path) && !fails(Call::Remove) && ::unlink(path.c_str()) == 0; }

bool lock(const HostFile& file) { return ::flock(file.fd(), LOCK_EX | LOCK_NB) == 0; }

std::optional<Bytes> attribute(const std::string& path)
{
    if (!isWhole(path) || fails(Call::GetAttribute))
        return std::nullopt;
    Bytes value(kAttributeSize);
    ssize_t n = ::getxattr(path.c_str(), kAttribute, value.data(), value.size());
    if (n < 0 && errno == ERANGE) { // longer than it should be: its first bytes count
        Bytes longer(65536);
        n = ::getxattr(path.c_str(), kAttribute, longer.data(), longer.size());
        if (n >= I(kAttributeSize)) {
            std::copy_n(longer.begin(), kAttributeSize, value.begin());
            n = kAttributeSize;
        }
    }
    if (n < 0 && errno != ENODATA && errno != ENOTSUP)
        return std::nullopt;
    value.resize(n < 0 ? 0 : static_cast<std::size_t>(n));
    return value;
}

bool setAttribute(const std::string& path, std::span<const std::uint8_t> value)
{
    return isWhole(path) && !fails(Call::SetAttribute)
        && ::setxattr(path.c_str(), kAttribute, value.data(), value.size(), 0) == 0;
}

} // namespace HostDisk

} // namespace MacToolbox
