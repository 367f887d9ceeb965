// A saved game: head and journal, made harmless as a load does it, and looked at.

#include "MacToolbox/Base/RunState.h"
#include "Wainroad/Journal/Log.h"
#include "Wainroad/Journal/Wording.h"
#include "Wainroad/Persistence/SavedGame.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/Repair.h"

#include <algorithm>
#include <cstdlib>

using namespace Wainroad;

static void require(bool holds)
{
    if (!holds)
        std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    startRunAfresh();
    MessagesInit();
    const std::span bytes(data, size);
    SaveHead head;
    readSaveHead(bytes, head);
    MakeHarmless(head.state);
    gMySlot = LastUsedSlot(head.state);
    require(gMySlot >= 0);
    KeepOneWagon(head.state, gMySlot);
    gState = head.state;
    require(WagonOf(gState, gMySlot).people >= 1);

    if (size > static_cast<std::size_t>(kSaveHeadBytes)) {
        const auto log = bytes.subspan(static_cast<std::size_t>(kSaveHeadBytes));
        std::copy_n(log.begin(), std::min(log.size(), gLogBuffer->bytes.size()), gLogBuffer->bytes.begin());
    }
    gLogInfo.load(head.logInfo);
    LogLoaded();
    // The walk of the view, which ends the program at a message that cannot be: here it ends the walk.
    for (Int at = 0; at < gLogInfo.end;) {
        const auto rest = std::span<const std::uint8_t>(gLogBuffer->bytes)
                              .subspan(static_cast<std::size_t>(at), static_cast<std::size_t>(gLogInfo.end - at));
        const Int length = MessageSize(rest);
        if (length == 0)
            break;
        require(MessageText(rest.first(static_cast<std::size_t>(length))).size() <= 256);
        at += length;
    }
    return 0;
}
