#include "Wainroad/Screens/SaveGame.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Managers/Menus.h"
#include "MacToolbox/Managers/StandardFile.h"
#include "Wainroad/Errors/Errors.h"
#include "Wainroad/Frame/Utils.h"
#include "Wainroad/Journal/Log.h"
#include "Wainroad/Journal/LogText.h"
#include "Wainroad/Journal/LogView.h"
#include "Wainroad/Persistence/SavedGame.h"
#include "Wainroad/Screens/DiskCalls.h"
#include "Wainroad/Screens/Exit.h"
#include "Wainroad/Screens/Resume.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/Repair.h"

namespace Wainroad {

GameFile gSaveFile;
OSType gGameType = 0;
bool gResumed = false;
Handle gResume;

namespace {

const AtRunStart sFreshStart([] {
    gSaveFile = {};
    gGameType = 0;
    gResumed = false;
    gResume = nullptr;
});

constexpr Int kFileMenu = 1001;
constexpr Int kSaveDialog = -3999, kOpenDialog = -4000; // only their rectangles are used
constexpr OSErr kWriteProtected = -44;

GameFile fileOf(const SFReply& reply) { return {reply.good, reply.copy, reply.fType, reply.vRefNum, 0, reply.fName}; }

/// The top left corner of a file panel.
Point panelCorner(Int dialog, std::string_view failure)
{
    const Handle resource = GetResource(os("DLOG"), dialog);
    if (!resource || resource->count() < 8)
        Fatal(ResError(), failure);
    Rect place = resource->rect(0);
    CenterRect(place);
    return place.topLeft();
}

bool isNoSavedGame(OSType type, const Str255&) { return type != kSaveType && type != kTrainSaveType; }

GameFile askSaveName()
{
    SFReply reply;
    SFPutFile(panelCorner(kSaveDialog, "SaveGameGetRes"), pstr("Save current game as:"), gSaveFile.name, nullptr, reply,
        kSaveType);
    return fileOf(reply);
}

GameFile askOpenGame()
{
    SFReply reply;
    SFGetFile(panelCorner(kOpenDialog, "LoadGameGetRes"), Str255{0}, isNoSavedGame, -1, {}, nullptr, reply);
    return fileOf(reply);
}

// ---- Writing

/// Writes head and journal from the start of the file. A write-protected disk is told of and tried again.
OSErr writeSaveData(Int ref, const Handle& head)
{
    for (;;) {
        const OSErr headError = WriteBlock(ref, head, kSaveHeadBytes, BlockAt::start);
        if (headError == kWriteProtected) {
            TellDiskIsFull();
        } else if (headError != noErr) {
            DiskError(headError, false);
            return headError;
        }
        const OSErr logError = WriteBlock(ref, gLogBuffer, kSaveLogBytes, BlockAt::mark);
        if (logError == kWriteProtected) {
            TellDiskIsFull();
            continue;
        }
        if (logError != noErr)
            DiskError(logError, false);
        return logError;
    }
}

/// Makes the file anew with its full length and content.
OSErr writeNewFile(const Handle& head)
{
    HDelete(gSaveFile.vRefNum, gSaveFile.dirID, gSaveFile.name);
    OSErr error = HCreate(gSaveFile.vRefNum, gSaveFile.dirID, gSaveFile.name, kCreator, kSaveType);
    if (error != noErr) {
        DiskError(error, false);
        return error;
    }
    Int ref = -1;
    error = OpenPatiently(gSaveFile.vRefNum, gSaveFile.dirID, gSaveFile.name, ref);
    if (error != noErr)
        return error;
    error = SetEOF(ref, kSaveBytes);
    if (error != noErr)
        DiskError(error, false);
    else
        error = writeSaveData(ref, head);
    const OSErr closed = FSClose(ref);
    if (error == noErr && closed != noErr)
        DiskError(error = closed, false);
    return error;
}

// ---- Reading

OSErr readSave(Int ref, const Handle& head)
{
    const Handle log = NewHandle(kSaveLogBytes);
    OSErr error = ReadBlock(ref, head, kSaveHeadBytes, BlockAt::start);
    if (error == noErr)
        error = ReadBlock(ref, log, kSaveLogBytes, BlockAt::mark);
    if (error != noErr)
        DiskError(error, false);
    else
        gLogBuffer->bytes = log->bytes;
    return error;
}

/// Takes a file's head over into the train and the journal.
void takeHead(const Handle& packed)
{
    SaveHead head;
    head.state.x101C = gTrain.x101C;
    readSaveHead(packed->bytes, head);
    MakeHarmless(head.state);
    head.state.mode = 0;
    for (Int slot = 0; slot < kMaxWagons; ++slot)
        if (SlotUsed(head.state, slot))
            WagonOf(head.state, slot).flags = WagonOf(head.state, slot).flags2 = 0;
    gArrivedAt = head.arrivedAt;
    gTrain.copy(head.state);
    gLogInfo.load(head.logInfo);
    LogLoaded();
}

// ---- Going on

/// Puts the train at rest under this player's lead. The last used slot is the player's.
void takeTrain()
{
    gTrain.mode = 0;
    gTrain.x249 = kNobody;
    gTrain.leader = gMyID;
    if (gTrain.opt245 == 2)
        gTrain.opt245 = 1;
    std::fill_n(gResume->bytes.begin() + kResumeFreeAt, kMaxWagons, std::uint8_t{255});
    for (Int slot = 0; slot < kMaxWagons; ++slot) {
        if (!SlotUsed(gTrain, slot))
            continue;
        gMySlot = slot;
        gResume->set8(kResumeFreeAt + slot, 0);
        Wagon& wagon = WagonOf(gTrain, slot);
        wagon.flags = wagon.flags2 = 0;
        wagon.x5E = kNobody;
    }
}

/// Tells the panel that offers the wagons of a train what there is to pick from.
void describeTrain()
{
    gResume->set8(0, gMyID);
    gResume->set8(1, gTrain.wagons);
    gResume->set8(2, 0);
    const Str255 trainName = str15(gTrain.x24B);
    std::copy(trainName.begin(), trainName.end(), gResume->bytes.begin() + 3);
    for (std::size_t slot = 0; slot < kMaxWagons; ++slot) {
        const auto& name = gTrain.names[slot].field();
        std::copy(name.begin(), name.end(),
            gResume->bytes.begin() + kResumeNamesAt + std::ptrdiff_t(slot) * kResumeNameBytes);
    }
}

} // namespace

OSErr WriteSave()
{
    const Handle head = PtrToHand(packSaveHead(gArrivedAt, gState, gLogInfo.bytes()));
    HostFiles::Replacement whole(gSaveFile.vRefNum, gSaveFile.dirID, gSaveFile.name);
    const OSErr error = writeNewFile(head);
    if (error != noErr)
        return error; // what was begun goes, and the old file stays
    const OSErr committed = whole.commit();
    if (committed != noErr)
        DiskError(committed, false);
    return committed;
}

bool SaveGame()
{
    for (;;) {
        const GameFile file = askSaveName();
        if (!file.good)
            return false;
        gSaveFile = file;
        if (WriteSave() == noErr)
            return true;
    }
}

bool LoadGameFile()
{
    const GameFile file = askOpenGame();
    if (!file.good)
        return false;
    gSaveFile = file;
    gGameType = file.fType;
    Int ref = -1;
    if (OpenPatiently(file.vRefNum, file.dirID, file.name, ref) != noErr)
        return false;
    const Handle head = NewHandle(kSaveHeadBytes);
    const OSErr error = readSave(ref, head);
    FSClose(ref);
    if (error != noErr)
        return false;
    takeHead(head);
    return true;
}

void LoadGame()
{
    EnableItem(GetMHandle(kFileMenu), 6);
    DisableItem(GetMHandle(kFileMenu), 1);
    if (!gResume)
        gResume = NewHandle(kResumeBytes);
    if (!LoadGameFile() || LastUsedSlot(gTrain) < 0) {
        gResume = nullptr;
        ToTitle();
        return;
    }
    takeTrain();
    if (gGameType == kTrainSaveType) {
        describeTrain();
        OpenPanel(ResumePanel);
        return;
    }
    if (UsedSlots(gTrain) > 1 || &WagonOf(gTrain, gMySlot) != &gTrain.wagon[0])
        KeepOneWagon(gTrain, gMySlot); // a broadcast carries the first wagon alone
    gTrain.wagon[0].node = gMyID;
    gLoaded = gResumed = true;
    gLoadedTrain = false;
    StandStill();
}

void StandStill()
{
    gTrain.wagons = gTrain.startWagons = 1;
    gTrain.mode = kModeLive;
    CopyState(gTrain, gState);
    CopyState(gTrain, gPrev);
    gLeaderStart = 0;
    ResumeJourney();
}

void ResumeJourney()
{
    for (const Int item : {6, 4, 2})
        EnableItem(GetMHandle(kFileMenu), item);
    DisableItem(GetMHandle(kFileMenu), 1);
    gCrossing = false;
    ClearLogText();
    ShowTravelScreen();
    gPlaying = 2;
    gResume = nullptr;
}

} // namespace Wainroad
