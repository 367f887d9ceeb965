#include "Wainroad/Screens/DiskCalls.h"

#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Host/Misc.h"
#include "MacToolbox/Managers/Dialogs.h"
#include "Wainroad/Errors/Errors.h"
#include "Wainroad/Frame/Alerts.h"
#include "Wainroad/Frame/Sound_.h"
#include "Wainroad/Simulation/Random.h"

namespace Wainroad {

namespace {

constexpr Int kTries = 10;
constexpr OSErr kBusy = -49, kNotAllowed = -54;
constexpr Int kReadAndWrite = 3;

ParamBlockRec blockCall(Int ref, const Handle& block, Int count, BlockAt at)
{
    ParamBlockRec call;
    call.ioRefNum = ref;
    call.ioBuffer = Ptr{block, 0};
    call.ioReqCount = count;
    call.ioPosMode = static_cast<Int>(at);
    return call;
}

} // namespace

OSErr OpenPatiently(Int vRefNum, Int dirID, const Str255& name, Int& ref)
{
    OSErr error = noErr;
    for (Int tries = kTries; tries > 0; --tries) {
        ref = -1;
        error = HOpen(vRefNum, dirID, name, kReadAndWrite, ref);
        if (error == noErr)
            return noErr;
        ref = -1;
        if (error == kBusy && tries > 1) {
            Int now = 0;
            Delay(RandomN(30) + 30, now);
        } else if (error != kNotAllowed) {
            break;
        }
    }
    DiskError(error, false);
    return error;
}

OSErr WriteBlock(Int ref, const Handle& block, Int count, BlockAt at)
{
    ParamBlockRec call = blockCall(ref, block, count, at);
    const OSErr error = PBWrite(call);
    return error == noErr && call.ioActCount != count ? ioErr : error;
}

OSErr ReadBlock(Int ref, const Handle& block, Int count, BlockAt at)
{
    ParamBlockRec call = blockCall(ref, block, count, at);
    const OSErr error = PBRead(call);
    return error == noErr && call.ioActCount != count ? eofErr : error;
}

void TellDiskIsFull()
{
    constexpr Int kAlert = 2003;
    Str255 text;
    GetIndString(text, 3000, 17);
    WaitForSound();
    SetAlertText(text);
    StopAlert(kAlert);
}

} // namespace Wainroad
