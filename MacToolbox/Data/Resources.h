#pragma once

#include "MacToolbox/Base/Strings.h"

#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace MacToolbox {

inline constexpr OSErr resNotFound = -192;

/// One open resource file, whole in memory. Offsets in the file are not trusted: what lies outside it is left out.
class ResourceFile {
public:
    /// One resource, as the file holds it.
    struct Entry {
        OSType type = 0;
        Int id = 0; ///< -32768 to 32767
        bool named = false;
        Bytes name;    ///< without a length byte; may be empty with `named`
        Int attrs = 0; ///< kept, not used
        Bytes data;
    };

    std::string path;
    Int refNum = 0;
    std::vector<Entry> entries; ///< in the order of the file's type list and, within a type, of its reference list

    /// Reads the file; nil if it cannot be read. A file too short for a map is one without entries.
    static std::unique_ptr<ResourceFile> read(const std::string& path, Int refNum);
    /// The entries of a file image. Cut short, with wild offsets or with counts that cannot be: what can be read.
    static std::vector<Entry> parse(std::span<const std::uint8_t> image);

    /// The first entry of that type and id, or nil.
    const Entry* find(OSType type, Int id) const;
};

/// The open resource files and the handles given out. Read only: nothing ever changes a file on disk.
/// Any thread; every call holds one leaf lock. Starts afresh with the run.
class ResourceManager {
public:
    static ResourceManager& shared();

    /// Opens a file and makes it current. @return Its reference number (2 for the first), or -1 with `resError` -43.
    Int open(const std::string& path);
    /// The resource from the current file or one opened before it; the same handle until it is released.
    /// Nil with `resError` -192 if there is none; `resError` 0 on success.
    Handle get(OSType type, Int id, bool onlyCurrent = false);
    /// Forgets this handle: the next `get` gives fresh bytes.
    void release(const Handle& h);
    /// Type and id of every resource that has been handed out since the start of the run and not released, sorted.
    std::vector<std::pair<OSType, Int>> inMemory();
    /// True if the search order holds it. Leaves `resError` alone.
    bool exists(OSType type, Int id);
    /// Id and name (raw characters) of every named entry of the type, in all open files, oldest first.
    std::vector<std::pair<Int, Bytes>> named(OSType type);
    /// Ids of the entries of the type over the search order, repeated if two files hold one.
    std::vector<Int> ids(OSType type, bool onlyCurrent);
    /// The distinct types over the search order, in order of first appearance.
    std::vector<OSType> types(bool onlyCurrent);
    /// Data length of the first match in the search order, -1 if there is none.
    Int size(OSType type, Int id);
    /// The id of the first entry over the search order with exactly this name. @return False if there is none.
    bool idOfName(OSType type, std::span<const std::uint8_t> name, Int& id);

    Int current = 0;  ///< reference number of the current file; 0 before the first
    Int resError = 0; ///< result of the last `get` or failed `open`

    void reset(); ///< closes all files and forgets all handles

private:
    std::vector<const ResourceFile*> searchOrder(bool onlyCurrent) const;

    std::mutex lock_;
    std::vector<std::unique_ptr<ResourceFile>> files_; // oldest first
    std::unordered_map<std::string, Handle> loaded_;   // by type, id and file
};

/// The resource from the current file or an older one. Nil with `ResError` -192 if there is none.
/// All callers share one block until it is released: a change is seen by all.
Handle GetResource(OSType type, Int id);
/// The same, from the current file alone.
Handle Get1Resource(OSType type, Int id);
/// The first resource of the type with this name (raw characters, no length byte). Nil, `ResError` unchanged, if none.
Handle GetNamedResource(OSType type, std::span<const std::uint8_t> name);
void ReleaseResource(const Handle& h);      ///< the next `GetResource` gives a new handle with the file's bytes
void DetachResource(const Handle& h);       ///< releases it; the block lives on as no resource
inline void LoadResource(const Handle&) { } ///< nothing: bytes are always in memory
inline void SetResLoad(bool) { }
Int ResError();
Int CurResFile();
void UseResFile(Int refNum); ///< below 1: nothing
Int CountResources(OSType type);
Int Count1Resources(OSType type);
Handle Get1IndResource(OSType type, Int index); ///< 1-based; nil out of range
Int Count1Types();
void Get1IndType(OSType& type, Int index); ///< 1-based; 0 out of range
Int SizeRsrc(const Handle& h);             ///< -1 for nil
Int MaxSizeRsrc(const Handle& h);
void GetResInfo(const Handle& h, Int& id, OSType& type, Str255& name);      ///< the name is always empty
void AddResource(const Handle& h, OSType type, Int id, const Str255& name); ///< labels the block; stores nothing
inline void RmveResource(const Handle&) { }
inline void ChangedResource(const Handle&) { }
inline void WriteResource(const Handle&) { }
inline void UpdateResFile(Int) { }

/// The counted string at the start of 'STR ' `id`; an empty array (not even a length byte) if it is missing.
Str255 GetString(Int id);
/// Stores text `index` (from 1) of 'STR#' `id`; the empty string if either is missing.
void GetIndString(Str255& s, Int id, Int index);

} // namespace MacToolbox
