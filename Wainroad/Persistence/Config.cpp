#include "Wainroad/Persistence/Config.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Data/Files.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Host/Misc.h"
#include "MacToolbox/Managers/Dialogs.h"
#include "MacToolbox/Managers/Menus.h"
#include "Wainroad/Errors/Errors.h"
#include "Wainroad/Frame/Alerts.h"
#include "Wainroad/Frame/Sound_.h"
#include "Wainroad/Simulation/Random.h"
#include "Wainroad/Simulation/Records.h"

#include <algorithm>
#include <memory>

namespace Wainroad {

Handle gConfig;
Handle gConfigBuffer;
Int gConfigMode = 0;
Int gConfigRef = -1;
Int gConfigDate = 0;
bool gConfigChanged = false;
Str255 gConfigName{0};
Int gConfigVRef = -1, gConfigDirID = 2;

static constexpr Int kBufferBytes = 578;
static constexpr Int kStopAlert = 2003, kTexts = 3000;
static constexpr Int kSignatureText = 10, kNewerText = 11, kForeignText = 12, kNetworkText = 13, kFullText = 17;
static constexpr Int kManagementMenu = 1004, kNetworkItem = 6;
static constexpr OSType kConfigType = os("WRCF"), kCreator = os("WRGN"), kMagic = os("QUIL");
static constexpr Int kOpenTries = 20;

/// What is written between an open and a close replaces the file at the close, as a whole.
static std::unique_ptr<HostFiles::Replacement> sWriting;

static const AtRunStart sFreshConfig{[] {
    gConfig = gConfigBuffer = nullptr;
    gConfigMode = gConfigDate = 0;
    gConfigRef = -1;
    gConfigChanged = false;
    gConfigName = Str255{0};
    gConfigVRef = -1, gConfigDirID = 2;
    sWriting.reset();
}};

static bool ClosedInNetwork() { return gConfigMode != 0 && gConfigRef == -1; }

static ParamBlockRec ConfigBlock()
{
    ParamBlockRec pb;
    pb.ioNamePtr = gConfigName;
    pb.ioVRefNum = gConfigVRef;
    pb.ioDirID = gConfigDirID;
    pb.ioRefNum = gConfigRef;
    return pb;
}

// The image

bool ConfigIsValid()
{
    const Bytes& image = gConfig->bytes;
    if (gConfig->u32(0) != kMagic || gConfig->s16(4) > 1)
        return false;
    Str255 signature;
    GetIndString(signature, kTexts, kSignatureText);
    return std::equal(signature.begin(), signature.end(), image.begin() + 6);
}

void CopyOptionsOut() { gOptions.load(std::span(gConfig->bytes).subspan(kConfigOptionsAt, kOptionsBytes)); }

void WriteOptions()
{
    const Bytes packed = gOptions.bytes();
    std::copy(packed.begin(), packed.end(), gConfig->bytes.begin() + kConfigOptionsAt);
    if (!ClosedInNetwork())
        WriteConfigFile();
}

static void ShowText(Int index)
{
    Str255 text;
    GetIndString(text, kTexts, index);
    SetAlertText(text);
    StopAlert(kStopAlert);
}

void ConfigError(Int code)
{
    Str255 text;
    GetIndString(text, kTexts, code);
    if (characters(text).empty())
        Fatal(resNotFound, "ConfigError");
    PrintError(text);
    ShowText(code);
    if (gConfigMode == 2)
        FlushConfig();
    ExitToShell();
}

// Start

void ConfigInit()
{
    gConfig = NewHandleClear(kConfigBytes);
    gConfigBuffer = NewHandleClear(kBufferBytes);
    gConfigMode = gOptions.mode = 0;
    ReadConfig();
    if (!ConfigIsValid())
        ConfigError(gConfig->s16(4) < 2 ? kForeignText : kNewerText);
    OpenConfig();
}

void OpenConfig()
{
    gConfigMode = gOptions.mode;
    if (gConfigMode != 0) {
        gConfigMode = 0;
        ShowText(kNetworkText);
    }
    Str255 item;
    GetIndString(item, kManagementMenu, gConfigMode + 4);
    SetItem(GetMHandle(kManagementMenu), kNetworkItem, item);
}

// Reading

Int ConfigFileChanged()
{
    ParamBlockRec pb = ConfigBlock();
    switch (PBHGetFInfo(pb)) {
    case noErr:
        if (pb.ioFlFndrInfo.fdType != kConfigType || pb.ioFlFndrInfo.fdCreator != kCreator)
            ConfigError(kForeignText);
        if (pb.ioFlMdDat == gConfigDate)
            return 0;
        gConfigDate = pb.ioFlMdDat;
        return 1;
    case fnfErr: CreateConfig(); return 1;
    default: return 1;
    }
}

/// Opens the file. @return The first error that is not worth another try.
static OSErr TryOpen()
{
    OSErr error = noErr;
    for (Int tries = 1; tries <= kOpenTries; ++tries) {
        error = HOpen(gConfigVRef, gConfigDirID, gConfigName, fsRdWrPerm, gConfigRef);
        if (error == noErr)
            return noErr;
        if (error == opWrErr && tries < kOpenTries) {
            Int ticks = 0;
            Delay(RandomN(60) + 30, ticks);
        } else if (error != permErr) {
            return error;
        }
    }
    return noErr; // no permission: goes on without an open file
}

/// Ends the program; of what was begun to be written nothing stays.
[[noreturn]] static void GiveUp(OSErr error)
{
    FSClose(gConfigRef);
    gConfigRef = -1;
    sWriting.reset();
    DiskError(error, true);
    ExitToShell();
}

void OpenConfigFile()
{
    if (const OSErr error = TryOpen())
        GiveUp(error);
}

void ReadConfigFile()
{
    ParamBlockRec pb = ConfigBlock();
    pb.ioBuffer = Ptr{gConfig, 0};
    pb.ioReqCount = kConfigBytes;
    pb.ioPosMode = fsFromStart;
    if (const OSErr error = PBRead(pb))
        GiveUp(error);
}

/// Closes the open file; without one the program ends.
static void CloseOpenFile()
{
    if (gConfigRef == -1)
        Fatal(rfNumErr, "ConfCloseFile");
    FSClose(gConfigRef);
    gConfigRef = -1;
}

bool RereadConfig()
{
    if (!ConfigFileChanged())
        return false;
    OpenConfigFile();
    ReadConfigFile();
    CloseOpenFile();
    return true;
}

void ReadConfig()
{
    if (gConfigMode == 0)
        RereadConfig();
    CopyOptionsOut();
}

// Writing

static OSErr TryWrite()
{
    ParamBlockRec pb = ConfigBlock();
    pb.ioBuffer = Ptr{gConfig, 0};
    pb.ioReqCount = kConfigBytes;
    pb.ioPosMode = fsFromStart;
    return PBWrite(pb);
}

void WriteConfigFile()
{
    for (;;) {
        const OSErr error = TryWrite();
        if (error == noErr)
            return;
        if (error != dskFulErr)
            GiveUp(error);
        WaitForSound();
        ShowText(kFullText);
    }
}

static void BeginWriting()
{
    sWriting = std::make_unique<HostFiles::Replacement>(gConfigVRef, gConfigDirID, gConfigName);
}

/// Puts what was written in place of the old file.
static OSErr EndWriting()
{
    const OSErr error = sWriting ? sWriting->commit() : noErr;
    sWriting.reset();
    return error;
}

void OpenConfigForUpdate()
{
    if (gConfigChanged)
        FlushConfig();
    ConfigFileChanged();
    BeginWriting();
    OpenConfigFile();
    ReadConfigFile();
}

void CloseConfig()
{
    if (ClosedInNetwork())
        return;
    CloseOpenFile();
    if (const OSErr error = EndWriting())
        DiskError(error, true);
}

void FlushConfig()
{
    gConfigChanged = false;
    ConfigFileChanged();
    BeginWriting();
    OpenConfigFile();
    WriteConfigFile();
    CloseConfig();
}

/// Makes and fills the file. @return The first error.
static OSErr MakeFile()
{
    if (const OSErr error = HCreate(gConfigVRef, gConfigDirID, gConfigName, kCreator, kConfigType))
        return error;
    if (const OSErr error = TryOpen())
        return error;
    OSErr error = SetEOF(gConfigRef, kConfigBytes);
    if (error == noErr)
        error = TryWrite();
    FSClose(gConfigRef);
    gConfigRef = -1;
    return error;
}

void CreateConfig()
{
    const Handle first = GetResource(os("CONF"), 1000);
    if (!first)
        Fatal(ResError(), "ConfCreate1");
    gConfig->bytes = first->bytes;
    gConfig->bytes.resize(static_cast<std::size_t>(kConfigBytes));
    BeginWriting();
    HDelete(gConfigVRef, gConfigDirID, gConfigName);
    OSErr error = MakeFile();
    if (error == noErr)
        error = EndWriting();
    sWriting.reset(); // without a commit nothing half-made stays
    if (error != noErr)
        DiskError(error, true);
}

} // namespace Wainroad
