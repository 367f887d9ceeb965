#include "MacToolbox/Data/Files.h"

#include "MacToolbox/Base/Clock.h"
#include "MacToolbox/Base/Platform.h"
#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Data/HostDisk.h"

#include <algorithm>
#include <cerrno>
#include <deque>
#include <filesystem>
#include <map>
#include <mutex>
#include <system_error>

namespace MacToolbox {

using HostFiles::folderOf;

namespace {

constexpr Int kSecondsTo1970 = 2082844800; // from 1904
constexpr Int kFirstWD = -200, kFirstRef = 100;
constexpr std::size_t kFinderInfoSize = 32;
constexpr char kCompanionPrefix[] = "._";
constexpr char kReplacingPrefix[] = ".~replacing-";
constexpr std::size_t kLongestPlainName = 200; // bytes; with the prefixes it must stay under 255

struct OpenFile {
    HostFile file;
    Int mark = 0;
};

/// A replacement in progress; see `HostFiles::Replacement`.
struct Pending {
    bool active = false;
    std::string target;   ///< the file to be replaced, as the game names it
    std::string place;    ///< where the new file goes: the target, or what a link there leads to if it is only changed
    std::string fresh;    ///< the new file, beside `place`
    bool deleted = false; ///< the target counts as missing
    bool made = false;    ///< `fresh` is there and stands for the target
    HostFile held;        ///< `fresh`, locked, so that no other process takes it for a leftover
};

struct FilesState {
    std::map<Int, std::string> folders;
    Int nextWD = kFirstWD;
    std::map<Int, OpenFile> open;
    Int nextRef = kFirstRef;
    Pending pending;
    bool swept = false; ///< leftovers in the data folder are cleared
};
RunState<FilesState> sFiles;

/// What other threads use too.
struct SharedState {
    std::mutex scriptLock;
    std::deque<std::string> scriptedFiles;
    std::mutex folderLock;
    std::optional<std::string> dataFolder;
};
SharedState& shared()
{
    static auto& s = *new SharedState; // leaked: the script thread may outlive the statics
    return s;
}
AtRunStart sFresh([] {
    SharedState& s = shared();
    const std::scoped_lock lock(s.scriptLock, s.folderLock);
    s.scriptedFiles.clear();
    s.dataFolder.reset();
});

// Names and paths.

std::size_t nameStart(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? 0 : slash + 1;
}

/// The path beside `path` whose name has a prefix.
std::string beside(const std::string& path, const std::string& prefix)
{
    const std::size_t start = nameStart(path);
    return path.substr(0, start) + prefix + path.substr(start);
}

std::string companionOf(const std::string& path) { return beside(path, kCompanionPrefix); }

/// Where the new file of a replacement is built. A long name is told by its hash, so that the prefix still fits.
std::string replacingPath(const std::string& target)
{
    const std::size_t start = nameStart(target);
    const std::string name = target.substr(start);
    if (name.size() <= kLongestPlainName)
        return beside(target, kReplacingPrefix);
    std::uint64_t hash = 14695981039346656037U;
    for (const char c : name)
        hash = (hash ^ static_cast<std::uint8_t>(c)) * 1099511628211U;
    return target.substr(0, start) + kReplacingPrefix + std::to_string(hash);
}

std::string standardized(const std::string& path)
{
    std::string plain = std::filesystem::path(path).lexically_normal().string();
    while (plain.size() > 1 && plain.back() == '/')
        plain.pop_back();
    return plain;
}

// Type and creator.

Bytes finderBytes(const FInfo& info)
{
    ByteWriter out;
    out.u32(info.fdType);
    out.u32(info.fdCreator);
    out.u16(info.fdFlags);
    out.pad(kFinderInfoSize);
    return out.bytes;
}

/// The stored bytes of type and creator, from the attribute or the companion file; empty if there are none, nothing if
/// that cannot be told.
std::optional<Bytes> storedFinderBytes(const std::string& path)
{
    const std::optional<Bytes> bytes = HostDisk::attribute(path);
    if (bytes && bytes->size() >= 8)
        return bytes;
    const std::string companion = companionOf(path);
    if (HostDisk::kind(companion) != HostDisk::Kind::File)
        return bytes ? std::optional(Bytes{}) : std::nullopt;
    const HostFile file = HostDisk::open(companion, HostDisk::Mode::Read);
    Bytes kept = file ? HostDisk::read(file, 0, kFinderInfoSize) : Bytes{};
    if (kept.size() < 8)
        return std::nullopt;
    return kept;
}

FInfo finderInfoOf(const Bytes& stored)
{
    ByteReader in(stored);
    FInfo info;
    info.fdType = static_cast<OSType>(in.u32());
    info.fdCreator = static_cast<OSType>(in.u32());
    info.fdFlags = stored.size() >= 10 ? in.u16() : 0;
    return info;
}

/// @return False if neither the attribute nor the companion could be stored.
bool storeFinderInfo(const std::string& path, const FInfo& info)
{
    const Bytes bytes = finderBytes(info);
    const std::string companion = companionOf(path);
    const bool hasCompanion = HostDisk::kind(companion) == HostDisk::Kind::File;
    if (HostDisk::setAttribute(path, bytes)) {
        if (hasCompanion)
            HostDisk::remove(companion);
        return true;
    }
    const HostFile file = HostDisk::open(companion, hasCompanion ? HostDisk::Mode::Update : HostDisk::Mode::Create);
    return file && HostDisk::write(file, 0, bytes) && HostDisk::truncate(file, kFinderInfoSize) && HostDisk::sync(file);
}

bool removeWithCompanion(const std::string& path)
{
    if (!HostDisk::remove(path))
        return false;
    if (const std::string companion = companionOf(path); HostDisk::kind(companion) == HostDisk::Kind::File)
        HostDisk::remove(companion);
    return true;
}

// Files that are being replaced.

bool isTarget(const std::string& path) { return sFiles->pending.active && path == sFiles->pending.target; }

/// The file that stands for `path` at this moment.
const std::string& actual(const std::string& path)
{
    return isTarget(path) && sFiles->pending.made ? sFiles->pending.fresh : path;
}

HostDisk::Kind kindOf(const std::string& path)
{
    if (isTarget(path) && !sFiles->pending.made && sFiles->pending.deleted)
        return HostDisk::Kind::Missing;
    return HostDisk::kind(actual(path));
}

/// Removes what killed replacements left in a folder; one that another process is at is left alone.
void sweep(const std::string& folder)
{
    for (const std::string& name : HostDisk::names(folder)) {
        if (name.rfind(kReplacingPrefix, 0) != 0)
            continue;
        const std::string path = folder + '/' + name;
        const HostFile file = HostDisk::open(path, HostDisk::Mode::Read);
        if (file && HostDisk::lock(file))
            removeWithCompanion(path);
    }
}

/// Makes the new file, empty and locked.
bool makeFresh(Pending& p)
{
    if (HostDisk::kind(p.fresh) == HostDisk::Kind::File)
        removeWithCompanion(p.fresh);
    p.held = HostDisk::open(p.fresh, HostDisk::Mode::Create);
    if (!p.held)
        return false;
    HostDisk::lock(p.held);
    p.made = true;
    return true;
}

void dropFresh(Pending& p)
{
    p.held.close();
    if (p.made)
        removeWithCompanion(p.fresh);
    p.made = false;
}

/// Makes the new file a copy of the old one, so that it can be changed there. If it cannot, the old file is changed.
void copyToFresh(Pending& p)
{
    const HostFile old = HostDisk::open(p.target, HostDisk::Mode::Read);
    if (!old)
        return;
    const Bytes bytes = HostDisk::read(old, 0, HostDisk::length(old).value_or(0));
    const std::optional<Bytes> stored = storedFinderBytes(p.target);
    if (!stored)
        return;
    std::error_code error;
    if (const std::filesystem::path real = std::filesystem::canonical(p.target, error); !error)
        p.place = real.string();
    p.fresh = replacingPath(p.place);
    if (!makeFresh(p))
        return;
    HostDisk::copyMode(old, p.held);
    if (I(bytes.size()) != HostDisk::length(old) || !HostDisk::write(p.held, 0, bytes)
        || (!stored->empty() && !storeFinderInfo(p.fresh, finderInfoOf(*stored))))
        dropFresh(p);
}

/// Puts the new file in the place of the old one.
bool putInPlace(Pending& p)
{
    if (!HostDisk::sync(p.held))
        return false;
    const std::string freshCompanion = companionOf(p.fresh), companion = companionOf(p.place);
    const bool hasCompanion = HostDisk::kind(freshCompanion) == HostDisk::Kind::File;
    if (hasCompanion && !HostDisk::rename(freshCompanion, companion))
        return false;
    if (!HostDisk::rename(p.fresh, p.place))
        return false;
    if (!hasCompanion && HostDisk::kind(companion) == HostDisk::Kind::File)
        HostDisk::remove(companion);
    HostDisk::syncFolder(folderOf(p.place));
    return true;
}

OpenFile* openFile(Int refNum)
{
    const auto it = sFiles->open.find(refNum);
    return it == sFiles->open.end() ? nullptr : &it->second;
}

/// Where a transfer begins; may be below 0.
Int position(const OpenFile& file, const ParamBlockRec& pb)
{
    switch (pb.ioPosMode & 3) {
    case fsFromStart: return pb.ioPosOffset;
    case fsFromLEOF: return HostDisk::length(file.file).value_or(0) + pb.ioPosOffset;
    case fsFromMark: return file.mark + pb.ioPosOffset;
    default: return file.mark;
    }
}

/// Bytes of the buffer's block from its offset on.
Int room(const Ptr& buffer) { return buffer.offset < 0 ? 0 : std::max<Int>(0, buffer.block->count() - buffer.offset); }

} // namespace

namespace HostFiles {

std::string dataFolder()
{
    SharedState& s = shared();
    const std::lock_guard lock(s.folderLock);
    if (!s.dataFolder)
        s.dataFolder = Platform::current().dataFolder();
    return *s.dataFolder;
}

void makeDataFolder()
{
    const std::string path = dataFolder();
    HostDisk::makeFolders(path);
    if (!sFiles->swept)
        sweep(path);
    sFiles->swept = true;
}

std::string folder(Int vRefNum, Int)
{
    const auto it = sFiles->folders.find(vRefNum);
    if (it != sFiles->folders.end())
        return it->second;
    makeDataFolder();
    return dataFolder();
}

std::string url(Int vRefNum, Int dirID, const std::optional<Str255>& name)
{
    std::string component = name ? string(*name) : std::string();
    std::replace(component.begin(), component.end(), '/', ':');
    return folder(vRefNum, dirID) + '/' + component;
}

Int wd(const std::string& folderPath)
{
    const std::string plain = standardized(folderPath);
    for (const auto& [number, path] : sFiles->folders)
        if (standardized(path) == plain)
            return number;
    sFiles->folders[sFiles->nextWD] = plain;
    return sFiles->nextWD--;
}

std::string folderOf(const std::string& path)
{
    const std::size_t start = nameStart(path);
    return start > 1 ? path.substr(0, start - 1) : start == 1 ? "/" : ".";
}

Str255 nameOf(const std::string& path, std::size_t maxLength)
{
    std::string name = path.substr(nameStart(path));
    std::replace(name.begin(), name.end(), ':', '/');
    Str255 counted = pstr(name);
    counted.resize(std::min(counted.size(), maxLength + 1));
    counted[0] = static_cast<std::uint8_t>(counted.size() - 1);
    return counted;
}

FInfo finderInfo(const std::string& path)
{
    if (const std::optional<Bytes> stored = storedFinderBytes(path); stored && !stored->empty())
        return finderInfoOf(*stored);
    FInfo info;
    std::string end = path.substr(path.size() - std::min<std::size_t>(path.size() - nameStart(path), 4));
    for (char& c : end)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    if (end == ".txt")
        info.fdType = os("TEXT");
    return info;
}

void setFinderInfo(const std::string& path, const FInfo& info) { storeFinderInfo(path, info); }

Int modDate(const std::string& path)
{
    return HostDisk::changed(path).value_or(Clock::current().wallSeconds()) + kSecondsTo1970;
}

void queueScriptedFile(std::string_view name)
{
    const std::lock_guard lock(shared().scriptLock);
    shared().scriptedFiles.emplace_back(name);
}

std::optional<std::string> scriptedAnswer()
{
    std::string entry;
    {
        const std::lock_guard lock(shared().scriptLock);
        if (shared().scriptedFiles.empty())
            return std::nullopt;
        entry = std::move(shared().scriptedFiles.front());
        shared().scriptedFiles.pop_front();
    }
    makeDataFolder();
    entry.erase(0, std::min(entry.find_first_not_of('/'), entry.size())); // always a name inside the data folder
    return dataFolder() + '/' + entry;
}

Replacement::Replacement(Int vRefNum, Int dirID, const Str255& name)
{
    Pending& p = sFiles->pending;
    outermost_ = !p.active;
    if (!outermost_)
        return;
    p = Pending{};
    p.target = p.place = url(vRefNum, dirID, name);
    p.fresh = replacingPath(p.place);
    p.active = true;
    sweep(folderOf(p.target));
}

Replacement::~Replacement()
{
    if (!outermost_)
        return;
    dropFresh(sFiles->pending);
    sFiles->pending = Pending{};
}

OSErr Replacement::commit()
{
    Pending& p = sFiles->pending;
    if (!outermost_ || !p.active)
        return noErr;
    outermost_ = false;
    const bool nothingNew = !p.made;
    const bool done = nothingNew ? !p.deleted : putInPlace(p);
    if (!done)
        dropFresh(p);
    p = Pending{};
    return done ? noErr : ioErr;
}

} // namespace HostFiles

OSErr HCreate(Int vRefNum, Int dirID, const Str255& name, OSType creator, OSType type)
{
    const std::string path = HostFiles::url(vRefNum, dirID, name);
    if (kindOf(path) != HostDisk::Kind::Missing)
        return dupFNErr;
    HostDisk::makeFolders(folderOf(path));
    FInfo info;
    info.fdType = type;
    info.fdCreator = creator;
    if (isTarget(path)) {
        Pending& p = sFiles->pending;
        // A new file that cannot be told apart by its type would be refused later: then there is none.
        if (!makeFresh(p) || !storeFinderInfo(p.fresh, info)) {
            dropFresh(p);
            return ioErr;
        }
        return noErr;
    }
    if (!HostDisk::open(path, HostDisk::Mode::Create))
        return errno == EEXIST ? dupFNErr : ioErr;
    HostFiles::setFinderInfo(path, info);
    return noErr;
}

OSErr Create(const Str255& name, Int vRefNum, OSType creator, OSType type) { return HCreate(vRefNum, 0, name, creator, type); }

OSErr HDelete(Int vRefNum, Int dirID, const Str255& name)
{
    const std::string path = HostFiles::url(vRefNum, dirID, name);
    const HostDisk::Kind kind = kindOf(path);
    if (kind != HostDisk::Kind::File)
        return kind == HostDisk::Kind::Missing ? fnfErr : ioErr;
    if (!isTarget(path))
        return removeWithCompanion(path) ? noErr : ioErr;
    Pending& p = sFiles->pending;
    if (!p.made && !HostDisk::isWritableFolder(folderOf(path)))
        return ioErr;
    dropFresh(p);
    p.place = p.target; // a link goes with the file
    p.fresh = replacingPath(p.place);
    p.deleted = true;
    return noErr;
}

OSErr FSDelete(const Str255& name, Int vRefNum) { return HDelete(vRefNum, 0, name); }

OSErr HOpen(Int vRefNum, Int dirID, const Str255& name, Int, Int& refNum)
{
    const std::string path = HostFiles::url(vRefNum, dirID, name);
    const HostDisk::Kind kind = kindOf(path);
    if (kind != HostDisk::Kind::File)
        return kind == HostDisk::Kind::Missing ? fnfErr : permErr;
    HostFile file = HostDisk::open(actual(path), HostDisk::Mode::Update);
    if (file && isTarget(path) && !sFiles->pending.made) {
        copyToFresh(sFiles->pending);
        if (sFiles->pending.made)
            file = HostDisk::open(sFiles->pending.fresh, HostDisk::Mode::Update);
    }
    if (!file)
        file = HostDisk::open(actual(path), HostDisk::Mode::Read);
    if (!file)
        return permErr;
    refNum = sFiles->nextRef++;
    sFiles->open[refNum].file = std::move(file);
    return noErr;
}

OSErr FSOpen(const Str255& name, Int vRefNum, Int& refNum) { return HOpen(vRefNum, 0, name, fsCurPerm, refNum); }

OSErr HGetFInfo(Int vRefNum, Int dirID, const Str255& name, FInfo& info)
{
    const std::string path = HostFiles::url(vRefNum, dirID, name);
    if (kindOf(path) == HostDisk::Kind::Missing)
        return fnfErr;
    info = HostFiles::finderInfo(actual(path));
    return noErr;
}

OSErr GetFInfo(const Str255& name, Int vRefNum, FInfo& info) { return HGetFInfo(vRefNum, 0, name, info); }

OSErr SetFInfo(const Str255& name, Int vRefNum, const FInfo& info)
{
    const std::string path = HostFiles::url(vRefNum, 0, name);
    if (kindOf(path) == HostDisk::Kind::Missing)
        return fnfErr;
    HostFiles::setFinderInfo(actual(path), info);
    return noErr;
}

OSErr FSClose(Int refNum) { return sFiles->open.erase(refNum) == 1 ? noErr : rfNumErr; }

OSErr FSRead(Int refNum, Int& count, const std::optional<Ptr>& ptr)
{
    ParamBlockRec pb;
    pb.ioRefNum = refNum;
    pb.ioBuffer = ptr;
    pb.ioReqCount = count;
    PBRead(pb);
    count = pb.ioActCount;
    return pb.ioResult;
}

OSErr FSWrite(Int refNum, Int& count, const std::optional<Ptr>& ptr)
{
    ParamBlockRec pb;
    pb.ioRefNum = refNum;
    pb.ioBuffer = ptr;
    pb.ioReqCount = count;
    PBWrite(pb);
    count = pb.ioActCount;
    return pb.ioResult;
}

OSErr SetEOF(Int refNum, Int size)
{
    ParamBlockRec pb;
    pb.ioRefNum = refNum;
    pb.ioMisc = size;
    return PBSetEOF(pb);
}

OSErr PBClose(ParamBlockRec& pb) { return pb.ioResult = FSClose(pb.ioRefNum); }

OSErr PBRead(ParamBlockRec& pb)
{
    OpenFile* file = openFile(pb.ioRefNum);
    if (!file)
        return pb.ioResult = rfNumErr;
    const Int at = position(*file, pb);
    const Bytes bytes = HostDisk::read(file->file, std::max<Int>(at, 0), pb.ioReqCount);
    if (pb.ioBuffer) {
        const auto count = static_cast<std::ptrdiff_t>(std::min(I(bytes.size()), room(*pb.ioBuffer)));
        if (count > 0)
            std::copy_n(bytes.begin(), count, pb.ioBuffer->block->bytes.begin() + pb.ioBuffer->offset);
    }
    pb.ioActCount = I(bytes.size());
    file->mark = at + pb.ioActCount;
    return pb.ioResult = pb.ioActCount < pb.ioReqCount ? eofErr : noErr;
}

OSErr PBWrite(ParamBlockRec& pb)
{
    OpenFile* file = openFile(pb.ioRefNum);
    if (!file)
        return pb.ioResult = rfNumErr;
    if (!pb.ioBuffer)
        return pb.ioResult = ioErr;
    const Int at = position(*file, pb), count = std::clamp<Int>(pb.ioReqCount, 0, room(*pb.ioBuffer));
    if (count > 0) {
        const std::span<const std::uint8_t> all(pb.ioBuffer->block->bytes);
        const auto part = all.subspan(static_cast<std::size_t>(pb.ioBuffer->offset), static_cast<std::size_t>(count));
        if (!HostDisk::write(file->file, std::max<Int>(at, 0), part))
            return pb.ioResult = ioErr;
    }
    pb.ioActCount = count;
    file->mark = at + count;
    return pb.ioResult = noErr;
}

OSErr PBSetEOF(ParamBlockRec& pb)
{
    OpenFile* file = openFile(pb.ioRefNum);
    if (!file)
        return pb.ioResult = rfNumErr;
    return pb.ioResult = HostDisk::truncate(file->file, std::max<Int>(pb.ioMisc, 0)) ? noErr : ioErr;
}

OSErr PBGetEOF(ParamBlockRec& pb)
{
    OpenFile* file = openFile(pb.ioRefNum);
    if (!file)
        return pb.ioResult = rfNumErr;
    pb.ioMisc = HostDisk::length(file->file).value_or(0);
    return pb.ioResult = noErr;
}

OSErr PBOpen(ParamBlockRec& pb) { return PBHOpen(pb); }

OSErr PBHOpen(ParamBlockRec& pb)
{
    return pb.ioResult = HOpen(pb.ioVRefNum, pb.ioDirID, pb.ioNamePtr.value_or(Str255{0}), pb.ioPermssn, pb.ioRefNum);
}

OSErr PBGetFInfo(ParamBlockRec& pb) { return PBHGetFInfo(pb); }

OSErr PBHGetFInfo(ParamBlockRec& pb)
{
    const std::string path = HostFiles::url(pb.ioVRefNum, pb.ioDirID, pb.ioNamePtr);
    if (kindOf(path) == HostDisk::Kind::Missing)
        return pb.ioResult = fnfErr;
    pb.ioFlFndrInfo = HostFiles::finderInfo(actual(path));
    pb.ioFlMdDat = HostFiles::modDate(actual(path));
    pb.ioFlAttrib = 0;
    pb.ioFlLgLen = HostDisk::size(actual(path));
    return pb.ioResult = noErr;
}

OSErr PBGetVInfo(ParamBlockRec& pb)
{
    pb.ioVAtrb = 0;
    return pb.ioResult = noErr;
}

OSErr PBLockRange(ParamBlockRec& pb) { return pb.ioResult = noErr; }

OSErr PBUnlockRange(ParamBlockRec& pb) { return pb.ioResult = noErr; }

OSErr GetVol(Str255& name, Int& vRefNum)
{
    name = pstr("Macintosh HD");
    vRefNum = -1;
    return noErr;
}

OSErr HGetVol(Str255& name, Int& vRefNum, Int& dirID)
{
    dirID = 2;
    return GetVol(name, vRefNum);
}

} // namespace MacToolbox
