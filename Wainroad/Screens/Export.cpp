#include "Wainroad/Screens/Export.h"

#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Managers/StandardFile.h"
#include "MacToolbox/Managers/TextEdit.h"
#include "Wainroad/Errors/Errors.h"
#include "Wainroad/Frame/Utils.h"
#include "Wainroad/Journal/LogText.h"
#include "Wainroad/Screens/DiskCalls.h"
#include "Wainroad/Simulation/Model.h"

namespace Wainroad {

namespace {

constexpr Int kPanelDialog = -3999; // only its rectangle is used
constexpr OSErr kDiskFull = -34;

Point panelCorner()
{
    const Handle resource = GetResource(os("DLOG"), kPanelDialog);
    if (!resource || resource->count() < 8)
        Fatal(ResError(), "SaveGameGetRes");
    Rect place = resource->rect(0);
    CenterRect(place);
    return place.topLeft();
}

/// On the trail the copy is brought up to date first.
void updateText()
{
    if (gPlaying != 2 || !gLogTE)
        return;
    ClearLogText();
    LogUpdate(gLogTE);
}

OSErr writeText(Int ref)
{
    if (!gLogTE)
        return noErr;
    const Handle text = PtrToHand(gLogTE->hText ? gLogTE->hText->bytes : Bytes());
    for (;;) {
        const OSErr error = WriteBlock(ref, text, text->count(), BlockAt::start);
        if (error == kDiskFull) {
            TellDiskIsFull();
            continue;
        }
        if (error != noErr)
            DiskError(error, false);
        return error;
    }
}

OSErr writeFile(const SFReply& reply)
{
    updateText();
    Int ref = -1;
    OSErr error = OpenPatiently(reply.vRefNum, 0, reply.fName, ref);
    if (error != noErr)
        return error;
    error = writeText(ref);
    const OSErr closed = FSClose(ref);
    return error != noErr ? error : closed;
}

} // namespace

void ExportLog()
{
    SFReply reply;
    SFPutFile(panelCorner(), pstr("Export log to:"), pstr("Trail Log"), nullptr, reply, os("TEXT"));
    if (!reply.good)
        return;
    HostFiles::Replacement whole(reply.vRefNum, 0, reply.fName);
    HDelete(reply.vRefNum, 0, reply.fName);
    if (HCreate(reply.vRefNum, 0, reply.fName, os("ttxt"), os("TEXT")) != noErr)
        return;
    if (writeFile(reply) != noErr)
        return;
    if (const OSErr error = whole.commit(); error != noErr)
        DiskError(error, false);
    else if (gPlaying == 2)
        ClearLogText();
}

} // namespace Wainroad
