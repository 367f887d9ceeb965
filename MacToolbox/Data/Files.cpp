#include "MacToolbox/Data/Files.h"

#include "MacToolbox/Base/Clock.h"
#include "MacToolbox/Base/Platform.h"
#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Data/FinderInfo.h"
#include "MacToolbox/Data/HostDisk.h"
#include "MacToolbox/Data/Replacing.h"

#include <algorithm>
#include <cerrno>
#include <deque>
#include <filesystem>
#include <map>
#include <mutex>

namespace MacToolbox {

using HostFiles::folderOf;
using HostFiles::removeWithCompanion;

namespace {

constexpr Int kSecondsTo1970 = 2082844800; // from 1904
constexpr Int kFirstWD = -200, kFirstRef = 100;

struct OpenFile {
    HostFile file;
    Int mark = 0;
};

struct FilesState {
    std::map<Int, std::string> folders;
    Int nextWD = kFirstWD;
    std::map<Int, OpenFile> open;
    Int nextRef = kFirstRef;
    Replacing replacing;
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

std::string standardized(const std::string& path)
{
    std::string plain = std::filesystem::path(path).lexically_normal().string();
    while (plain.size() > 1 && plain.back() == '/')
        plain.pop_back();
    return plain;
}

/// The file that stands for `path` at this moment.
const std::string& actual(const std::string& path)
{
    const Replacing& r = sFiles->replacing;
    return r.isTarget(path) && r.made() ? r.fresh() : path;
}

HostDisk::Kind kindOf(const std::string& path)
{
    const Replacing& r = sFiles->replacing;
    return r.isTarget(path) && r.missing() ? HostDisk::Kind::Missing : HostDisk::kind(actual(path));
}

/// Why nothing can be told of a file of that kind.
OSErr absence(HostDisk::Kind kind)
{
    switch (kind) {
    case HostDisk::Kind::Missing: return fnfErr;
    case HostDisk::Kind::Unknown: return ioErr;
    default: return noErr;
    }
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
        Replacing::sweep(path);
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
    const std::size_t start = path.rfind('/') + 1;
    return start > 1 ? path.substr(0, start - 1) : start == 1 ? "/" : ".";
}

Str255 nameOf(const std::string& path, std::size_t maxLength)
{
    std::string name = path.substr(path.rfind('/') + 1);
    std::replace(name.begin(), name.end(), ':', '/');
    Str255 counted = pstr(name);
    counted.resize(std::min(counted.size(), maxLength + 1));
    counted[0] = static_cast<std::uint8_t>(counted.size() - 1);
    return counted;
}

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
    entry.erase(entry.find_last_not_of('/') + 1);
    return dataFolder() + '/' + entry;
}

Replacement::Replacement(Int vRefNum, Int dirID, const Str255& name) : outermost_(!sFiles->replacing.active())
{
    if (outermost_)
        sFiles->replacing.begin(url(vRefNum, dirID, name));
}

Replacement::~Replacement()
{
    if (outermost_)
        sFiles->replacing.end();
}

OSErr Replacement::commit()
{
    Replacing& r = sFiles->replacing;
    if (!outermost_ || !r.active())
        return noErr;
    outermost_ = false;
    const bool done = r.made() ? r.putInPlace() : !r.missing();
    r.end();
    return done ? noErr : ioErr;
}

} // namespace HostFiles

OSErr HCreate(Int vRefNum, Int dirID, const Str255& name, OSType creator, OSType type)
{
    const std::string path = HostFiles::url(vRefNum, dirID, name);
    if (const HostDisk::Kind kind = kindOf(path); kind != HostDisk::Kind::Missing)
        return kind == HostDisk::Kind::Unknown ? ioErr : dupFNErr;
    HostDisk::makeFolders(folderOf(path));
    FInfo info;
    info.fdType = type;
    info.fdCreator = creator;
    if (Replacing& r = sFiles->replacing; r.isTarget(path)) {
        // A new file that cannot be told apart by its type would be refused later: then there is none.
        if (r.makeFresh() && HostFiles::storeFinderInfo(r.fresh(), info))
            return noErr;
        r.dropFresh();
        return ioErr;
    }
    if (!HostDisk::open(path, HostDisk::Mode::Create))
        return errno == EEXIST ? dupFNErr : ioErr;
    HostFiles::setFinderInfo(path, info);
    return noErr;
}

OSErr Create(const Str255& name, Int vRefNum, OSType creator, OSType type)
{
    return HCreate(vRefNum, 0, name, creator, type);
}

OSErr HDelete(Int vRefNum, Int dirID, const Str255& name)
{
    const std::string path = HostFiles::url(vRefNum, dirID, name);
    const HostDisk::Kind kind = kindOf(path);
    if (kind != HostDisk::Kind::File)
        return kind == HostDisk::Kind::Missing ? fnfErr : ioErr;
    Replacing& r = sFiles->replacing;
    if (!r.isTarget(path))
        return removeWithCompanion(path) ? noErr : ioErr;
    if (!r.made() && !HostDisk::isWritableFolder(folderOf(path)))
        return ioErr;
    r.markDeleted();
    return noErr;
}

OSErr FSDelete(const Str255& name, Int vRefNum) { return HDelete(vRefNum, 0, name); }

OSErr HOpen(Int vRefNum, Int dirID, const Str255& name, Int, Int& refNum)
{
    const std::string path = HostFiles::url(vRefNum, dirID, name);
    const HostDisk::Kind kind = kindOf(path);
    if (const OSErr err = absence(kind))
        return err;
    if (kind != HostDisk::Kind::File)
        return permErr;
    HostFile file = HostDisk::open(actual(path), HostDisk::Mode::Update);
    if (Replacing& r = sFiles->replacing; file && r.isTarget(path) && !r.made()) {
        r.copyToFresh();
        if (r.made())
            file = HostDisk::open(r.fresh(), HostDisk::Mode::Update);
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
    if (const OSErr err = absence(kindOf(path)))
        return err;
    info = HostFiles::finderInfo(actual(path));
    return noErr;
}

OSErr GetFInfo(const Str255& name, Int vRefNum, FInfo& info) { return HGetFInfo(vRefNum, 0, name, info); }

OSErr SetFInfo(const Str255& name, Int vRefNum, const FInfo& info)
{
    const std::string path = HostFiles::url(vRefNum, 0, name);
    if (const OSErr err = absence(kindOf(path)))
        return err;
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
    if (const OSErr err = absence(kindOf(path)))
        return pb.ioResult = err;
    const std::optional<FInfo> info = HostFiles::toldFinderInfo(actual(path));
    if (!info)
        return pb.ioResult = ioErr;
    pb.ioFlFndrInfo = *info;
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
