#pragma once

// Saved games: asking where, writing and reading the file, and going on with a journey.

#include "MacToolbox/Base/Memory.h"

namespace Wainroad {
using namespace MacToolbox;

inline constexpr OSType kSaveType = os("WRDC"), kTrainSaveType = os("WWDC"), kCreator = os("WRGN");

/// Where a saved game lies.
struct GameFile {
    bool good = false, copy = false;
    OSType fType = 0;
    Int vRefNum = 0, dirID = 0;
    Str255 name{0};
};
extern GameFile gSaveFile; ///< the last one; its name is offered for the next
extern OSType gGameType;   ///< type of the file last opened
extern bool gResumed;      ///< the journey comes from a file
extern Handle gResume;     ///< 564 bytes that tell which wagons of a train can be picked; nil otherwise
inline constexpr Int kResumeBytes = 564, kResumeFreeAt = 19, kResumeNamesAt = 52, kResumeNameBytes = 16;

/// Asks where to save and writes, again and again until it is written or cancelled. @return False if it was cancelled.
bool SaveGame();
/// Asks for a saved game, and goes on with it; back to the title if there is none.
void LoadGame();
/// Puts the loaded train of one wagon on the road, at rest, and enters play.
void StandStill();
/// Enters play after a load.
void ResumeJourney();

/// Writes the journey to `gSaveFile`, whole or not at all: the old file stays until the new one is complete. Failures
/// are told of. @return noErr or the error.
OSErr WriteSave();
/// Asks for a file, reads it into `gTrain` and the journal, and makes both harmless. @return False if there is nothing.
bool LoadGameFile();

} // namespace Wainroad
