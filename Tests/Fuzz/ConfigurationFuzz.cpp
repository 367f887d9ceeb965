// The image of a configuration file: settings, both lists of legends, and what is done with them.

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "Wainroad/Persistence/Config.h"
#include "Wainroad/Persistence/Legends.h"
#include "Wainroad/Simulation/Lobby.h"
#include "Wainroad/Simulation/Records.h"

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
    gConfig = NewHandleClear(kConfigBytes);
    gConfig->bytes.assign(data, data + size);
    gConfig->bytes.resize(static_cast<std::size_t>(kConfigBytes));
    ConfigIsValid();
    CopyOptionsOut();
    require(gOptions.hint.size() <= 256 && gOptions.password.size() <= 11);
    const Bytes packed = gOptions.bytes();
    require(packed.size() == 418);
    Options again;
    again.load(packed);
    require(again == gOptions);
    gTrain.month = 3, gTrain.day = 1;
    NewTrain(); // a journey with these settings

    for (const Int list : {0, 1}) {
        setLegends(GetLegends(list));
        require(gLegendCount >= 0 && gLegendCount <= kLegendRows);
        for (const Legend& legend : gLegends)
            require(legend.name.size() <= 28);
        const Int points = size > 0 ? data[0] * 1000 : 7;
        const Int rank = LegendRank(points);
        require(AddLegend(points, pstr("Ann")) == rank);
        require(rank < kLegendRows && gLegendCount <= kLegendRows);
        require(legendBytes().size() == 326);
    }
    return 0;
}
