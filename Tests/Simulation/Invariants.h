#pragma once

#include "Wainroad/Simulation/Goods.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/Packets.h"
#include "Wainroad/Simulation/Trail.h"

#include <algorithm>
#include <string>

namespace Wainroad {

/// What must hold after every period of a journey of one wagon.
class Invariants {
public:
    /// @return The rule that is broken, or nothing.
    std::string check()
    {
        const Wagon& w = gTrain.wagon[0];
        for (std::size_t i = 0; i < w.supply.size(); ++i)
            if (w.supply[i] < 0 || w.supply[i] > gSupplyLimit[i])
                return "supply";
        if (w.money < 0)
            return "money";
        if (gTrain.month < 1 || gTrain.month > 12 || gTrain.day < 1 || gTrain.day > 31)
            return "date";
        if (gTrain.landmark < -1 || gTrain.landmark > kLastLandmark || gTrain.toNext < 0 || gTrain.toNext > 250)
            return "landmark";
        if (w.health < 0 || w.health > 139)
            return "health";
        if ((gTrain.weather & 127) > 9)
            return "weather";
        if (gTrain.temperature < 0 || gTrain.temperature > 5)
            return "temperature";
        if (!livingAgree(w))
            return "living";
        if (std::any_of(gTrain.wagon.begin() + 1, gTrain.wagon.end(),
                [](const Wagon& other) { return other.supply[kFood] != 0; }))
            return "other wagons";
        const Int date = gTrain.year << 16 | gTrain.month << 8 | gTrain.day;
        const std::string back = date < date_ ? "date back"
            : gTrain.landmark < landmark_     ? "landmark back"
            : gTrain.miles < miles_           ? "miles back"
                                              : "";
        date_ = date, landmark_ = gTrain.landmark, miles_ = gTrain.miles;
        return back.empty() && !viewAgrees() ? "view" : back;
    }

private:
    /// The count of the living equals the members who live. With one left it may differ by the head: a drowned head
    /// can still be bitten in the place of the last survivor.
    static bool livingAgree(const Wagon& w)
    {
        const Int living =
            std::count_if(w.illness.begin(), w.illness.begin() + w.startPeople, [](Int ill) { return ill != kDead; });
        return w.people >= 2 ? living == w.people : w.people == 0 || living >= 1;
    }
    /// The view holds what a trip through the bytes holds, and what the model last said.
    static bool viewAgrees()
    {
        GameState again;
        again.load(gState.bytes());
        if (!(again == gState))
            return false;
        if (gState.mode == 0 || gQueueFull)
            return true;
        const GameState& a = gTrain;
        const GameState& b = gState;
        return a.wagon[0] == b.wagon[0] && a.day == b.day && a.month == b.month && a.landmark == b.landmark
            && a.toNext == b.toNext && a.miles == b.miles && a.rain == b.rain && a.snow == b.snow
            && a.weather == b.weather && a.order == b.order;
    }

    Int date_ = 0, landmark_ = -1, miles_ = 0;
};

} // namespace Wainroad
