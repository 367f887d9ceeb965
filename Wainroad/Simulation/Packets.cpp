#include "Wainroad/Simulation/Packets.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Host/Misc.h"
#include "Wainroad/Errors/Errors.h"

#include <algorithm>
#include <memory>

namespace Wainroad {

std::vector<PacketBuffer> gPackets;
std::vector<Filter> gFilters;
Int gSerial = 0;
Int gMyID = 0;
Int gMachines = 0;
Int gNetSocket = 0;
bool gQueueFull = false;

static constexpr Int kDispatchTicks = 10, kDrainTicks = 300;
static constexpr Int kNode = 42;
static VBLTaskPtr gNetVBL;

static const AtRunStart sFreshPackets{[] {
    gPackets.clear();
    gFilters.clear();
    gSerial = gMyID = gMachines = gNetSocket = 0;
    gQueueFull = false;
    gNetVBL.reset();
}};

OSErr PacketsInit()
{
    gPackets.assign(static_cast<std::size_t>(kPacketBuffers), {});
    for (PacketBuffer& buffer : gPackets)
        buffer.p.data.reserve(static_cast<std::size_t>(kPacketBytes));
    gNetVBL = std::make_shared<VBLTask>();
    gNetVBL->vblCount = kDispatchTicks;
    gNetVBL->vblAddr = [](VBLTask& task) {
        task.vblCount = kDispatchTicks;
        DispatchPackets();
    };
    if (const OSErr failed = VInstall(gNetVBL))
        Fatal(failed, "PktInit5");
    gMyID = kNode;
    gNetSocket = 1;
    return noErr;
}

/// Claims the first free buffer; nil if there is none.
static PacketBuffer* ClaimBuffer()
{
    for (PacketBuffer& buffer : gPackets) {
        if (buffer.busy++ == 0 && buffer.state == 0)
            return &buffer;
        --buffer.busy;
    }
    return nullptr;
}

Int QueuePackets(Int type, Int dest, std::span<const std::uint8_t> bytes, Int length, Int flags)
{
    if (length < 1)
        return 0;
    const Int first = gSerial;
    const Int parts = (length + kPacketBytes - 1) / kPacketBytes;
    const Int given = std::min(I(bytes.size()), length);
    for (Int part = 1; part <= parts; ++part) {
        PacketBuffer* buffer = ClaimBuffer();
        if (!buffer) {
            gQueueFull = true;
            return -1;
        }
        const Int from = (part - 1) * kPacketBytes;
        const Int size = std::min(length - from, kPacketBytes);
        PacketHeader& p = buffer->p;
        p.serial = gSerial++;
        p.length = size + 14;
        p.sender = gMyID;
        p.parts = parts;
        p.part = part;
        p.flags = flags;
        p.type = type;
        p.x0C = 2;
        const Int copied = std::clamp(given - from, Int{0}, size);
        p.data.assign(bytes.begin() + std::min(from, given), bytes.begin() + std::min(from, given) + copied);
        p.data.resize(static_cast<std::size_t>(size));
        buffer->time = TickCount() + 15;
        buffer->retries = 40;
        buffer->dest = dest & 255;
        buffer->waiting = buffer->dest == kAllNodes ? gMachines : 1;
        if (buffer->dest == kAllNodes)
            buffer->acked.fill(0);
        buffer->state = 1;
        --buffer->busy;
    }
    return first;
}

void DispatchPackets()
{
    // A filter may queue, add and remove filters, and end the packet layer: nothing is held across its call.
    for (std::size_t i = 0; i < gPackets.size(); ++i) {
        if (gPackets[i].state != 1)
            continue;
        const Int type = gPackets[i].p.type;
        const auto found =
            std::find_if(gFilters.begin(), gFilters.end(), [type](const Filter& f) { return f.type == type; });
        if (found != gFilters.end()) {
            const FilterProc proc = found->proc;
            proc(gPackets[i].p);
        }
        if (i < gPackets.size())
            gPackets[i].state = 0;
    }
}

static std::vector<Filter>::iterator FindFilter(Int type)
{
    return std::find_if(
        gFilters.begin(), gFilters.end(), [type](const Filter& f) { return (f.type & 255) == (type & 255); });
}

void AddFilter(Int type, FilterProc proc)
{
    const auto found = FindFilter(type);
    if (found != gFilters.end()) {
        found->proc = std::move(proc);
        return;
    }
    if (I(gFilters.size()) >= kMaxFilters)
        Fatal(-5000, "PktAddFilter");
    gFilters.push_back({std::move(proc), type});
}

void RemoveFilter(Int type)
{
    const auto found = FindFilter(type);
    if (found == gFilters.end())
        return;
    *found = std::move(gFilters.back());
    gFilters.pop_back();
}

void DrainPackets()
{
    gFilters.clear();
    const auto waits = [](const PacketBuffer& buffer) { return buffer.state != 0; };
    for (const Int end = TickCount() + kDrainTicks; TickCount() < end;) {
        DispatchPackets();
        if (std::none_of(gPackets.begin(), gPackets.end(), waits))
            return;
    }
}

void CloseNetwork()
{
    if (!gPackets.empty())
        DrainPackets();
    VRemove(gNetVBL);
    gPackets.clear();
}

} // namespace Wainroad
