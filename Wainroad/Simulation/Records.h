#pragma once

#include "MacToolbox/Base/Memory.h"

#include <array>
#include <cstdint>
#include <span>

/// The records of a journey and their byte forms. In memory every number is a wide signed integer; the byte form keeps
/// the width that its table in Records.cpp gives, so a broadcast or a save cuts a number to that width.
namespace Wainroad {

using namespace MacToolbox;

/// Slots of a wagon's `supply`. Oxen are counted singly, bullets in rounds, food in pounds.
enum SupplySlot : Int { kOxen, kClothes, kBullets, kFirstPart, kSecondPart, kThirdPart, kFood, kSupplyCount };

/// Bits of `GameState::mode`. 0 is no journey.
enum ModeBit : Int {
    kModeLive = 1,
    kModeMoving = 2,
    kModeResting = 4,
    kModeDelayed = 8,    ///< a forced stop
    kModeSuspended = 16, ///< no day passes; nothing sets it
    kModeOver = 32       ///< the game is lost
};

/// Bits of `Wagon::flags`.
enum WagonFlag : Int {
    kFlagOxenGone = 1,    ///< the loss of the last ox has been told
    kFlagFirstBroken = 2, ///< a broken part of the first kind; the second and third kind follow as 4 and 8
    kFlagSecondBroken = 4,
    kFlagThirdBroken = 8,
    kFlagHunting = 16,
    kFlagInStore = 32,
    kFlagTalking = 128
};

/// Bits of `Wagon::flags2`.
enum WagonFlag2 : Int { kFlag2Rafting = 1, kFlag2Crossing = 2, kFlag2CrossingChosen = 8, kFlag2Mark = 16 };

/// Values of `Wagon::illness`. 0 and 1 are broken bones, 3 to 8 the diseases.
enum Illness : Int { kSnakebite = 2, kDead = 9, kWell = 255 };

inline constexpr Int kMaxWagons = 32;
inline constexpr Int kMaxPeople = 5;
inline constexpr Int kNobody = 255; ///< an empty slot, a node or captain that is none
inline constexpr Int kHeadBytes = 604;
inline constexpr Int kWagonBytes = 110;
inline constexpr Int kTailBytes = 110;
inline constexpr Int kStateBytes = kHeadBytes + kMaxWagons * kWagonBytes + kTailBytes; ///< 4234
inline constexpr Int kOptionsBytes = 418;
inline constexpr Int kLossPacketBytes = 22;

/// A counted name of at most 15 characters in Mac OS Roman; what is longer is cut when it is taken in.
class Name15 {
public:
    static constexpr Int kMaxLength = 15;

    Name15() = default;
    Name15(std::span<const std::uint8_t> counted);
    Name15(const Str255& counted) : Name15(std::span<const std::uint8_t>(counted)) { }

    operator Str255() const { return {bytes_.begin(), bytes_.begin() + 1 + bytes_[0]}; }
    Int length() const { return bytes_[0]; }
    bool empty() const { return bytes_[0] == 0; }
    /// The field of 16 bytes: length, characters, zeros.
    const std::array<std::uint8_t, kMaxLength + 1>& field() const { return bytes_; }
    bool operator==(const Name15&) const = default;

private:
    std::array<std::uint8_t, kMaxLength + 1> bytes_{};
};

/// The normal form of a counted name: at most 15 characters, the length byte fitting them.
Str255 str15(std::span<const std::uint8_t> counted);

/// One party. Byte form: 110 bytes.
struct Wagon {
    Int flags = 0, flags2 = 0;
    Int rations = 0;                ///< 0..2, 0 is the fullest
    Int occupation = 0;             ///< 0..7
    Int people = 0;                 ///< alive, 0..5
    Int startPeople = 0;            ///< 1..5
    std::array<Name15, 4> family{}; ///< members 1 to 4; member 0 is named by `GameState::names`
    Int node = 0;                   ///< who plays it; 255 when the wagon is gone
    Int x47 = 0;
    std::array<Int, kSupplyCount> supply{};
    Int money = 0;  ///< cents
    Int x5A = 0;    ///< amount of the open trade request
    Int x5E = 0;    ///< its item; 255 for none
    Int x5F = 0;    ///< days that it has left
    Int health = 0; ///< burden: 0 is perfect, 139 the worst
    Int sickness = 0;
    Int x62 = 0;                           ///< extra burden of one day
    std::array<Int, kMaxPeople> illness{}; ///< see `Illness`
    std::array<Int, kMaxPeople> illDays{};
    Int x6D = 0;

    bool operator==(const Wagon&) const = default;

    /// Appends 110 bytes.
    void write(ByteWriter& out) const;
    /// Reads 110 bytes, zeros beyond the end.
    void read(ByteReader& in);
    void copy(const Wagon& from) { *this = from; }
    /// Cuts every field to the width of the byte form, as writing and reading back does.
    void narrow();
};

/// One journey. Byte form: 4234 bytes, of which head, wagons and tail follow one another.
struct GameState {
    Int year = 0, month = 0, day = 0; ///< month 1..12, day 1..31
    Int pace = 0;                     ///< 0..2, 0 is the slowest
    Int mode = 0;                     ///< see `ModeBit`
    Int delayDays = 0, restDays = 0;
    Int wagons = 0;                                 ///< still in the train
    Int captain = kNobody;                          ///< slot
    std::array<Int, kMaxWagons> order = allEmpty(); ///< slot to index in `wagon`; 255 is an empty slot
    std::array<Name15, kMaxWagons> names{};         ///< of each slot
    Int riverDepth = 0;                             ///< half feet
    Int riverWidth = 0;                             ///< tens of feet
    Int region = 0;                                 ///< row of the climate tables
    Int weather = 0;     ///< 0..9; 128 is added to a code that a hazard forces on the next day
    Int temperature = 0; ///< 0 very cold .. 5 very hot
    Int x22F = 0;
    Int rain = 0, snow = 0; ///< on the ground
    Int rainToday = 0, snowToday = 0;
    Int landmark = -1; ///< headed for, or stood at when `toNext` is 0; -1 before the first leg
    Int toNext = 0;    ///< miles
    Int miles = 0;     ///< since the start
    Int x23C = 0;      ///< length of the present leg, miles
    Int milesToday = 0;
    Int route = 0; ///< bit 1 and 2: the branch was taken at landmark 6 and 13
    Int startWagons = 0;
    Int slots = 0; ///< entries of `order` in use
    Int startMonth = 0, startDay = 0;
    Int speed = 0; ///< model periods a day: 2, 4 or 8
    Int opt244 = 0, opt245 = 0, opt246 = 0;
    Int huntTime = 0;
    Int opt248 = 0;
    Int x249 = 0;                        ///< who holds the talk turn; 255 for nobody
    Int leader = kNobody;                ///< node that runs the model
    std::array<std::uint8_t, 17> x24B{}; ///< counted name of the train
    std::array<Wagon, kMaxWagons> wagon{};
    std::array<std::uint8_t, kTailBytes> x101C{};

    bool operator==(const GameState&) const = default;

    Bytes bytes() const;
    /// Takes every field of the byte form, with zeros beyond the end.
    void load(std::span<const std::uint8_t> packed);
    void copy(const GameState& from) { *this = from; }

    /// Caps `wagons`, `slots` and `startWagons` at 32, as before every broadcast.
    void clamp();
    /// How many wagons a broadcast carries: `startWagons` kept within 1..32.
    Int sentWagons() const;
    /// Length of a broadcast: the head and `sentWagons()` wagons.
    Int broadcastSize() const { return kHeadBytes + sentWagons() * kWagonBytes; }
    /// Packs the leading `broadcastSize()` bytes into `out`, replacing what it held.
    void packBroadcast(Bytes& out) const;
    /// Takes the head and the wagons that a broadcast carries; the others and the tail stay.
    void loadBroadcast(std::span<const std::uint8_t> packed);

private:
    static constexpr std::array<Int, kMaxWagons> allEmpty()
    {
        std::array<Int, kMaxWagons> order{};
        order.fill(kNobody);
        return order;
    }
};

/// The stored settings. Byte form: 418 bytes.
struct Options {
    Str255 hint{0};     ///< at most 255 characters
    Str255 password{0}; ///< at most 10 characters
    Int x10B = 0;
    Int mode = 0; ///< network mode, 0..2
    Int x10E = 0;
    Int speed = 0; ///< model periods a day of new journeys: 2, 4 or 8
    Int huntTime = 0;
    std::array<std::uint8_t, 141> x111{};
    Int opt248 = 0, opt244 = 0, opt245 = 0, opt246 = 0;

    bool operator==(const Options&) const = default;

    Bytes bytes() const;
    /// Takes every field, with zeros beyond the end.
    void load(std::span<const std::uint8_t> packed);
};

/// What a crossing or a raft run cost a wagon, in the form of commands 11, 60 and 61.
struct LossPacket {
    Int kind = 0; ///< command number
    Int slot = 0;
    std::array<Int, kSupplyCount> supplies{}; ///< units lost
    std::array<Int, kMaxPeople> drowned{};    ///< not 0 for who drowned

    /// The 22 bytes; lists that are too short count as padded with zeros.
    static Bytes bytes(Int kind, Int slot, std::span<const Int> supplies, std::span<const Int> drowned);
    static LossPacket read(std::span<const std::uint8_t> packed);
};

extern GameState gTrain; ///< the model's record; only the model writes it
extern GameState gState; ///< the view's copy, rebuilt from each broadcast
extern GameState gPrev;  ///< the state as last shown
extern Options gOptions;

/// True if `slot` is below `slots` and its entry of `order` is not 255.
inline bool SlotUsed(const GameState& state, Int slot)
{
    return slot >= 0 && slot < kMaxWagons && slot < state.slots
        && state.order[static_cast<std::size_t>(slot)] != kNobody;
}
/// How many slots are used.
Int UsedSlots(const GameState& state);
/// The wagon of `slot`, also of an empty one: `wagon[order[slot] & 31]`.
inline Wagon& WagonOf(GameState& state, Int slot)
{
    return state.wagon[static_cast<std::size_t>(state.order[static_cast<std::size_t>(slot & 31)] & 31)];
}
inline const Wagon& WagonOf(const GameState& state, Int slot)
{
    return state.wagon[static_cast<std::size_t>(state.order[static_cast<std::size_t>(slot & 31)] & 31)];
}

/// True if the wagon of any used slot has this occupation.
bool HasOccupation(const GameState& state, Int code);
/// With `slot` negative: over all used slots, 1 for each wagon whose `flags` meet `flagsMask` and 1 for each whose
/// `flags2` meet `flags2Mask`. With a slot: the same for that wagon alone, 0 if it is out of range or empty.
Int CountAilments(const GameState& state, Int slot, Int flagsMask, Int flags2Mask);

/// `n` cut to 8 or 16 bits, as fields of that width hold it.
constexpr Int Held8(Int n) { return static_cast<std::uint8_t>(n); }
constexpr Int Held16(Int n) { return static_cast<std::uint16_t>(n); }
constexpr Int HeldS16(Int n) { return static_cast<std::int16_t>(n); }
constexpr Int HeldS32(Int n) { return static_cast<std::int32_t>(n); }

} // namespace Wainroad
