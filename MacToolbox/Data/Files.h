#pragma once

#include "MacToolbox/Base/Strings.h"

#include <optional>
#include <string>
#include <string_view>

namespace MacToolbox {

inline constexpr OSErr dskFulErr = -34, nsvErr = -35, ioErr = -36, bdNamErr = -37, eofErr = -39, tmfoErr = -42,
                       fnfErr = -43, wPrErr = -44, fLckdErr = -45, dupFNErr = -48, opWrErr = -49, rfNumErr = -51,
                       permErr = -54, dirNFErr = -120;

inline constexpr Int fsCurPerm = 0, fsRdPerm = 1, fsWrPerm = 2, fsRdWrPerm = 3, fsRdWrShPerm = 4;
inline constexpr Int fsAtMark = 0, fsFromStart = 1, fsFromLEOF = 2, fsFromMark = 3;

/// What the Finder knows of a file. `fdLocation` and `fdFldr` are not stored.
struct FInfo {
    OSType fdType = 0, fdCreator = 0;
    Int fdFlags = 0;
    Point fdLocation;
    Int fdFldr = 0;
};

/// A parameter block; every `PB` call stores its result in `ioResult` and answers with it.
struct ParamBlockRec {
    Int ioResult = 0;
    std::optional<Str255> ioNamePtr;
    Int ioVRefNum = 0, ioRefNum = 0, ioVersNum = 0, ioPermssn = 0, ioMisc = 0;
    std::optional<Ptr> ioBuffer;
    Int ioReqCount = 0, ioActCount = 0, ioPosMode = 0, ioPosOffset = 0, ioDirID = 0, ioFDirIndex = 0, ioFlAttrib = 0;
    FInfo ioFlFndrInfo;
    Int ioFlMdDat = 0, ioFlLgLen = 0, ioVAtrb = 0, ioVolIndex = 0;
};

/// The host's side of the File Manager: folders, names, types, and the queue of scripted answers.
/// Game thread only, but for `dataFolder`, `finderInfo` and `queueScriptedFile`. Paths are UTF-8.
namespace HostFiles {

/// The folder of the user's data: `WR_DATA`, else "The Wainroad" in the user's data home. Fixed at first use, made only
/// by the calls that need it there. Any thread.
std::string dataFolder();
/// Makes the data folder with its parents if it is missing, and clears what a killed replacement left there.
void makeDataFolder();

/// The folder that a panel gave this number; every other number means the data folder, which is made.
std::string folder(Int vRefNum, Int dirID = 0);
/// The path of a file: the folder, and the name with every "/" as ":". A nil name counts as empty.
std::string url(Int vRefNum, Int dirID, const std::optional<Str255>& name);
/// The working directory number of a folder: -200, -201, ...; the same folder always has the same number.
Int wd(const std::string& folderPath);
/// The folder of a file.
std::string folderOf(const std::string& path);
/// The name of a file, ":" shown as "/", at most `maxLength` characters of Mac OS Roman. Any thread.
Str255 nameOf(const std::string& path, std::size_t maxLength = 255);

/// Type, creator and flags; without them a name ending in ".txt" has type 'TEXT', any other file zeros. Any thread.
FInfo finderInfo(const std::string& path);
/// Stores type, creator and flags, in an attribute of the file or, where there are none, in a companion file "._name".
/// A failure is ignored.
void setFinderInfo(const std::string& path, const FInfo& info);
/// When the file was last changed, in seconds since 1904, no time zone; now, if that cannot be told.
Int modDate(const std::string& path);

/// Adds a name in the data folder as an answer to a coming file panel. Any thread.
void queueScriptedFile(std::string_view name);
/// Takes the next answer off the queue, as a path in the data folder; nothing if there is none.
std::optional<std::string> scriptedAnswer();

/// Replaces one file as a whole. While it lives, the calls of the File Manager on this file work on a new file beside
/// it and answer as if on the file itself: after `HDelete` the name is missing, after `HCreate` it is there. A file
/// that is opened without being deleted first is changed in a copy. The old file stays on disk until `commit` has the
/// new one complete, typed and flushed, and renames it over the old; without a `commit`, or if it fails, the old file
/// is what remains. One at a time: a second one inside does nothing of its own.
/// @code HostFiles::Replacement whole(vRefNum, dirID, name); HDelete(...); HCreate(...); ... ; err = whole.commit();
/// @endcode
class Replacement {
public:
    Replacement(Int vRefNum, Int dirID, const Str255& name);
    ~Replacement(); ///< without `commit`: drops what is new and keeps the old file
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;
    /// Puts the new file in place. Close the file first. A file that was deleted and not made again stays as it was.
    /// The disk takes the new name a moment later: a power cut in between leaves the old file, whole.
    /// @return noErr, or ioErr with the old file kept.
    OSErr commit();

private:
    bool outermost_ = false;
};

} // namespace HostFiles

// Calls on names. `vRefNum` is a number of a panel, or any other for the data folder; `dirID` is not looked at.

/// Makes an empty file of that type. @return noErr, dupFNErr (there is one) or ioErr.
OSErr HCreate(Int vRefNum, Int dirID, const Str255& name, OSType creator, OSType type);
OSErr Create(const Str255& name, Int vRefNum, OSType creator, OSType type);
/// @return noErr, fnfErr or ioErr.
OSErr HDelete(Int vRefNum, Int dirID, const Str255& name);
OSErr FSDelete(const Str255& name, Int vRefNum);
/// Opens for update or, failing that, for reading; `permission` is not looked at. Numbers go up from 100 and are not
/// used again. @return noErr, fnfErr, permErr or ioErr (`refNum` unchanged).
OSErr HOpen(Int vRefNum, Int dirID, const Str255& name, Int permission, Int& refNum);
OSErr FSOpen(const Str255& name, Int vRefNum, Int& refNum);
/// @return noErr, fnfErr or ioErr (what is there cannot be told).
OSErr HGetFInfo(Int vRefNum, Int dirID, const Str255& name, FInfo& info);
OSErr GetFInfo(const Str255& name, Int vRefNum, FInfo& info);
OSErr SetFInfo(const Str255& name, Int vRefNum, const FInfo& info);
inline OSErr HRstFLock(Int, Int, const Str255&) { return noErr; }
inline OSErr RstFLock(const Str255&, Int) { return noErr; }

// Calls on open files; rfNumErr for an unknown number.

OSErr FSClose(Int refNum);
/// Reads up to `count` bytes at the mark into the block of `ptr`, as many as fit; `count` is then what was read.
/// @return noErr, eofErr (fewer than asked) or rfNumErr.
OSErr FSRead(Int refNum, Int& count, const std::optional<Ptr>& ptr);
/// Writes `count` bytes, or as many as the block holds, at the mark. @return noErr, ioErr or rfNumErr.
OSErr FSWrite(Int refNum, Int& count, const std::optional<Ptr>& ptr);
/// Sets the length; below 0 counts as 0. The mark stays. @return noErr, ioErr or rfNumErr.
OSErr SetEOF(Int refNum, Int size);

OSErr PBClose(ParamBlockRec& pb);
OSErr PBRead(ParamBlockRec& pb);
OSErr PBWrite(ParamBlockRec& pb);
OSErr PBSetEOF(ParamBlockRec& pb); ///< to `ioMisc`
OSErr PBGetEOF(ParamBlockRec& pb); ///< stores the length in `ioMisc`
OSErr PBOpen(ParamBlockRec& pb);
OSErr PBHOpen(ParamBlockRec& pb);
/// Fills `ioFlFndrInfo`, `ioFlMdDat`, `ioFlAttrib` (0) and `ioFlLgLen`. @return noErr, fnfErr or ioErr.
OSErr PBGetFInfo(ParamBlockRec& pb);
OSErr PBHGetFInfo(ParamBlockRec& pb);
OSErr PBGetVInfo(ParamBlockRec& pb);
OSErr PBLockRange(ParamBlockRec& pb);
OSErr PBUnlockRange(ParamBlockRec& pb);
inline OSErr PBEject(ParamBlockRec&) { return noErr; }

// The one volume.

OSErr GetVol(Str255& name, Int& vRefNum); ///< "Macintosh HD", -1
OSErr HGetVol(Str255& name, Int& vRefNum, Int& dirID);
inline OSErr SetVol(const Str255&, Int) { return noErr; }
inline OSErr GetWDInfo(Int wd, Int& vRefNum, Int& dirID, Int& procID)
{
    vRefNum = wd, dirID = 0, procID = 0;
    return noErr;
}
inline void FlushVol(const Str255&, Int) { }

} // namespace MacToolbox
