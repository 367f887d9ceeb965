#include "Wainroad/Simulation/Records.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "Wainroad/Simulation/Fields.h"

#include <algorithm>

namespace Wainroad {

GameState gTrain, gState, gPrev;
Options gOptions;

static const AtRunStart sFreshRecords{[] {
    gTrain = gState = gPrev = GameState();
    gOptions = Options();
}};

Name15::Name15(std::span<const std::uint8_t> counted)
{
    if (counted.empty())
        return;
    const std::size_t length = std::min({std::size_t{counted[0]}, std::size_t{kMaxLength}, counted.size() - 1});
    bytes_[0] = static_cast<std::uint8_t>(length);
    std::copy_n(counted.begin() + 1, length, bytes_.begin() + 1);
}

Str255 str15(std::span<const std::uint8_t> counted) { return Name15(counted); }

/// 0x00 flags, flags2, rations, occupation, people, startPeople; 0x06 family; 0x46 node, x47; 0x48 supply (s16);
/// 0x56 money, x5A (s32); 0x5E x5E, x5F, health, sickness, x62; 0x63 illness; 0x68 illDays; 0x6D x6D.
template <typename Stream, typename Record> static void wagonFields(Stream& s, Record& w)
{
    s.u8(w.flags), s.u8(w.flags2), s.u8(w.rations), s.u8(w.occupation), s.u8(w.people), s.u8(w.startPeople);
    for (auto& name : w.family)
        s.name(name);
    s.u8(w.node), s.u8(w.x47);
    for (auto& amount : w.supply)
        s.s16(amount);
    s.s32(w.money), s.s32(w.x5A);
    s.u8(w.x5E), s.u8(w.x5F), s.u8(w.health), s.u8(w.sickness), s.u8(w.x62);
    for (auto& code : w.illness)
        s.u8(code);
    for (auto& days : w.illDays)
        s.u8(days);
    s.u8(w.x6D);
}

/// The first 604 bytes.
template <typename Stream, typename Record> static void headFields(Stream& s, Record& g)
{
    s.s16(g.year), s.u8(g.month), s.u8(g.day), s.u8(g.pace), s.u8(g.mode), s.u8(g.delayDays), s.u8(g.restDays); // 0x000
    s.u8(g.wagons), s.u8(g.captain);                                                                            // 0x008
    for (auto& index : g.order)                                                                                 // 0x00A
        s.u8(index);
    for (auto& name : g.names) // 0x02A
        s.name(name);
    s.u8(g.riverDepth), s.u8(g.riverWidth), s.u8(g.region), s.u8(g.weather), s.u8(g.temperature), s.u8(g.x22F); // 0x22A
    s.u16(g.rain), s.u16(g.snow), s.u16(g.rainToday), s.u16(g.snowToday);                                       // 0x230
    s.s8(g.landmark), s.u8(g.toNext), s.s16(g.miles), s.u8(g.x23C), s.u8(g.milesToday), s.u8(g.route);          // 0x238
    s.u8(g.startWagons), s.u8(g.slots), s.u8(g.startMonth), s.u8(g.startDay);                                   // 0x23F
    s.u8(g.speed), s.u8(g.opt244), s.u8(g.opt245), s.u8(g.opt246), s.u8(g.huntTime), s.u8(g.opt248);            // 0x243
    s.u8(g.x249), s.u8(g.leader), s.raw(g.x24B);                                                                // 0x249
}

/// Runs `read` over the bytes, padded with zeros if they are fewer than `size`.
template <typename Read> static void readPadded(std::span<const std::uint8_t> packed, Int size, Read read)
{
    if (I(packed.size()) >= size) {
        FieldReader in(packed.data());
        read(in);
        return;
    }
    Bytes whole(packed.begin(), packed.end());
    whole.resize(static_cast<std::size_t>(size));
    FieldReader in(whole.data());
    read(in);
}

// Wagon

void Wagon::write(ByteWriter& out) const
{
    std::array<std::uint8_t, kWagonBytes> packed;
    FieldWriter fields(packed.data());
    wagonFields(fields, *this);
    out.raw(packed);
}

void Wagon::read(ByteReader& in)
{
    const Bytes packed = in.raw(kWagonBytes);
    FieldReader fields(packed.data());
    wagonFields(fields, *this);
}

void Wagon::narrow()
{
    FieldCutter fields;
    wagonFields(fields, *this);
}

// GameState

Bytes GameState::bytes() const
{
    Bytes packed(static_cast<std::size_t>(kStateBytes));
    FieldWriter out(packed.data());
    headFields(out, *this);
    for (const Wagon& w : wagon)
        wagonFields(out, w);
    out.raw(x101C);
    return packed;
}

void GameState::load(std::span<const std::uint8_t> packed)
{
    readPadded(packed, kStateBytes, [this](FieldReader& in) {
        headFields(in, *this);
        for (Wagon& w : wagon)
            wagonFields(in, w);
        in.raw(x101C);
    });
}

void GameState::clamp()
{
    for (Int* count : {&wagons, &slots, &startWagons})
        *count = std::min(*count, kMaxWagons);
}

Int GameState::sentWagons() const { return std::clamp(startWagons, Int{1}, kMaxWagons); }

void GameState::packBroadcast(Bytes& out) const
{
    out.resize(static_cast<std::size_t>(broadcastSize()));
    FieldWriter fields(out.data());
    headFields(fields, *this);
    for (Int i = 0; i < sentWagons(); ++i)
        wagonFields(fields, wagon[static_cast<std::size_t>(i)]);
}

void GameState::loadBroadcast(std::span<const std::uint8_t> packed)
{
    constexpr std::size_t kStartWagonsAt = 0x23F;
    const Int starting = packed.size() > kStartWagonsAt ? packed[kStartWagonsAt] : 0;
    readPadded(packed, kHeadBytes + std::clamp(starting, Int{1}, kMaxWagons) * kWagonBytes, [this](FieldReader& in) {
        headFields(in, *this);
        for (Int i = 0; i < sentWagons(); ++i)
            wagonFields(in, wagon[static_cast<std::size_t>(i)]);
    });
}

// Options

/// The two texts are written apart: they are counted strings of their own lengths.
template <typename Stream, typename Record> static void optionFields(Stream& s, Record& o)
{
    s.u8(o.x10B), s.s16(o.mode), s.u8(o.x10E), s.u8(o.speed), s.u8(o.huntTime); // 267
    s.raw(o.x111);                                                              // 273
    s.u8(o.opt248), s.u8(o.opt244), s.u8(o.opt245), s.u8(o.opt246);             // 414
}

static constexpr std::size_t kHintBytes = 256, kPasswordBytes = 11;

/// Puts a counted string into a field of zeros, with a length byte that fits what is there.
static void putCounted(std::span<std::uint8_t> field, const Str255& text)
{
    const std::span<const std::uint8_t> body = characters(text);
    const std::size_t length = std::min(body.size(), field.size() - 1);
    field[0] = static_cast<std::uint8_t>(length);
    std::copy_n(body.begin(), length, field.begin() + 1);
}

static Str255 takeCounted(std::span<const std::uint8_t> field)
{
    const std::size_t length = std::min(std::size_t{field[0]}, field.size() - 1);
    Str255 text(field.begin(), field.begin() + 1 + static_cast<std::ptrdiff_t>(length));
    text[0] = static_cast<std::uint8_t>(length);
    return text;
}

Bytes Options::bytes() const
{
    Bytes packed(static_cast<std::size_t>(kOptionsBytes));
    putCounted(std::span(packed).first(kHintBytes), hint);
    putCounted(std::span(packed).subspan(kHintBytes, kPasswordBytes), password);
    FieldWriter out(packed.data() + kHintBytes + kPasswordBytes);
    optionFields(out, *this);
    return packed;
}

void Options::load(std::span<const std::uint8_t> packed)
{
    Bytes whole(packed.begin(), packed.end());
    whole.resize(static_cast<std::size_t>(kOptionsBytes));
    hint = takeCounted(std::span(whole).first(kHintBytes));
    password = takeCounted(std::span(whole).subspan(kHintBytes, kPasswordBytes));
    FieldReader in(whole.data() + kHintBytes + kPasswordBytes);
    optionFields(in, *this);
}

// LossPacket

/// Kind, slot, seven losses (s16), five marks of the drowned, a zero.
template <typename Stream, typename Record> static void lossFields(Stream& s, Record& losses)
{
    s.u8(losses.kind), s.u8(losses.slot);
    for (auto& amount : losses.supplies)
        s.s16(amount);
    for (auto& mark : losses.drowned)
        s.u8(mark);
}

Bytes LossPacket::bytes(Int kind, Int slot, std::span<const Int> supplies, std::span<const Int> drowned)
{
    LossPacket losses{kind, slot, {}, {}};
    std::copy_n(supplies.begin(), std::min(supplies.size(), losses.supplies.size()), losses.supplies.begin());
    std::copy_n(drowned.begin(), std::min(drowned.size(), losses.drowned.size()), losses.drowned.begin());
    Bytes packed(static_cast<std::size_t>(kLossPacketBytes));
    FieldWriter out(packed.data());
    lossFields(out, losses);
    return packed;
}

LossPacket LossPacket::read(std::span<const std::uint8_t> packed)
{
    LossPacket losses;
    readPadded(packed, kLossPacketBytes, [&losses](FieldReader& in) { lossFields(in, losses); });
    return losses;
}

// Questions

Int UsedSlots(const GameState& state)
{
    Int count = 0;
    for (Int slot = 0; slot < kMaxWagons; ++slot)
        count += SlotUsed(state, slot);
    return count;
}

bool HasOccupation(const GameState& state, Int code)
{
    for (Int slot = 0; slot < kMaxWagons; ++slot)
        if (SlotUsed(state, slot) && WagonOf(state, slot).occupation == code)
            return true;
    return false;
}

Int CountAilments(const GameState& state, Int slot, Int flagsMask, Int flags2Mask)
{
    const auto count = [&](Int s) -> Int {
        if (!SlotUsed(state, s))
            return 0;
        const Wagon& w = WagonOf(state, s);
        return Int{(w.flags & flagsMask) != 0} + Int{(w.flags2 & flags2Mask) != 0};
    };
    if (slot >= 0)
        return count(slot);
    Int total = 0;
    for (Int s = 0; s < kMaxWagons; ++s)
        total += count(s);
    return total;
}

} // namespace Wainroad
