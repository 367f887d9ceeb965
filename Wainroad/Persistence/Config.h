#pragma once

#include "MacToolbox/Base/Memory.h"

/// The configuration file: 1108 bytes that hold the settings and both lists of legends. The whole file lives in
/// `gConfig`; a change is written back as a whole. The file is closed between uses, and read again when its date moves.
namespace Wainroad {

using namespace MacToolbox;

inline constexpr Int kConfigBytes = 1108;
inline constexpr Int kConfigOptionsAt = 38;  ///< offset of the packed `Options`
inline constexpr Int kConfigLegendsAt = 456; ///< offset of list 0; list 1 follows

extern Handle gConfig;       ///< the image of the file
extern Handle gConfigBuffer; ///< 578 bytes, used in network modes only
extern Int gConfigMode;      ///< 0 local; 1 and 2 are network modes that this program never enters
extern Int gConfigRef;       ///< open file, -1 when closed
extern Int gConfigDate;      ///< modification date last seen
extern bool gConfigChanged;  ///< the image has changes to write
extern Str255 gConfigName;
extern Int gConfigVRef, gConfigDirID;

/// Reads the file at start-up, makes it if it is missing, and ends the program if it is not ours.
void ConfigInit();
/// Magic, version and signature of the image.
bool ConfigIsValid();
/// Reads the file again if its date moved, and fills `gOptions`.
void ReadConfig();
/// Unpacks the image into `gOptions`.
void CopyOptionsOut();
/// Packs `gOptions` into the image and writes the file.
void WriteOptions();
/// Sets `gConfigMode`: a network mode in the file is told of and not entered.
void OpenConfig();
/// Opens the file, with retries while it is busy. Failure ends the program.
void OpenConfigFile();
/// Writes what is pending, then opens the file and reads it; it stays open.
void OpenConfigForUpdate();
void ReadConfigFile();
/// Writes all 1108 bytes; a full disk is told of, and tried again.
void WriteConfigFile();
void CloseConfig();
void FlushConfig();
/// @return 1 if the date moved, or the file was missing (it is made) or cannot be asked; else 0.
Int ConfigFileChanged();
/// Reads the file again if its date moved. `gOptions` stays as it is.
/// @return True if it was read.
bool RereadConfig();
/// Makes a new file from `CONF` 1000. On any error no half-made file stays, and the program ends.
void CreateConfig();
/// Shows the text `code` of `STR#` 3000, says it on standard error too, and ends the program with status 0.
[[noreturn]] void ConfigError(Int code);

} // namespace Wainroad
