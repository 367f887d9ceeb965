#pragma once

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Simulation/Commands.h"
#include "Wainroad/Simulation/Goods.h"
#include "Wainroad/Simulation/Hazards.h"
#include "Wainroad/Simulation/Journey.h"
#include "Wainroad/Simulation/Lobby.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/News.h"
#include "Wainroad/Simulation/Packets.h"
#include "Wainroad/Simulation/Random.h"
#include "Wainroad/Simulation/Records.h"
#include "Wainroad/Simulation/Trail.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Wainroad {

inline std::string hex(std::span<const std::uint8_t> bytes)
{
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t byte : bytes)
        text += {kDigits[byte >> 4], kDigits[byte & 15]};
    return text;
}
inline std::string zeros(std::size_t count) { return std::string(count * 2, '0'); }

/// How many numbers were drawn between two seeds; -1 if more than `most`.
inline Int drawsBetween(Int before, Int after, Int most = 100000)
{
    for (Int count = 0; count <= most; ++count) {
        if (before == after)
            return count;
        before = before * 16807 % 2147483647;
    }
    return -1;
}

/// A model of its own for each test: fresh records, packets, model and a wagon of five on the trail; news is kept.
class ModelTest : public testing::Test {
protected:
    ModelTest()
    {
        startRunAfresh();
        PacketsInit();
        ModelInit();
        AddFilter(kPacketNews, [this](const PacketHeader& p) { news.push_back(p.data); });
        form(0);
    }
    ~ModelTest() override { CloseNetwork(), startRunAfresh(); }

    /// Forms a party of five with this occupation and a plain outfit, in March.
    void form(Int occupation)
    {
        qd.randSeed = 1;
        gOptions.speed = 2;
        gOccupation = occupation;
        const std::array<Str255, 5> names{pstr("Ann"), pstr("Ben"), pstr("Cleo"), pstr("Dan"), pstr("Eve")};
        gStartSupplies = {12, 10, 400, 1, 1, 1, 1000};
        EnterParty(names);
        BeginSolo();
        BeginMonth(3);
    }
    Wagon& wagon() { return gTrain.wagon[0]; }
    /// Sends a command and lets it arrive.
    void command(Int number, Int a = 0, Int b = 0)
    {
        SendCommand(number, a, b);
        DispatchPackets();
    }
    /// The codes of the news so far.
    std::vector<Int> codes()
    {
        DispatchPackets();
        std::vector<Int> all;
        for (const Bytes& message : news)
            all.push_back(message[4]);
        return all;
    }
    /// Runs `work` from a seed and answers how many numbers it drew.
    template <typename Work> Int draws(Int seed, Work work)
    {
        qd.randSeed = seed;
        work();
        DispatchPackets();
        return drawsBetween(seed, qd.randSeed);
    }

    std::vector<Bytes> news;
};

} // namespace Wainroad
