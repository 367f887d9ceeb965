#pragma once

#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Simulation/Commands.h"
#include "Wainroad/Simulation/Goods.h"
#include "Wainroad/Simulation/Journey.h"
#include "Wainroad/Simulation/Lobby.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/Random.h"
#include "Wainroad/Simulation/Trail.h"

#include <algorithm>
#include <array>
#include <random>
#include <string>

namespace Wainroad {

/// Plays a journey on the model alone: decides what the screens would ask a person, and sends what they would send.
/// Its own choices come from a generator of its own, so that the model's sequence is the model's alone.
class Player {
public:
    enum Kind { kCareful, kGreedy, kIdle, kRandom };
    static constexpr std::array<Kind, 4> kKinds{kCareful, kGreedy, kIdle, kRandom};
    static const char* name(Kind kind)
    {
        static constexpr const char* kNames[] = {"careful", "greedy", "idle", "random"};
        return kNames[kind];
    }

    Player(Kind kind, Int seed) : kind_(kind), seed_(seed), choose_(static_cast<std::uint32_t>(seed)) { }

    /// From the party to the choice of the month; needs packets and model.
    void begin()
    {
        qd.randSeed = seed_;
        gOptions.speed = 2;
        gOccupation = kind_ == kRandom ? pick(8) : kind_ == kGreedy ? 7 : 0;
        const std::array<Str255, 5> names{pstr("Ann"), pstr("Ben"), pstr("Cleo"), pstr("Dan"), pstr("Eve")};
        EnterParty(names);
        buyOutfit();
        BeginSolo();
        BeginMonth(kind_ == kRandom ? 3 + pick(5) : kind_ == kIdle ? 7 : 4);
        gPlaying = 2;
        gModelTicks = 0;
        gMessages = {};
        gMessageCount = 0;
        gMourning = gNewDeaths = false;
        setOut();
    }

    bool goesOn() const { return !arrived_ && !died_ && periods_ < kPatience; }
    bool arrived() const { return arrived_; }
    bool died() const { return died_; }
    Int days() const { return days_; }

    /// A period of the model, with the packets that it takes, after the player's choice.
    void period()
    {
        act();
        const Int day = gTrain.day;
        ModelVBL();
        DispatchPackets();
        days_ += gTrain.day != day;
        heed();
        ++periods_;
    }
    /// The same without packets of the state: a day and the player's choice.
    void dayAlone()
    {
        act();
        if (gTrain.mode & (kModeMoving | kModeResting))
            NextDay(), ++days_;
        DispatchPackets();
        heed();
        ++periods_;
    }
    std::string describe() const
    {
        return std::string(name(kind_)) + ", seed " + std::to_string(seed_) + ", period " + std::to_string(periods_)
            + ", landmark " + std::to_string(gTrain.landmark) + ", " + std::to_string(gTrain.toNext) + " to go";
    }

private:
    static constexpr Int kPatience = 20000; ///< periods: a journey that takes more is stuck

    Int pick(Int n) { return static_cast<Int>(choose_() % static_cast<std::uint32_t>(n)); }
    static Wagon& wagon() { return gTrain.wagon[0]; }
    static Int& supply(Int item) { return wagon().supply[static_cast<std::size_t>(item)]; }

    void send(Int command, Int a = 0, Int b = 0)
    {
        SendCommand(command, a, b);
        DispatchPackets();
    }
    void change(const std::array<Int, kSupplyCount>& goods, Int cents)
    {
        SendSupplyChange(goods, cents);
        DispatchPackets();
    }

    void buyOutfit()
    {
        switch (kind_) {
        case kCareful: gStartSupplies = {12, 20, 400, 2, 2, 2, 1600}; break;
        case kGreedy: gStartSupplies = {4, 2, 100, 0, 0, 0, 200}; break;
        case kIdle: gStartSupplies = {6, 5, 200, 1, 1, 1, 800}; break;
        case kRandom:
            for (std::size_t i = 0; i < gStartSupplies.size(); ++i)
                gStartSupplies[i] = pick(gSupplyLimit[i] + 1);
            gStartSupplies[kOxen] = std::max(gStartSupplies[kOxen], Int{2});
            break;
        }
        gStartMoney = kind_ == kCareful ? 60000 : 5000 + pick(20000);
    }
    void setOut()
    {
        send(kCommandPace, kind_ == kGreedy ? 2 : kind_ == kCareful ? 1 : pick(3));
        send(kCommandRations, kind_ == kGreedy ? 2 : kind_ == kCareful ? 0 : pick(3));
        send(kCommandContinue);
    }

    void act()
    {
        if (gTrain.mode == 0)
            return;
        if (kind_ == kRandom && pick(12) == 0)
            dabble();
        if (gTrain.mode & kModeMoving) {
            onTheWay();
            return;
        }
        if (gTrain.mode & kModeResting)
            return;
        atAStop();
    }

    /// Any button that a person could press.
    void dabble()
    {
        switch (pick(9)) {
        case 0: send(kCommandPace, pick(3)); break;
        case 1: send(kCommandRations, pick(3)); break;
        case 2: send(kCommandRest, 1 + pick(9)); break;
        case 3: send(kCommandStop); break;
        case 4: send(kCommandEnterStore), send(kCommandLeaveStore); break;
        case 5: hunt(); break;
        case 6: send(kCommandRequest, pick(7), pick(100)); break;
        case 7: send(kCommandFine); break;
        case 8: send(kCommandTalk, 255, 42), send(kCommandTalkEnds); break;
        }
    }

    void onTheWay()
    {
        if (kind_ != kCareful)
            return;
        if (wagon().health > 80 && supply(kFood) > 100)
            send(kCommandRest, 3);
        else if (supply(kFood) < 300)
            hunt();
    }

    void hunt()
    {
        if (supply(kBullets) < 20 || gTrain.weather >= 7)
            return;
        send(kCommandHunt);
        const Int food = std::min({50 + pick(150), gSupplyLimit[kFood] - supply(kFood), Int{255}});
        send(kCommandHunted, std::max(food, Int{0}), std::min(5 + pick(15), supply(kBullets)));
    }

    void atAStop()
    {
        if (gTrain.toNext == 0 && IsRiver(gTrain.landmark)) {
            crossRiver();
            return;
        }
        mend();
        if (kind_ == kIdle && ++rests_ % 3 != 0) {
            send(kCommandRest, 9);
            return;
        }
        const Int before = gTrain.mode;
        send(kCommandContinue, gTrain.landmark < kSecondFork ? pick(2) : (gTrain.route & 1) | pick(2) << 1);
        if (gTrain.mode == before)
            send(kCommandRest, 1); // cannot go: waits for better luck, and eats
    }

    /// Buys or barters what keeps the train from going on, wherever that may be.
    void mend()
    {
        if (supply(kOxen) == 0 && wagon().money >= 2000)
            change({2, 0, 0, 0, 0, 0, 0}, -2000);
        for (Int part = kFirstPart; part <= kThirdPart; ++part) {
            const bool broken = wagon().flags & kFlagFirstBroken << (part - kFirstPart);
            if (!broken || supply(part) > 0 || wagon().money < 1000)
                continue;
            std::array<Int, kSupplyCount> goods{};
            goods[static_cast<std::size_t>(part)] = 1;
            change(goods, -1000);
        }
        if (kind_ != kGreedy && supply(kFood) < 400 && wagon().money >= 4000)
            change({0, 0, 0, 0, 0, 0, 200}, -4000);
        if (kind_ == kCareful && supply(kOxen) < 8 && wagon().money >= 8000)
            change({2, 0, 0, 0, 0, 0, 0}, -2000);
    }

    void crossRiver()
    {
        std::array<Int, kSupplyCount> lost{};
        std::array<Int, kMaxPeople> drowned{};
        const bool risky = kind_ != kCareful && gTrain.riverDepth > 5;
        if (risky && pick(3) == 0) {
            for (std::size_t i = 0; i < lost.size(); ++i)
                lost[i] = pick(wagon().supply[i] / 2 + 1);
            for (std::size_t i = 0; i < drowned.size(); ++i)
                drowned[i] = I(i) < wagon().startPeople && pick(12) == 0;
        }
        send(kCommandCross);
        SendLossPacket(kCommandCrossed, lost, drowned);
        DispatchPackets();
    }

    /// Acts on the model's messages as the main loop would.
    void heed()
    {
        for (ModelMessage& message : gMessages) {
            switch (message.kind) {
            case kMessageArrival: arrived_ = !died_; break;
            case kMessageGone: died_ = true; break;
            case kMessageDeath: gTrain.mode &= ~kModeMoving; break;
            }
            message = {};
        }
        gMessageCount = 0;
        if (arrived_ || died_)
            gState.mode = gTrain.mode = 0;
    }

    Kind kind_;
    Int seed_;
    std::minstd_rand choose_;
    Int periods_ = 0, days_ = 0, rests_ = 0;
    bool arrived_ = false, died_ = false;
};

} // namespace Wainroad
