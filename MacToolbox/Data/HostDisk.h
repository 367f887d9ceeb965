#pragma once

#include "MacToolbox/Base/Memory.h"

#include <optional>
#include <string>
#include <vector>

namespace MacToolbox {

/// An open file of the host; closed with the object.
class HostFile {
public:
    HostFile() = default;
    explicit HostFile(int fd) : fd_(fd) { }
    HostFile(HostFile&& other) noexcept : fd_(other.fd_) { other.fd_ = -1; }
    HostFile& operator=(HostFile&& other) noexcept;
    ~HostFile() { close(); }

    explicit operator bool() const { return fd_ >= 0; }
    int fd() const { return fd_; }
    void close();

private:
    int fd_ = -1;
};

/// The calls that the File Manager makes to the host, one each, so that a test can let any of them fail. Paths are
/// UTF-8; one with a zero byte in it names nothing. A call that fails leaves `errno`. Any thread.
namespace HostDisk {

enum class Call { Status, Open, Read, Write, Truncate, Sync, Rename, Remove, GetAttribute, SetAttribute };

/// What a test lets go wrong; the default lets everything through.
struct Faults {
    std::optional<Call> call; ///< the kind that fails; nothing means every kind
    Int after = -1;           ///< so many calls of that kind succeed first; below 0: no call fails
    bool stays = false;       ///< all later ones fail too, not only the next
    int error = 5;            ///< `errno` of the failure (EIO)
    Int room = -1;            ///< bytes that files may still grow by before the disk is full; below 0: no limit
    bool attributes = true;   ///< false: the file system keeps no attributes
    Int endBefore = -1;       ///< the process ends at once, unflushed, before this call that changes something; from 0
};
/// Puts faults in force, and counts from the start. Tests only.
void setFaults(const Faults& faults);
/// Calls that change something since `setFaults`, for `endBefore`.
Int changesMade();
/// Calls of every kind since `setFaults`, those that failed included.
Int callsMade();

enum class Kind { Missing, File, Other, Unknown };
/// What the path names, links followed; Unknown if that cannot be told.
Kind kind(const std::string& path);
/// In bytes; 0 if it cannot be told.
Int size(const std::string& path);
/// Last change in whole seconds since 1970, or nothing.
std::optional<Int> changed(const std::string& path);
bool isWritableFolder(const std::string& path);
/// Makes the folder and those above it; a failure is ignored.
void makeFolders(const std::string& path);
/// Names in a folder, in no order; none if it cannot be read.
std::vector<std::string> names(const std::string& folder);

enum class Mode { Read, Update, Create }; ///< Create: for update, and there must not be one
/// Opens a regular file; nothing else opens.
HostFile open(const std::string& path, Mode mode);
/// Up to `length` bytes from `at`; fewer at the end, none after a failure.
Bytes read(const HostFile& file, Int at, Int length);
/// All the bytes or false: what was written of them stays.
bool write(const HostFile& file, Int at, std::span<const std::uint8_t> bytes);
bool truncate(const HostFile& file, Int length);
/// In bytes, or nothing.
std::optional<Int> length(const HostFile& file);
bool sync(const HostFile& file);
void copyMode(const HostFile& from, const HostFile& to); ///< the permissions; a failure is ignored
void syncFolder(const std::string& path);                ///< a failure is ignored
bool rename(const std::string& from, const std::string& to);
bool remove(const std::string& path);
/// Takes the file for this process alone, until it is closed. @return False if another process has it.
bool lock(const HostFile& file);

/// At most 32 bytes of the attribute of type and creator; empty if there is none, nothing if that cannot be told.
std::optional<Bytes> attribute(const std::string& path);
bool setAttribute(const std::string& path, std::span<const std::uint8_t> value);

} // namespace HostDisk

} // namespace MacToolbox
